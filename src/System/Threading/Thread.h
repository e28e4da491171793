#pragma once
// CThread: the thread object every worker thread of the library runs on. The
// object owns at most one platform thread at a time; while that thread runs
// it holds a reference to the object, so a creator may release its own
// reference at once. Start, Join and the priority calls lock the object's
// monitor; the body signals completion through the same monitor, which is
// what lets a timed Join return on time while the thread is still busy.

#include <pthread.h>
#include <sched.h>

#include "System/Object.h"

namespace Corvane::Mox {

class CThread : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("thrd");

  using EntryFunction = Result (*)(void*);

  // The platform scheduling policy numbers.
  enum Policy : int {
    Other = SCHED_OTHER,
    Fifo = SCHED_FIFO,
    RoundRobin = SCHED_RR,
    Batch = SCHED_BATCH,
    Idle = SCHED_IDLE,
  };

  explicit CThread(EntryFunction entry);
  ~CThread() override;

  // Runs the entry function with argument on a new thread; a stackSize of 0
  // keeps the platform's default.
  Result Start(void* argument, int stackSize);
  // Waits until the thread has finished and joins it; ResultOK at once when
  // no thread exists. Several threads may join at once: one joins the
  // platform thread, the others return when it is done.
  Result Join();
  // As Join, but ResultError when the thread is still running after the
  // given time; it stays joinable.
  Result Join(int milliseconds);
  // The entry function's result (ResultOK until it has returned).
  Result GetResult() const;
  bool IsFinished() const;

  Result GetPriority(Policy* policy, int* priority) const;
  Result SetPriority(Policy policy, int priority);

  static void Sleep(int milliseconds);
  // Names the calling thread; the platform keeps the first 15 bytes.
  static Result SetName(const char* name);
  // The platform handle of the calling thread.
  static pthread_t GetCurrentThread();
  static int GetHardwareConcurrency();
  static int GetMinimumPriority(Policy policy);
  static int GetMaximumPriority(Policy policy);
  // Sets the scheduling niceness of the whole process.
  static Result SetProcessPriority(int priority);
  // The value a thread body hands to the platform for a result: its code.
  static void* ConvertResultToThreadResult(const Result& result);

  // The platform thread's start routine; thread is the CThread itself.
  static void* Execute(void* thread);

 private:
  // Runs the entry function, turning a thrown Result into the stored one.
  Result RunEntry();
  // Marks the thread finished and wakes every joiner.
  void Finish(const Result& result);
  Result CreatePlatformThread(int stackSize);
  // Joins the finished platform thread unless another joiner already has;
  // the monitor is held.
  Result JoinFinished();

  EntryFunction entry_;
  void* argument_;
  Result result_;
  pthread_t handle_;
  bool hasHandle_;
  bool finished_;
};

}  // namespace Corvane::Mox
