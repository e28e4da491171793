// Topology construction: converter insertion by least fidelity loss, shared
// conversions, writers joined as they are, the no-viable-path messages, the
// node kinds' negotiation and the graph dump.

#include <gtest/gtest.h>

#include <cstdio>

#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/MediaPropertyName.h"
#include "System/Text.h"
#include "TopologyTestSupport.h"
#include "wfl/ComponentValue.h"
#include "wfl/ContainerReaderTopologyNode.h"
#include "wfl/ContainerWriterTopologyNode.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/MediaFilterTransformInventory.h"
#include "wfl/NoViablePathException.h"
#include "wfl/ParserTopology.h"
#include "wfl/TopologyEdgeInfo.h"

using namespace TopologyTestSupport;

namespace {

const CTopologyEdgeInfo* InfoOf(CGraphEdge<CTopologyNode>* edge) {
  return dynamic_cast<const CTopologyEdgeInfo*>(edge->GetPayload());
}

// The edge at an index (borrowed: the topology keeps it).
CGraphEdge<CTopologyNode>* EdgeAt(CTopology* topology, int index) {
  CGraphEdge<CTopologyNode>* edge = nullptr;
  topology->GetEdges()->Get(index, edge);
  if (edge) edge->Release();
  return edge;
}

std::string Label(CTopologyNode* node) { return node->GetLabel() ? node->GetLabel()->GetChars() : "(null)"; }

// "source>destination" per edge, by label.
std::vector<std::string> Edges(CTopology* topology) {
  std::vector<std::string> edges;
  for (CGraphEdge<CTopologyNode>* edge : *topology->GetEdges())
    edges.push_back(Label(edge->GetSource()) + ">" + Label(edge->GetDestination()));
  return edges;
}

std::string FailureOf(std::function<void()> call) {
  try {
    call();
  } catch (const CNoViablePathException& failure) {
    return failure.GetDetails() ? failure.GetDetails() : "";
  } catch (const Result& other) {
    return std::string("other result: ") + (other.GetDetails() ? other.GetDetails() : "");
  }
  return "(no failure)";
}

// 10-bit 4:2:2 H.264 and the pictures the test transforms make.
const Picture kAvc10{"avc1", 10, 0x21};
const Picture kUyvy8{"2vuy", 8, 0x21};
const Picture kPlanar10{"I2AL", 10, 0x21};
const Picture kV210{"v210", 10, 0x21};

}  // namespace

TEST_F(TopologyTest, TheChainOfLeastLossIsInserted) {
  // The 8-bit decoder ranks first, but its route loses 64 bits per pixel.
  AddTransform(FourCC("MC64"), {FourCC("avc1")}, {kUyvy8}, 200);
  AddTransform(FourCC("DAV1"), {FourCC("avc1")}, {kPlanar10}, 100);
  AddTransform(FourCC("vcsc"), {FourCC("2vuy")}, {kV210});
  AddTransform(FourCC("vfc "), {FourCC("I2AL")}, {kV210});
  CTopologyNode* reader = AddReader({kAvc10});
  CTopologyNode* target = AddTarget("target", FourCC("v210"));
  CGraphEdge<CTopologyNode>* last = topology_->Connect(reader, 0, target, nullptr);
  EXPECT_EQ(Edges(topology_), (std::vector<std::string>{"reader>Dav1d Decompressor",
                                                        "Dav1d Decompressor>Video Format Converter",
                                                        "Video Format Converter>target"}));
  ASSERT_TRUE(last);
  EXPECT_EQ(last->GetDestination(), target);
  EXPECT_EQ(InfoOf(last)->GetMedia()->GetFormat(), FourCC("v210"));
  // Each converter was told what to produce.
  auto* decoder = static_cast<CMediaFilterTopologyNode*>(EdgeAt(topology_, 0)->GetDestination());
  unsigned int format = 0;
  decoder->GetMediaFilter()->GetFourProperty(CodeBookProperty::MediaFilter::OutputFormat, format);
  EXPECT_EQ(format, FourCC("I2AL"));
  EXPECT_EQ(target->GetInputMediaCount(), 1);
  EXPECT_GT(topology_->GetSearchStatistics().descriptionsExpanded, 0);
}

