#pragma once
// TimeZone: the local time zone of the process, as the platform reports it.

namespace Corvane::Mox {

class TimeZone {
 public:
  // The local offset from UTC in seconds for the current instant, daylight
  // saving included (east of Greenwich is positive).
  static int GetUtcOffset();
};

}  // namespace Corvane::Mox
