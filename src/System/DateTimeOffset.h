#pragma once
// DateTimeOffset: a clock reading in ticks (100-nanosecond units since
// 0001-01-01) together with its offset from UTC, also in ticks. The UTC
// instant is ticks - offset. Calendar getters read the clock as written;
// the "seconds since" getters and the file time count the UTC instant.

#include "System/Result.h"

namespace Corvane::Mox {

class CString;

class DateTimeOffset {
 public:
  // Flags of ToISO8601String.
  enum ISO8601Style : int { Extended = 0, Basic = 1, NoFraction = 2 };

  static constexpr long long TicksPerSecond = 10000000;
  static constexpr long long Epoch1601Ticks = 504911232000000000LL;  // the file-time epoch
  // Bytes every text buffer passed to the ToString forms must hold.
  static constexpr int MaxStringLength = 64;

  // 0001-01-01 00:00:00 at offset 0.
  DateTimeOffset();
  // The clock reading at offset 0 (UTC).
  DateTimeOffset(int year, int month, int day, int hour, int minute, int second, int millisecond);
  DateTimeOffset(long long ticks, long long offset);

  // The local clock with the local offset.
  static DateTimeOffset Now();
  // The UTC clock at offset 0.
  static DateTimeOffset UtcNow();
  // A file time (100-nanosecond units since 1601-01-01 UTC) as local time.
  static DateTimeOffset FromFileTime(long long fileTime);
  // Seconds since 1970-01-01 UTC, at offset 0.
  static DateTimeOffset FromSecondsSince1970(double seconds);

  // "r" or "R" reads RFC 1123, every other format ISO 8601. The offset is
  // the one written ("Z" and "GMT" are 0); ISO 8601 text without a zone
  // takes the current local offset. A failure leaves the value unchanged.
  Result Parse(char format, const char* text);
  Result Parse(char format, CString* text);
  Result ParseISO8601(const char* text);
  Result ParseRFC1123(const char* text);

  int GetYear() const;
  int GetMonth() const;
  int GetDay() const;
  int GetHour() const;
  int GetMinute() const;
  int GetSecond() const;
  int GetMillisecond() const;
  long long GetTicks() const { return ticks_; }
  // The offset from UTC in seconds.
  long long GetOffset() const;
  long long GetOffsetTicks() const { return offset_; }
  long long GetSecondsSince1601() const;
  long long GetSecondsSince1904() const;
  long long GetSecondsSince1970() const;
  long long GetMillisecondsSince1970() const;

  // These move the instant (and the clock reading) in place.
  void AddHours(int hours);
  void AddMinutes(int minutes);
  void AddSeconds(int seconds);
  // Adds value units of a time scale of scale units per second (a scale of
  // 10,000,000 adds plain ticks); the result is truncated to whole ticks.
  // A scale that is not positive throws ResultArgumentOutOfRange.
  void AddTicks(long long value, long long scale);

  // value - target, wrapped into -modulus/2 .. modulus/2 by one modulus.
  static int FindDelta(int value, int target, int modulus);
  // Moves the instant by the smallest amount that makes the clock read the
  // given time of day: milliseconds first, then seconds, minutes and hours,
  // each step applied before the next is measured.
  void AdjustToTime(int hour, int minute, int second, int millisecond);

  long long ToFileTime() const;
  // The same instant at the current local offset, and at offset 0.
  DateTimeOffset ToLocalTime() const;
  DateTimeOffset ToUniversalTime() const;

  // "r"/"R" RFC 1123, "s" basic ISO 8601, anything else extended ISO 8601.
  // Each writes into buffer (MaxStringLength bytes) and returns it.
  char* ToString(char format, char* buffer) const;
  // style is a combination of ISO8601Style flags; the offset is always written.
  char* ToISO8601String(char* buffer, int style) const;
  char* ToRFC1123String(char* buffer) const;

  // Equal clock readings at equal offsets.
  bool operator==(const DateTimeOffset& other) const { return ticks_ == other.ticks_ && offset_ == other.offset_; }
  bool operator!=(const DateTimeOffset& other) const { return !(*this == other); }

 private:
  long long UtcTicks() const { return ticks_ - offset_; }

  long long ticks_;
  long long offset_;
};

}  // namespace Corvane::Mox
