#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>

#include "System/DateTime.h"
#include "System/DateTimeOffset.h"
#include "TimeTestSupport.h"

using namespace Corvane::Mox;
using Corvane::Mox::Testing::ScopedTimeZone;
using Corvane::Mox::Testing::UnixSeconds;

namespace {

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

constexpr long long TicksPerSecond = 10000000;
constexpr long long TicksPerHour = 3600 * TicksPerSecond;

std::string Iso(const DateTimeOffset& t, int style) {
  char buffer[DateTimeOffset::MaxStringLength];
  return t.ToISO8601String(buffer, style);
}

std::string Clock(const DateTimeOffset& t) {
  char buffer[80];
  std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d.%03d", t.GetYear(), t.GetMonth(), t.GetDay(),
                t.GetHour(), t.GetMinute(), t.GetSecond(), t.GetMillisecond());
  return buffer;
}

}  // namespace

TEST(DateTimeOffsetTest, FindDeltaWrapsToTheNearestDirection) {
  EXPECT_EQ(DateTimeOffset::FindDelta(59, 1, 60), -2);
  EXPECT_EQ(DateTimeOffset::FindDelta(1, 59, 60), 2);
  EXPECT_EQ(DateTimeOffset::FindDelta(30, 0, 60), 30);
  EXPECT_EQ(DateTimeOffset::FindDelta(31, 0, 60), -29);
  EXPECT_EQ(DateTimeOffset::FindDelta(0, 700, 1000), 300);
  EXPECT_EQ(DateTimeOffset::FindDelta(900, 100, 1000), -200);
  EXPECT_EQ(DateTimeOffset::FindDelta(5, 5, 24), 0);
}

TEST(DateTimeOffsetTest, AdjustToTimeMovesByTheSmallestAmount) {
  // Forward across a minute boundary.
  DateTimeOffset t(2024, 5, 6, 10, 0, 59, 900);
  long long before = t.GetTicks();
  t.AdjustToTime(10, 1, 0, 100);
  EXPECT_EQ(Clock(t), "2024-05-06 10:01:00.100");
  EXPECT_EQ(t.GetTicks() - before, 200 * 10000);
  // Forward across midnight.
  DateTimeOffset late(2024, 5, 6, 23, 59, 58, 0);
  late.AdjustToTime(0, 0, 1, 0);
  EXPECT_EQ(Clock(late), "2024-05-07 00:00:01.000");
  // Backward across midnight: 01:00 to 23:00 is two hours back, not 22 ahead.
  DateTimeOffset early(2024, 5, 6, 1, 0, 0, 0);
  early.AdjustToTime(23, 0, 0, 0);
  EXPECT_EQ(Clock(early), "2024-05-05 23:00:00.000");
  // Already there: nothing moves.
  DateTimeOffset same(2024, 5, 6, 12, 34, 56, 789);
  long long ticks = same.GetTicks();
  same.AdjustToTime(12, 34, 56, 789);
  EXPECT_EQ(same.GetTicks(), ticks);
}

TEST(DateTimeOffsetTest, UtcInstantCountsFromTheEpochs) {
  DateTimeOffset unix(1970, 1, 1, 0, 0, 0, 0);
  EXPECT_EQ(unix.GetTicks(), 621355968000000000LL);
  EXPECT_EQ(unix.GetOffsetTicks(), 0);
  EXPECT_EQ(unix.GetSecondsSince1904(), 2082844800LL);
  EXPECT_EQ(unix.GetSecondsSince1601(), 11644473600LL);
  // 12:00 at +02:00 is 10:00 UTC.
  long long clock = DateTime(2024, 5, 6, 12, 0, 0, DateTime::Unspecified).GetTicks() + 250 * 10000;
  DateTimeOffset east(clock, 2 * TicksPerHour);
  EXPECT_EQ(east.GetHour(), 12);
  EXPECT_EQ(east.GetOffset(), 7200);
  EXPECT_EQ(east.GetSecondsSince1970(), UnixSeconds(2024, 5, 6, 10, 0, 0));
  EXPECT_EQ(east.GetMillisecondsSince1970(), UnixSeconds(2024, 5, 6, 10, 0, 0) * 1000 + 250);
  DateTimeOffset utc = east.ToUniversalTime();
  EXPECT_EQ(utc.GetHour(), 10);
  EXPECT_EQ(utc.GetOffsetTicks(), 0);
  EXPECT_EQ(utc.GetMillisecondsSince1970(), east.GetMillisecondsSince1970());
}

