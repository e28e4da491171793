#include "System/Media/TimeCode/TimeScale.h"

#include <cmath>

namespace Corvane::Mox {

CTimeScale::CTimeScale(double rate) : timeScale_(static_cast<long long>(std::ceil(rate * 100.0))) {}

long long CTimeScale::RoundQuotient(double quotient) {
  if (!std::isfinite(quotient)) return 0;
  // Times beyond the 64-bit range saturate rather than wrap.
  constexpr double kLimit = 9.2e18;
  if (quotient >= kLimit) return static_cast<long long>(kLimit);
  if (quotient <= -kLimit) return -static_cast<long long>(kLimit);
  const auto whole = static_cast<long long>(quotient);  // toward zero
  return quotient - static_cast<double>(whole) > 0.5 ? whole + 1 : whole;
}

long long CTimeScale::Divide(long long numerator, long long denominator) {
  if (denominator == 0) return 0;
  return RoundQuotient(static_cast<double>(numerator) / static_cast<double>(denominator));
}

// a × b ÷ d with the product in 64-bit integers; a product that would not fit
// is formed in double instead of overflowing.
static long long MultiplyDivide(long long a, long long b, long long d) {
  long long product = 0;
  if (__builtin_mul_overflow(a, b, &product)) {
    if (d == 0) return 0;
    return CTimeScale::RoundQuotient(static_cast<double>(a) * static_cast<double>(b) / static_cast<double>(d));
  }
  return CTimeScale::Divide(product, d);
}

long long CTimeScale::ToTime(long long v, const CTimeScale* other) const {
  return ToTime(v, other ? other->timeScale_ : DefaultTimeScale);
}

long long CTimeScale::ToTime(long long v, long long scale) const {
  if (v == 0) return 0;
  return MultiplyDivide(scale, v, timeScale_);
}

long long CTimeScale::ToTime(long long v, long long scale, long long unit) const {
  if (v == 0 || unit == 0) return 0;
  long long divisor = 0;
  if (__builtin_mul_overflow(timeScale_, unit, &divisor)) return 0;
  return MultiplyDivide(v, scale, divisor) * unit;
}

long long CTimeScale::FromTime(long long v, const CTimeScale* other) const {
  return FromTime(v, other ? other->timeScale_ : DefaultTimeScale);
}

long long CTimeScale::FromTime(long long v, long long scale) const { return MultiplyDivide(timeScale_, v, scale); }

// Ticks and milliseconds form their products in double: a time near the end
// of a long file times 10^7 would overflow 64 bits.
long long CTimeScale::ToTicks(long long v) const {
  if (timeScale_ == 0) return 0;
  return RoundQuotient(static_cast<double>(v) * 10000000.0 / static_cast<double>(timeScale_));
}

long long CTimeScale::FromTicks(long long ticks) const { return MultiplyDivide(timeScale_, ticks, 10000000); }

long long CTimeScale::ToMilliseconds(long long v) const {
  if (timeScale_ == 0) return 0;
  return RoundQuotient(static_cast<double>(v) * 1000.0 / static_cast<double>(timeScale_));
}

long long CTimeScale::FromMilliseconds(long long ms) const { return MultiplyDivide(timeScale_, ms, 1000); }

double CTimeScale::ToSeconds(long long v) const {
  return timeScale_ == 0 ? 0.0 : static_cast<double>(v) / static_cast<double>(timeScale_);
}

long long CTimeScale::FromSeconds(double seconds) const {
  return RoundQuotient(static_cast<double>(timeScale_) * seconds);
}

}  // namespace Corvane::Mox
