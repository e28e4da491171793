#include <gtest/gtest.h>

#include <pthread.h>
#include <sys/resource.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

#include "System/LeakCheckedTest.h"
#include "System/Threading/Stopwatch.h"
#include "System/Threading/Thread.h"
#include "System/Threading/ThreadFunctor.h"
#include "ThreadTestSupport.h"

using namespace Corvane::Mox;
using Corvane::Mox::Testing::Gate;

namespace {

class ThreadTest : public LeakCheckedTest {};

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

struct Work {
  int input = 0;
  int output = 0;
};

Result Doubler(void* argument) {
  auto* work = static_cast<Work*>(argument);
  work->output = work->input * 2;
  return ResultOK();
}

Result FailingBody(void*) { return ResultIOError("disk went away"); }

Result ThrowingBody(void*) {
  ResultArgumentOutOfRange("index %d", 7).ThrowIfFailed();
  return ResultOK();
}

// Blocks until the gate passed as argument opens.
Result GatedBody(void* argument) {
  return static_cast<Gate*>(argument)->WaitOpen() ? Result(ResultOK()) : Result(ResultTimeout());
}

std::string ThreadName() {
  char name[32] = {};
  pthread_getname_np(pthread_self(), name, sizeof name);
  return name;
}

}  // namespace

TEST_F(ThreadTest, RunsTheEntryWithItsArgumentAndJoins) {
  RObject<CThread> thread(new CThread(&Doubler));
  EXPECT_TRUE(thread->IsType(FourCC("thrd")));
  Work work;
  work.input = 21;
  ASSERT_TRUE(thread->Start(&work, 0).Succeeded());
  EXPECT_TRUE(thread->Join().Succeeded());
  EXPECT_EQ(work.output, 42);
  EXPECT_TRUE(thread->IsFinished());
  EXPECT_TRUE(thread->GetResult().Succeeded());
  // Joined: a second join has nothing to wait for.
  EXPECT_TRUE(thread->Join().Succeeded());
  EXPECT_TRUE(thread->Join(0).Succeeded());
}

TEST_F(ThreadTest, AnExplicitStackSizeIsUsed) {
  RObject<CThread> thread(new CThread(&Doubler));
  Work work;
  work.input = 5;
  ASSERT_TRUE(thread->Start(&work, 256 * 1024).Succeeded());
  ASSERT_TRUE(thread->Join().Succeeded());
  EXPECT_EQ(work.output, 10);
  // A size below the platform minimum is refused with the documented text.
  RObject<CThread> tiny(new CThread(&Doubler));
  Result refused = tiny->Start(&work, 16);
  ASSERT_TRUE(IsKind<ResultError>(refused));
  EXPECT_STREQ(refused.GetDetails(), "CThread::Start: Cannot set stack size.");
  EXPECT_TRUE(tiny->Join().Succeeded());  // nothing was started
}

TEST_F(ThreadTest, FailuresAreStoredNotThrown) {
  RObject<CThread> failing(new CThread(&FailingBody));
  ASSERT_TRUE(failing->Start(nullptr, 0).Succeeded());
  EXPECT_TRUE(failing->Join().Succeeded());
  Result stored = failing->GetResult();
  EXPECT_TRUE(IsKind<ResultIOError>(stored));
  EXPECT_STREQ(stored.GetDetails(), "disk went away");

  RObject<CThread> throwing(new CThread(&ThrowingBody));
  ASSERT_TRUE(throwing->Start(nullptr, 0).Succeeded());
  EXPECT_TRUE(throwing->Join().Succeeded());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(throwing->GetResult()));
}

TEST_F(ThreadTest, ThreadResultIsTheResultCode) {
  EXPECT_EQ(reinterpret_cast<std::intptr_t>(CThread::ConvertResultToThreadResult(ResultOK())), 0);
  Result failure = ResultIOError();
  EXPECT_EQ(reinterpret_cast<std::intptr_t>(CThread::ConvertResultToThreadResult(failure)),
            failure.GetResultCode());
  EXPECT_NE(failure.GetResultCode(), 0);
}

TEST_F(ThreadTest, StartNeedsAnEntryAndOneThreadAtATime) {
  RObject<CThread> empty(new CThread(nullptr));
  EXPECT_TRUE(IsKind<ResultNullPointer>(empty->Start(nullptr, 0)));

  Gate gate;
  RObject<CThread> thread(new CThread(&GatedBody));
  ASSERT_TRUE(thread->Start(&gate, 0).Succeeded());
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(thread->Start(&gate, 0)));
  gate.Open();
  ASSERT_TRUE(thread->Join().Succeeded());
  EXPECT_TRUE(thread->GetResult().Succeeded());

  // Once joined the object can run again, with a fresh result.
  RObject<CThread> again(new CThread(&FailingBody));
  ASSERT_TRUE(again->Start(nullptr, 0).Succeeded());
  ASSERT_TRUE(again->Join().Succeeded());
  EXPECT_TRUE(again->GetResult().Failed());
}

