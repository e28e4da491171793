#pragma once
// CSharedExclusiveLock: a read/write lock whose holds belong to whoever took
// them, not to a thread. Any thread may release a hold, which is what a
// lock taken for a media sample needs: the sample (and the hold) travels
// through a workflow and its last reference may go on another thread than
// the one that locked it, where a platform read/write lock may not be
// released. The exclusive holder's thread may enter again without blocking.

#include <pthread.h>

#include "System/Result.h"

namespace Corvane::Mox {

class CSharedExclusiveLock {
 public:
  CSharedExclusiveLock();
  ~CSharedExclusiveLock();
  CSharedExclusiveLock(const CSharedExclusiveLock&) = delete;
  CSharedExclusiveLock& operator=(const CSharedExclusiveLock&) = delete;

  // Blocks until the hold can be taken.
  Result Enter(bool exclusive);
  // True when the hold was taken at once.
  bool TryEnter(bool exclusive);
  // Releases the most recent kind of hold; ResultInvalidOperation when the
  // lock is not held.
  Result Exit();

  bool IsHeldExclusive() const;
  int GetSharedCount() const;

 private:
  // Takes the hold when nothing prevents it; the mutex is held.
  bool TryEnterLocked(bool exclusive);

  mutable pthread_mutex_t mutex_;
  pthread_cond_t released_;
  int shared_;          // shared holds
  int exclusiveDepth_;  // exclusive holds (nested entries by the writer's thread)
  pthread_t writer_;    // the thread that took the exclusive hold, for re-entry
};

}  // namespace Corvane::Mox
