// The parser driver: host variables, error rendering, the topology built
// from a script's connections, reader symbols, and the interpreter state's
// lifetime.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "System/Console.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "wfl/AstNode.h"
#include "wfl/ComponentValue.h"
#include "wfl/Parser.h"
#include "wfl/ParserTopology.h"
#include "wfl/ResultParserError.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/SymbolValue.h"
#include "wfl/TopologyEdgeInfo.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

// Takes I420 pictures and also makes them on its own: every connection
// between two of these joins directly, so the tests see the script's order.
template <unsigned int Code>
class CDriverConverter : public CVideoConverter {
 public:
  static constexpr unsigned int ComponentCode = Code;
  CDriverConverter() : CVideoConverter(ComponentCode) {}

  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("I420"));
    return formats;
  }
  CFormatList* GetOutputFormats() const override { return GetInputFormats(); }
  Result Begin() override { return CMediaFilter::Begin(); }
  int GetOutputMediaCount() const override { return 2; }
  CMediaProperties* GetOutputMedia(int index) const override {
    if (index < 0 || index >= 2) return nullptr;
    auto* picture = new CVideoProperties();
    picture->SetFormat(FourCC("I420"));
    return picture;
  }
};

class CDriverAudioConverter : public CAudioConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("pda1");
  CDriverAudioConverter() : CAudioConverter(ComponentCode) {}
};

class CDriverReader : public CContainerReader {
 public:
  static constexpr unsigned int ComponentCode = FourCC("pdr1");
  CDriverReader() : CContainerReader(ComponentCode) {}
};

std::string g_printed;
void Capture(CString* text) { g_printed += text->GetChars(); }

std::vector<std::string> g_log;
void CaptureLog(Console::LogLevel, CString* text) { g_log.emplace_back(text->GetChars()); }

class WflParserTest : public LeakCheckedTest {
 protected:
  static void SetUpTestSuite() {
    static const bool registered = [] {
      CFamilyInventory<CVideoConverter>::AddComponent<CDriverConverter<FourCC("pdv1")>>();
      CFamilyInventory<CVideoConverter>::AddComponent<CDriverConverter<FourCC("pdv2")>>();
      CFamilyInventory<CVideoConverter>::AddComponent<CDriverConverter<FourCC("pdv3")>>();
      CFamilyInventory<CAudioConverter>::AddComponent<CDriverAudioConverter>();
      CFamilyInventory<CContainerReader>::AddComponent<CDriverReader>();
      return true;
    }();
    (void)registered;
  }

  void SetUp() override {
    LeakCheckedTest::SetUp();
    g_printed.clear();
    g_log.clear();
    CParser::SetLogCallback(Capture);
    parser_ = new CParser();
  }

  void TearDown() override {
    topology_.Clear();
    parser_.Clear();
    // A test that stops midway may leave a script's state behind.
    ReleaseInterpreterState();
    CParser::SetLogCallback(previousSink_);
    Console::SetLogCallback(&Console::DefaultLog);
    Console::SetLogLevel(Console::None);
    LeakCheckedTest::TearDown();
  }

  CTopology* Parse(const char* script, CParser::Variables* variables = nullptr) {
    RObject<CString> text(CString::WithString(script));
    topology_ = parser_->ParseString(text, variables);
    return topology_;
  }

  // The error a failing script raises.
  ResultParserError ParseFailing(const char* script) {
    try {
      Parse(script);
    } catch (const ResultParserError& error) {
      return error;
    }
    ADD_FAILURE() << "no error from: " << script;
    return ResultParserError(nullptr, "none");
  }

  static std::string Rendered(const ResultParserError& error) {
    RObject<CString> text(error.FormatErrorMessage());
    return text->GetChars();
  }

