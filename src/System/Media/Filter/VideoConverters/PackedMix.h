#pragma once
// PackedMix: the twist matrix applied to a line and the result written
// straight into 8-bit packed RGB pixels ("24BG", "BGRA", "RGBA", "BGRX" and
// the numbered codes), one pass without the 16-bit component lines between
// the mix and the interleave. The arithmetic is the twist stage's own, so
// the pixels are those its mix and the format's encoder would write.

#include <cstdint>

namespace Corvane::Mox {

struct LineCodec;

struct PackedMix {
  // m · (s0, s1, s2, 1) rounded and clamped to 0..maximum per pixel, with
  // alpha from the alpha line, into width pixels at dst.
  using Kernel = void (*)(const float* m, const uint16_t* s0, const uint16_t* s1, const uint16_t* s2,
                          const uint16_t* alpha, uint8_t* dst, int width, float maximum);
  // The kernel for an output format; null when it is not one of the 8-bit
  // packed RGB orders the kernels know.
  static Kernel Find(const LineCodec& output);
};

}  // namespace Corvane::Mox
