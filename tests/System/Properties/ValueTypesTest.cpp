#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <random>

#include "System/ByteSwap.h"
#include "System/FourString.h"
#include "System/Properties/PropertiesTestSupport.h"
#include "System/Rational.h"

using namespace Corvane::Mox;
using PropertiesTest::Take;

namespace {

using ValueTypesTest = LeakCheckedTest;

TEST_F(ValueTypesTest, FourStringEscapesWhatIsNotPrintable) {
  EXPECT_STREQ(FourString(FourCC("vid ")), "vid ");
  EXPECT_STREQ(FourString(0), "");
  EXPECT_STREQ(FourString(0x0000000Au), "%00%00%00%0A");
  EXPECT_STREQ(FourString(0xA978797Au), "%A9xyz");
  EXPECT_STREQ(FourString(0x7F414243u), "%7FABC");
  EXPECT_STREQ(FourString(FourCC("a%b ")), "a%b ");
  EXPECT_STREQ(FourString(FourCC("abcd"), false), "abcd");
  FourString reused;
  EXPECT_STREQ(reused, "");
  reused = FourCC("mp4a");
  EXPECT_STREQ(reused, "mp4a");
  EXPECT_EQ(reused.GetCode(), FourCC("mp4a"));
  EXPECT_EQ(Take(FourString::ToString(FourCC("sub "))), "sub ");
  EXPECT_EQ(Take(FourString::ToString(0x01020304u)), "%01%02%03%04");
}

TEST_F(ValueTypesTest, ToFourIsTheInverse) {
  EXPECT_EQ(FourString::ToFour("%A9xyz"), 0xA978797Au);
  EXPECT_EQ(FourString::ToFour("ab"), 0x61620000u);
  EXPECT_EQ(FourString::ToFour(""), 0u);
  EXPECT_EQ(FourString::ToFour(nullptr), 0u);
  std::mt19937 random(1234);
  for (int i = 0; i < 2000; ++i) {
    auto code = static_cast<unsigned int>(random());
    // A literal '%' byte followed by hexadecimal digits reads as an escape.
    bool hasPercent = false;
    for (int shift = 0; shift < 32; shift += 8) hasPercent |= ((code >> shift) & 0xFF) == '%';
    if (hasPercent || code == 0) continue;
    EXPECT_EQ(FourString::ToFour(FourString(code)), code) << std::hex << code;
  }
}

// |value - p/q|, in long double: precise enough to rank the candidates of
// these tests, whose distances differ by far more than its rounding.
long double Distance(double value, long long p, long long q) {
  return std::fabs(static_cast<long double>(value) - static_cast<long double>(p) / static_cast<long double>(q));
}

// The smallest distance any fraction with a denominator up to max (and a
// numerator within maxNumerator) reaches.
long double BestDistance(double value, long long max, long long maxNumerator = std::numeric_limits<int>::max()) {
  long double best = std::numeric_limits<long double>::infinity();
  for (long long q = 1; q <= max; ++q) {
    auto p = static_cast<long long>(std::llround(static_cast<long double>(value) * q));
    if (std::llabs(p) <= maxNumerator) best = std::min(best, Distance(value, p, q));
  }
  return best;
}

TEST_F(ValueTypesTest, FromDoubleKnownValues) {
  EXPECT_EQ(Rational<int>::FromDouble(0.3333333, 100), Rational<int>(1, 3));
  EXPECT_EQ(Rational<int>::FromDouble(2.5, 1), Rational<int>(2, 1));
  EXPECT_EQ(Rational<int>::FromDouble(-2.5, 1), Rational<int>(-2, 1));
  EXPECT_EQ(Rational<int>::FromDouble(2.9, -4), Rational<int>(2, 1));
  EXPECT_EQ(Rational<int>::FromDouble(0.5, 0), Rational<int>(1, 2));
  EXPECT_EQ(Rational<int>::FromDouble(-0.75, 10), Rational<int>(-3, 4));
  EXPECT_EQ(Rational<int>::FromDouble(7.0, 100), Rational<int>(7, 1));
  EXPECT_EQ(Rational<int>::FromDouble(0.0, 100), Rational<int>(0, 1));
  EXPECT_EQ(Rational<int>::FromDouble(30000.0 / 1001.0, 1001), Rational<int>(30000, 1001));
  EXPECT_EQ(Rational<long long>::FromDouble(24000.0 / 1001.0, 10000), Rational<long long>(24000, 1001));
  EXPECT_EQ(Rational<short>::FromDouble(1.0 / 3.0, 0), Rational<short>(1, 3));
  // A semiconvergent: the convergents of pi are 3, 22/7, 333/106, 355/113;
  // with denominators up to 100 the best is the semiconvergent 311/99.
  EXPECT_EQ(Rational<int>::FromDouble(M_PI, 100), Rational<int>(311, 99));
  EXPECT_EQ(Rational<int>::FromDouble(M_PI, 112), Rational<int>(333, 106));
  EXPECT_EQ(Rational<int>::FromDouble(M_PI, 113), Rational<int>(355, 113));
}

TEST_F(ValueTypesTest, FromDoubleIsExactForDyadicValues) {
  // 0.1 is stored as the dyadic fraction m / 2^k; a bound beyond 2^k gives it exactly.
  int exponent = 0;
  double mantissa = std::frexp(0.1, &exponent);
  auto numerator = static_cast<long long>(std::ldexp(mantissa, 53));
  long long denominator = 1LL << (53 - exponent);
  while (numerator % 2 == 0) {
    numerator /= 2;
    denominator /= 2;
  }
  EXPECT_EQ(Rational<long long>::FromDouble(0.1, 0), Rational<long long>(numerator, denominator));
  EXPECT_EQ(Rational<long long>::FromDouble(-0.1, 0), Rational<long long>(-numerator, denominator));
  EXPECT_EQ(Rational<long long>::FromDouble(1e-30, 0), Rational<long long>(0, 1));
}

TEST_F(ValueTypesTest, FromDoubleSaturatesAndHandlesNaN) {
  EXPECT_EQ(Rational<short>::FromDouble(1e6, 10), Rational<short>(32767, 1));
  EXPECT_EQ(Rational<short>::FromDouble(-1e6, 10), Rational<short>(-32767, 1));
  EXPECT_EQ(Rational<int>::FromDouble(std::nan(""), 10), Rational<int>(0, 1));
  EXPECT_EQ(Rational<long long>::FromDouble(std::numeric_limits<double>::infinity(), 10),
            Rational<long long>(std::numeric_limits<long long>::max(), 1));
  // Numerators stay within the type even when the denominator bound would allow more.
  Rational<short> r = Rational<short>::FromDouble(1000.001, 0);
  EXPECT_LE(std::abs(static_cast<int>(r.numerator)), 32767);
  EXPECT_NEAR(r.ToDouble(), 1000.001, 0.05);
}

TEST_F(ValueTypesTest, FromDoubleFindsTheClosestFractionWithinTheBound) {
  std::mt19937 random(42);
  std::uniform_real_distribution<double> values(-50.0, 50.0);
  std::uniform_int_distribution<int> bounds(2, 1500);
  for (int i = 0; i < 300; ++i) {
    double value = values(random);
    int max = bounds(random);
    Rational<int> r = Rational<int>::FromDouble(value, max);
    ASSERT_GT(r.denominator, 0);
    ASSERT_LE(r.denominator, max) << value << " " << max;
    EXPECT_EQ(std::gcd(r.numerator, r.denominator), 1) << value << " " << max;
    EXPECT_EQ(Distance(value, r.numerator, r.denominator), BestDistance(value, max)) << value << " " << max;
  }
  // Short takes the largest short as its bound when given 0, and its
  // numerator must fit as well: 103993/33102 is out of reach.
  Rational<short> pi = Rational<short>::FromDouble(M_PI, 0);
  EXPECT_EQ(Distance(M_PI, pi.numerator, pi.denominator), BestDistance(M_PI, 32767, 32767));
  EXPECT_EQ(pi, Rational<short>(355, 113));
}

TEST_F(ValueTypesTest, ByteSwapsReverseInPlace) {
  unsigned char bytes[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  SwapInt16(bytes + 1);  // unaligned on purpose
  EXPECT_EQ(bytes[1], 2);
  EXPECT_EQ(bytes[2], 1);
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(bytes[3], 3);
  unsigned char three[4] = {1, 2, 3, 4};
  SwapInt24(three);
  EXPECT_EQ(three[0], 3);
  EXPECT_EQ(three[1], 2);
  EXPECT_EQ(three[2], 1);
  EXPECT_EQ(three[3], 4);
  unsigned char four[5] = {1, 2, 3, 4, 5};
  SwapInt32(four + 1);
  const unsigned char swapped4[5] = {1, 5, 4, 3, 2};
  EXPECT_EQ(std::memcmp(four, swapped4, 5), 0);
  unsigned char eight[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  SwapInt64(eight);
  const unsigned char swapped8[9] = {8, 7, 6, 5, 4, 3, 2, 1, 9};
  EXPECT_EQ(std::memcmp(eight, swapped8, 9), 0);
}

}  // namespace
