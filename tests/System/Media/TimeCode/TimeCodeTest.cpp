#include <gtest/gtest.h>

#include "System/Media/TimeCode/TimeCode.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

std::string Print(CTimeCode tc, char separator = ';') {
  char buffer[13];
  return tc.ToString(buffer, separator);
}

CTimeCode Parse(double rate, bool drop, const char* text) {
  CTimeCode tc(rate, drop);
  EXPECT_TRUE(tc.FromString(text).Succeeded()) << text;
  return tc;
}

}  // namespace

TEST(TimeCode, RateConstructorsChooseScaleDurationAndModulus) {
  const CTimeCode ntsc(29.97, true);
  EXPECT_EQ(ntsc.GetTimeScale(), 30000);
  EXPECT_EQ(ntsc.GetDuration(), 1001);
  EXPECT_EQ(ntsc.GetModulus(), 30);
  EXPECT_TRUE(ntsc.IsDropFrame());
  const CTimeCode pal(25.0, false);
  EXPECT_EQ(pal.GetTimeScale(), 25);
  EXPECT_EQ(pal.GetDuration(), 1);
  EXPECT_EQ(pal.GetModulus(), 25);
  EXPECT_EQ(CTimeCode(60000, 1001, true).GetModulus(), 60);
  EXPECT_EQ(CTimeCode(30000, 1001, 24, false).GetModulus(), 24);
  const CTimeCode none;
  EXPECT_EQ(none.GetTimeScale(), 10000000);
  EXPECT_EQ(none.GetModulus(), 0);
}

TEST(TimeCode, DropFrameSkipsTwoLabelsAtEveryMinuteButTheTenth) {
  CTimeCode tc = Parse(29.97, true, "00:00:59;29");
  EXPECT_EQ(tc.GetTotalFrames(), 1799);
  ++tc;
  EXPECT_EQ(Print(tc), "00:01:00;02");
  EXPECT_EQ(Parse(29.97, true, "00:10:00;00").GetTotalFrames(), 17982);
  EXPECT_EQ(Print(Parse(29.97, true, "00:10:00;00")), "00:10:00;00");
  // The tenth minute keeps its first labels.
  CTimeCode before = Parse(29.97, true, "00:09:59;29");
  EXPECT_EQ(Print(before + 1), "00:10:00;00");
  EXPECT_EQ(Parse(29.97, true, "01:00:00;00").GetTotalFrames(), 107892);
  // A label that does not exist moves to the first one that does.
  EXPECT_EQ(Parse(29.97, true, "00:01:00;00").GetTotalFrames(), 1800);
  EXPECT_EQ(Parse(29.97, true, "00:01:00;02").GetTotalFrames(), 1800);
}

TEST(TimeCode, DropFrameAt5994DropsFourLabels) {
  CTimeCode tc = Parse(59.94, true, "00:00:59;59");
  EXPECT_EQ(tc.GetTotalFrames(), 3599);
  EXPECT_EQ(Print(tc + 1), "00:01:00;04");
  EXPECT_EQ(tc.GetMidnightValue(), 5178816);
}

TEST(TimeCode, EveryDropFrameCountRoundTripsThroughItsLabel) {
  CTimeCode tc(29.97, true);
  for (int frame = 0; frame < 40000; frame += 7) {
    tc.FromFrames(frame);
    CTimeCode parsed(29.97, true);
    ASSERT_TRUE(parsed.FromString(Print(tc).c_str()).Succeeded());
    ASSERT_EQ(parsed.GetTotalFrames(), frame) << Print(tc);
  }
}

TEST(TimeCode, MidnightBoundIsInclusiveForPrintingAndWrapsWhenBrokenDown) {
  CTimeCode tc(29.97, true);
  EXPECT_EQ(tc.GetMidnightValue(), 2589408);
  EXPECT_EQ(CTimeCode(25.0, false).GetMidnightValue(), 2160000);
  tc.FromFrames(tc.GetMidnightValue());
  CString* text = tc.ToString(';');
  ASSERT_NE(text, nullptr);
  EXPECT_STREQ(text->GetChars(), "00:00:00;00");
  text->Release();
  tc.FromFrames(tc.GetMidnightValue() + 1);
  EXPECT_EQ(tc.ToString(';'), nullptr);
  tc.FromFrames(-1);
  EXPECT_EQ(tc.ToString(';'), nullptr);
  EXPECT_EQ(Print(tc), "23:59:59;29");
  EXPECT_EQ(tc.GetHours(), 23);
}

