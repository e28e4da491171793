#pragma once
// CStopwatch: measures elapsed time on the steady clock, in nanoseconds
// internally. A stopped watch keeps what it has measured; Start resumes it.
// Every operation runs under the watch's monitor, so one watch can be read
// by one thread while another restarts it.

#include "System/Object.h"

namespace Corvane::Mox {

class CStopwatch : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("stpw");

  // Stopped, with nothing measured.
  CStopwatch();

  // Resumes a stopped watch, keeping the time already measured; nothing
  // happens while it runs.
  void Start();
  // Stops the watch and clears what it measured.
  void Reset();
  // Clears what it measured and starts again.
  void Restart();
  // Stops the watch, keeping what it measured.
  void Stop();
  bool IsRunning() const;
  long long GetElapsedMilliseconds() const;

  // The steady clock in nanoseconds.
  static long long Now();

 private:
  long long start_;
  long long stop_;
  bool running_;
};

}  // namespace Corvane::Mox