TEST_F(TopologyTest, AmongEqualCostsTheFirstPathFoundIsKept) {
  for (int round = 0; round < 2; ++round) {
    CMediaFilterTransformInventory::Clear();
    topology_ = new CTopology();
    // Both convert at no loss; the higher priority is explored first.
    AddTransform(FourCC("vfc "), {FourCC("I2AL")}, {kV210}, round == 0 ? 200 : 100);
    AddTransform(FourCC("vcsc"), {FourCC("I2AL")}, {kV210}, round == 0 ? 100 : 200);
    CTopologyNode* reader = AddReader({kPlanar10});
    CTopologyNode* target = AddTarget("target", FourCC("v210"));
    topology_->Connect(reader, 0, target, nullptr);
    const char* expected = round == 0 ? "Video Format Converter" : "Color Space Converter";
    EXPECT_EQ(Edges(topology_), (std::vector<std::string>{std::string("reader>") + expected,
                                                          std::string(expected) + ">target"}));
  }
}

TEST_F(TopologyTest, TwoTargetsNeedingOneConversionShareTheChain) {
  AddTransform(FourCC("DAV1"), {FourCC("avc1")}, {kPlanar10});
  AddTransform(FourCC("vfc "), {FourCC("I2AL")}, {kV210});
  CTopologyNode* reader = AddReader({kAvc10});
  CTopologyNode* first = AddTarget("first", FourCC("v210"));
  CTopologyNode* second = AddTarget("second", FourCC("v210"));
  topology_->Connect(reader, 0, first, nullptr);
  topology_->Connect(reader, 0, second, nullptr);
  EXPECT_EQ(Edges(topology_), (std::vector<std::string>{"reader>Dav1d Decompressor",
                                                        "Dav1d Decompressor>Video Format Converter",
                                                        "Video Format Converter>first",
                                                        "Video Format Converter>second"}));
  EXPECT_EQ(topology_->GetNodes()->GetCount(), 5);
  // The shared converter feeds both from its one output.
  EXPECT_EQ(InfoOf(EdgeAt(topology_, 3))->GetSourceTrack(), 0);
}

TEST_F(TopologyTest, AWriterIsJoinedAsItIs) {
  AddTransform(FourCC("DAV1"), {FourCC("avc1")}, {kPlanar10});
  CTopologyNode* reader = AddReader({kAvc10}, 1);
  CTopologyNode* writer = AddWriter("writer");
  topology_->Connect(reader, 0, writer, nullptr);
  topology_->Connect(reader, 1, writer, nullptr);
  EXPECT_EQ(Edges(topology_), (std::vector<std::string>{"reader>writer", "reader>writer"}));
  auto* fake = static_cast<CFakeWriter*>(static_cast<CContainerWriterTopologyNode*>(writer)->GetContainerWriter());
  ASSERT_EQ(fake->video.size(), 1u);
  EXPECT_EQ(fake->video[0]->GetFormat(), FourCC("avc1"));
  ASSERT_EQ(fake->audio.size(), 1u);
  // Inputs map to writer tracks by kind: input 1 is audio track 0.
  writer->WriteSample(1, nullptr);
  writer->WriteSample(0, nullptr);
  EXPECT_EQ(fake->written, (std::vector<std::string>{"audio 0", "video 0"}));
  EXPECT_THROW(writer->WriteSample(5, nullptr), Result);
  try {
    writer->WriteSample(5, nullptr);
  } catch (const Result& failure) {
    EXPECT_EQ(failure.GetType(), ResultIndexOutOfRange().GetType());
  }
}

TEST_F(TopologyTest, ATargetNoChainCanFeedNamesTheAttributes) {
  AddTransform(FourCC("vfc "), {FourCC("I2AL")}, {kV210});
  CTopologyNode* reader = AddReader({kPlanar10});
  CTopologyNode* scaler = AddTarget("scaler", FourCC("v210"), 1280);
  EXPECT_EQ(FailureOf([&] { topology_->Connect(reader, 0, scaler, nullptr); }),
            "could not connect from 'reader' to 'scaler'; possibly because: frame width is incompatible");

  CMediaFilterTransformInventory::Clear();
  CTopologyNode* wide = AddTarget("wide", FourCC("v210"), 1280);
  EXPECT_EQ(FailureOf([&] { topology_->Connect(reader, 0, wide, nullptr); }),
            "could not connect from 'reader' to 'wide'; possibly because: media format, frame width are incompatible");

  // A reader whose indexer has not begun offers nothing: the short message.
  RObject<CFakeReader> fake(new CFakeReader());
  fake->video.emplace_back(MakePicture(kPlanar10));
  RObject<CIndexer> indexer(new CIndexer(fake));
  RObject<CTopologyNode> idle(new CContainerReaderTopologyNode(indexer, false));
  idle->SetLabel("idle");
  EXPECT_EQ(FailureOf([&] { topology_->Connect(idle, 0, wide, nullptr); }), "could not connect from 'idle' to 'wide'");
}

