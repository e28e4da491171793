#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "System/DateTime.h"
#include "System/Text.h"
#include "System/TimeZone.h"
#include "TimeTestSupport.h"

using namespace Corvane::Mox;
using Corvane::Mox::Testing::ScopedTimeZone;
using Corvane::Mox::Testing::UnixSeconds;

namespace {

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

std::string Iso(const DateTime& t, bool basic, bool noFraction) {
  char buffer[DateTime::MaxStringLength];
  return t.ToISO8601String(buffer, basic, noFraction);
}

std::string Format(const DateTime& t, char format) {
  char buffer[DateTime::MaxStringLength];
  return t.ToString(format, buffer);
}

constexpr long long TicksPerSecond = 10000000;

}  // namespace

TEST(DateTimeTest, EpochsHaveTheirKnownTickCounts) {
  DateTime unix(1970, 1, 1, 0, 0, 0, DateTime::Utc);
  EXPECT_EQ(unix.GetTicks(), 621355968000000000LL);
  EXPECT_EQ(unix.GetSecondsSince1904(), 2082844800LL);
  EXPECT_EQ(unix.GetSecondsSince1970(), 0);
  EXPECT_EQ(unix.GetKind(), DateTime::Utc);
  EXPECT_EQ(DateTime(1904, 1, 1, 0, 0, 0, DateTime::Utc).GetTicks(), 600527520000000000LL);
  EXPECT_EQ(DateTime(1, 1, 1, 0, 0, 0, DateTime::Unspecified).GetTicks(), 0);
  EXPECT_EQ(DateTime().GetTicks(), 0);
  EXPECT_EQ(DateTime().GetKind(), DateTime::Unspecified);
}

TEST(DateTimeTest, CalendarAgreesWithTheCLibrary) {
  // Dates around leap days, century years and the ends of months.
  const int dates[][6] = {{1904, 2, 29, 12, 0, 0},  {1900, 3, 1, 0, 0, 1},   {1999, 12, 31, 23, 59, 59},
                          {2000, 2, 29, 6, 30, 15}, {2000, 3, 1, 0, 0, 0},   {2024, 2, 29, 1, 2, 3},
                          {2038, 1, 19, 3, 14, 8},  {2100, 2, 28, 22, 0, 0}, {1601, 1, 1, 0, 0, 0},
                          {1969, 12, 31, 23, 59, 59}};
  for (const auto& d : dates) {
    DateTime t(d[0], d[1], d[2], d[3], d[4], d[5], DateTime::Utc);
    SCOPED_TRACE(Iso(t, false, false));
    EXPECT_EQ(t.GetSecondsSince1970(), UnixSeconds(d[0], d[1], d[2], d[3], d[4], d[5]));
    EXPECT_EQ(t.GetYear(), d[0]);
    EXPECT_EQ(t.GetMonth(), d[1]);
    EXPECT_EQ(t.GetDay(), d[2]);
    EXPECT_EQ(t.GetHour(), d[3]);
    EXPECT_EQ(t.GetMinute(), d[4]);
    EXPECT_EQ(t.GetSecond(), d[5]);
  }
  // Every day of four years, against the C library's calendar.
  for (long long day = 0; day < 4 * 366; ++day) {
    time_t seconds = static_cast<time_t>(UnixSeconds(1999, 1, 1, 0, 0, 0) + day * 86400);
    struct tm fields {};
    gmtime_r(&seconds, &fields);
    DateTime t(DateTime::UnixEpochTicks + static_cast<long long>(seconds) * TicksPerSecond, DateTime::Utc);
    ASSERT_EQ(t.GetYear(), fields.tm_year + 1900);
    ASSERT_EQ(t.GetMonth(), fields.tm_mon + 1);
    ASSERT_EQ(t.GetDay(), fields.tm_mday);
  }
}

