#include "wfl/ContainerWriterTopologyNode.h"

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox::WFL {

CContainerWriterTopologyNode::CContainerWriterTopologyNode(CContainerWriter* writer)
    : CSinkTopologyNode(WriterNode, writer), begun_(false) {}

CContainerWriter* CContainerWriterTopologyNode::GetContainerWriter() const {
  return static_cast<CContainerWriter*>(GetComponent());
}

Result CContainerWriterTopologyNode::Begin() {
  if (begun_) return ResultFalse();
  Result begun = GetContainerWriter()->BeginIndex();
  if (begun.Failed()) return begun;
  begun_ = true;
  return Result();
}

Result CContainerWriterTopologyNode::End() {
  if (!begun_) return ResultFalse();
  begun_ = false;
  return GetContainerWriter()->EndIndex();
}

int CContainerWriterTopologyNode::CreateTrack(unsigned int kind, CMediaProperties* properties) {
  CContainerWriter* writer = GetContainerWriter();
  int index = 0;
  if (kind == FourCC("vid ")) {
    index = writer->GetVideoMediaCount();
    writer->AddVideoMedia(static_cast<CVideoProperties*>(properties)).ThrowIfFailed();
  } else if (kind == FourCC("aud ")) {
    index = writer->GetAudioMediaCount();
    writer->AddAudioMedia(static_cast<CAudioProperties*>(properties)).ThrowIfFailed();
  } else {
    index = writer->GetSubtitleMediaCount();
    writer->AddSubtitleMedia(static_cast<CSubtitleProperties*>(properties)).ThrowIfFailed();
  }
  return index;
}

void CContainerWriterTopologyNode::WriteTrack(const TrackEntry& entry, CMediaSample* sample) {
  CContainerWriter* writer = GetContainerWriter();
  const bool matches = !sample || sample->IsType(entry.kind == FourCC("vid ")   ? CVideoSample::TypeCode
                                                 : entry.kind == FourCC("aud ") ? CAudioSample::TypeCode
                                                                                : CSubtitleSample::TypeCode);
  if (!matches) throw ResultUnexpected("sample of another kind for track %d", entry.index);
  Result written;
  if (entry.kind == FourCC("vid ")) {
    written = writer->WriteVideoSample(entry.index, static_cast<CVideoSample*>(sample));
  } else if (entry.kind == FourCC("aud ")) {
    written = writer->WriteAudioSample(entry.index, static_cast<CAudioSample*>(sample));
  } else {
    written = writer->WriteSubtitleSample(entry.index, static_cast<CSubtitleSample*>(sample));
  }
  written.ThrowIfFailed();
}

}  // namespace Corvane::Mox::WFL