TEST_F(TopologyTest, OutputIndexesWrapAroundTheSourcesOutputs) {
  CTopologyNode* reader = AddReader({kAvc10, kPlanar10});
  CTopologyNode* writer = AddWriter("writer");
  CGraphEdge<CTopologyNode>* edge = topology_->Connect(reader, 3, writer, nullptr);
  EXPECT_EQ(InfoOf(edge)->GetSourceTrack(), 1);
  EXPECT_EQ(InfoOf(edge)->GetMedia()->GetFormat(), FourCC("I2AL"));
}

TEST_F(TopologyTest, ReaderOutputsAreVideoThenAudioTracks) {
  auto* reader = static_cast<CContainerReaderTopologyNode*>(AddReader({kAvc10, kPlanar10}, 1));
  EXPECT_EQ(reader->GetOutputMediaCount(), 3);
  RObject<CMediaProperties> third(reader->GetOutputMedia(2));
  ASSERT_TRUE(third);
  EXPECT_TRUE(third->IsType(FourCC("aud ")));
  EXPECT_EQ(reader->GetOutputIndex(FourCC("aud "), 0), 2);
  EXPECT_EQ(reader->GetOutputIndex(FourCC("vid "), 1), 1);
  EXPECT_EQ(reader->GetOutputIndex(FourCC("aud "), 1), -1);
  EXPECT_EQ(reader->GetOutputMedia(3), nullptr);
}

TEST_F(TopologyTest, AFilterOffersOneOutputPerFormatUntilToldWhichOne) {
  RObject<CStepFilter> filter(new CStepFilter(FourCC("vfc "), {FourCC("I2AL")}, {kV210, kUyvy8}));
  RObject<CMediaFilterTopologyNode> node(new CMediaFilterTopologyNode(filter));
  RObject<CVideoProperties> input(MakePicture(kPlanar10));
  node->AddInputMedia(input);
  RObject<CList<CMediaProperties>> offered(node->GetAvailableOutputMedia(0));
  ASSERT_EQ(offered->GetCount(), 2);
  CMediaProperties* first = nullptr;
  offered->Get(0, first);
  RObject<CMediaProperties> heldFirst(first);
  EXPECT_EQ(first->GetFormat(), FourCC("v210"));
  EXPECT_FALSE(filter->ContainsProperty(CodeBookProperty::MediaFilter::OutputFormat));

  RObject<CStepFilter> told(new CStepFilter(FourCC("vfc "), {FourCC("I2AL")}, {kV210, kUyvy8}));
  RObject<CMediaFilterTopologyNode> toldNode(new CMediaFilterTopologyNode(told));
  toldNode->AddInputMedia(input);
  told->SetOutputFormat(FourCC("2vuy"));
  RObject<CList<CMediaProperties>> one(toldNode->GetAvailableOutputMedia(0));
  ASSERT_EQ(one->GetCount(), 1);
  EXPECT_FALSE(told->ContainsProperty(CodeBookProperty::MediaFilter::OutputFormat));
  // Right after its input the node answers what it produces.
  RObject<CMediaProperties> produced(toldNode->GetOutputMedia(0));
  ASSERT_TRUE(produced);
  EXPECT_EQ(produced->GetFormat(), FourCC("v210"));
}

TEST_F(TopologyTest, TheInventoryRanksByPriorityThenScore) {
  AddTransform(FourCC("vcsc"), {FourCC("I2AL")}, {kV210});
  AddTransform(FourCC("vfc "), {FourCC("I2AL")}, {kV210}, 300);
  AddTransform(FourCC("DAV1"), {FourCC("avc1")}, {kPlanar10}, 999);
  RObject<CVideoProperties> planar(MakePicture(kPlanar10));
  RObject<CList<CMediaFilter>> valid(CMediaFilterTransformInventory::GetValidComponents(planar));
  ASSERT_EQ(valid->GetCount(), 2);
  CMediaFilter* best = nullptr;
  valid->Get(0, best);
  RObject<CMediaFilter> heldBest(best);
  EXPECT_EQ(best->GetComponentCode(), FourCC("vfc "));
  RObject<CVideoProperties> hevc(MakePicture(Picture{"hvc1", 8, 0x22}));
  RObject<CList<CMediaFilter>> none(CMediaFilterTransformInventory::GetValidComponents(hevc));
  EXPECT_EQ(none->GetCount(), 0);
  RObject<CMediaFilter> created(CMediaFilterTransformInventory::CreateInstance(FourCC("DAV1")));
  ASSERT_TRUE(created);
  EXPECT_EQ(CMediaFilterTransformInventory::CreateInstance(FourCC("zzzz")), nullptr);
}

