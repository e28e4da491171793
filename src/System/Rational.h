#pragma once
// Rational<T>: a numerator/denominator pair of integers (short, int or long
// long), with FromDouble, which finds the fraction closest to a value whose
// denominator stays within a bound.

namespace Corvane::Mox {

template <class T>
struct Rational {
  T numerator;
  T denominator;

  constexpr Rational() : numerator(0), denominator(1) {}
  constexpr Rational(T n, T d) : numerator(n), denominator(d) {}

  constexpr T GetNumerator() const { return numerator; }
  constexpr T GetDenominator() const { return denominator; }
  // The quotient; 0 for a zero denominator.
  constexpr double ToDouble() const {
    return denominator == 0 ? 0.0 : static_cast<double>(numerator) / static_cast<double>(denominator);
  }

  // Member-wise: 2/4 and 1/2 are different pairs.
  friend constexpr bool operator==(const Rational& a, const Rational& b) {
    return a.numerator == b.numerator && a.denominator == b.denominator;
  }

  // The closest fraction to value with a denominator of at most
  // maxDenominator (0 means the largest positive T); a bound below 2 gives the
  // value truncated over 1. The numerator also stays within T: values beyond
  // the range of T saturate, NaN gives 0/1.
  static Rational FromDouble(double value, T maxDenominator);
};

extern template struct Rational<short>;
extern template struct Rational<int>;
extern template struct Rational<long long>;

}  // namespace Corvane::Mox