  // The component object of a top-level script variable (borrowed).
  CObject* ComponentOf(const char* name) {
    RObject<CSymbol> symbol(parser_->GetSymbols()->GetSymbol(name));
    auto* value = symbol ? dynamic_cast<CComponentValue*>(symbol->GetValue()) : nullptr;
    return value ? value->GetComponentObject() : nullptr;
  }

  // "a>b" for each topology edge, naming the nodes by script variable.
  std::vector<std::string> EdgeNames(const std::vector<const char*>& names) {
    auto nameOf = [&](CTopologyNode* node) -> std::string {
      for (const char* name : names)
        if (ComponentOf(name) == node->GetComponent()) return name;
      return "?";
    };
    std::vector<std::string> edges;
    for (CGraphEdge<CTopologyNode>* edge : *topology_->GetEdges())
      edges.push_back(nameOf(edge->GetSource()) + ">" + nameOf(edge->GetDestination()));
    return edges;
  }

  RObject<CParser> parser_;
  RObject<CTopology> topology_;
  CParser::LogCallback previousSink_ = CParser::GetLogCallback();
};

}  // namespace

TEST_F(WflParserTest, HostVariablesAreInsertedAsSource) {
  RObject<CParser::Variables> variables(new CParser::Variables());
  auto add = [&](const char* name, CVariant* value) {
    RObject<CString> key(CString::WithString(name));
    RObject<CVariant> held(value);
    variables->AddItem(key, held);
  };
  add("width", new CVariant(1920));
  add("name", new CVariant("'clip'"));
  add("bare", new CVariant("clip"));
  add("later", new CVariant("width * 2"));
  Parse("println(width / 2); println(typeof name); println(name); println(typeof bare); println(later);",
        variables);
  // Without quotes the text is a name: a new variable without value.
  EXPECT_EQ(g_printed, "960\nstring\nclip\nundefined\n3840\n");
}

TEST_F(WflParserTest, TopLevelVariablesStayReadableUntilTheTopologyGoes) {
  Parse("var answer = 6 * 7; function twice(x) { return x * 2; }");
  RObject<CSymbol> answer(parser_->GetSymbols()->GetSymbol("answer"));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->ToInt64(), 42);
  // Functions outlive the script until the topology is released.
  topology_.Clear();
  EXPECT_EQ(CAstNode::GetFunctionTable()->GetCount(), 0);
}

TEST_F(WflParserTest, ErrorsRenderTitleLinePositionAndDetail) {
  EXPECT_EQ(Rendered(ParseFailing("var a = 1;\n\n        foo();")),
            "Unknown function exception: line 3:8; 'foo' is not a recognized function");
  EXPECT_EQ(Rendered(ParseFailing("var x = 1;\nvar x = 2;")),
            "Duplicate symbol: line 2:4; 'x' has already been declared");
  EXPECT_EQ(Rendered(ParseFailing("new VideoConverter('zzzz');")),
            "Parser error: line 1:4; No video converter factory of type 'zzzz'.");
}

TEST_F(WflParserTest, AScriptWithoutComponentsGivesAnEmptyTopology) {
  Console::SetLogCallback(CaptureLog);
  Console::SetLogLevel(Console::Information);
  CTopology* topology = Parse("var a = 1;");
  ASSERT_NE(topology, nullptr);
  EXPECT_EQ(topology->GetNodes()->GetCount(), 0);
  EXPECT_EQ(topology->GetEdges()->GetCount(), 0);
  bool logged = false;
  for (const std::string& line : g_log)
    logged |= line.find("Component graph contains 0 nodes, 0 edges\n") != std::string::npos;
  EXPECT_TRUE(logged);
}

TEST_F(WflParserTest, ConnectionsAreReplayedAfterTheEdgesThatFeedThem) {
  Parse(
      "var a = new VideoConverter('pdv1');"
      "var b = new VideoConverter('pdv2');"
      "var c = new VideoConverter('pdv3');"
      "b -> c; a -> b;");
  EXPECT_EQ(EdgeNames({"a", "b", "c"}), (std::vector<std::string>{"a>b", "b>c"}));
  EXPECT_EQ(topology_->GetNodes()->GetCount(), 3);
}

