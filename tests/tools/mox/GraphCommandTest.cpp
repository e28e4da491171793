// mox graph: the topology of a script as dot text or a rendered picture.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "System/Text.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"
#include "ToolRunner.h"

using namespace Corvane::Mox;

namespace {

class TempDirectory {
 public:
  TempDirectory() {
    char pattern[] = "/tmp/mox-graph-XXXXXX";
    path_ = mkdtemp(pattern) ? pattern : "/tmp";
  }
  ~TempDirectory() { std::system(("rm -rf '" + path_ + "'").c_str()); }
  std::string File(const char* name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

std::string Write(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
  return path;
}

std::string Read(const std::string& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

const char kEmptyGraph[] = "digraph G {\n\toverlap = false\n\tconcentrate = false\n}\n";

}  // namespace

TEST(MoxGraph, AScriptWithoutComponentsIsAnEmptyGraph) {
  TempDirectory dir;
  const std::string script = Write(dir.File("plain.wfl"), "var width = 1920;");
  const ToolRun toStdout = RunMox({"graph", script});
  ASSERT_EQ(toStdout.exitStatus, 0) << toStdout.err;
  EXPECT_EQ(toStdout.out, kEmptyGraph);
  const ToolRun toFile = RunMox({"graph", script, "-o", dir.File("plain.dot")});
  ASSERT_EQ(toFile.exitStatus, 0) << toFile.err;
  EXPECT_EQ(Read(dir.File("plain.dot")), kEmptyGraph);
  EXPECT_TRUE(toFile.out.empty());
}

TEST(MoxGraph, SvgOutputIsAnXmlDocument) {
  TempDirectory dir;
  const std::string script = Write(dir.File("plain.wfl"), "var width = 1920;");
  const ToolRun run = RunMox({"graph", script, "-o", dir.File("plain.svg")});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  RObject<CXmlDocument> document(CXmlDocument::CreateWithFileAtPath(dir.File("plain.svg").c_str()));
  ASSERT_TRUE(document);
  RObject<CXmlElement> root(document->GetRootElement());
  ASSERT_TRUE(root);
  RObject<CString> name(root->GetLocalName());
  EXPECT_STREQ(name->GetChars(), "svg");
}

TEST(MoxGraph, ScriptFailuresAndBadUsageAreReported) {
  TempDirectory dir;
  const std::string broken = Write(dir.File("broken.wfl"), "foo();");
  const ToolRun failed = RunMox({"graph", broken});
  EXPECT_EQ(failed.exitStatus, 1);
  EXPECT_NE(failed.err.find("'foo' is not a recognized function"), std::string::npos) << failed.err;
  EXPECT_TRUE(failed.out.empty());
  EXPECT_EQ(RunMox({"graph"}).exitStatus, 2);
  EXPECT_EQ(RunMox({"graph", broken, "-o"}).exitStatus, 2);
  EXPECT_EQ(RunMox({"graph", broken, "-D", "not a name"}).exitStatus, 2);
  const ToolRun help = RunMox({"graph", "--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_EQ(help.out.rfind("usage: mox graph SCRIPT", 0), 0u);
}

TEST(MoxGraph, TheExampleCopyNamesEveryNodeInItsPicture) {
  const ToolRun catalog = RunMox({"catalog", "--json"});
  const std::string reader = "\"family\": \"Container Readers\", \"code\": \"y4m \", \"name\": \"YUV4MPEG\", \"available\": true";
  if (catalog.out.find(reader) == std::string::npos) GTEST_SKIP() << "this build has no YUV4MPEG reader";
  TempDirectory dir;
  const std::string input = dir.File("in.y4m");
  const std::string make = "ffmpeg -v error -f lavfi -i testsrc=size=64x48:rate=25 -frames:v 2 -pix_fmt yuv420p -y '" +
                           input + "'";
  ASSERT_EQ(std::system(make.c_str()), 0);
  const ToolRun run = RunMox({"graph", std::string(MOX_TEST_SOURCE_DIR) + "/examples/wfl/graph.wfl", "-D",
                              "input='" + input + "'", "-D", "output='" + dir.File("copy.y4m") + "'", "-o",
                              dir.File("copy.svg")});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const std::string svg = Read(dir.File("copy.svg"));
  RObject<CString> text(CString::WithString(svg.c_str()));
  RObject<CXmlDocument> document(CXmlDocument::CreateWithString(text));
  ASSERT_TRUE(document) << svg;
  // Graphviz writes one group per node; both components are named.
  size_t nodes = 0;
  for (size_t at = svg.find("class=\"node\""); at != std::string::npos; at = svg.find("class=\"node\"", at + 1)) ++nodes;
  EXPECT_EQ(nodes, 2u) << svg;
  // Graphviz writes '-' in text as a character reference.
  auto inSvg = [](std::string text) {
    for (size_t at = text.find('-'); at != std::string::npos; at = text.find('-', at + 5)) text.replace(at, 1, "&#45;");
    return text;
  };
  EXPECT_NE(svg.find(inSvg("YUV4MPEG (" + input + ")")), std::string::npos) << svg;
  EXPECT_NE(svg.find(inSvg("YUV4MPEG (" + dir.File("copy.y4m") + ")")), std::string::npos) << svg;
}
