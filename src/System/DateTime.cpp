#include "System/DateTime.h"

#include <chrono>

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

DateTime::DateTime() : ticks_(0), kind_(Unspecified) {}

DateTime::DateTime(long long ticks, Kind kind) : ticks_(ticks), kind_(kind) {}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, Kind kind)
    : ticks_(Format::ToTicks(year, month, day, hour, minute, second)), kind_(kind) {}

DateTime DateTime::Now() { return DateTime(SystemClockTicks() + LocalOffsetTicks(), Local); }

DateTime DateTime::UtcNow() { return DateTime(SystemClockTicks(), Utc); }

Result DateTime::Parse(char format, const char* text) {
  return format == 'r' || format == 'R' ? ParseRFC1123(text) : ParseISO8601(text);
}

Result DateTime::Parse(char format, CString* text) {
  if (!text) return ResultArgumentNull();
  return Parse(format, text->GetChars());
}

Result DateTime::ParseISO8601(const char* text) {
  if (!text) return ResultArgumentNull();
  Format::Parsed parsed{};
  if (!Format::ParseISO8601(text, parsed)) return ResultFormatError("'%s' is not an ISO 8601 date and time", text);
  if (!parsed.hasZone)
    *this = DateTime(parsed.ticks, Unspecified);
  else if (parsed.isUtc)
    *this = DateTime(parsed.ticks, Utc);
  else
    *this = DateTime(parsed.ticks - parsed.offsetTicks + LocalOffsetTicks(), Local);
  return ResultOK();
}

Result DateTime::ParseRFC1123(const char* text) {
  if (!text) return ResultArgumentNull();
  Format::Parsed parsed{};
  if (!Format::ParseRFC1123(text, parsed)) return ResultFormatError("'%s' is not an RFC 1123 date and time", text);
  *this = DateTime(parsed.ticks - parsed.offsetTicks, Utc);
  return ResultOK();
}

int DateTime::GetYear() const { return Format::FromTicks(ticks_).year; }
int DateTime::GetMonth() const { return Format::FromTicks(ticks_).month; }
int DateTime::GetDay() const { return Format::FromTicks(ticks_).day; }
int DateTime::GetHour() const { return Format::FromTicks(ticks_).hour; }
int DateTime::GetMinute() const { return Format::FromTicks(ticks_).minute; }
int DateTime::GetSecond() const { return Format::FromTicks(ticks_).second; }
int DateTime::GetMillisecond() const {
  return static_cast<int>(Format::FromTicks(ticks_).fraction / Format::TicksPerMillisecond);
}

long long DateTime::GetSecondsSince1904() const {
  return Format::FloorDivide(ticks_ - Format::Epoch1904Ticks, Format::TicksPerSecond);
}

long long DateTime::GetSecondsSince1970() const {
  return Format::FloorDivide(ticks_ - Format::UnixEpochTicks, Format::TicksPerSecond);
}

char* DateTime::ToString(char format, char* buffer) const {
  if (format == 'r' || format == 'R') return ToRFC1123String(buffer);
  return ToISO8601String(buffer, format == 's', false);
}

char* DateTime::ToISO8601String(char* buffer, bool basic, bool noFraction) const {
  char* end = Format::WriteClock(buffer, ticks_, basic, noFraction);
  if (kind_ == Utc) {
    *end++ = 'Z';
    *end = 0;
  } else if (kind_ == Local) {
    Format::WriteOffset(end, TimeZone::GetUtcOffset(), basic);
  }
  return buffer;
}

char* DateTime::ToRFC1123String(char* buffer) const {
  long long utc = kind_ == Local ? ticks_ - LocalOffsetTicks() : ticks_;
  Format::WriteRFC1123(buffer, utc);
  return buffer;
}

}  // namespace Corvane::Mox
