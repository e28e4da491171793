// Component expressions and connections: creation through the family
// registries (with test factories), the failure messages, the component
// graph and the reader track selection.
#include "WflTestHelper.h"

#include "System/Console.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "wfl/AstNode.h"
#include "wfl/ComponentExpression.h"
#include "wfl/ComponentValue.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

class CTestVideoConverter : public CVideoConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("tvc1");
  CTestVideoConverter() : CVideoConverter(ComponentCode) {}
};

class CTestAudioConverter : public CAudioConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("tac1");
  CTestAudioConverter() : CAudioConverter(ComponentCode) {}
};

class WflComponentTest : public WflTest {
 protected:
  static void SetUpTestSuite() {
    WflTest::SetUpTestSuite();
    static bool registered = false;
    if (registered) return;
    registered = true;
    CFamilyInventory<CVideoConverter>::AddComponent<CTestVideoConverter>();
    CFamilyInventory<CAudioConverter>::AddComponent<CTestAudioConverter>();
    RObject<CComponentFactory<CVideoConverter>> unavailable(
        new CUnavailableFactory<CVideoConverter>(FourCC("tvu1")));
    CFamilyInventory<CVideoConverter>::AddFactory(unavailable);
  }

  // The value of a script variable, borrowed from its slot (null when absent).
  static CSymbolValue* Value(const char* name) {
    RObject<CSymbol> symbol(CAstNode::GetSymbolTable()->FindSymbol(name));
    return symbol ? symbol->GetValue() : nullptr;
  }

  // Declares r as a reader value with the given numbers of video and audio tracks.
  static void DeclareReader(int videoTracks, int audioTracks) {
    RObject<CContainerReader> reader(new CContainerReader(FourCC("test")));
    RObject<CIndexer> indexer(new CIndexer(reader));
    RObject<CContainerReaderValue> value(new CContainerReaderValue(indexer));
    RObject<CSymbolDictionary> tracks(new CSymbolDictionary());
    AddTracks<CVideoTrackValue>(tracks, "video", value, videoTracks);
    AddTracks<CAudioTrackValue>(tracks, "audio", value, audioTracks);
    RObject<CSymbol> tracksSymbol(new CSymbol(tracks.Get()));
    RObject<CSymbolDictionary> members(value->ToDictionary());
    members->SetSymbol("tracks", tracksSymbol);
    RObject<CSymbol> symbol(new CSymbol(static_cast<CSymbolValue*>(value.Get())));
    CAstNode::GetInnermostScope()->SetSymbol("r", symbol);
  }

  template <class Track>
  static void AddTracks(CSymbolDictionary* tracks, const char* kind, CComponentValue* container, int count) {
    RObject<CSymbolDictionary> list(new CSymbolDictionary());
    for (int i = 0; i < count; ++i) {
      RObject<Track> track(new Track(container, i));
      RObject<CSymbol> symbol(new CSymbol(static_cast<CSymbolValue*>(track.Get())));
      list->SetSymbol(std::to_string(i).c_str(), symbol);
    }
    RObject<CSymbol> listSymbol(new CSymbol(list.Get()));
    tracks->SetSymbol(kind, listSymbol);
  }
};

}  // namespace

TEST_F(WflComponentTest, FiltersAreCreatedThroughTheirRegistry) {
  EXPECT_EQ(Run("var c = new VideoConverter('tvc1'); print(typeof c);"), "object");
  auto* value = static_cast<CComponentValue*>(Value("c"));
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->GetComponentType(), FourCC("vcon"));
  EXPECT_TRUE(value->IsType(FourCC("cpvl")));
  EXPECT_TRUE(value->IsType(FourCC("oval")));
  ASSERT_NE(value->GetComponent<CVideoConverter>(), nullptr);
  EXPECT_EQ(value->GetComponent<CVideoConverter>()->GetComponentCode(), FourCC("tvc1"));
  EXPECT_EQ(value->GetComponent<CAudioConverter>(), nullptr);
  EXPECT_EQ(CComponentValue::GetComponentGraph()->GetNodes()->GetCount(), 1);
}

TEST_F(WflComponentTest, FilterCreationFailures) {
  EXPECT_STREQ(RunFailing("new VideoConverter('abcd');").GetDetails(), "No video converter factory of type 'abcd'.");
  EXPECT_STREQ(RunFailing("new VideoConverter('tvu1');").GetDetails(),
               "Video converter factory of type 'tvu1' is unavailable.");
  EXPECT_STREQ(RunFailing("new AudioFanOutConverter('tvc1');").GetDetails(),
               "No audio fan-out converter factory of type 'tvc1'.");
  EXPECT_STREQ(RunFailing("new SubtitleFanInConverter('xyzw');").GetDetails(),
               "No subtitle fan-in converter factory of type 'xyzw'.");
  EXPECT_STREQ(RunFailing("new VideoConverter();").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("new VideoConverter('a', 'b');").GetTitle(), "Bad arguments");
}

