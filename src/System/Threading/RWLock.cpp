#include "System/Threading/RWLock.h"

#include "System/Threading/Lock.h"

namespace Corvane::Mox {

CRWLock::CRWLock() : mode_(0), depth_(0), owner_(pthread_t{}) {
  pthread_rwlock_init(&lock_, nullptr);
}

CRWLock::~CRWLock() { pthread_rwlock_destroy(&lock_); }

Result CRWLock::AcquireShared() { return LockResults::FromLock(pthread_rwlock_rdlock(&lock_)); }
Result CRWLock::AcquireExclusive() { return LockResults::FromLock(pthread_rwlock_wrlock(&lock_)); }
Result CRWLock::ReleaseShared() { return LockResults::FromUnlock(pthread_rwlock_unlock(&lock_)); }
Result CRWLock::ReleaseExclusive() { return LockResults::FromUnlock(pthread_rwlock_unlock(&lock_)); }
bool CRWLock::TryAcquireShared() { return pthread_rwlock_tryrdlock(&lock_) == 0; }
bool CRWLock::TryAcquireExclusive() { return pthread_rwlock_trywrlock(&lock_) == 0; }

void CRWLock::Entered(bool exclusive) {
  depth_.fetch_add(1);
  owner_.store(exclusive ? pthread_self() : pthread_t{});
  mode_ = exclusive ? 1 : 0;
}

Result CRWLock::Enter(bool exclusive) {
  if (exclusive) {
    // Re-entry by the exclusive owner does not lock again.
    if (!pthread_equal(owner_.load(), pthread_self())) {
      Result r = AcquireExclusive();
      if (r.Failed()) return r;
    }
  } else {
    Result r = AcquireShared();
    if (r.Failed()) return r;
  }
  Entered(exclusive);
  return ResultOK();
}

bool CRWLock::TryEnter(bool exclusive) {
  if (exclusive) {
    if (!pthread_equal(owner_.load(), pthread_self()) && !TryAcquireExclusive()) return false;
  } else if (!TryAcquireShared()) {
    return false;
  }
  Entered(exclusive);
  return true;
}

Result CRWLock::Exit() {
  int previous = depth_.fetch_sub(1);
  if (mode_ == 0) {
    owner_.store(pthread_t{});
    return ReleaseShared();
  }
  if (previous == 1) {
    owner_.store(pthread_t{});
    return ReleaseExclusive();
  }
  return ResultOK();
}

}  // namespace Corvane::Mox
