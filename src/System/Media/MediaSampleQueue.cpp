#include "System/Media/MediaSampleQueue.h"

namespace Corvane::Mox {

CMediaSampleQueue::CMediaSampleQueue(int capacity)
    : CObject(TypeCode), time_(0), duration_(0), queue_(new CQueue<CMediaSample>(capacity, capacity)) {}

CMediaSampleQueue::~CMediaSampleQueue() { queue_->Release(); }

Result CMediaSampleQueue::Enqueue(CMediaSample* sample) {
  if (sample) duration_ += sample->GetDuration();
  return queue_->Enqueue(sample);
}

Result CMediaSampleQueue::Requeue(CMediaSample* sample) {
  if (sample) {
    time_ -= sample->GetDuration();
    duration_ += sample->GetDuration();
  }
  return queue_->Requeue(sample);
}

CMediaSample* CMediaSampleQueue::Dequeue() {
  CMediaSample* sample = queue_->Dequeue();
  if (sample) {
    time_ += sample->GetDuration();
    duration_ -= sample->GetDuration();
  }
  return sample;
}

CMediaSample* CMediaSampleQueue::Peek() const { return queue_->Peek(); }

void CMediaSampleQueue::Clear() {
  time_ = 0;
  duration_ = 0;
  queue_->Clear();
}

}  // namespace Corvane::Mox
