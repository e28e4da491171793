#pragma once
// PackedTenBit: the line codecs of the formats that pack 10-bit components
// into 32-bit words: "v210" (4:2:2, six pixels in four little-endian words),
// "v410" (4:4:4, U Y V in one little-endian word), "r210" and "R10k" (RGB in
// one big-endian word, the two spare bits at the top and at the bottom).

#include "System/Media/Filter/VideoConverters/LineCodec.h"

namespace Corvane::Mox {

struct PackedTenBit {
  // The decoder and encoder of a format; false when it is not bit-packed.
  static bool Find(unsigned int format, LineCodec::PackedDecode& decode, LineCodec::PackedEncode& encode);
};

}  // namespace Corvane::Mox
