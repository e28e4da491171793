#pragma once
// CLock: a recursive POSIX mutex with a condition variable, the building block
// of every object monitor.

#include <pthread.h>

#include "System/Result.h"

namespace Corvane::Mox {

class CLock {
 public:
  CLock();
  ~CLock();
  CLock(const CLock&) = delete;
  CLock& operator=(const CLock&) = delete;

  Result Enter();
  // Inverted sense: true when the attempt failed (held elsewhere), false when taken.
  bool TryEnter();
  bool Wait();
  bool Wait(int milliseconds);
  Result Notify();
  Result NotifyAll();
  Result Exit();

  // Creates the shared recursive mutex attribute (once per process).
  static void Initialize();

 private:
  pthread_mutex_t mutex_;
  pthread_cond_t condition_;
};

// Maps POSIX return codes to results, shared by the lock classes.
namespace LockResults {
Result FromLock(int code);
Result FromUnlock(int code);
Result FromSignal(int code);
}  // namespace LockResults

}  // namespace Corvane::Mox