TEST(DateTimeOffsetTest, FileTimesAreUtcAndReadAsLocal) {
  ScopedTimeZone zone("XST-5:30");
  DateTimeOffset start = DateTimeOffset::FromFileTime(0);
  EXPECT_EQ(Clock(start), "1601-01-01 05:30:00.000");
  EXPECT_EQ(start.GetOffset(), 19800);
  EXPECT_EQ(start.GetSecondsSince1601(), 0);
  EXPECT_EQ(start.ToFileTime(), 0);
  // 2024-05-06 10:00:00 UTC as a file time, round trip.
  long long fileTime = (UnixSeconds(2024, 5, 6, 10, 0, 0) + 11644473600LL) * TicksPerSecond + 1234;
  DateTimeOffset t = DateTimeOffset::FromFileTime(fileTime);
  EXPECT_EQ(t.GetHour(), 15);
  EXPECT_EQ(t.GetMinute(), 30);
  EXPECT_EQ(t.ToFileTime(), fileTime);
  DateTimeOffset local = DateTimeOffset(t.GetTicks() - t.GetOffsetTicks(), 0).ToLocalTime();
  EXPECT_EQ(local, t);
}

TEST(DateTimeOffsetTest, SecondsSince1970AreUtc) {
  DateTimeOffset t = DateTimeOffset::FromSecondsSince1970(1.5);
  EXPECT_EQ(t.GetOffsetTicks(), 0);
  EXPECT_EQ(t.GetMillisecondsSince1970(), 1500);
  EXPECT_EQ(Clock(t), "1970-01-01 00:00:01.500");
  EXPECT_EQ(DateTimeOffset::FromSecondsSince1970(1715000000.0).GetSecondsSince1970(), 1715000000LL);
}

TEST(DateTimeOffsetTest, AddingMovesTheClock) {
  DateTimeOffset t(2024, 12, 31, 23, 0, 0, 0);
  t.AddHours(1);
  EXPECT_EQ(Clock(t), "2025-01-01 00:00:00.000");
  t.AddMinutes(-90);
  EXPECT_EQ(Clock(t), "2024-12-31 22:30:00.000");
  t.AddSeconds(45);
  EXPECT_EQ(Clock(t), "2024-12-31 22:30:45.000");
  // Three units of a 90 kHz clock are 333 ticks (truncated).
  long long ticks = t.GetTicks();
  t.AddTicks(3, 90000);
  EXPECT_EQ(t.GetTicks() - ticks, 333);
  t.AddTicks(-3, 90000);
  EXPECT_EQ(t.GetTicks(), ticks);
  // A century of 90 kHz units does not overflow on the way.
  long long century = 100LL * 365 * 86400 * 90000;
  t.AddTicks(century, 90000);
  EXPECT_EQ(t.GetTicks() - ticks, 100LL * 365 * 86400 * TicksPerSecond);
  EXPECT_THROW(t.AddTicks(1, 0), Result);
}

