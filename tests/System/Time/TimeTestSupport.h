#pragma once
// Helpers of the time tests: a scoped local time zone given as a POSIX TZ
// rule (no zone database needed) and a timegm-based oracle.

#include <stdlib.h>
#include <time.h>

#include <optional>
#include <string>

namespace Corvane::Mox::Testing {

// Sets TZ for the scope and restores the previous setting afterwards. POSIX
// rules count west as positive: "XST-5:30" is UTC+05:30.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* rule) {
    if (const char* old = getenv("TZ")) previous_ = old;
    setenv("TZ", rule, 1);
    tzset();
  }
  ~ScopedTimeZone() {
    if (previous_)
      setenv("TZ", previous_->c_str(), 1);
    else
      unsetenv("TZ");
    tzset();
  }
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  std::optional<std::string> previous_;
};

// Seconds since 1970 of a UTC calendar reading, from the C library.
inline long long UnixSeconds(int year, int month, int day, int hour, int minute, int second) {
  struct tm fields {};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = hour;
  fields.tm_min = minute;
  fields.tm_sec = second;
  return static_cast<long long>(timegm(&fields));
}

}  // namespace Corvane::Mox::Testing
