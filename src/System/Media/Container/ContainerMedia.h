#pragma once
// CContainerMedia: one track's hand-over point between a producer (an index
// thread, or a writer's caller) and a consumer. Samples wait in a bounded
// queue guarded by the owning container's monitor; a null sample marks the
// track's end. Every wait re-checks the owner's ready flag, so clearing it
// (or ending the index) releases both sides.

#include "System/Object.h"

namespace Corvane::Mox {

class CContainer;
class CMediaSample;
class CMediaSampleQueue;

class CContainerMedia : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("cmed");

  explicit CContainerMedia(CContainer* owner);
  ~CContainerMedia() override;

  CContainer* GetOwner() const { return owner_; }

  // Replaces the queue with an empty one of the owner's QueueSize places.
  virtual Result BeginIndex();
  // Drops the queue and wakes every waiter.
  virtual Result EndIndex();
  virtual bool IsReady() const = 0;

  // The head sample (acquired), or null at the end, without a queue, or when
  // the owner stopped while the queue was empty. Blocks otherwise.
  Result DequeueSample(CMediaSample*& sample);
  Result GetSample(CMediaSample*& sample) { return DequeueSample(sample); }
  // Appends a sample (null: the end marker); blocks while the queue is full
  // and the owner is ready. Without a queue a real sample fails with
  // "end of stream".
  Result EnqueueSample(CMediaSample* sample);
  Result AddSample(CMediaSample* sample) { return EnqueueSample(sample); }

  bool HasQueue() const;

 protected:
  // Callers hold the owner's monitor.
  CMediaSampleQueue* GetQueue() const { return queue_; }

 private:
  void DropQueue();

  CContainer* owner_;
  CMediaSampleQueue* queue_;
};

}  // namespace Corvane::Mox
