#pragma once
// CMediaSampleQueue ("msqu"): a bounded FIFO of samples that keeps the time
// of its front and the summed duration of what it holds. Not locked: its
// users serialise access.

#include "System/Collections/Queue.h"
#include "System/Media/MediaSample.h"

namespace Corvane::Mox {

class CMediaSampleQueue : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("msqu");

  explicit CMediaSampleQueue(int capacity);
  ~CMediaSampleQueue() override;

  // Adds the duration first, then queues: a sample refused with
  // ResultArrayFull has still been counted, and a caller that retries counts
  // it again. Callers rely on this accounting.
  Result Enqueue(CMediaSample* sample);
  // Puts a sample back at the front, moving the time back by its duration.
  Result Requeue(CMediaSample* sample);
  // The front sample (the queue's reference handed over), or null.
  CMediaSample* Dequeue();
  template <class T>
  T* Dequeue() {
    return static_cast<T*>(Dequeue());
  }
  // The front sample, acquired and not removed; null when empty.
  CMediaSample* Peek() const;
  void Clear();

  long long GetTime() const { return time_; }
  void SetTime(long long time) { time_ = time; }
  long long GetDuration() const { return duration_; }
  bool IsEmpty() const { return queue_->IsEmpty(); }
  bool IsFull() const { return queue_->IsFull(); }
  int GetCount() const { return queue_->GetCount(); }
  int GetCapacity() const { return queue_->GetMaximumCapacity(); }

 private:
  long long time_;
  long long duration_;
  CQueue<CMediaSample>* queue_;
};

}  // namespace Corvane::Mox
