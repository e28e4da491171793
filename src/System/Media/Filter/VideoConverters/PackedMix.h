#pragma once
// PackedMix: the twist matrix applied to a line and the result written
// straight into 8-bit packed RGB pixels of any byte order ("24BG", "BGRA",
// "RGBA", "BGRX", the numbered codes), without the 16-bit component lines
// between the mix and the interleave. The mix is the twist stage's own
// arithmetic, so the pixels are those its mix and the format's encoder
// would write.

#include <cstdint>

namespace Corvane::Mox {

struct LineCodec;

struct PackedMix {
  int bytes = 0;                     // bytes a pixel, 3 or 4; 0 when the format is not one
  int slots[4] = {-1, -1, -1, -1};  // the component slot of each byte, -1 padding (0xFF)

  // The packing of an output format; bytes 0 when it is not 8-bit packed RGB.
  static PackedMix Find(const LineCodec& output);
  explicit operator bool() const { return bytes != 0; }

  // m · (s0, s1, s2, 1) rounded and clamped to 0..maximum per pixel, alpha
  // from the alpha line, into width pixels at dst.
  void Run(const float* m, const uint16_t* s0, const uint16_t* s1, const uint16_t* s2, const uint16_t* alpha,
           uint8_t* dst, int width, float maximum) const;
};

}  // namespace Corvane::Mox
