#pragma once
// DateTime: a point in time as ticks (100-nanosecond units since 0001-01-01
// 00:00:00) and a kind that says whether the clock reading is UTC, local or
// unspecified. The calendar getters read the ticks as they are; the kind
// only matters to the text forms, which name the zone.

#include "System/Result.h"

namespace Corvane::Mox {

class CString;

class DateTime {
 public:
  enum Kind : int { Unspecified = 0, Utc = 1, Local = 2 };

  static constexpr long long TicksPerSecond = 10000000;
  static constexpr long long UnixEpochTicks = 621355968000000000LL;  // 1970-01-01
  static constexpr long long Epoch1904Ticks = 600527520000000000LL;  // 1904-01-01
  // Bytes every text buffer passed to the ToString forms must hold.
  static constexpr int MaxStringLength = 64;

  // 0001-01-01 00:00:00, unspecified.
  DateTime();
  DateTime(long long ticks, Kind kind);
  // The fields as a UTC clock reading, keeping the given kind.
  DateTime(int year, int month, int day, int hour, int minute, int second, Kind kind);

  // The local clock, kind local.
  static DateTime Now();
  // The UTC clock, kind UTC.
  static DateTime UtcNow();

  // "r" or "R" reads RFC 1123, every other format ISO 8601. On success the
  // value is replaced; a failure (ResultFormatError, ResultArgumentNull for a
  // null text) leaves it as it was.
  Result Parse(char format, const char* text);
  Result Parse(char format, CString* text);
  // "Z" gives a UTC time, an offset a local time (converted from the given
  // offset to the current local one), no zone an unspecified time.
  Result ParseISO8601(const char* text);
  // Always a UTC time.
  Result ParseRFC1123(const char* text);

  long long GetTicks() const { return ticks_; }
  Kind GetKind() const { return kind_; }
  int GetYear() const;
  int GetMonth() const;
  int GetDay() const;
  int GetHour() const;
  int GetMinute() const;
  int GetSecond() const;
  int GetMillisecond() const;
  long long GetSecondsSince1904() const;
  long long GetSecondsSince1970() const;

  // "r"/"R" RFC 1123, "s" basic ISO 8601, anything else extended ISO 8601.
  // Each writes into buffer (MaxStringLength bytes) and returns it.
  char* ToString(char format, char* buffer) const;
  char* ToISO8601String(char* buffer, bool basic, bool noFraction) const;
  char* ToRFC1123String(char* buffer) const;

  bool operator==(const DateTime& other) const { return ticks_ == other.ticks_ && kind_ == other.kind_; }
  bool operator!=(const DateTime& other) const { return !(*this == other); }

 private:
  long long ticks_;
  Kind kind_;
};

}  // namespace Corvane::Mox
