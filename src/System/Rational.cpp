#include "System/Rational.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace Corvane::Mox {

namespace {

using U128 = unsigned __int128;

// Sign of a*b - c*d for 128-bit operands, computed on 64-bit limbs so that
// the products (up to 256 bits) never overflow.
struct U256 {
  std::uint64_t limb[4];
};

U256 Multiply(U128 a, U128 b) {
  const std::uint64_t x[2] = {static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(a >> 64)};
  const std::uint64_t y[2] = {static_cast<std::uint64_t>(b), static_cast<std::uint64_t>(b >> 64)};
  U256 r{{0, 0, 0, 0}};
  for (int i = 0; i < 2; ++i) {
    U128 carry = 0;
    for (int j = 0; j < 2; ++j) {
      U128 t = static_cast<U128>(x[i]) * y[j] + r.limb[i + j] + carry;
      r.limb[i + j] = static_cast<std::uint64_t>(t);
      carry = t >> 64;
    }
    r.limb[i + 2] = static_cast<std::uint64_t>(carry);
  }
  return r;
}

bool ProductIsLess(U128 a, U128 b, U128 c, U128 d) {
  U256 left = Multiply(a, b);
  U256 right = Multiply(c, d);
  for (int i = 3; i >= 0; --i)
    if (left.limb[i] != right.limb[i]) return left.limb[i] < right.limb[i];
  return false;
}

struct Fraction {
  U128 p;
  U128 q;
};

// The magnitude as an exact dyadic fraction mantissa / 2^k. Bits below 2^-126
// are dropped: no denominator of a 64-bit type can tell them apart.
Fraction ToDyadic(double magnitude) {
  int exponent = 0;
  double mantissa = std::frexp(magnitude, &exponent);  // magnitude = mantissa * 2^exponent
  auto bits = static_cast<U128>(std::ldexp(mantissa, 53));
  int shift = 53 - exponent;
  if (shift <= 0) return {bits << -shift, 1};
  while (shift > 0 && (bits & 1) == 0) {
    bits >>= 1;
    --shift;
  }
  if (shift > 126) {
    bits >>= shift - 126;
    shift = 126;
  }
  return {bits, static_cast<U128>(1) << shift};
}

// Continued-fraction expansion of n/d with numerator and denominator bounds:
// convergents until the next one would leave the bounds, then the largest
// admissible semiconvergent when it is strictly closer than the last convergent.
Fraction BestApproximation(U128 n, U128 d, U128 maxNumerator, U128 maxDenominator) {
  U128 p0 = 0, q0 = 1, p1 = 1, q1 = 0;
  while (d != 0) {
    U128 a = n / d;
    if (q1 != 0 && a > (maxDenominator - q0) / q1) break;
    if (p1 != 0 && a > (maxNumerator - p0) / p1) break;
    U128 p2 = p0 + a * p1;
    U128 q2 = q0 + a * q1;
    p0 = p1;
    q0 = q1;
    p1 = p2;
    q1 = q2;
    U128 r = n - a * d;
    n = d;
    d = r;
  }
  if (d == 0 || q1 == 0) return {p1, q1 == 0 ? 1 : q1};
  // n/d is now the complete quotient x of the next step. The semiconvergent
  // with coefficient k lies (x - k) / ((x q1 + q0)(q0 + k q1)) from the value
  // and the convergent 1 / (q1 (x q1 + q0)), so the semiconvergent wins
  // exactly when x q1 < q0 + 2 k q1.
  U128 k = (maxDenominator - q0) / q1;
  if (p1 != 0 && (maxNumerator - p0) / p1 < k) k = (maxNumerator - p0) / p1;
  if (k == 0) return {p1, q1};
  if (ProductIsLess(n, q1, d, q0 + 2 * k * q1)) return {p0 + k * p1, q0 + k * q1};
  return {p1, q1};
}

}  // namespace

template <class T>
Rational<T> Rational<T>::FromDouble(double value, T maxDenominator) {
  constexpr T largest = std::numeric_limits<T>::max();
  if (std::isnan(value)) return Rational(0, 1);
  if (maxDenominator == 0) maxDenominator = largest;
  double magnitude = std::fabs(value);
  T sign = value < 0 ? T(-1) : T(1);
  if (magnitude >= static_cast<double>(largest)) return Rational(static_cast<T>(sign * largest), 1);
  if (maxDenominator < 2) return Rational(static_cast<T>(std::trunc(value)), 1);
  Fraction exact = ToDyadic(magnitude);
  Fraction best = BestApproximation(exact.p, exact.q, static_cast<U128>(largest), static_cast<U128>(maxDenominator));
  return Rational(static_cast<T>(sign * static_cast<T>(best.p)), static_cast<T>(best.q));
}

template struct Rational<short>;
template struct Rational<int>;
template struct Rational<long long>;

}  // namespace Corvane::Mox