TEST(DateTimeTest, ExtendedAndBasicISO8601Forms) {
  DateTime t(DateTime(2024, 5, 6, 7, 8, 9, DateTime::Utc).GetTicks() + 1234567, DateTime::Utc);
  EXPECT_EQ(Iso(t, false, false), "2024-05-06T07:08:09.1234567Z");
  EXPECT_EQ(Iso(t, true, false), "20240506T070809.123Z");
  EXPECT_EQ(Iso(t, false, true), "2024-05-06T07:08:09Z");
  EXPECT_EQ(t.GetMillisecond(), 123);
  // Whole seconds have no fraction; unspecified times no zone.
  DateTime whole(2024, 5, 6, 7, 8, 9, DateTime::Unspecified);
  EXPECT_EQ(Iso(whole, false, false), "2024-05-06T07:08:09");
  EXPECT_EQ(Iso(whole, true, false), "20240506T070809");
  EXPECT_EQ(Format(t, 's'), "20240506T070809.123Z");
  EXPECT_EQ(Format(t, 'o'), "2024-05-06T07:08:09.1234567Z");
}

TEST(DateTimeTest, LocalTimesCarryTheCurrentOffset) {
  {
    ScopedTimeZone zone("XST-5:30");
    EXPECT_EQ(TimeZone::GetUtcOffset(), 19800);
    DateTime local(2024, 5, 6, 7, 8, 9, DateTime::Local);
    EXPECT_EQ(Iso(local, false, false), "2024-05-06T07:08:09+05:30");
    EXPECT_EQ(Iso(local, true, false), "20240506T070809+0530");
    // RFC 1123 is always GMT: the local reading is moved back first.
    EXPECT_EQ(Format(local, 'r'), "Mon, 06 May 2024 01:38:09 GMT");
  }
  {
    ScopedTimeZone zone("YST3");
    EXPECT_EQ(TimeZone::GetUtcOffset(), -10800);
    DateTime local(2024, 5, 6, 7, 8, 9, DateTime::Local);
    EXPECT_EQ(Iso(local, false, false), "2024-05-06T07:08:09-03:00");
    EXPECT_EQ(Iso(local, true, true), "20240506T070809-0300");
  }
}

TEST(DateTimeTest, RFC1123Form) {
  DateTime t(1994, 11, 6, 8, 49, 37, DateTime::Utc);
  EXPECT_EQ(Format(t, 'R'), "Sun, 06 Nov 1994 08:49:37 GMT");
  char buffer[DateTime::MaxStringLength];
  EXPECT_STREQ(DateTime(2000, 2, 29, 0, 0, 0, DateTime::Utc).ToRFC1123String(buffer), "Tue, 29 Feb 2000 00:00:00 GMT");
}

TEST(DateTimeTest, ParsesISO8601) {
  DateTime t;
  ASSERT_TRUE(t.ParseISO8601("2024-05-06T07:08:09.1234567Z").Succeeded());
  EXPECT_EQ(t, DateTime(DateTime(2024, 5, 6, 7, 8, 9, DateTime::Utc).GetTicks() + 1234567, DateTime::Utc));
  ASSERT_TRUE(t.ParseISO8601("20240506T070809.123Z").Succeeded());
  EXPECT_EQ(t.GetTicks(), DateTime(2024, 5, 6, 7, 8, 9, DateTime::Utc).GetTicks() + 1230000);
  ASSERT_TRUE(t.ParseISO8601("2024-05-06").Succeeded());
  EXPECT_EQ(t, DateTime(2024, 5, 6, 0, 0, 0, DateTime::Unspecified));
  ASSERT_TRUE(t.ParseISO8601("2024-05-06T07:08").Succeeded());
  EXPECT_EQ(t, DateTime(2024, 5, 6, 7, 8, 0, DateTime::Unspecified));
  // Digits beyond the seventh are below a tick.
  ASSERT_TRUE(t.ParseISO8601("2024-05-06T07:08:09.123456789Z").Succeeded());
  EXPECT_EQ(t.GetTicks() % TicksPerSecond, 1234567);
}

