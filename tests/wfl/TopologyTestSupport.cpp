#include "TopologyTestSupport.h"

#include "System/Collections/Value.h"
#include "System/FourString.h"
#include "System/Media/Container/Indexer.h"
#include "System/Text.h"
#include "wfl/ContainerReaderTopologyNode.h"
#include "wfl/ContainerWriterTopologyNode.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/MediaFilterTransformInventory.h"

namespace TopologyTestSupport {

namespace {

template <class T>
T* Acquired(const std::vector<RObject<T>>& list, int i) {
  if (i < 0 || i >= static_cast<int>(list.size())) return nullptr;
  T* item = list[static_cast<size_t>(i)];
  item->Acquire();
  return item;
}

class CTestFactory : public CComponentFactory<CMediaFilter> {
 public:
  CTestFactory(unsigned int code, std::function<CMediaFilter*()> make) : CComponentFactory(code), make_(std::move(make)) {}
  CMediaFilter* CreateInstance() const override { return make_(); }

 private:
  std::function<CMediaFilter*()> make_;
};

}  // namespace

CVideoProperties* MakePicture(const Picture& picture) {
  auto* video = new CVideoProperties();
  video->SetFormat(FourString::ToFour(picture.format));
  video->SetWidth(picture.width);
  video->SetHeight(1080);
  video->SetBitDepth(picture.depth);
  video->SetSubsampling(picture.subsampling);
  video->SetFrameRate(Rational<int>(30000, 1001));
  return video;
}

CAudioProperties* MakeSound(const char* format, int channels) {
  auto* audio = new CAudioProperties();
  audio->SetFormat(FourString::ToFour(format));
  audio->SetChannels(channels);
  audio->SetSampleRate(48000);
  audio->SetBitsPerSample(16);
  return audio;
}

CVideoProperties* CFakeReader::GetVideoProperties(int i) const { return Acquired(video, i); }
CAudioProperties* CFakeReader::GetAudioProperties(int i) const { return Acquired(audio, i); }

Result CFakeWriter::AddVideoMedia(CVideoProperties* properties) {
  properties->Acquire();
  video.emplace_back(properties);
  return Result();
}

Result CFakeWriter::AddAudioMedia(CAudioProperties* properties) {
  properties->Acquire();
  audio.emplace_back(properties);
  return Result();
}

Result CFakeWriter::WriteVideoSample(int track, CVideoSample*) {
  written.push_back("video " + std::to_string(track));
  return Result();
}

Result CFakeWriter::WriteAudioSample(int track, CAudioSample*) {
  written.push_back("audio " + std::to_string(track));
  return Result();
}

CFormatList* CStepFilter::GetInputFormats() const {
  auto* formats = new CFormatList();
  for (unsigned int format : inputs_) formats->AddValue(format);
  return formats;
}

CFormatList* CStepFilter::GetOutputFormats() const {
  auto* formats = new CFormatList();
  for (const Picture& output : outputs_) formats->AddValue(FourString::ToFour(output.format));
  return formats;
}

Result CStepFilter::CreateOutputProperties(unsigned int format, CVideoProperties*& properties) const {
  Result made = CVideoConverter::CreateOutputProperties(format, properties);
  if (made.Failed() || !properties) return made;
  for (const Picture& output : outputs_) {
    if (FourString::ToFour(output.format) != format) continue;
    properties->SetBitDepth(output.depth);
    properties->SetSubsampling(output.subsampling);
  }
  return made;
}

CTargetFilter::CTargetFilter(unsigned int format, int width) : CVideoConverter(FourCC("targ")) {
  rows_[0].input.SetFormat(static_cast<int>(format));
  rows_[0].input.SetWidth(width);
  rows_[0].output.SetFormat(static_cast<int>(format));
}

void TopologyTest::SetUpTestSuite() {
  // The inventory's list lives for the process: make it before any test
  // counts objects.
  CMediaFilterTransformInventory::GetFactories();
}

void TopologyTest::SetUp() {
  LeakCheckedTest::SetUp();
  CMediaFilterTransformInventory::Clear();
  topology_ = new CTopology();
}

void TopologyTest::TearDown() {
  topology_.Clear();
  held_.clear();
  CMediaFilterTransformInventory::Clear();
  LeakCheckedTest::TearDown();
}

void TopologyTest::AddTransform(unsigned int code, std::vector<unsigned int> inputs, std::vector<Picture> outputs,
                                int priority) {
  RObject<CTestFactory> factory(new CTestFactory(code, [=] { return new CStepFilter(code, inputs, outputs); }));
  factory->SetPriority(priority);
  CMediaFilterTransformInventory::AddFactory(factory);
}

void TopologyTest::AddFactory(unsigned int code, std::function<CMediaFilter*()> make) {
  RObject<CTestFactory> factory(new CTestFactory(code, std::move(make)));
  CMediaFilterTransformInventory::AddFactory(factory);
}

CTopologyNode* TopologyTest::AddReader(std::vector<Picture> video, int audioTracks) {
  RObject<CFakeReader> reader(new CFakeReader());
  for (const Picture& picture : video) reader->video.emplace_back(MakePicture(picture));
  for (int i = 0; i < audioTracks; ++i) reader->audio.emplace_back(MakeSound("sowt", 2));
  RObject<CIndexer> indexer(new CIndexer(reader));
  RObject<CTopologyNode> node(new CContainerReaderTopologyNode(indexer, true));
  node->SetLabel("reader");
  topology_->AddNode(node);
  return node;
}

CTopologyNode* TopologyTest::AddTarget(const char* label, unsigned int format, int width) {
  RObject<CTargetFilter> filter(new CTargetFilter(format, width));
  RObject<CTopologyNode> node(new CMediaFilterTopologyNode(filter));
  node->SetLabel(label);
  topology_->AddNode(node);
  return node;
}

CTopologyNode* TopologyTest::AddWriter(const char* label) {
  RObject<CFakeWriter> writer(new CFakeWriter());
  RObject<CTopologyNode> node(new CContainerWriterTopologyNode(writer));
  node->SetLabel(label);
  topology_->AddNode(node);
  return node;
}

std::vector<std::string> TopologyTest::Labels() const {
  std::vector<std::string> labels;
  for (CTopologyNode* node : *topology_->GetNodes())
    labels.push_back(node->GetLabel() ? node->GetLabel()->GetChars() : "(null)");
  return labels;
}

}  // namespace TopologyTestSupport