TEST_F(WflParserTest, OutputsKeepTheOrderTheScriptGaveThem) {
  Parse(
      "var a = new VideoConverter('pdv1');"
      "var b = new VideoConverter('pdv2');"
      "var c = new VideoConverter('pdv3');"
      "var d = new VideoConverter('pdv3');"
      "c -> d; a -> c; a -> b;");
  // a feeds c, so a>c precedes c>d; a's outputs stay in script order.
  EXPECT_EQ(EdgeNames({"a", "b", "c", "d"}), (std::vector<std::string>{"a>c", "c>d", "a>b"}));
  std::vector<int> outputs;
  for (CGraphEdge<CTopologyNode>* edge : *topology_->GetEdges())
    outputs.push_back(static_cast<CTopologyEdgeInfo*>(edge->GetPayload())->GetSourceTrack());
  EXPECT_EQ(outputs, (std::vector<int>{0, 0, 1}));
}

TEST_F(WflParserTest, MembersBecomeComponentAndConnectionProperties) {
  Parse(
      "var a = new VideoConverter('pdv1');"
      "var b = new VideoConverter('pdv2');"
      "a.quality = 5;"
      "var link = a -> b; link.width = 1280;");
  auto* filter = static_cast<CMediaFilter*>(ComponentOf("a"));
  double quality = 0;
  ASSERT_TRUE(filter->GetProperty("quality", quality).Succeeded());
  EXPECT_EQ(quality, 5.0);
  ASSERT_EQ(topology_->GetEdges()->GetCount(), 1);
  CGraphEdge<CTopologyNode>* edge = nullptr;
  ASSERT_TRUE(topology_->GetEdges()->Get(0, edge).Succeeded());
  RObject<CGraphEdge<CTopologyNode>> held(edge);
  auto* info = static_cast<CTopologyEdgeInfo*>(edge->GetPayload());
  ASSERT_NE(info->GetProperties(), nullptr);
  double width = 0;
  ASSERT_TRUE(info->GetProperties()->GetProperty("width", width).Succeeded());
  EXPECT_EQ(width, 1280.0);
  EXPECT_STREQ(edge->GetSource()->GetColor()->GetChars(), "/pastel19/5");
}

TEST_F(WflParserTest, ReadersShowTheirPropertiesAndTracksToScripts) {
  Parse(
      "var r = new ContainerReader('in.mov', 'pdr1');"
      "println(r.file); println(typeof r.tracks.video); println(r.tracks.audio['0']);");
  EXPECT_EQ(g_printed, "in.mov\nobject\n(null)\n");
  // A reader without audio tracks cannot feed an audio converter.
  topology_.Clear();
  const ResultParserError error = ParseFailing(
      "var r = new ContainerReader('in.mov', 'pdr1'); var c = new AudioConverter('pda1'); r -> c;");
  EXPECT_STREQ(error.GetTitle(), "Invalid cast");
}

TEST_F(WflParserTest, AProbedReaderShowsItsTracksWithTheirDescriptions) {
  const std::string path =
      (std::filesystem::temp_directory_path() / ("mox-parser-" + std::to_string(getpid()) + ".y4m")).string();
  std::string bytes = "YUV4MPEG2 W4 H2 F30000:1001 A10:11 It C422\n";
  for (int f = 0; f < 3; ++f) bytes += "FRAME\n" + std::string(16, 'x');
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  const std::string script = "var r = new ContainerReader('" + path +
                             "'); var v = r.tracks.video['0']; println(v.width); println(v.height); println(v.format); "
                             "println(v.timeScale); println(v.frameDuration); println(v.fieldOrder); "
                             "println(v.pixelAspectRatio.x); println(v.pixelAspectRatio.y); println(r.tracks.audio['0']);";
  Parse(script.c_str());
  EXPECT_EQ(g_printed, "4\n2\nI422\n30000\n1001\n2\n10\n11\n(null)\n");
  std::filesystem::remove(path);
}

