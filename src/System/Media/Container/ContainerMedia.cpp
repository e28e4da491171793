#include "System/Media/Container/ContainerMedia.h"

#include "System/Media/Container/Container.h"
#include "System/Media/MediaSampleQueue.h"

namespace Corvane::Mox {

namespace {
// Waits are bounded so that a missed wake-up costs a moment, never a hang.
constexpr int kWaitSliceMilliseconds = 100;
}  // namespace

CContainerMedia::CContainerMedia(CContainer* owner) : CObject(TypeCode), owner_(owner), queue_(nullptr) {}

CContainerMedia::~CContainerMedia() {
  if (queue_) queue_->Release();
}

bool CContainerMedia::HasQueue() const {
  CObject::CAutoLock lock(owner_);
  return queue_ != nullptr;
}

Result CContainerMedia::BeginIndex() {
  CObject::CAutoLock lock(owner_);
  DropQueue();
  queue_ = new CMediaSampleQueue(owner_->GetQueueSize());
  return Result();
}

void CContainerMedia::DropQueue() {
  if (queue_) {
    queue_->Release();
    queue_ = nullptr;
  }
}

Result CContainerMedia::EndIndex() {
  CObject::CAutoLock lock(owner_);
  DropQueue();
  owner_->NotifyAll();
  return Result();
}

Result CContainerMedia::EnqueueSample(CMediaSample* sample) {
  CObject::CAutoLock lock(owner_);
  for (;;) {
    if (!queue_) return sample ? ResultError("end of stream") : Result();
    if (!queue_->IsFull()) {
      Result result = queue_->Enqueue(sample);
      owner_->NotifyAll();
      return result;
    }
    if (!owner_->IsReady()) return Result();
    owner_->Wait(kWaitSliceMilliseconds);
  }
}

Result CContainerMedia::DequeueSample(CMediaSample*& sample) {
  sample = nullptr;
  CObject::CAutoLock lock(owner_);
  for (;;) {
    if (!queue_) return Result();
    if (!queue_->IsEmpty()) {
      sample = queue_->Dequeue();
      if (!sample) DropQueue();
      owner_->NotifyAll();
      return Result();
    }
    if (!owner_->IsReady()) return Result();
    owner_->Wait(kWaitSliceMilliseconds);
  }
}

}  // namespace Corvane::Mox
