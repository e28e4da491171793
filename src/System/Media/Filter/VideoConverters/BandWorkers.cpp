#include "System/Media/Filter/VideoConverters/BandWorkers.h"

namespace Corvane::Mox {

CBandWorkers::CBandWorkers(int threads) {
  for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { Loop(); });
}

CBandWorkers::~CBandWorkers() {
  {
    std::lock_guard<std::mutex> guard(lock_);
    stopping_ = true;
  }
  wake_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void CBandWorkers::Run(int count, const std::function<void(int)>& work) {
  if (threads_.empty() || count <= 1) {
    for (int band = 0; band < count; ++band) work(band);
    return;
  }
  {
    std::lock_guard<std::mutex> guard(lock_);
    work_ = &work;
    next_ = 0;
    count_ = count;
    pending_ = count;
  }
  wake_.notify_all();
  // The caller takes bands too, so one picture never waits on an idle core.
  for (;;) {
    int band;
    {
      std::lock_guard<std::mutex> guard(lock_);
      if (next_ >= count_) break;
      band = next_++;
    }
    work(band);
    std::lock_guard<std::mutex> guard(lock_);
    if (--pending_ == 0) done_.notify_all();
  }
  std::unique_lock<std::mutex> guard(lock_);
  done_.wait(guard, [this] { return pending_ == 0; });
  work_ = nullptr;
  count_ = 0;
}

void CBandWorkers::Loop() {
  std::unique_lock<std::mutex> guard(lock_);
  for (;;) {
    wake_.wait(guard, [this] { return stopping_ || (work_ && next_ < count_); });
    if (stopping_) return;
    const int band = next_++;
    const std::function<void(int)>* work = work_;
    guard.unlock();
    (*work)(band);
    guard.lock();
    if (--pending_ == 0) done_.notify_all();
  }
}

}  // namespace Corvane::Mox
