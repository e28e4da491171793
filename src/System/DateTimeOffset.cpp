#include "System/DateTimeOffset.h"

#include <chrono>
#include <cmath>

#include "System/DateTimeFormat.h"
#include "System/Text.h"
#include "System/TimeZone.h"

namespace Corvane::Mox {

namespace Format = DateTimeFormat;

namespace {

long long LocalOffsetTicks() { return static_cast<long long>(TimeZone::GetUtcOffset()) * Format::TicksPerSecond; }

long long SystemClockTicks() {
  auto micros = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::system_clock::now().time_since_epoch());
  return micros.count() * 10 + Format::UnixEpochTicks;
}

}  // namespace

DateTimeOffset::DateTimeOffset() : ticks_(0), offset_(0) {}

DateTimeOffset::DateTimeOffset(int year, int month, int day, int hour, int minute, int second, int millisecond)
    : ticks_(Format::ToTicks(year, month, day, hour, minute, second) + millisecond * Format::TicksPerMillisecond),
      offset_(0) {}

DateTimeOffset::DateTimeOffset(long long ticks, long long offset) : ticks_(ticks), offset_(offset) {}

DateTimeOffset DateTimeOffset::Now() {
  long long offset = LocalOffsetTicks();
  return DateTimeOffset(SystemClockTicks() + offset, offset);
}

DateTimeOffset DateTimeOffset::UtcNow() { return DateTimeOffset(SystemClockTicks(), 0); }

DateTimeOffset DateTimeOffset::FromFileTime(long long fileTime) {
  long long offset = LocalOffsetTicks();
  return DateTimeOffset(fileTime + Format::Epoch1601Ticks + offset, offset);
}

DateTimeOffset DateTimeOffset::FromSecondsSince1970(double seconds) {
  auto ticks = static_cast<long long>(std::llround(seconds * static_cast<double>(Format::TicksPerSecond)));
  return DateTimeOffset(ticks + Format::UnixEpochTicks, 0);
}

Result DateTimeOffset::Parse(char format, const char* text) {
  return format == 'r' || format == 'R' ? ParseRFC1123(text) : ParseISO8601(text);
}

Result DateTimeOffset::Parse(char format, CString* text) {
  if (!text) return ResultArgumentNull();
  return Parse(format, text->GetChars());
}

Result DateTimeOffset::ParseISO8601(const char* text) {
  if (!text) return ResultArgumentNull();
  Format::Parsed parsed{};
  if (!Format::ParseISO8601(text, parsed)) return ResultFormatError("'%s' is not an ISO 8601 date and time", text);
  *this = DateTimeOffset(parsed.ticks, parsed.hasZone ? parsed.offsetTicks : LocalOffsetTicks());
  return ResultOK();
}

Result DateTimeOffset::ParseRFC1123(const char* text) {
  if (!text) return ResultArgumentNull();
  Format::Parsed parsed{};
  if (!Format::ParseRFC1123(text, parsed)) return ResultFormatError("'%s' is not an RFC 1123 date and time", text);
  *this = DateTimeOffset(parsed.ticks, parsed.offsetTicks);
  return ResultOK();
}

int DateTimeOffset::GetYear() const { return Format::FromTicks(ticks_).year; }
int DateTimeOffset::GetMonth() const { return Format::FromTicks(ticks_).month; }
int DateTimeOffset::GetDay() const { return Format::FromTicks(ticks_).day; }
int DateTimeOffset::GetHour() const { return Format::FromTicks(ticks_).hour; }
int DateTimeOffset::GetMinute() const { return Format::FromTicks(ticks_).minute; }
int DateTimeOffset::GetSecond() const { return Format::FromTicks(ticks_).second; }
int DateTimeOffset::GetMillisecond() const {
  return static_cast<int>(Format::FromTicks(ticks_).fraction / Format::TicksPerMillisecond);
}

long long DateTimeOffset::GetOffset() const { return offset_ / Format::TicksPerSecond; }

long long DateTimeOffset::GetSecondsSince1601() const {
  return Format::FloorDivide(UtcTicks() - Format::Epoch1601Ticks, Format::TicksPerSecond);
}

long long DateTimeOffset::GetSecondsSince1904() const {
  return Format::FloorDivide(UtcTicks() - Format::Epoch1904Ticks, Format::TicksPerSecond);
}

long long DateTimeOffset::GetSecondsSince1970() const {
  return Format::FloorDivide(UtcTicks() - Format::UnixEpochTicks, Format::TicksPerSecond);
}

long long DateTimeOffset::GetMillisecondsSince1970() const {
  return Format::FloorDivide(UtcTicks() - Format::UnixEpochTicks, Format::TicksPerMillisecond);
}

void DateTimeOffset::AddHours(int hours) { ticks_ += hours * Format::TicksPerHour; }
void DateTimeOffset::AddMinutes(int minutes) { ticks_ += minutes * Format::TicksPerMinute; }
void DateTimeOffset::AddSeconds(int seconds) { ticks_ += seconds * Format::TicksPerSecond; }

void DateTimeOffset::AddTicks(long long value, long long scale) {
  if (scale <= 0) throw ResultArgumentOutOfRange("DateTimeOffset::AddTicks: time scale %lld", scale);
  // 128-bit intermediate: value x 10^7 overflows 64 bits for long media times.
  __int128 scaled = static_cast<__int128>(value) * Format::TicksPerSecond / scale;
  ticks_ += static_cast<long long>(scaled);
}

int DateTimeOffset::FindDelta(int value, int target, int modulus) {
  int delta = value - target;
  if (delta > modulus / 2)
    delta -= modulus;
  else if (delta < -modulus / 2)
    delta += modulus;
  return delta;
}

void DateTimeOffset::AdjustToTime(int hour, int minute, int second, int millisecond) {
  ticks_ -= FindDelta(GetMillisecond(), millisecond, 1000) * Format::TicksPerMillisecond;
  ticks_ -= FindDelta(GetSecond(), second, 60) * Format::TicksPerSecond;
  ticks_ -= FindDelta(GetMinute(), minute, 60) * Format::TicksPerMinute;
  ticks_ -= FindDelta(GetHour(), hour, 24) * Format::TicksPerHour;
}

long long DateTimeOffset::ToFileTime() const { return UtcTicks() - Format::Epoch1601Ticks; }

DateTimeOffset DateTimeOffset::ToLocalTime() const {
  long long offset = LocalOffsetTicks();
  return DateTimeOffset(UtcTicks() + offset, offset);
}

DateTimeOffset DateTimeOffset::ToUniversalTime() const { return DateTimeOffset(UtcTicks(), 0); }

char* DateTimeOffset::ToString(char format, char* buffer) const {
  if (format == 'r' || format == 'R') return ToRFC1123String(buffer);
  return ToISO8601String(buffer, format == 's' ? Basic : Extended);
}

char* DateTimeOffset::ToISO8601String(char* buffer, int style) const {
  bool basic = (style & Basic) != 0;
  char* end = Format::WriteClock(buffer, ticks_, basic, (style & NoFraction) != 0);
  Format::WriteOffset(end, GetOffset(), basic);
  return buffer;
}

char* DateTimeOffset::ToRFC1123String(char* buffer) const {
  Format::WriteRFC1123(buffer, UtcTicks());
  return buffer;
}

}  // namespace Corvane::Mox
