#include <gtest/gtest.h>

#include "System/Media/TimeCode/TimeScale.h"

using namespace Corvane::Mox;

TEST(TimeScale, RateConstructorRoundsHundredthsUp) {
  EXPECT_EQ(CTimeScale(29.97).GetTimeScale(), 2997);
  EXPECT_EQ(CTimeScale(25.0).GetTimeScale(), 2500);
  EXPECT_EQ(CTimeScale(23.976).GetTimeScale(), 2398);
  EXPECT_EQ(CTimeScale().GetTimeScale(), 10000000);
}

TEST(TimeScale, HalfRoundsDownAndMoreThanHalfRoundsUp) {
  const CTimeScale ticks;
  EXPECT_EQ(ticks.ToMilliseconds(15000), 1);  // 1.5
  EXPECT_EQ(ticks.ToMilliseconds(16000), 2);  // 1.6
  EXPECT_EQ(ticks.ToMilliseconds(14000), 1);  // 1.4
  // Negative quotients truncate toward zero, whatever the fraction.
  EXPECT_EQ(ticks.ToMilliseconds(-16000), -1);
  EXPECT_EQ(CTimeScale::RoundQuotient(-2.9), -2);
  EXPECT_EQ(CTimeScale::RoundQuotient(2.5000001), 3);
}

TEST(TimeScale, ConvertsBetweenScales) {
  const CTimeScale audio(48000);
  const CTimeScale video(90000);
  EXPECT_EQ(audio.ToTime(48000, &video), 90000);
  EXPECT_EQ(video.FromTime(1024, &audio), 1920);
  EXPECT_EQ(audio.ToTime(1, 90000), 2);      // 1.875
  EXPECT_EQ(audio.ToTime(0, 90000), 0);
  EXPECT_EQ(video.ToTime(3003, 1000), 33);   // 33.366..
  // Rounded to whole 1001-unit frames of a 30000 scale: 1 s is 29.97 frames -> 30.
  EXPECT_EQ(CTimeScale(1000).ToTime(1000, 30000, 1001), 30 * 1001);
  EXPECT_EQ(audio.ToTicks(48000), 10000000);
  EXPECT_EQ(audio.FromTicks(10000000), 48000);
  EXPECT_EQ(audio.FromMilliseconds(1500), 72000);
  EXPECT_DOUBLE_EQ(audio.ToSeconds(24000), 0.5);
  EXPECT_EQ(audio.FromSeconds(0.5), 24000);
}

TEST(TimeScale, ExtremeValuesNeitherOverflowNorDivideByZero) {
  const CTimeScale ticks;
  // 10^7 × 10^13 does not fit in 64 bits: the product falls back to double.
  EXPECT_EQ(ticks.FromTime(10000000000000LL, 10000000), 10000000000000LL);
  EXPECT_EQ(CTimeScale(0LL).ToTicks(5), 0);
  EXPECT_EQ(CTimeScale(0LL).ToSeconds(5), 0.0);
  EXPECT_EQ(ticks.ToTime(5, 0LL), 0);
  EXPECT_GT(ticks.FromSeconds(1e300), 0);
}
