// Workflows over real files: a Y4M copy stopped midway still leaves a file
// that ffmpeg reads, whose frames are the source's first frames.
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "System/Text.h"
#include "wfl/Parser.h"
#include "wfl/Topology.h"
#include "wfl/Workflow.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

std::vector<std::string> FrameChecksums(const std::string& path) {
  std::vector<std::string> frames;
  if (FILE* pipe = popen(("ffmpeg -v error -i '" + path + "' -f framemd5 - 2>/dev/null").c_str(), "r")) {
    char line[512];
    while (std::fgets(line, sizeof line, pipe))
      if (line[0] != '#') frames.push_back(std::string(line).substr(std::string(line).rfind(',') + 1));
    pclose(pipe);
  }
  return frames;
}

TEST(WorkflowMediaTest, CopyStoppedMidwayLeavesAReadableFileOfTheFirstFrames) {
  if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0) GTEST_SKIP() << "ffmpeg is not installed";
  const std::string base = "/tmp/mox-stop-" + std::to_string(getpid());
  const std::string input = base + "-in.y4m", output = base + "-out.y4m";
  ASSERT_EQ(std::system(("ffmpeg -v error -f lavfi -i testsrc=size=160x120:rate=25 -frames:v 400 -pix_fmt yuv420p -y '" +
                         input + "'").c_str()),
            0);
  {
    RObject<CParser> parser(new CParser());
    const std::string script = "var r = new ContainerReader('" + input + "');\nvar w = new ContainerWriter('" + output +
                               "');\nr.tracks.video['0'] -> w;\n";
    RObject<CString> text(CString::WithString(script.c_str()));
    RObject<CTopology> topology(parser->ParseString(text, nullptr));
    ASSERT_TRUE(topology);
    RObject<CWorkflow> workflow(new CWorkflow(topology));
    ASSERT_TRUE(workflow->Begin().Succeeded());
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    // Stop once the first frame has been written: what was read ahead still
    // reaches the writer, and the writer finishes its file.
    while (workflow->GetTime() <= 0 && !workflow->IsEndOfStream())
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "nothing was delivered";
    workflow->Stop();
    while (!workflow->WaitForCompletion(50)) ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "never ended";
    ASSERT_TRUE(workflow->End().Succeeded());
    EXPECT_TRUE(workflow->GetResult().Succeeded());
  }
  const std::vector<std::string> source = FrameChecksums(input), copy = FrameChecksums(output);
  std::remove(input.c_str());
  std::remove(output.c_str());
  ASSERT_EQ(source.size(), 400u);
  ASSERT_FALSE(copy.empty()) << "the copy is not a readable Y4M";
  EXPECT_LT(copy.size(), source.size()) << "stopping did not stop the copy";
  EXPECT_EQ(copy, std::vector<std::string>(source.begin(), source.begin() + static_cast<long>(copy.size())));
}

}  // namespace