TEST_F(WflComponentTest, MediaFilterSearchesEveryFamily) {
  EXPECT_EQ(Run("var m = new MediaFilter('tac1'); print(typeof m);"), "object");
  auto* value = static_cast<CComponentValue*>(Value("m"));
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->GetComponentType(), FourCC("mflt"));
  EXPECT_NE(value->GetComponent<CAudioConverter>(), nullptr);
  EXPECT_STREQ(RunFailing("new MediaFilter('tvu1');").GetDetails(),
               "No media filter factory of type 'tvu1' or it is unavailable.");
}

TEST_F(WflComponentTest, ReadersWritersSignalsAndPackagesReportTheirFailures) {
  EXPECT_STREQ(RunFailing("new ContainerReader();").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("new ContainerReader(null);").GetDetails(),
               "Failed to create reader, path and type not specfied.");
  EXPECT_STREQ(RunFailing("new ContainerReader('/tmp/wfl-missing.mov');").GetDetails(),
               "Failed to create reader for '/tmp/wfl-missing.mov'.");
  EXPECT_STREQ(RunFailing("new ContainerReader(null, 'zzzz');").GetDetails(), "Failed to create reader for '(null)'.");
  EXPECT_STREQ(RunFailing("new ContainerWriter();").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("new SignalReader(null);").GetDetails(), "Failed to create source reader, type not specfied.");
  EXPECT_STREQ(RunFailing("new SignalReader('zzzz');").GetDetails(),
               "Failed to create source reader of type 'zzzz'.");
  EXPECT_STREQ(RunFailing("new SignalWriter(null);").GetDetails(), "Failed to create source writer, type not specfied.");
  EXPECT_STREQ(RunFailing("new SignalWriter('zzzz');").GetTitle(), "Component unavailable");
  EXPECT_STREQ(RunFailing("new Package('out', 'zzzz');").GetTitle(), "Component unavailable");
  EXPECT_STREQ(RunFailing("new Package('out');").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("new PackageContainer(5);").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("new PackageContainer();").GetTitle(), "Bad arguments");
}

TEST_F(WflComponentTest, ChainsConnectEveryLinkAndSpanTheWholeChain) {
  Run("var a = new VideoConverter('tvc1'); var b = new VideoConverter('tvc1'); var c = new VideoConverter('tvc1');"
      "var chain = a -> b -> c;");
  CComponentGraph* graph = CComponentValue::GetComponentGraph();
  ASSERT_EQ(graph->GetEdges()->GetCount(), 2);
  auto* a = static_cast<CComponentValue*>(Value("a"));
  auto* b = static_cast<CComponentValue*>(Value("b"));
  auto* c = static_cast<CComponentValue*>(Value("c"));
  RObject<CGraphEdge<CComponentValue>> first;
  RObject<CGraphEdge<CComponentValue>> second;
  graph->GetEdges()->Get(0, first.Out());
  graph->GetEdges()->Get(1, second.Out());
  EXPECT_EQ(first->GetSource(), a);
  EXPECT_EQ(first->GetDestination(), b);
  EXPECT_EQ(second->GetSource(), b);
  EXPECT_EQ(second->GetDestination(), c);
  EXPECT_EQ(first->GetWeight(), 1.0f);
  // The value of the chain is one connection from a to c.
  CSymbolValue* chain = Value("chain");
  ASSERT_TRUE(chain && chain->IsType(CConnectionValue::TypeCode));
  EXPECT_EQ(static_cast<CConnectionValue*>(chain)->GetSource(), a);
  EXPECT_EQ(static_cast<CConnectionValue*>(chain)->GetDestination(), c);
  EXPECT_EQ(graph->GetOutputEdges(b)->GetCount(), 1);
  EXPECT_EQ(graph->GetInputEdges(b)->GetCount(), 1);
}

TEST_F(WflComponentTest, EachFurtherConnectionUsesTheNextOutput) {
  Run("var a = new VideoConverter('tvc1'); var b = new VideoConverter('tvc1'); var d = new VideoConverter('tvc1');"
      "var first = a -> b; var second = a -> d;");
  EXPECT_EQ(static_cast<CConnectionValue*>(Value("first"))->GetSourceTrack(), 0);
  EXPECT_EQ(static_cast<CConnectionValue*>(Value("second"))->GetSourceTrack(), 1);
}

