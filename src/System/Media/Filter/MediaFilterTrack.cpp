#include "System/Media/Filter/MediaFilterTrack.h"

#include "System/Media/MediaProperties.h"
#include "System/Media/MediaSample.h"

namespace Corvane::Mox {

CMediaFilterTrack::CMediaFilterTrack(const CMediaProperties* properties)
    : CObject(TypeCode), draining_(false), endOfStream_(false), properties_(CMediaProperties::Clone(properties)) {}

CMediaFilterTrack::~CMediaFilterTrack() {
  Flush();
  if (properties_) properties_->Release();
}

void CMediaFilterTrack::Flush() {
  std::deque<CMediaSample*> dropped;
  {
    std::lock_guard<std::mutex> guard(lock_);
    dropped.swap(queue_);
    refillPending_ = false;
    draining_ = false;
    endOfStream_ = false;
  }
  for (CMediaSample* sample : dropped)
    if (sample) sample->Release();
}

bool CMediaFilterTrack::IsMediaFull() const { return GetPendingSampleCount() > QueueLimit; }

bool CMediaFilterTrack::IsMediaEmpty() const { return GetPendingSampleCount() == 0; }

void CMediaFilterTrack::Enqueue(CMediaSample* sample) {
  std::lock_guard<std::mutex> guard(lock_);
  if (sample) {
    sample->Acquire();
  } else {
    draining_ = true;
  }
  queue_.push_back(sample);
}

CMediaSample* CMediaFilterTrack::Dequeue(bool* roomMade) {
  std::lock_guard<std::mutex> guard(lock_);
  if (roomMade) *roomMade = false;
  if (queue_.empty()) return nullptr;
  if (static_cast<int>(queue_.size()) > QueueLimit) refillPending_ = true;
  CMediaSample* sample = queue_.front();
  queue_.pop_front();
  if (!sample && draining_) endOfStream_ = true;
  if (refillPending_ && static_cast<int>(queue_.size()) <= RefillLevel) {
    refillPending_ = false;
    if (roomMade) *roomMade = true;
  }
  return sample;
}

bool CMediaFilterTrack::IsDraining() const {
  std::lock_guard<std::mutex> guard(lock_);
  return draining_;
}

bool CMediaFilterTrack::IsEndOfStream() const {
  std::lock_guard<std::mutex> guard(lock_);
  return endOfStream_;
}

void CMediaFilterTrack::SetDraining() {
  std::lock_guard<std::mutex> guard(lock_);
  draining_ = true;
}

int CMediaFilterTrack::GetPendingSampleCount() const {
  std::lock_guard<std::mutex> guard(lock_);
  return static_cast<int>(queue_.size());
}

}  // namespace Corvane::Mox
