#include "wfl/ReaderTrack.h"

#include <thread>

#include "System/Media/MediaSample.h"
#include "System/Threading/Thread.h"
#include "wfl/ReaderTopologyNode.h"

namespace Corvane::Mox::WFL {

namespace {

// How often a consumer looks for a sample, yielding in between, before it sleeps.
constexpr int SpinLooks = 64;

}  // namespace

CReaderTrack::CReaderTrack(CReaderTopologyNode* node, int output)
    : CObject(TypeCode),
      node_(node),
      output_(output),
      running_(true),
      end_(false),
      readerDone_(false),
      thread_(nullptr) {}

CReaderTrack::~CReaderTrack() {
  Stop();
  if (thread_) {
    thread_->Join();
    thread_->Release();
  }
  for (CMediaSample* sample : queue_)
    if (sample) sample->Release();
}

Result CReaderTrack::Begin() {
  CAutoLock lock(this);
  if (thread_) return ResultFalse();
  running_ = true;
  thread_ = new CThread(&CReaderTrack::ReadData);
  return thread_->Start(this, 0);
}

Result CReaderTrack::ReadData(void* track) { return static_cast<CReaderTrack*>(track)->ReadAhead(); }

Result CReaderTrack::ReadAhead() {
  Result result;
  try {
    for (;;) {
      {
        CAutoLock lock(this);
        while (running_ && static_cast<int>(queue_.size()) >= Capacity) Wait();
        if (!running_) break;
      }
      // Reading may block (a growing index); it happens outside the lock so
      // that the consumer can take what is queued meanwhile.
      CMediaSample* sample = node_->ReadSampleData(output_);
      CAutoLock lock(this);
      // Only a consumer facing an empty queue can be waiting for this one.
      if (queue_.empty()) NotifyAll();
      queue_.push_back(sample);
      if (!sample) break;
    }
  } catch (const Result& failure) {
    result = failure;
  }
  CAutoLock lock(this);
  failure_ = result;
  readerDone_ = true;
  NotifyAll();
  return result;
}

bool CReaderTrack::CanRead() const {
  CAutoLock lock(this);
  return end_ || !queue_.empty() || !running_ || readerDone_;
}

CMediaSample* CReaderTrack::ReadSample() {
  // The read-ahead thread is usually about to queue the next sample: looking
  // a few times while yielding is cheaper than sleeping and being woken.
  for (int look = 0; look < SpinLooks && !CanRead(); ++look) std::this_thread::yield();
  CAutoLock lock(this);
  if (end_) return nullptr;
  while (queue_.empty() && running_ && !readerDone_) Wait();
  CMediaSample* sample = nullptr;
  if (!queue_.empty()) {
    // Only a full queue holds the read-ahead thread back; it is woken once
    // the queue has drained to one entry, so that it reads ahead several
    // samples per wake-up instead of one.
    if (static_cast<int>(queue_.size()) >= Capacity) refillPending_ = true;
    sample = queue_.front();
    queue_.pop_front();
    if (refillPending_ && queue_.size() <= 1) {
      refillPending_ = false;
      NotifyAll();
    }
  } else if (failure_.Failed()) {
    end_ = true;
    NotifyAll();
    throw failure_;
  }
  if (!sample) end_ = true;
  return sample;
}

void CReaderTrack::Stop() {
  CAutoLock lock(this);
  running_ = false;
  NotifyAll();
}

void CReaderTrack::End() {
  Stop();
  if (!thread_) return;
  thread_->Join().ThrowIfFailed();
  Result result = thread_->GetResult();
  if (result.Failed()) throw result;
}

bool CReaderTrack::IsEndOfStream() const {
  CAutoLock lock(this);
  return end_;
}

}  // namespace Corvane::Mox::WFL
