#pragma once
// BayerMosaic: the line codecs of the 16-bit little-endian Bayer mosaics
// ("RGGB", "BGGR", "GRBG", "GBRG", named by their 2x2 cell read row by row).
// Each pixel holds one component; decoding fills in the two others by
// bilinear interpolation, the mean of the neighbours of the 3x3 block around
// the pixel that hold that component (the four edge neighbours for green,
// two or four for red and blue), so a line is read with the lines above and
// below it. Neighbours outside the picture are left out, which is what
// mirroring the edge gives for these means. Encoding keeps the component of
// each pixel's place in the cell.

#include "System/Media/Filter/VideoConverters/LineCodec.h"

namespace Corvane::Mox {

struct PlaneLayout;

struct BayerMosaic {
  // The component slot of each place of the 2x2 cell (top left, top right,
  // bottom left, bottom right); false when the layout is not a mosaic.
  static bool Find(const PlaneLayout& layout, int (&cell)[4]);

  static void Decode(const int (&cell)[4], const SamplePlanes& planes, int width, int y, ComponentLines& lines);
  static void Encode(const int (&cell)[4], const ComponentLines& lines, int width, int y, SamplePlanes& planes);
};

}  // namespace Corvane::Mox
