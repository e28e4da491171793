#include "System/Threading/SharedExclusiveLock.h"

namespace Corvane::Mox {

namespace {

class MutexGuard {
 public:
  explicit MutexGuard(pthread_mutex_t& mutex) : mutex_(mutex) { pthread_mutex_lock(&mutex_); }
  ~MutexGuard() { pthread_mutex_unlock(&mutex_); }
  MutexGuard(const MutexGuard&) = delete;
  MutexGuard& operator=(const MutexGuard&) = delete;

 private:
  pthread_mutex_t& mutex_;
};

}  // namespace

CSharedExclusiveLock::CSharedExclusiveLock() : shared_(0), exclusiveDepth_(0), writer_() {
  pthread_mutex_init(&mutex_, nullptr);
  pthread_cond_init(&released_, nullptr);
}

CSharedExclusiveLock::~CSharedExclusiveLock() {
  pthread_cond_destroy(&released_);
  pthread_mutex_destroy(&mutex_);
}

bool CSharedExclusiveLock::TryEnterLocked(bool exclusive) {
  const bool ownWriter = exclusiveDepth_ > 0 && pthread_equal(writer_, pthread_self());
  if (ownWriter) {
    // The writer's thread nests; a shared entry inside counts as exclusive
    // so that Exit releases holds in reverse order of entry.
    ++exclusiveDepth_;
    return true;
  }
  if (exclusiveDepth_ > 0) return false;
  if (!exclusive) {
    ++shared_;
    return true;
  }
  if (shared_ > 0) return false;
  exclusiveDepth_ = 1;
  writer_ = pthread_self();
  return true;
}

Result CSharedExclusiveLock::Enter(bool exclusive) {
  MutexGuard guard(mutex_);
  while (!TryEnterLocked(exclusive)) {
    int rc = pthread_cond_wait(&released_, &mutex_);
    if (rc != 0) return ResultError("CSharedExclusiveLock::Enter: waiting failed (%d)", rc);
  }
  return ResultOK();
}

bool CSharedExclusiveLock::TryEnter(bool exclusive) {
  MutexGuard guard(mutex_);
  return TryEnterLocked(exclusive);
}

Result CSharedExclusiveLock::Exit() {
  MutexGuard guard(mutex_);
  if (exclusiveDepth_ > 0) {
    if (--exclusiveDepth_ == 0) {
      writer_ = pthread_t{};
      pthread_cond_broadcast(&released_);
    }
    return ResultOK();
  }
  if (shared_ == 0) return ResultInvalidOperation("CSharedExclusiveLock::Exit: the lock is not held");
  if (--shared_ == 0) pthread_cond_broadcast(&released_);
  return ResultOK();
}

bool CSharedExclusiveLock::IsHeldExclusive() const {
  MutexGuard guard(mutex_);
  return exclusiveDepth_ > 0;
}

int CSharedExclusiveLock::GetSharedCount() const {
  MutexGuard guard(mutex_);
  return shared_;
}

}  // namespace Corvane::Mox