TEST_F(TopologyTest, ShortestPathsReplaceADistanceOnlyWhenStrictlyShorter) {
  RObject<CWeightedDirectedGraph<CObject>> graph(new CWeightedDirectedGraph<CObject>());
  RObject<CObject> a(new CObject()), b(new CObject()), c(new CObject()), d(new CObject()), lone(new CObject());
  graph->AddNode(lone);
  RObject<CObject> viaB(new CObject()), viaC(new CObject());
  graph->Connect(1.0f, a, b, viaB);
  graph->Connect(1.0f, a, c, viaC);
  graph->Connect(1.0f, b, d, viaB);
  graph->Connect(1.0f, c, d, viaC);
  RObject<CList<CGraphEdge<CObject>>> path(graph->FindShortestPath(a, d));
  ASSERT_TRUE(path);
  ASSERT_EQ(path->GetCount(), 2);
  CGraphEdge<CObject>* first = nullptr;
  path->Get(0, first);
  RObject<CGraphEdge<CObject>> held(first);
  EXPECT_EQ(first->GetPayload(), viaB.Get());
  // A cheaper route found later wins.
  graph->Connect(0.5f, c, d, nullptr);
  RObject<CList<CGraphEdge<CObject>>> cheaper(graph->FindShortestPath(a, d));
  CGraphEdge<CObject>* step = nullptr;
  cheaper->Get(0, step);
  RObject<CGraphEdge<CObject>> heldStep(step);
  EXPECT_EQ(step->GetDestination(), c.Get());
  EXPECT_EQ(graph->FindShortestPath(a, lone), nullptr);
}

TEST_F(TopologyTest, TheGraphDumpListsNodesAndEdgesInTheDotForm) {
  CTopologyNode* reader = AddReader({kAvc10});
  CTopologyNode* writer = AddWriter("out \"1\"");
  writer->SetProperty("file", "a.mov");
  topology_->Connect(reader, 0, writer, nullptr);
  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(topology_->PrintGraphViz(stream).Succeeded());
  const std::string dot(reinterpret_cast<const char*>(stream->GetData()), static_cast<size_t>(stream->GetLength()));
  char expected[1024];
  std::snprintf(expected, sizeof expected,
                "digraph G {\n\toverlap = false\n\tconcentrate = false\n"
                "\t\"%p\" [label=\"reader\", color=\"grey\", style=filled, root=\"true\"]\n"
                "\t\"%p\" [label=\"out \\\"1\\\"\\nfile = a.mov\", color=\"grey\", style=filled, root=\"false\"]\n"
                "\t\"%p\"\t->\t\"%p\" [label=\"\",taillabel=\"0\",headlabel=\"0\"]\n}\n",
                static_cast<void*>(reader), static_cast<void*>(writer), static_cast<void*>(reader),
                static_cast<void*>(writer));
  EXPECT_EQ(dot, expected);
  EXPECT_EQ(CTopology::Escape("a\\b\"c\td\ne\rf\ag\bh"), "a\\\\b\\\"c\\td\\ne\\rf\\ag\\bh");
}

TEST_F(TopologyTest, TheManifestHoldsEveryContainerWritersProperties) {
  CTopologyNode* reader = AddReader({kAvc10});
  CTopologyNode* writer = AddWriter("writer");
  static_cast<CContainerWriterTopologyNode*>(writer)->GetContainerWriter()->SetProperty("file", "out.mov");
  topology_->Connect(reader, 0, writer, nullptr);
  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(topology_->WriteManifest(stream).Succeeded());
  const std::string json(reinterpret_cast<const char*>(stream->GetData()), static_cast<size_t>(stream->GetLength()));
  EXPECT_NE(json.find("\"container\""), std::string::npos) << json;
  EXPECT_NE(json.find("out.mov"), std::string::npos) << json;
  EXPECT_NE(json.find("\"package\""), std::string::npos) << json;
}

