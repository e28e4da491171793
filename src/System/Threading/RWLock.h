#pragma once
// CRWLock: a read/write lock whose exclusive mode is re-entrant for its owner.

#include <pthread.h>

#include <atomic>

#include "System/Result.h"

namespace Corvane::Mox {

class CRWLock {
 public:
  CRWLock();
  ~CRWLock();
  CRWLock(const CRWLock&) = delete;
  CRWLock& operator=(const CRWLock&) = delete;

  Result Enter(bool exclusive);
  bool TryEnter(bool exclusive);  // true when entered
  Result Exit();

  Result AcquireShared();
  Result AcquireExclusive();
  Result ReleaseShared();
  Result ReleaseExclusive();
  bool TryAcquireShared();
  bool TryAcquireExclusive();

 private:
  void Entered(bool exclusive);

  std::atomic<int> mode_;  // 0 shared, non-zero exclusive
  std::atomic<int> depth_;
  std::atomic<pthread_t> owner_;
  pthread_rwlock_t lock_;
};

}  // namespace Corvane::Mox