TEST_F(WflParserTest, AScriptThatFailsTakesItsComponentsAlongInsteadOfLeavingThemToTheNext) {
  const std::string path =
      (std::filesystem::temp_directory_path() / ("mox-failing-" + std::to_string(getpid()) + ".y4m")).string();
  std::string bytes = "YUV4MPEG2 W4 H2 F25:1 C444\n";
  for (int f = 0; f < 3; ++f) bytes += "FRAME\n" + std::string(24, 'x');
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  // The reader is created (and starts indexing) before the script fails.
  const std::string script = "var r = new ContainerReader('" + path + "'); var c = new AudioConverter('pda1'); r -> c;";
  ParseFailing(script.c_str());
  EXPECT_EQ(CComponentValue::GetComponentGraph()->GetNodes()->GetCount(), 0);
  // The next script starts from a clean slate: its topology has its own two components.
  const std::string copy = "var r = new ContainerReader('" + path + "'); var w = new ContainerWriter('" + path +
                           ".out.y4m'); r.tracks.video['0'] -> w;";
  Parse(copy.c_str());
  EXPECT_EQ(topology_->GetNodes()->GetCount(), 2);
  std::filesystem::remove(path);
}

TEST_F(WflParserTest, AReaderIsNeverGuessedWithoutLookingAtTheFile) {
  // An available reader of some kind exists, but nothing has judged the file.
  EXPECT_EQ(Rendered(ParseFailing("var r = new ContainerReader('in.mov');")),
            "Parser error: line 1:12; Failed to create reader for 'in.mov'.");
}

TEST_F(WflParserTest, MissingScriptFileIsReported) {
  RObject<CString> path(CString::WithString("/nonexistent/script.wfl"));
  try {
    topology_ = parser_->ParseFile(path, nullptr);
    ADD_FAILURE() << "a missing file parsed";
  } catch (const Result& result) {
    EXPECT_EQ(result.GetResultCode(), ResultFileNotFound().GetResultCode());
  }
}

TEST_F(WflParserTest, CyclesInTheScriptStillBuild) {
  Parse(
      "var a = new VideoConverter('pdv1');"
      "var b = new VideoConverter('pdv2');"
      "a -> b; b -> a;");
  EXPECT_EQ(topology_->GetNodes()->GetCount(), 2);
  EXPECT_EQ(EdgeNames({"a", "b"}), (std::vector<std::string>{"a>b", "b>a"}));
}

TEST_F(WflParserTest, GraphDumpNamesNodesAndTracks) {
  Parse(
      "var a = new VideoConverter('pdv1');"
      "var b = new VideoConverter('pdv2');"
      "var c = new AudioConverter('pda1');"
      "a -> b; a -> b;");
  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(topology_->PrintGraphViz(stream).Succeeded());
  const std::string dot(reinterpret_cast<const char*>(stream->GetData()), static_cast<size_t>(stream->GetLength()));
  EXPECT_EQ(dot.rfind("digraph G {\n\toverlap = false\n\tconcentrate = false\n", 0), 0u) << dot;
  // Test filters have no display name; video filters are coloured alike.
  EXPECT_NE(dot.find("[label=\"(null)\", color=\"/pastel19/5\", style=filled, root=\"true\"]"), std::string::npos)
      << dot;
  // Two outputs of a, into the first and second input of b.
  EXPECT_NE(dot.find("[label=\"\",taillabel=\"0\",headlabel=\"0\"]"), std::string::npos) << dot;
  EXPECT_NE(dot.find("[label=\"\",taillabel=\"1\",headlabel=\"1\"]"), std::string::npos) << dot;
  EXPECT_EQ(dot.substr(dot.size() - 2), "}\n");
}