TEST(DateTimeOffsetTest, TextFormsWriteTheStoredOffset) {
  long long clock = DateTime(2024, 5, 6, 7, 8, 9, DateTime::Unspecified).GetTicks() + 1234567;
  DateTimeOffset east(clock, (5 * 3600 + 30 * 60) * TicksPerSecond);
  EXPECT_EQ(Iso(east, DateTimeOffset::Extended), "2024-05-06T07:08:09.1234567+05:30");
  EXPECT_EQ(Iso(east, DateTimeOffset::Basic), "20240506T070809.123+0530");
  EXPECT_EQ(Iso(east, DateTimeOffset::Basic | DateTimeOffset::NoFraction), "20240506T070809+0530");
  DateTimeOffset west(clock, -3 * TicksPerHour);
  EXPECT_EQ(Iso(west, DateTimeOffset::NoFraction), "2024-05-06T07:08:09-03:00");
  EXPECT_EQ(Iso(DateTimeOffset(clock, 0), DateTimeOffset::NoFraction), "2024-05-06T07:08:09+00:00");
  char buffer[DateTimeOffset::MaxStringLength];
  // RFC 1123 names the UTC instant: 07:08:09 at +05:30 is 01:38:09 GMT.
  EXPECT_STREQ(east.ToRFC1123String(buffer), "Mon, 06 May 2024 01:38:09 GMT");
  EXPECT_STREQ(east.ToString('s', buffer), "20240506T070809.123+0530");
  EXPECT_STREQ(east.ToString('o', buffer), "2024-05-06T07:08:09.1234567+05:30");
}

TEST(DateTimeOffsetTest, ParsingKeepsTheWrittenOffset) {
  DateTimeOffset t;
  ASSERT_TRUE(t.ParseISO8601("2024-05-06T07:08:09.5-03:00").Succeeded());
  EXPECT_EQ(Clock(t), "2024-05-06 07:08:09.500");
  EXPECT_EQ(t.GetOffset(), -10800);
  ASSERT_TRUE(t.Parse('o', "20240506T070809Z").Succeeded());
  EXPECT_EQ(t.GetOffset(), 0);
  ASSERT_TRUE(t.Parse('r', "Mon, 06 May 2024 01:38:09 GMT").Succeeded());
  EXPECT_EQ(Clock(t), "2024-05-06 01:38:09.000");
  EXPECT_EQ(t.GetOffset(), 0);
  {
    ScopedTimeZone zone("YST3");
    ASSERT_TRUE(t.ParseISO8601("2024-05-06T07:08:09").Succeeded());
    EXPECT_EQ(t.GetOffset(), -10800);  // no zone written: the local one
  }
  // Round trip of every form.
  DateTimeOffset original(DateTime(1999, 12, 31, 23, 59, 59, DateTime::Unspecified).GetTicks() + 9876543,
                          -(9 * 3600 + 30 * 60) * TicksPerSecond);
  DateTimeOffset back;
  ASSERT_TRUE(back.ParseISO8601(Iso(original, DateTimeOffset::Extended).c_str()).Succeeded());
  EXPECT_EQ(back, original);
  DateTimeOffset bad = original;
  EXPECT_TRUE(IsKind<ResultFormatError>(bad.ParseISO8601("1999-12-31T25:00:00Z")));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(bad.ParseRFC1123(nullptr)));
  EXPECT_EQ(bad, original);
}

TEST(DateTimeOffsetTest, ClocksReadTheSystemTime) {
  ScopedTimeZone zone("XST-5:30");
  // The precise system clock: time() reads a coarse copy of it that can lag
  // a few milliseconds behind, across a second's boundary.
  auto seconds = [] {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
  };
  long long before = seconds();
  DateTimeOffset utc = DateTimeOffset::UtcNow();
  DateTimeOffset local = DateTimeOffset::Now();
  long long after = seconds();
  EXPECT_EQ(utc.GetOffsetTicks(), 0);
  EXPECT_EQ(local.GetOffset(), 19800);
  EXPECT_GE(utc.GetSecondsSince1970(), before);
  EXPECT_LE(local.GetSecondsSince1970(), after);
  long long clockShift = (local.GetTicks() - utc.GetTicks()) / TicksPerSecond;
  EXPECT_GE(clockShift, 19800 - 1);
  EXPECT_LE(clockShift, 19800 + 1);
}