TEST_F(ThreadTest, RestartAfterJoinResetsTheResult) {
  struct Plan {
    bool fail = true;
    Gate gate;
  } plan;
  RObject<CThread> thread(new CThread([](void* argument) -> Result {
    auto* p = static_cast<Plan*>(argument);
    if (p->fail) return ResultIOError();
    return p->gate.WaitOpen() ? Result(ResultOK()) : Result(ResultTimeout());
  }));
  ASSERT_TRUE(thread->Start(&plan, 0).Succeeded());
  ASSERT_TRUE(thread->Join().Succeeded());
  ASSERT_TRUE(IsKind<ResultIOError>(thread->GetResult()));
  plan.fail = false;
  ASSERT_TRUE(thread->Start(&plan, 0).Succeeded());
  // The second run is still waiting: the old failure is already gone.
  EXPECT_FALSE(thread->IsFinished());
  EXPECT_TRUE(thread->GetResult().Succeeded());
  plan.gate.Open();
  ASSERT_TRUE(thread->Join().Succeeded());
  EXPECT_TRUE(thread->GetResult().Succeeded());
}

TEST_F(ThreadTest, TimedJoinGivesUpAndLeavesTheThreadJoinable) {
  Gate gate;
  RObject<CThread> thread(new CThread(&GatedBody));
  ASSERT_TRUE(thread->Start(&gate, 0).Succeeded());
  RObject<CStopwatch> watch(new CStopwatch());
  watch->Restart();
  Result timedOut = thread->Join(100);
  long long waited = watch->GetElapsedMilliseconds();
  EXPECT_TRUE(IsKind<ResultError>(timedOut));
  EXPECT_GE(waited, 100);
  EXPECT_LT(waited, 5000);
  EXPECT_FALSE(thread->IsFinished());
  gate.Open();
  EXPECT_TRUE(thread->Join(Corvane::Mox::Testing::SafetyTimeoutMs).Succeeded());
  EXPECT_TRUE(thread->IsFinished());
  EXPECT_TRUE(thread->GetResult().Succeeded());
}

TEST_F(ThreadTest, TheRunningThreadKeepsItsObjectAlive) {
  Gate started;
  Gate proceed;
  Gate destroyed;
  // The functor's captures die with the thread object; the guard reports it.
  struct Guard {
    Gate* gate;
    bool armed = true;
    explicit Guard(Gate* g) : gate(g) {}
    Guard(Guard&& other) noexcept : gate(other.gate) { other.armed = false; }
    ~Guard() {
      if (armed) gate->Open();
    }
  };
  std::atomic<bool> ran{false};
  int livingBefore = CLeaks::ShowLeaksSinceMark();
  auto* thread = new CThreadFunctor([&started, &proceed, &ran, guard = Guard(&destroyed)]() {
    started.Open();
    proceed.WaitOpen();
    (void)guard;
    ran = true;
  });
  ASSERT_TRUE(thread->Start().Succeeded());
  ASSERT_TRUE(started.WaitOpen());
  EXPECT_EQ(thread->GetReferences(), 2);  // the creator's and the running thread's
  thread->Release();                      // the creator lets go while the body runs
  EXPECT_FALSE(destroyed.IsOpen());
  proceed.Open();
  // The body ends, drops the last reference and the object goes away.
  EXPECT_TRUE(destroyed.WaitOpen());
  EXPECT_TRUE(ran.load());
  // The captures go first; the rest of the object follows on that thread.
  long long end = CStopwatch::Now() + Corvane::Mox::Testing::SafetyTimeoutMs * 1000000LL;
  while (CLeaks::ShowLeaksSinceMark() > livingBefore && CStopwatch::Now() < end) std::this_thread::yield();
  EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), livingBefore);
}

TEST_F(ThreadTest, FunctorsReturnResultsOrNothing) {
  int calls = 0;
  auto* plain = new CThreadFunctor([&] { ++calls; });
  RObject<CThread> plainHolder(plain);
  ASSERT_TRUE(plain->Start().Succeeded());
  ASSERT_TRUE(plainHolder->Join().Succeeded());
  EXPECT_TRUE(plainHolder->GetResult().Succeeded());
  auto* failing = new CThreadFunctor([&]() -> Result {
    ++calls;
    return ResultNotSupported("nope");
  });
  RObject<CThread> holder(failing);
  ASSERT_TRUE(failing->Start(0).Succeeded());
  ASSERT_TRUE(holder->Join().Succeeded());
  EXPECT_TRUE(IsKind<ResultNotSupported>(holder->GetResult()));
  EXPECT_EQ(calls, 2);
}

