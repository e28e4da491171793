#include "System/Threading/Stopwatch.h"

#include <chrono>

namespace Corvane::Mox {

namespace {
constexpr long long NanosecondsPerMillisecond = 1000000;
}  // namespace

CStopwatch::CStopwatch() : CObject(TypeCode), start_(Now()), stop_(start_), running_(false) {}

long long CStopwatch::Now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

void CStopwatch::Start() {
  CAutoLock lock(this);
  if (running_) return;
  long long now = Now();
  start_ = now - (stop_ - start_);
  stop_ = now;
  running_ = true;
}

void CStopwatch::Reset() {
  CAutoLock lock(this);
  start_ = stop_ = Now();
  running_ = false;
}

void CStopwatch::Restart() {
  CAutoLock lock(this);
  start_ = stop_ = Now();
  running_ = true;
}

void CStopwatch::Stop() {
  CAutoLock lock(this);
  if (!running_) return;
  stop_ = Now();
  running_ = false;
}

bool CStopwatch::IsRunning() const {
  CAutoLock lock(this);
  return running_;
}

long long CStopwatch::GetElapsedMilliseconds() const {
  CAutoLock lock(this);
  long long end = running_ ? Now() : stop_;
  return (end - start_) / NanosecondsPerMillisecond;
}

}  // namespace Corvane::Mox
