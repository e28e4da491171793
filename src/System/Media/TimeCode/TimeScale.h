#pragma once
// CTimeScale: integer media time in units per second, and the conversions
// between scales, 100-nanosecond ticks, milliseconds and seconds.
//
// Every conversion rounds the same way: the quotient is taken in double
// precision and its integer part is raised by one only when the fraction is
// greater than one half. An exact half rounds down and negative quotients
// truncate toward zero; times converted back and forth between the scales of
// a file's tracks depend on this, so it must not be "fixed" to round-half-up.

namespace Corvane::Mox {

class CTimeScale {
 public:
  static constexpr long long DefaultTimeScale = 10000000;  // 100-ns ticks

  constexpr CTimeScale() : timeScale_(DefaultTimeScale) {}
  constexpr explicit CTimeScale(long long timeScale) : timeScale_(timeScale) {}
  constexpr explicit CTimeScale(int timeScale) : timeScale_(timeScale) {}
  // The rate in hundredths of a unit, rounded up: 29.97 gives 2997.
  explicit CTimeScale(double rate);

  long long GetTimeScale() const { return timeScale_; }

  // v in this scale expressed in another scale.
  long long ToTime(long long v, const CTimeScale* other) const;
  long long ToTime(long long v, long long scale) const;
  // v in the given scale, rounded to a whole multiple of unit.
  long long ToTime(long long v, long long scale, long long unit) const;
  // v given in another scale expressed in this one.
  long long FromTime(long long v, const CTimeScale* other) const;
  long long FromTime(long long v, long long scale) const;

  long long ToTicks(long long v) const;
  long long FromTicks(long long ticks) const;
  long long ToMilliseconds(long long v) const;
  long long FromMilliseconds(long long ms) const;
  double ToSeconds(long long v) const;
  long long FromSeconds(double seconds) const;

  // The shared rounding rule described above; exposed for time-code code that
  // converts with the same rule.
  static long long RoundQuotient(double quotient);
  // numerator ÷ denominator under the rounding rule; 0 for a zero denominator.
  static long long Divide(long long numerator, long long denominator);

 private:
  long long timeScale_;
};

}  // namespace Corvane::Mox