TEST(TimeCode, ParsingRulesForTheDropFlag) {
  // At 25 frames the separator does not change the counting.
  CTimeCode pal(25.0, false);
  ASSERT_TRUE(pal.FromString("01:02:03;04").Succeeded());
  EXPECT_FALSE(pal.IsDropFrame());
  EXPECT_EQ(pal.GetTotalFrames(), ((1 * 60 + 2) * 60 + 3) * 25 + 4);
  // At 30 it does, unless the caller keeps the flag.
  CTimeCode ntsc(29.97, false);
  ASSERT_TRUE(ntsc.FromString("00:01:00;02").Succeeded());
  EXPECT_TRUE(ntsc.IsDropFrame());
  ASSERT_TRUE(ntsc.FromString("00:01:00:02").Succeeded());
  EXPECT_FALSE(ntsc.IsDropFrame());
  ASSERT_TRUE(ntsc.FromString("00:01:00;02", true).Succeeded());
  EXPECT_FALSE(ntsc.IsDropFrame());
  EXPECT_EQ(ntsc.GetTotalFrames(), 1802);
  // Any single separator between the other fields.
  ASSERT_TRUE(ntsc.FromString("00.00.01.05").Succeeded());
  EXPECT_EQ(ntsc.GetTotalFrames(), 35);
}

TEST(TimeCode, BadTextAndMissingRateAreErrors) {
  CTimeCode tc(25.0, false);
  EXPECT_TRUE(tc.FromString("01:02:03").Failed());
  EXPECT_TRUE(tc.FromString("garbage").Failed());
  EXPECT_TRUE(tc.FromString(static_cast<const char*>(nullptr)).Failed());
  CTimeCode noRate;
  EXPECT_TRUE(noRate.FromString("00:00:01:00").Failed());
  EXPECT_TRUE(noRate.FramesToTime().Failed());
  EXPECT_EQ(noRate.ToString(':'), nullptr);
}

TEST(TimeCode, ArithmeticAndComparisonUseTheFrameCount) {
  CTimeCode a = Parse(25.0, false, "00:00:01:00");
  CTimeCode b = a + 5;
  EXPECT_EQ(Print(b), "00:00:01:05");
  EXPECT_TRUE(b > a);
  EXPECT_TRUE(a == 25);
  EXPECT_EQ((b - a).GetTotalFrames(), 5);
  CTimeCode old = b++;
  EXPECT_EQ(old.GetTotalFrames(), 30);
  EXPECT_EQ(b.GetTotalFrames(), 31);
  b -= 31;
  EXPECT_EQ(Print(b), "00:00:00:00");
  b = 100;
  EXPECT_EQ(b.GetSeconds(), 4);
  b.AddTime(250);  // FrameDuration 1 at 25/1
  EXPECT_EQ(b.GetTotalFrames(), 350);
  EXPECT_EQ(b.GetTime(), 350);
  EXPECT_EQ(b.GetTime(1000), 14000);
  CTimeCode noDuration;
  noDuration.AddTime(1000);
  EXPECT_EQ(noDuration.GetTotalFrames(), 0);
}

TEST(TimeCode, AddSecondsSubtractsTheLabelsDroppedWithinTheSpan) {
  // One minute is 1800 nominal frames less the two labels dropped at its end.
  CTimeCode tc(29.97, true);
  tc.AddSeconds(60);
  EXPECT_EQ(tc.GetTotalFrames(), 1798);
  EXPECT_EQ(Print(tc), "00:00:59;28");
  CTimeCode tenMinutes(29.97, true);
  tenMinutes.AddSeconds(600);
  EXPECT_EQ(tenMinutes.GetTotalFrames(), 17982);
  EXPECT_EQ(Print(tenMinutes), "00:10:00;00");
  CTimeCode hour(29.97, true);
  hour.AddSeconds(3600);
  EXPECT_EQ(Print(hour), "01:00:00;00");
}

TEST(TimeCode, BinaryCodedDecimalRoundTrips) {
  EXPECT_EQ(CTimeCode::BinaryToDecimal(59), 0x59);
  EXPECT_EQ(CTimeCode::DecimalToBinary(0x23), 23);
  CTimeCode tc = Parse(25.0, false, "12:34:56:21");
  TimeCodeTime bcd;
  ASSERT_TRUE(tc.ToDecimal(&bcd).Succeeded());
  EXPECT_EQ(bcd.Hours, 0x12);
  EXPECT_EQ(bcd.Minutes, 0x34);
  EXPECT_EQ(bcd.Seconds, 0x56);
  EXPECT_EQ(bcd.Frames, 0x21);
  const unsigned char raw[4] = {0x01, 0x00, 0x00, 0x10};
  CTimeCode back(25.0, false);
  ASSERT_TRUE(back.FromDecimal(raw).Succeeded());
  EXPECT_EQ(back.GetTotalFrames(), 3600 * 25 + 10);
}
