#include <gtest/gtest.h>

#include "System/LeakCheckedTest.h"
#include "System/Threading/Stopwatch.h"

using namespace Corvane::Mox;

namespace {

class StopwatchTest : public LeakCheckedTest {};

// Lets at least the given time pass on the steady clock.
void Spin(long long milliseconds) {
  long long end = CStopwatch::Now() + milliseconds * 1000000;
  while (CStopwatch::Now() < end) {
  }
}

}  // namespace

TEST_F(StopwatchTest, NowIsSteadyNanoseconds) {
  long long a = CStopwatch::Now();
  Spin(2);
  long long b = CStopwatch::Now();
  EXPECT_GE(b - a, 2000000);
  EXPECT_LT(b - a, 2000000000);
}

TEST_F(StopwatchTest, AFreshWatchMeasuresNothing) {
  RObject<CStopwatch> watch(new CStopwatch());
  EXPECT_FALSE(watch->IsRunning());
  Spin(3);
  EXPECT_EQ(watch->GetElapsedMilliseconds(), 0);
}

TEST_F(StopwatchTest, RestartMeasuresFromNow) {
  RObject<CStopwatch> watch(new CStopwatch());
  watch->Restart();
  EXPECT_TRUE(watch->IsRunning());
  // Long enough that a preempted test thread cannot make the restarted watch
  // catch up with it.
  Spin(60);
  long long first = watch->GetElapsedMilliseconds();
  EXPECT_GE(first, 60);
  watch->Restart();
  EXPECT_LT(watch->GetElapsedMilliseconds(), first);
}

TEST_F(StopwatchTest, StartResumesKeepingTheMeasuredTime) {
  RObject<CStopwatch> watch(new CStopwatch());
  watch->Start();
  Spin(4);
  watch->Stop();
  long long stopped = watch->GetElapsedMilliseconds();
  EXPECT_GE(stopped, 4);
  Spin(4);
  EXPECT_EQ(watch->GetElapsedMilliseconds(), stopped);  // a stopped watch keeps its time
  watch->Start();
  Spin(3);
  long long resumed = watch->GetElapsedMilliseconds();
  EXPECT_GE(resumed, stopped + 3);
  EXPECT_LT(resumed, stopped + 4 + 1000);  // the stopped interval did not count
  // Start while running changes nothing.
  watch->Start();
  EXPECT_GE(watch->GetElapsedMilliseconds(), resumed);
}

TEST_F(StopwatchTest, ResetStopsAndClears) {
  RObject<CStopwatch> watch(new CStopwatch());
  watch->Restart();
  Spin(3);
  watch->Reset();
  EXPECT_FALSE(watch->IsRunning());
  EXPECT_EQ(watch->GetElapsedMilliseconds(), 0);
  Spin(2);
  EXPECT_EQ(watch->GetElapsedMilliseconds(), 0);
}
