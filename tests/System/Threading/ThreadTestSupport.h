#pragma once
// Helpers of the threading tests: a gate that one thread opens and others
// wait for, built on an object monitor. Waits are bounded only as a safety
// net, so a broken implementation fails a test instead of hanging the run.

#include "System/Threading/Monitor.h"

namespace Corvane::Mox::Testing {

// Generous enough never to matter on a loaded machine.
constexpr int SafetyTimeoutMs = 20000;

class Gate {
 public:
  Gate() : monitor_(new CMonitor()), open_(false) {}
  ~Gate() { monitor_->Release(); }
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;

  void Open() {
    CObject::CAutoLock lock(monitor_);
    open_ = true;
    monitor_->NotifyAll();
  }
  // True once the gate is open; false when the safety time-out passed first.
  bool WaitOpen() {
    CObject::CAutoLock lock(monitor_);
    for (int waited = 0; !open_ && waited < SafetyTimeoutMs; waited += 100) monitor_->Wait(100);
    return open_;
  }
  bool IsOpen() {
    CObject::CAutoLock lock(monitor_);
    return open_;
  }

 private:
  CMonitor* monitor_;
  bool open_;
};

}  // namespace Corvane::Mox::Testing
