#include "System/DateTimeFormat.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>

namespace Corvane::Mox::DateTimeFormat {

namespace {

// Room each piece of text may use; the public buffers hold all pieces.
constexpr std::size_t ClockRoom = 40;
constexpr std::size_t OffsetRoom = 12;
constexpr std::size_t RfcRoom = 40;
// Days from 0001-01-01 to 1970-01-01.
constexpr long long UnixEpochDays = UnixEpochTicks / TicksPerDay;
constexpr int FractionDigits = 7;

const char* const DayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
const char* const MonthNames[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Days since 1970-01-01 of a proleptic Gregorian date (H. Hinnant's
// days_from_civil: years run from March so the leap day comes last).
long long DaysFromCivil(long long year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  long long era = FloorDivide(year, 400);
  long long yearOfEra = year - era * 400;
  long long dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  long long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

// The inverse of DaysFromCivil.
void CivilFromDays(long long days, Fields& fields) {
  days += 719468;
  long long era = FloorDivide(days, 146097);
  long long dayOfEra = days - era * 146097;
  long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  long long shiftedMonth = (5 * dayOfYear + 2) / 153;
  fields.day = static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
  fields.month = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
  fields.year = static_cast<int>(yearOfEra + era * 400 + (fields.month <= 2 ? 1 : 0));
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : days[month - 1];
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A cursor over the text being parsed.
class Scanner {
 public:
  explicit Scanner(const char* text) : p_(text) {}

  char Peek(int ahead = 0) const { return p_[ahead]; }
  bool Accept(char c) {
    if (*p_ != c) return false;
    ++p_;
    return true;
  }
  // Exactly count decimal digits.
  bool Digits(int count, int& value) {
    value = 0;
    for (int i = 0; i < count; ++i) {
      if (!IsDigit(p_[i])) return false;
      value = value * 10 + (p_[i] - '0');
    }
    p_ += count;
    return true;
  }
  // One to maxCount decimal digits.
  bool SomeDigits(int maxCount, int& value) {
    int n = 0;
    value = 0;
    while (n < maxCount && IsDigit(p_[n])) value = value * 10 + (p_[n++] - '0');
    p_ += n;
    return n > 0;
  }
  // A fraction of a second as ticks; digits beyond the seventh are ignored.
  long long Fraction() {
    long long ticks = 0;
    int n = 0;
    for (; IsDigit(*p_); ++p_, ++n) {
      if (n < FractionDigits) ticks = ticks * 10 + (*p_ - '0');
    }
    for (; n < FractionDigits; ++n) ticks *= 10;
    return ticks;
  }
  // One of the English three-letter names, case-insensitive; -1 when none.
  int Name(const char* const* names, int count) {
    for (int i = 0; i < count; ++i) {
      if (strncasecmp(p_, names[i], 3) == 0) {
        p_ += 3;
        return i;
      }
    }
    return -1;
  }
  void SkipSpaces() {
    while (*p_ == ' ' || *p_ == '\t' || *p_ == '\r' || *p_ == '\n') ++p_;
  }
  bool AtEnd() {
    SkipSpaces();
    return *p_ == 0;
  }

 private:
  const char* p_;
};

bool ValidDate(int year, int month, int day) {
  return year >= 1 && month >= 1 && month <= 12 && day >= 1 && day <= DaysInMonth(year, month);
}

bool ValidTime(int hour, int minute, int second) {
  return hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
}

bool ParseDate(Scanner& in, bool& extended, int& year, int& month, int& day) {
  if (!in.Digits(4, year)) return false;
  extended = in.Accept('-');
  if (!in.Digits(2, month)) return false;
  if (extended && !in.Accept('-')) return false;
  return in.Digits(2, day) && ValidDate(year, month, day);
}

// "Thh:mm[:ss[.f]]" or "Thhmm[ss[.f]]"; absent entirely is midnight.
bool ParseTime(Scanner& in, bool extended, long long& ticks) {
  ticks = 0;
  char separator = in.Peek();
  if (!((separator == 'T' || separator == 't' || separator == ' ') && IsDigit(in.Peek(1)))) return true;
  in.Accept(separator);
  int hour = 0, minute = 0, second = 0;
  if (!in.Digits(2, hour)) return false;
  if (extended && !in.Accept(':')) return false;
  if (!in.Digits(2, minute)) return false;
  bool hasSeconds = extended ? in.Accept(':') : IsDigit(in.Peek());
  if (hasSeconds && !in.Digits(2, second)) return false;
  if (!ValidTime(hour, minute, second)) return false;
  ticks = hour * TicksPerHour + minute * TicksPerMinute + second * TicksPerSecond;
  if ((in.Peek() == '.' || in.Peek() == ',') && IsDigit(in.Peek(1))) {
    in.Accept(in.Peek());
    ticks += in.Fraction();
  }
  return true;
}

// "Z", "+hh", "+hh:mm" or "+hhmm" (and "-"); absent leaves hasZone false.
bool ParseZone(Scanner& in, Parsed& parsed) {
  parsed.hasZone = false;
  parsed.isUtc = false;
  parsed.offsetTicks = 0;
  if (in.Accept('Z') || in.Accept('z')) {
    parsed.hasZone = parsed.isUtc = true;
    return true;
  }
  char sign = in.Peek();
  if (sign != '+' && sign != '-') return true;
  in.Accept(sign);
  int hours = 0, minutes = 0;
  if (!in.Digits(2, hours)) return false;
  in.Accept(':');
  if (IsDigit(in.Peek()) && !in.Digits(2, minutes)) return false;
  if (hours > 23 || minutes > 59) return false;
  parsed.hasZone = true;
  parsed.offsetTicks = (sign == '-' ? -1 : 1) * (hours * TicksPerHour + minutes * TicksPerMinute);
  return true;
}

// "GMT", "UT", "UTC", "Z" or "+hhmm"/"-hhmm".
bool ParseRfcZone(Scanner& in, Parsed& parsed) {
  in.SkipSpaces();
  parsed.hasZone = parsed.isUtc = true;
  parsed.offsetTicks = 0;
  if (in.Accept('G')) return in.Accept('M') && in.Accept('T');
  if (in.Accept('U')) {
    if (!in.Accept('T')) return false;
    in.Accept('C');
    return true;
  }
  if (in.Accept('Z')) return true;
  return ParseZone(in, parsed) && parsed.hasZone;
}

}  // namespace

long long FloorDivide(long long value, long long divisor) {
  long long quotient = value / divisor;
  if ((value % divisor != 0) && ((value < 0) != (divisor < 0))) --quotient;
  return quotient;
}

long long ToTicks(int year, int month, int day, int hour, int minute, int second) {
  long long days = DaysFromCivil(year, month, day) + UnixEpochDays;
  return days * TicksPerDay + hour * TicksPerHour + minute * TicksPerMinute + second * TicksPerSecond;
}

Fields FromTicks(long long ticks) {
  Fields fields{};
  long long days = FloorDivide(ticks, TicksPerDay);
  long long rest = ticks - days * TicksPerDay;
  CivilFromDays(days - UnixEpochDays, fields);
  fields.hour = static_cast<int>(rest / TicksPerHour);
  fields.minute = static_cast<int>(rest / TicksPerMinute % 60);
  fields.second = static_cast<int>(rest / TicksPerSecond % 60);
  fields.fraction = rest % TicksPerSecond;
  return fields;
}

int DayOfWeek(long long ticks) {
  // 0001-01-01 was a Monday.
  long long days = FloorDivide(ticks, TicksPerDay);
  return static_cast<int>((days % 7 + 7 + 1) % 7);
}

bool ParseISO8601(const char* text, Parsed& parsed) {
  if (!text) return false;
  Scanner in(text);
  in.SkipSpaces();
  bool extended = false;
  int year = 0, month = 0, day = 0;
  long long time = 0;
  if (!ParseDate(in, extended, year, month, day) || !ParseTime(in, extended, time)) return false;
  if (!ParseZone(in, parsed) || !in.AtEnd()) return false;
  parsed.ticks = ToTicks(year, month, day, 0, 0, 0) + time;
  return true;
}

bool ParseRFC1123(const char* text, Parsed& parsed) {
  if (!text) return false;
  Scanner in(text);
  in.SkipSpaces();
  if (in.Name(DayNames, 7) >= 0) {
    if (!in.Accept(',')) return false;
    in.SkipSpaces();
  }
  int day = 0, year = 0, hour = 0, minute = 0, second = 0;
  if (!in.SomeDigits(2, day)) return false;
  in.SkipSpaces();
  int month = in.Name(MonthNames, 12) + 1;
  in.SkipSpaces();
  if (month == 0 || !in.Digits(4, year)) return false;
  in.SkipSpaces();
  if (!in.Digits(2, hour) || !in.Accept(':') || !in.Digits(2, minute) || !in.Accept(':') || !in.Digits(2, second))
    return false;
  if (!ValidDate(year, month, day) || !ValidTime(hour, minute, second)) return false;
  if (!ParseRfcZone(in, parsed) || !in.AtEnd()) return false;
  parsed.ticks = ToTicks(year, month, day, hour, minute, second);
  return true;
}

char* WriteClock(char* buffer, long long ticks, bool basic, bool noFraction) {
  Fields f = FromTicks(ticks);
  const char* format = basic ? "%04d%02d%02dT%02d%02d%02d" : "%04d-%02d-%02dT%02d:%02d:%02d";
  int n = std::snprintf(buffer, ClockRoom, format, f.year, f.month, f.day, f.hour, f.minute, f.second);
  char* end = buffer + n;
  if (f.fraction != 0 && !noFraction) {
    if (basic)
      n = std::snprintf(end, ClockRoom, ".%03d", static_cast<int>(f.fraction / TicksPerMillisecond));
    else
      n = std::snprintf(end, ClockRoom, ".%07d", static_cast<int>(f.fraction));
    end += n;
  }
  return end;
}

char* WriteOffset(char* buffer, long long offsetSeconds, bool basic) {
  char sign = offsetSeconds >= 0 ? '+' : '-';
  long long magnitude = offsetSeconds >= 0 ? offsetSeconds : -offsetSeconds;
  int hours = static_cast<int>(magnitude / 3600);
  int minutes = static_cast<int>(magnitude % 3600 / 60);
  int n = std::snprintf(buffer, OffsetRoom, basic ? "%c%02d%02d" : "%c%02d:%02d", sign, hours, minutes);
  return buffer + n;
}

char* WriteRFC1123(char* buffer, long long utcTicks) {
  Fields f = FromTicks(utcTicks);
  int n = std::snprintf(buffer, RfcRoom, "%s, %02d %s %04d %02d:%02d:%02d GMT", DayNames[DayOfWeek(utcTicks)], f.day,
                        MonthNames[f.month - 1], f.year, f.hour, f.minute, f.second);
  return buffer + n;
}

}  // namespace Corvane::Mox::DateTimeFormat