TEST_F(WflComponentTest, RightNestedConnectionConnectsToItsSource) {
  Run("var a = new VideoConverter('tvc1'); var b = new VideoConverter('tvc1'); var c = new VideoConverter('tvc1');"
      "var chain = a -> (b -> c);");
  CComponentGraph* graph = CComponentValue::GetComponentGraph();
  ASSERT_EQ(graph->GetEdges()->GetCount(), 2);
  RObject<CGraphEdge<CComponentValue>> second;
  graph->GetEdges()->Get(1, second.Out());
  EXPECT_EQ(second->GetSource(), Value("a"));
  EXPECT_EQ(second->GetDestination(), Value("b"));
  EXPECT_EQ(static_cast<CConnectionValue*>(Value("chain"))->GetDestination(), Value("c"));
}

TEST_F(WflComponentTest, ConnectionIsLooserThanLogicalOperators) {
  // "a -> b || null" is a -> (b || null): a boolean cannot be connected to.
  Run("var a = new VideoConverter('tvc1'); var b = new VideoConverter('tvc1');");
  EXPECT_STREQ(RunFailing("var x = a -> b || null;").GetTitle(), "Invalid cast");
  // With one side missing the connection passes the other value through.
  EXPECT_EQ(Run("var n; print(typeof (n -> a));"), "object");
  EXPECT_EQ(CComponentValue::GetComponentGraph()->GetEdges()->GetCount(), 0);
  EXPECT_STREQ(RunFailing("var y = a -> 5;").GetTitle(), "Invalid cast");
}

TEST_F(WflComponentTest, ReaderConnectsFromTheFirstTrackOfTheKind) {
  DeclareReader(1, 2);
  Run("var v = new VideoConverter('tvc1'); var au = new AudioConverter('tac1');"
      "var cv = r -> v; var ca = r -> au;");
  auto* video = static_cast<CConnectionValue*>(Value("cv"));
  auto* audio = static_cast<CConnectionValue*>(Value("ca"));
  ASSERT_TRUE(video && audio);
  EXPECT_EQ(video->GetSource(), Value("r"));
  EXPECT_EQ(video->GetSourceTrack(), 0);
  EXPECT_EQ(audio->GetSource(), Value("r"));
  EXPECT_EQ(audio->GetSourceTrack(), 0);
  // A track named explicitly gives its own index.
  Run("var ca2 = r.tracks.audio['1'] -> au;");
  EXPECT_EQ(static_cast<CConnectionValue*>(Value("ca2"))->GetSourceTrack(), 1);
}

TEST_F(WflComponentTest, ReaderWithoutTracksOfTheKindCannotConnect) {
  DeclareReader(1, 0);
  EXPECT_STREQ(RunFailing("var au = new AudioConverter('tac1'); r -> au;").GetTitle(), "Invalid cast");
}

TEST_F(WflComponentTest, MembersAreDeferredPropertySettings) {
  Run("var c = new VideoConverter('tvc1'); c.width = 1280; c.mode = 'fast';"
      "var d = new VideoConverter('tvc1'); var link = c -> d; link.height = 720;");
  RObject<CSymbolDictionary> members(Value("c")->ToDictionary());
  RObject<CProperties> properties(members->ToProperties());
  EXPECT_EQ(properties->GetPropertyCount(), 2);
  RObject<CVariant> width(properties->GetProperty(PropertyName("width")));
  EXPECT_EQ(width->ToInt32(), 1280);
  RObject<CSymbolDictionary> linkMembers(Value("link")->ToDictionary());
  RObject<CSymbol> height(linkMembers->GetSymbol("height"));
  ASSERT_TRUE(height);
  EXPECT_EQ(height->ToInt64(), 720);
}

TEST_F(WflComponentTest, ComponentsAreSharedNotCopied) {
  EXPECT_EQ(Run("var c = new VideoConverter('tvc1'); var d = c; print(c == d); d.x = 1; print(c.x);"), "true1");
}

namespace {
std::string logged;
void CaptureLog(Console::LogLevel, CString* text) { logged += text->GetChars(); }
}  // namespace

TEST_F(WflComponentTest, ConnectionsAreLoggedAtDebugLevel) {
  Console::LogCallback previous = Console::GetLogCallback();
  Console::LogLevel level = Console::GetLogLevel();
  Console::SetLogCallback(CaptureLog);
  Console::SetLogLevel(Console::Debug);
  logged.clear();
  DeclareReader(1, 0);
  Run("var a = new VideoConverter('tvc1'); var b = new VideoConverter('tvc1'); a -> b; r -> a;");
  Console::SetLogLevel(level);
  Console::SetLogCallback(previous);
  EXPECT_NE(logged.find("CComponentValue::Connect: connecting: vcon:0 -> vcon\n"), std::string::npos) << logged;
  EXPECT_NE(logged.find("connecting: indx(vtrk):0 -> vcon\n"), std::string::npos) << logged;
}
