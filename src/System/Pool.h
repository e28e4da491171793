#pragma once
// CPool<T>: hands out pooled objects, making new ones with New() while none is
// idle. Get blocks while a derived pool's New refuses to make more, until an
// object comes back. Get and Put are safe between threads.
//
// Idle objects wait on a free stack. The stack is guarded by a recursive
// mutex and condition of the pool's own rather than by the stack's object
// monitor: nothing outside the pool can reach the stack, so the two are
// indistinguishable to users, and every monitor operation builds and destroys
// a Result, which on this path costs more than the rest of a Get and Put.

#include <pthread.h>
#include <sched.h>
#include <time.h>

#include "System/Collections/Stack.h"
#include "System/PoolObject.h"

namespace Corvane::Mox {

template <class T>
class CPool : public CPoolBase {
 public:
  static constexpr int InitialCapacity = 30;

  CPool() : stack_(new CStack<T>(InitialCapacity)), created_(0), waiting_(0) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    // New() runs under the lock and may release objects of this very pool.
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&mutex_, &attributes);
    pthread_mutexattr_destroy(&attributes);
    pthread_cond_init(&returned_, nullptr);
  }
  ~CPool() override {
    stack_->Release();
    pthread_cond_destroy(&returned_);
    pthread_mutex_destroy(&mutex_);
  }

  // An idle object or a new one, acquired and bound to this pool.
  T* Get() {
    T* object = nullptr;
    {
      Guard guard(mutex_);
      while (!object) {
        if (!stack_->IsEmpty()) {
          object = stack_->Pop();  // a null entry is skipped
        } else if ((object = New())) {
          ++created_;
        } else {
          ++waiting_;
          pthread_cond_wait(&returned_, &mutex_);
          --waiting_;
        }
      }
    }
    // A Release that has just put this object back may still be inside its
    // reclaim hook, holding a temporary reference. Wait for it to finish: if
    // the caller released the object first, that Release would not reach zero
    // and the hook's closing step would free the object instead of keeping it.
    while (object->GetReferences() > 1) sched_yield();
    Pool(object);
    return object;
  }

  // As Get, but gives up and answers null when no object is idle, New makes
  // none and none comes back within the given milliseconds (0: no waiting).
  // Checking and taking happen under one lock, so an object seen idle cannot
  // be taken by another caller in between.
  T* Get(int milliseconds) {
    T* object = nullptr;
    {
      Guard guard(mutex_);
      timespec deadline = DeadlineAfter(milliseconds);
      while (!object) {
        if (!stack_->IsEmpty()) {
          object = stack_->Pop();
        } else if ((object = New())) {
          ++created_;
        } else {
          ++waiting_;
          int rc = pthread_cond_timedwait(&returned_, &mutex_, &deadline);
          --waiting_;
          if (rc != 0 && stack_->IsEmpty()) return nullptr;  // timed out (or failed) with nothing back
        }
      }
    }
    while (object->GetReferences() > 1) sched_yield();
    Pool(object);
    return object;
  }

  // Idle objects beyond this many are freed when they come back (0: no limit).
  void SetMaximumIdleCount(int count) {
    Guard guard(mutex_);
    maximumIdle_ = count;
  }

  // Takes an object back (acquiring it) and wakes blocked Get calls. An
  // object the pool does not keep (the idle limit is reached) is freed by
  // the release that handed it back.
  void Put(CPoolObject* object) override {
    Guard guard(mutex_);
    if (maximumIdle_ > 0 && stack_->GetCount() >= maximumIdle_) return;
    stack_->PushItem(static_cast<T*>(object));
    if (waiting_ > 0) pthread_cond_broadcast(&returned_);
  }

  T* New() override = 0;

  // Objects made by New over the pool's life.
  int GetCreatedCount() const {
    Guard guard(mutex_);
    return created_;
  }
  // Idle objects waiting in the pool.
  int GetAvailableCount() const {
    Guard guard(mutex_);
    return stack_->GetCount();
  }

 private:
  static timespec DeadlineAfter(int milliseconds) {
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    long long nanoseconds = deadline.tv_nsec + static_cast<long long>(milliseconds > 0 ? milliseconds : 0) * 1000000LL;
    deadline.tv_sec += static_cast<time_t>(nanoseconds / 1000000000LL);
    deadline.tv_nsec = static_cast<long>(nanoseconds % 1000000000LL);
    return deadline;
  }

  class Guard {
   public:
    explicit Guard(pthread_mutex_t& mutex) : mutex_(mutex) { pthread_mutex_lock(&mutex_); }
    ~Guard() { pthread_mutex_unlock(&mutex_); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

   private:
    pthread_mutex_t& mutex_;
  };

  CStack<T>* stack_;
  int created_;
  int waiting_;
  int maximumIdle_ = 0;
  mutable pthread_mutex_t mutex_;
  pthread_cond_t returned_;
};

}  // namespace Corvane::Mox
