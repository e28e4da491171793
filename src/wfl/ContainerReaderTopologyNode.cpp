#include "wfl/ContainerReaderTopologyNode.h"

#include <algorithm>

#include "System/Collections/List.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Container/MediaIndexer.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Media/MediaPropertyName.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox::WFL {

namespace {

constexpr unsigned int kVideo = FourCC("vid ");
constexpr unsigned int kAudio = FourCC("aud ");
constexpr unsigned int kSubtitle = FourCC("sub ");
// The indexer is asked again at least this often while a reader waits for it.
constexpr int WaitStepMilliseconds = 100;

}  // namespace

CContainerReaderTopologyNode::CContainerReaderTopologyNode(CIndexer* indexer, bool indexerStarted)
    : CReaderTopologyNode(indexer), started_(false), indexerStarted_(indexerStarted) {}

CContainerReaderTopologyNode::~CContainerReaderTopologyNode() { CReaderTopologyNode::End(); }

CIndexer* CContainerReaderTopologyNode::GetIndexer() const { return static_cast<CIndexer*>(GetComponent()); }

CContainerReader* CContainerReaderTopologyNode::GetContainerReader() const {
  CIndexer* indexer = GetIndexer();
  return indexer ? indexer->GetContainerReader() : nullptr;
}

bool CContainerReaderTopologyNode::IsIndexerStarted() const {
  return indexerStarted_ || (GetIndexer() && GetIndexer()->IsStarted());
}

Result CContainerReaderTopologyNode::Begin() {
  if (started_) return ResultFalse();
  started_ = true;
  if (!IsIndexerStarted()) {
    Result begun = GetIndexer()->Begin(true);
    if (begun.Failed()) return begun;
    indexerStarted_ = true;
  }
  // A writer fed from this reader must not inherit the source's compressor name.
  CContainerReader* reader = GetContainerReader();
  for (int i = 0; reader && i < reader->GetVideoMediaCount(); ++i) {
    RObject<CVideoProperties> video(reader->GetVideoProperties(i));
    if (video) video->RemoveProperty(MediaPropertyName::Mpeg4CompressorName);
  }
  positions_.assign(static_cast<std::size_t>(std::max(0, GetOutputMediaCount())), 0);
  return CReaderTopologyNode::Begin();
}

CMediaSample* CContainerReaderTopologyNode::ReadSampleData(int output) {
  unsigned int kind = 0;
  int index = 0;
  if (!GetTrack(output, kind, index) || output >= static_cast<int>(positions_.size())) return nullptr;
  CIndexer* indexer = GetIndexer();
  CMediaIndexer* media = kind == kVideo   ? indexer->GetVideoMediaIndexer(index)
                         : kind == kAudio ? indexer->GetAudioMediaIndexer(index)
                                          : indexer->GetSubtitleMediaIndexer(index);
  if (!media) return nullptr;
  int& position = positions_[output];
  while (media->GetSampleCount() <= position && !media->IsComplete()) {
    if (IsStopping()) return nullptr;
    media->WaitForSample(WaitStepMilliseconds);
  }
  if (position >= media->GetSampleCount()) {
    // The index is complete: a reader that failed says so instead of ending quietly.
    media->GetResult().ThrowIfFailed();
    return nullptr;
  }
  RObject<CMediaSample> sample(media->GetSample(position++));
  if (!sample) return nullptr;
  CContainerReader* reader = GetContainerReader();
  if (kind == kVideo) {
    auto* video = static_cast<CVideoSample*>(sample.Get());
    reader->ReadVideoData(index, video).ThrowIfFailed();
    reader->ReadVideoMetadata(index, video).ThrowIfFailed();
  }
  else if (kind == kAudio)
    reader->ReadAudioData(index, static_cast<CAudioSample*>(sample.Get())).ThrowIfFailed();
  else
    reader->ReadSubtitleData(index, static_cast<CSubtitleSample*>(sample.Get())).ThrowIfFailed();
  return sample.Detach();
}

int CContainerReaderTopologyNode::GetOutputMediaCount() {
  CContainerReader* reader = GetContainerReader();
  if (!reader) return 0;
  return reader->GetVideoMediaCount() + reader->GetAudioMediaCount() + reader->GetSubtitleMediaCount();
}

bool CContainerReaderTopologyNode::GetTrack(int output, unsigned int& kind, int& index) {
  CContainerReader* reader = GetContainerReader();
  if (!reader || output < 0) return false;
  const int counts[3] = {reader->GetVideoMediaCount(), reader->GetAudioMediaCount(), reader->GetSubtitleMediaCount()};
  const unsigned int kinds[3] = {kVideo, kAudio, kSubtitle};
  for (int k = 0; k < 3; ++k) {
    if (output < counts[k]) {
      kind = kinds[k];
      index = output;
      return true;
    }
    output -= counts[k];
  }
  return false;
}

int CContainerReaderTopologyNode::GetOutputIndex(unsigned int kind, int index) {
  CContainerReader* reader = GetContainerReader();
  if (!reader || index < 0) return -1;
  const int video = reader->GetVideoMediaCount();
  const int audio = reader->GetAudioMediaCount();
  if (kind == kVideo) return index < video ? index : -1;
  if (kind == kAudio) return index < audio ? video + index : -1;
  if (kind == kSubtitle) return index < reader->GetSubtitleMediaCount() ? video + audio + index : -1;
  return -1;
}

CMediaProperties* CContainerReaderTopologyNode::GetOutputMedia(int output) {
  unsigned int kind = 0;
  int index = 0;
  if (!GetTrack(output, kind, index)) return nullptr;
  CContainerReader* reader = GetContainerReader();
  if (kind == kVideo) return reader->GetVideoProperties(index);
  if (kind == kAudio) return reader->GetAudioProperties(index);
  return reader->GetSubtitleProperties(index);
}

CList<CMediaProperties>* CContainerReaderTopologyNode::GetAvailableOutputMedia(int output) {
  if (!IsIndexerStarted()) return new CList<CMediaProperties>();
  return CReaderTopologyNode::GetAvailableOutputMedia(output);
}

}  // namespace Corvane::Mox::WFL
