#include "wfl/ReaderTopologyNode.h"

#include <algorithm>

#include "System/Media/MediaSample.h"
#include "wfl/ReaderTrack.h"

namespace Corvane::Mox::WFL {

CReaderTopologyNode::~CReaderTopologyNode() {
  for (CReaderTrack* track : tracks_) track->Release();
}

Result CReaderTopologyNode::Begin() {
  if (!tracks_.empty()) return ResultFalse();
  stopping_.store(false, std::memory_order_release);
  const int outputs = std::min(GetOutputMediaCount(), MaxOutputs);
  for (int output = 0; output < outputs; ++output) {
    tracks_.push_back(new CReaderTrack(this, output));
    Result started = tracks_.back()->Begin();
    if (started.Failed()) return started;
  }
  return ResultOK();
}

Result CReaderTopologyNode::End() {
  Stop();
  Result first;
  for (CReaderTrack* track : tracks_) {
    try {
      track->End();
    } catch (const Result& failure) {
      if (first.Succeeded()) first = failure;
    }
  }
  return first;
}

bool CReaderTopologyNode::IsEndOfStream() {
  return std::all_of(tracks_.begin(), tracks_.end(), [](const CReaderTrack* t) { return t->IsEndOfStream(); });
}

CMediaSample* CReaderTopologyNode::ReadSample(int output) {
  if (output < 0 || output >= static_cast<int>(tracks_.size())) return nullptr;
  return tracks_[output]->ReadSample();
}

void CReaderTopologyNode::Stop() {
  stopping_.store(true, std::memory_order_release);
  for (CReaderTrack* track : tracks_) track->Stop();
}

}  // namespace Corvane::Mox::WFL
