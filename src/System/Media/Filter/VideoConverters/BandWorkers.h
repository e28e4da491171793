#pragma once
// CBandWorkers: a small pool of threads that run the bands of one picture at
// once. Run(count, work) calls work(band) for bands 0..count-1, one on the
// calling thread and the others on the workers, and returns when all are done.

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace Corvane::Mox {

class CBandWorkers {
 public:
  // threads workers besides the caller (0: everything runs on the caller).
  explicit CBandWorkers(int threads);
  ~CBandWorkers();
  CBandWorkers(const CBandWorkers&) = delete;
  CBandWorkers& operator=(const CBandWorkers&) = delete;

  int GetThreadCount() const { return static_cast<int>(threads_.size()) + 1; }
  void Run(int count, const std::function<void(int)>& work);

 private:
  void Loop();

  std::vector<std::thread> threads_;
  std::mutex lock_;
  std::condition_variable wake_;
  std::condition_variable done_;
  const std::function<void(int)>* work_ = nullptr;
  int next_ = 0;
  int count_ = 0;
  int pending_ = 0;
  bool stopping_ = false;
};

}  // namespace Corvane::Mox