TEST_F(TopologyTest, AnAudioTrackValueIsTheReadersFirstAudioOutput) {
  RObject<CFakeReader> fake(new CFakeReader());
  fake->video.emplace_back(MakePicture(kAvc10));
  fake->video.emplace_back(MakePicture(kPlanar10));
  fake->audio.emplace_back(MakeSound("sowt", 2));
  RObject<CIndexer> indexer(new CIndexer(fake));
  indexer->Begin(false);
  {
    RObject<CContainerReaderValue> readerValue(new CContainerReaderValue(indexer));
    RObject<CAudioTrackValue> audio(new CAudioTrackValue(readerValue, 0));
    RObject<CContainerWriter> writer(new CFakeWriter());
    RObject<CContainerWriterValue> writerValue(new CContainerWriterValue(writer));
    RObject<CSymbolValue> connection(audio->Connect(writerValue));
    RObject<CParserTopology> topology(new CParserTopology());
    for (CGraphEdge<CComponentValue>* edge : *CComponentValue::GetComponentGraph()->GetEdges()) topology->Connect(edge);
    ASSERT_EQ(topology->GetEdges()->GetCount(), 1);
    CGraphEdge<CTopologyNode>* edge = EdgeAt(topology, 0);
    EXPECT_EQ(InfoOf(edge)->GetSourceTrack(), 2);
    EXPECT_TRUE(InfoOf(edge)->GetMedia()->IsType(FourCC("aud ")));
    // The track stands for its reader: one reader node.
    EXPECT_EQ(topology->GetNodes()->GetCount(), 2);
  }
  indexer->End();
}

TEST_F(TopologyTest, AReaderNodeBeginsItsIndexerOnceAndDropsCompressorNames) {
  RObject<CFakeReader> fake(new CFakeReader());
  fake->video.emplace_back(MakePicture(kAvc10));
  fake->video[0]->SetProperty(MediaPropertyName::Mpeg4CompressorName, "Camera");
  RObject<CIndexer> indexer(new CIndexer(fake));
  RObject<CContainerReaderTopologyNode> node(new CContainerReaderTopologyNode(indexer, false));
  RObject<CList<CMediaProperties>> before(node->GetAvailableOutputMedia(0));
  EXPECT_EQ(before->GetCount(), 0);  // nothing is known before the indexer runs
  EXPECT_TRUE(node->Begin().Succeeded());
  EXPECT_TRUE(indexer->IsStarted());
  EXPECT_EQ(node->Begin(), ResultFalse());
  EXPECT_FALSE(fake->video[0]->ContainsProperty(MediaPropertyName::Mpeg4CompressorName));
  RObject<CList<CMediaProperties>> after(node->GetAvailableOutputMedia(0));
  EXPECT_EQ(after->GetCount(), 1);
  indexer->End();
}

TEST_F(TopologyTest, ATransformThatKeepsMakingNewMediaCannotKeepTheSearchGoing) {
  // Each pass makes the picture 16 pixels wider: there is always more to try.
  class CWidening : public CVideoConverter {
   public:
    CWidening() : CVideoConverter(FourCC("vrc ")) {}
    CFormatList* GetInputFormats() const override {
      auto* formats = new CFormatList();
      formats->AddValue(FourCC("I2AL"));
      return formats;
    }
    CFormatList* GetOutputFormats() const override { return GetInputFormats(); }
    using CVideoConverter::CreateOutputProperties;
    Result CreateOutputProperties(unsigned int format, CVideoProperties*& properties) const override {
      Result made = CVideoConverter::CreateOutputProperties(format, properties);
      if (properties) properties->SetWidth(properties->GetWidth() + 16);
      return made;
    }
  };
  AddFactory(FourCC("vrc "), [] { return new CWidening(); });
  CTopologyNode* reader = AddReader({kPlanar10});
  CTopologyNode* narrow = AddTarget("narrow", FourCC("I2AL"), 1280);
  EXPECT_EQ(FailureOf([&] { topology_->Connect(reader, 0, narrow, nullptr); }),
            "could not connect from 'reader' to 'narrow'; possibly because: frame width is incompatible");
  EXPECT_LE(topology_->GetSearchStatistics().descriptionsExpanded, 4096);
}
