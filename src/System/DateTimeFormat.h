#pragma once
// Calendar arithmetic and the ISO 8601 / RFC 1123 text forms shared by
// DateTime and DateTimeOffset. Ticks are 100-nanosecond units since
// 0001-01-01 00:00:00 of the proleptic Gregorian calendar.

namespace Corvane::Mox::DateTimeFormat {

constexpr long long TicksPerMillisecond = 10000;
constexpr long long TicksPerSecond = 10000000;
constexpr long long TicksPerMinute = 60 * TicksPerSecond;
constexpr long long TicksPerHour = 60 * TicksPerMinute;
constexpr long long TicksPerDay = 24 * TicksPerHour;
constexpr long long UnixEpochTicks = 621355968000000000LL;  // 1970-01-01
constexpr long long Epoch1904Ticks = 600527520000000000LL;  // 1904-01-01
constexpr long long Epoch1601Ticks = 504911232000000000LL;  // 1601-01-01, the file-time epoch

// The parts of a clock reading; fraction is the ticks within the second.
struct Fields {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
  long long fraction;
};

long long ToTicks(int year, int month, int day, int hour, int minute, int second);
Fields FromTicks(long long ticks);
// 0 for Sunday.
int DayOfWeek(long long ticks);
// value divided by divisor, rounded towards negative infinity.
long long FloorDivide(long long value, long long divisor);

// A parsed clock reading and what the text said about its zone.
struct Parsed {
  long long ticks;        // the clock reading as written
  bool hasZone;           // "Z" or an offset was given
  bool isUtc;             // the zone was "Z" (or "GMT" and the like), not a number
  long long offsetTicks;  // the offset from UTC ("Z" is 0)
};

// Extended ("2024-05-06T07:08:09.1234567+02:00") and basic
// ("20240506T070809.123Z") forms; the time, fraction and zone are optional.
bool ParseISO8601(const char* text, Parsed& parsed);
// "Mon, 06 May 2024 07:08:09 GMT"; the day name is optional and the zone may
// also be "UT", "UTC", "Z" or a numeric offset.
bool ParseRFC1123(const char* text, Parsed& parsed);

// The clock part "YYYY-MM-DDThh:mm:ss" or "YYYYMMDDThhmmss", with ".%07d"
// ticks (extended) or ".%03d" milliseconds (basic) when the fraction is not
// zero and wanted. Returns the end of the text written.
char* WriteClock(char* buffer, long long ticks, bool basic, bool noFraction);
// "+hh:mm" or "+hhmm"; the sign is "-" for negative offsets.
char* WriteOffset(char* buffer, long long offsetSeconds, bool basic);
// "Www, DD Mon YYYY hh:mm:ss GMT" of a UTC clock reading.
char* WriteRFC1123(char* buffer, long long utcTicks);

}  // namespace Corvane::Mox::DateTimeFormat