TEST(DateTimeTest, ParsedOffsetsBecomeLocalTime) {
  ScopedTimeZone zone("XST-5:30");
  DateTime t;
  ASSERT_TRUE(t.ParseISO8601("2024-05-06T07:08:09+02:00").Succeeded());
  EXPECT_EQ(t.GetKind(), DateTime::Local);
  // 05:08:09 UTC is 10:38:09 at +05:30.
  EXPECT_EQ(t, DateTime(2024, 5, 6, 10, 38, 9, DateTime::Local));
  // What a local time writes, it reads back.
  DateTime local(DateTime(2031, 12, 31, 23, 59, 59, DateTime::Local).GetTicks() + 5, DateTime::Local);
  DateTime back;
  ASSERT_TRUE(back.Parse('o', Iso(local, false, false).c_str()).Succeeded());
  EXPECT_EQ(back, local);
}

TEST(DateTimeTest, ParsesRFC1123) {
  DateTime t;
  ASSERT_TRUE(t.ParseRFC1123("Sun, 06 Nov 1994 08:49:37 GMT").Succeeded());
  EXPECT_EQ(t, DateTime(1994, 11, 6, 8, 49, 37, DateTime::Utc));
  ASSERT_TRUE(t.Parse('r', "6 Nov 1994 10:49:37 +0200").Succeeded());
  EXPECT_EQ(t, DateTime(1994, 11, 6, 8, 49, 37, DateTime::Utc));
  RObject<CString> text(new CString("Tue, 29 Feb 2000 00:00:00 UTC"));
  ASSERT_TRUE(t.Parse('R', text).Succeeded());
  EXPECT_EQ(t, DateTime(2000, 2, 29, 0, 0, 0, DateTime::Utc));
  // The same text is not ISO 8601.
  EXPECT_TRUE(IsKind<ResultFormatError>(t.Parse('o', text)));
}

TEST(DateTimeTest, BadTextLeavesTheValueAlone) {
  DateTime original(2020, 1, 2, 3, 4, 5, DateTime::Utc);
  DateTime t = original;
  const char* bad[] = {"2024-13-01",           "2023-02-29",          "2024-05-06T24:00:00", "2024-05-06T07:60",
                       "2024-05-06T07:08:09Zx", "garbage",             "",                    "2024-5-6",
                       "2024-05-06T07:08:09+25:00"};
  for (const char* text : bad) {
    SCOPED_TRACE(text);
    Result result = t.ParseISO8601(text);
    EXPECT_TRUE(IsKind<ResultFormatError>(result));
    EXPECT_NE(std::string(result.GetDetails()).find(text), std::string::npos);
    EXPECT_EQ(t, original);
  }
  EXPECT_TRUE(IsKind<ResultFormatError>(t.ParseRFC1123("Sun, 31 Feb 1994 08:49:37 GMT")));
  EXPECT_TRUE(IsKind<ResultFormatError>(t.ParseRFC1123("Sun, 06 Nox 1994 08:49:37 GMT")));
  EXPECT_TRUE(IsKind<ResultFormatError>(t.ParseRFC1123("Sun, 06 Nov 1994 08:49:37")));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(t.ParseISO8601(nullptr)));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(t.Parse('o', static_cast<CString*>(nullptr))));
  EXPECT_EQ(t, original);
}

TEST(DateTimeTest, ClocksReadTheSystemTime) {
  ScopedTimeZone zone("XST-5:30");
  long long before = static_cast<long long>(std::time(nullptr));
  DateTime utc = DateTime::UtcNow();
  DateTime local = DateTime::Now();
  long long after = static_cast<long long>(std::time(nullptr));
  EXPECT_EQ(utc.GetKind(), DateTime::Utc);
  EXPECT_EQ(local.GetKind(), DateTime::Local);
  EXPECT_GE(utc.GetSecondsSince1970(), before);
  EXPECT_LE(utc.GetSecondsSince1970(), after);
  long long shift = local.GetSecondsSince1970() - utc.GetSecondsSince1970();
  EXPECT_GE(shift, 19800 - 1);
  EXPECT_LE(shift, 19800 + 1);
}
