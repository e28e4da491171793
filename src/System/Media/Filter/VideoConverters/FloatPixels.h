#pragma once
// FloatPixels: the line codecs of the packed 32-bit float formats, "R4fl"
// (R G B A) and "r4fl" (A Y' Cb Cr), four little-endian IEEE floats a pixel.
// The converter carries them as 16-bit code values: a float is the code
// value over 65535 (0 black or zero chroma offset, 1 the top code; chroma is
// centred on 32768 / 65535 like the 16-bit formats), so 16-bit pictures go
// through a float format and back unchanged. Decoding rounds to the nearest
// code and clamps values outside 0..1 (and NaN, which reads as 0).

#include "System/Media/Filter/VideoConverters/LineCodec.h"

namespace Corvane::Mox {

struct PlaneLayout;

struct FloatPixels {
  // The slot of each of the four floats of a pixel; false when the layout is
  // not a packed float format.
  static bool Find(const PlaneLayout& layout, int (&order)[4]);

  static void Decode(const int (&order)[4], const uint8_t* line, int width, ComponentLines& lines);
  static void Encode(const int (&order)[4], const ComponentLines& lines, int width, uint8_t* line);
};

}  // namespace Corvane::Mox
