#pragma once
// KeySizes: a range of legal key or block sizes in bits.

namespace Corvane::Mox {

struct KeySizes {
  int minimum;
  int maximum;
  int skip;

  // True when bits lies in the range on a step of skip (or equals the minimum
  // when skip is 0).
  bool IsValid(int bits) const {
    if (bits < minimum || bits > maximum) return false;
    if (skip == 0) return bits == minimum;
    return (bits - minimum) % skip == 0;
  }
};

}  // namespace Corvane::Mox
