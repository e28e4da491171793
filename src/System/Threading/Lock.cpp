#include "System/Threading/Lock.h"

#include <sys/time.h>

#include <cerrno>
#include <mutex>

#include "System/Console.h"

namespace Corvane::Mox {

namespace {
pthread_mutexattr_t g_recursiveAttribute;
std::once_flag g_attributeOnce;
}  // namespace

void CLock::Initialize() {
  std::call_once(g_attributeOnce, [] {
    pthread_mutexattr_init(&g_recursiveAttribute);
    pthread_mutexattr_settype(&g_recursiveAttribute, PTHREAD_MUTEX_RECURSIVE);
  });
}

CLock::CLock() {
  Initialize();
  pthread_mutex_init(&mutex_, &g_recursiveAttribute);
  pthread_cond_init(&condition_, nullptr);
}

CLock::~CLock() {
  pthread_mutex_destroy(&mutex_);
  pthread_cond_destroy(&condition_);
}

Result CLock::Enter() { return LockResults::FromLock(pthread_mutex_lock(&mutex_)); }

bool CLock::TryEnter() { return pthread_mutex_trylock(&mutex_) != 0; }

Result CLock::Exit() { return LockResults::FromUnlock(pthread_mutex_unlock(&mutex_)); }

Result CLock::Notify() { return LockResults::FromSignal(pthread_cond_signal(&condition_)); }

Result CLock::NotifyAll() { return LockResults::FromSignal(pthread_cond_broadcast(&condition_)); }

bool CLock::Wait() {
  int rc = pthread_cond_wait(&condition_, &mutex_);
  switch (rc) {
    case 0:
      return true;
    case EINVAL:
      MOX_LOG(1, "pthread_cond_wait returned EINVAL(%d)", rc);
      return false;
    case EPERM:
      // The historical text names the timed wait here too; log readers match on it.
      MOX_LOG(1, "pthread_cond_timedwait returned EPERM(%d)", rc);
      return false;
    default:
      MOX_LOG(1, "pthread_cond_wait returned %d", rc);
      return false;
  }
}

bool CLock::Wait(int milliseconds) {
  struct timeval now {};
  if (gettimeofday(&now, nullptr) != 0) MOX_LOG(1, "gettimeofday error %d", errno);
  long long micros = static_cast<long long>(now.tv_sec) * 1000000 + now.tv_usec +
                     static_cast<long long>(milliseconds) * 1000;
  struct timespec deadline {};
  deadline.tv_sec = static_cast<time_t>(micros / 1000000);
  deadline.tv_nsec = static_cast<long>((micros % 1000000) * 1000);
  if (deadline.tv_nsec < 0) {
    deadline.tv_nsec += 1000000000L;
    deadline.tv_sec -= 1;
  }
  int rc = pthread_cond_timedwait(&condition_, &mutex_, &deadline);
  switch (rc) {
    case 0:
      return true;
    case ETIMEDOUT:
      return false;
    case EPERM:
      MOX_LOG(1, "pthread_cond_timedwait returned EPERM(%d)", rc);
      return false;
    case EINVAL:
      MOX_LOG(1, "pthread_cond_timedwait returned EINVAL(%d)", rc);
      return false;
    default:
      MOX_LOG(1, "pthread_cond_timedwait returned %d", rc);
      return false;
  }
}

namespace LockResults {

Result FromLock(int code) {
  switch (code) {
    case 0:
      return ResultOK();
    case EDEADLK:
      return ResultExternalError(code, "EDEADLK(%d)", code);
    case EINVAL:
      return ResultExternalError(code, "EINVAL(%d)", code);
    default:
      return ResultExternalError(code, "%d", code);
  }
}

Result FromUnlock(int code) {
  // Unlocking a lock the thread does not own (EPERM) is deliberately tolerated.
  switch (code) {
    case 0:
    case EPERM:
      return ResultOK();
    case EINVAL:
      return ResultExternalError(code, "EINVAL(%d)", code);
    default:
      return ResultExternalError(code, "%d", code);
  }
}

Result FromSignal(int code) {
  switch (code) {
    case 0:
      return ResultOK();
    case EINVAL:
      return ResultExternalError(code, "EINVAL(%d)", code);
    default:
      return ResultExternalError(code, "%d", code);
  }
}

}  // namespace LockResults
}  // namespace Corvane::Mox