TEST_F(ThreadTest, SetNameNamesTheCallingThreadWithinThePlatformLimit) {
  std::string shortName, longName;
  Result shortResult, longResult, nullResult;
  auto* functor = new CThreadFunctor([&] {
    shortResult = CThread::SetName("mox-reader");
    shortName = ThreadName();
    longResult = CThread::SetName("mox-reader-output-12");
    longName = ThreadName();
    nullResult = CThread::SetName(nullptr);
  });
  RObject<CThread> thread(functor);
  std::string before = ThreadName();
  ASSERT_TRUE(functor->Start().Succeeded());
  ASSERT_TRUE(thread->Join().Succeeded());
  EXPECT_TRUE(shortResult.Succeeded());
  EXPECT_EQ(shortName, "mox-reader");
  EXPECT_TRUE(longResult.Succeeded());
  EXPECT_EQ(longName, "mox-reader-outp");  // the first 15 bytes
  EXPECT_TRUE(IsKind<ResultArgumentNull>(nullResult));
  EXPECT_EQ(ThreadName(), before);  // only the calling thread was renamed
}

TEST_F(ThreadTest, CurrentThreadIsThePlatformHandleOfTheCaller) {
  pthread_t inside{};
  auto* functor = new CThreadFunctor([&] { inside = CThread::GetCurrentThread(); });
  RObject<CThread> thread(functor);
  ASSERT_TRUE(functor->Start().Succeeded());
  ASSERT_TRUE(thread->Join().Succeeded());
  EXPECT_FALSE(pthread_equal(inside, CThread::GetCurrentThread()));
  EXPECT_TRUE(pthread_equal(pthread_self(), CThread::GetCurrentThread()));
}

TEST_F(ThreadTest, PrioritiesNeedARunningThread) {
  RObject<CThread> thread(new CThread(&GatedBody));
  CThread::Policy policy = CThread::Fifo;
  int priority = -1;
  EXPECT_TRUE(IsKind<ResultError>(thread->SetPriority(CThread::Other, 0)));
  EXPECT_TRUE(IsKind<ResultError>(thread->GetPriority(&policy, &priority)));
  Gate gate;
  ASSERT_TRUE(thread->Start(&gate, 0).Succeeded());
  ASSERT_TRUE(thread->GetPriority(&policy, &priority).Succeeded());
  EXPECT_EQ(policy, CThread::Other);  // threads inherit the default policy
  EXPECT_GE(priority, CThread::GetMinimumPriority(policy));
  EXPECT_LE(priority, CThread::GetMaximumPriority(policy));
  EXPECT_TRUE(thread->SetPriority(CThread::Other, 0).Succeeded());
  // A priority outside the policy's range is refused by the platform.
  EXPECT_TRUE(IsKind<ResultError>(thread->SetPriority(CThread::Other, 50)));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(thread->GetPriority(nullptr, &priority)));
  gate.Open();
  ASSERT_TRUE(thread->Join().Succeeded());
  EXPECT_TRUE(IsKind<ResultError>(thread->SetPriority(CThread::Other, 0)));  // joined
}

TEST_F(ThreadTest, PlatformFigures) {
  EXPECT_GE(CThread::GetHardwareConcurrency(), 1);
  EXPECT_LT(CThread::GetMinimumPriority(CThread::Fifo), CThread::GetMaximumPriority(CThread::Fifo));
  EXPECT_EQ(CThread::GetMinimumPriority(CThread::Other), 0);
  // Raising the niceness is always allowed; the next value is visible to the platform.
  int before = getpriority(PRIO_PROCESS, 0);
  int target = before < 19 ? before + 1 : 19;
  EXPECT_TRUE(CThread::SetProcessPriority(target).Succeeded());
  EXPECT_EQ(getpriority(PRIO_PROCESS, 0), target);
  CThread::SetProcessPriority(before);  // only a privileged process may go back
}

TEST_F(ThreadTest, SleepWaitsAtLeastTheGivenTime) {
  long long start = CStopwatch::Now();
  CThread::Sleep(20);
  EXPECT_GE(CStopwatch::Now() - start, 20LL * 1000000);
  start = CStopwatch::Now();
  CThread::Sleep(-5);  // nothing to wait for
  EXPECT_LT(CStopwatch::Now() - start, 1000LL * 1000000);
}

// Two threads join one running thread at once: both return success and
// only one of them joins the platform thread (joining twice is undefined
// behaviour and typically fails or crashes). Repeated, because the joiners
// must both be waiting when the thread finishes for the fault to show.
TEST_F(ThreadTest, ConcurrentJoinersBothSucceed) {
  for (int round = 0; round < 50; ++round) {
    Gate gate;
    RObject<CThread> thread(new CThread(&GatedBody));
    ASSERT_TRUE(thread->Start(&gate, 0).Succeeded());
    std::atomic<int> started{0};
    Result first, second;
    std::thread a([&] { ++started; first = thread->Join(); });
    std::thread b([&] { ++started; second = thread->Join(); });
    while (started.load() < 2) std::this_thread::yield();
    gate.Open();
    a.join();
    b.join();
    EXPECT_TRUE(first.Succeeded()) << "round " << round;
    EXPECT_TRUE(second.Succeeded()) << "round " << round;
    EXPECT_TRUE(thread->IsFinished());
  }
}
