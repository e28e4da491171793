#include "System/Media/Filter/BlackPicture.h"

#include <cstring>
#include <vector>

#include "System/FourString.h"
#include "System/Media/Video/PlaneLayout.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

namespace {

// The black code of each component letter at a bit depth.
struct Levels {
  int depth;
  bool fullRange;

  unsigned int Black() const { return fullRange ? 0 : Scale(16); }
  unsigned int Chroma() const { return 1u << (depth - 1); }
  unsigned int Opaque() const { return depth >= 32 ? 0xFFFFFFFFu : (1u << depth) - 1; }
  // An 8-bit code at this depth.
  unsigned int Scale(unsigned int code8) const { return depth >= 8 ? code8 << (depth - 8) : code8 >> (8 - depth); }

  unsigned int Of(char component) const {
    switch (component) {
      case 'U': case 'V': return Chroma();
      case 'A': return Opaque();
      case 'X': return 0;
      default: return Black();  // Y, R, G, B
    }
  }
  float FloatOf(char component) const {
    switch (component) {
      case 'U': case 'V': return 0.5f;
      case 'A': return 1.0f;
      case 'X': return 0.0f;
      default: return fullRange ? 0.0f : 16.0f / 255.0f;
    }
  }
};

void Store(std::vector<unsigned char>& block, int offset, unsigned long long value, int bytes, int byteOrder) {
  for (int i = 0; i < bytes; ++i) {
    const int shift = byteOrder == PlaneLayout::BigEndian ? 8 * (bytes - 1 - i) : 8 * i;
    block[offset + i] = static_cast<unsigned char>(value >> shift);
  }
}

// v210: six pixels in four little-endian words of three 10-bit samples,
// Cb Y Cr | Y Cb Y | Cr Y Cb | Y Cr Y.
void BuildV210(const Levels& levels, std::vector<unsigned char>& block) {
  const unsigned int y = levels.Black();
  const unsigned int c = levels.Chroma();
  const unsigned int words[4] = {c | y << 10 | c << 20, y | c << 10 | y << 20, c | y << 10 | c << 20,
                                 y | c << 10 | y << 20};
  for (size_t at = 0; at + 16 <= block.size(); at += 16)
    for (int w = 0; w < 4; ++w) Store(block, static_cast<int>(at) + 4 * w, words[w], 4, PlaneLayout::LittleEndian);
}

// Components narrower than a byte (or not byte aligned) packed into one word,
// first component in the most significant bits. Alpha or padding takes what
// the others leave when the word is too small for equal widths.
void BuildBitfield(const PlaneLayout& layout, const PlaneLayout::Plane& plane, const Levels& levels,
                   std::vector<unsigned char>& block, bool lowAligned) {
  const int wordBits = plane.blockBytes * 8;
  const int count = static_cast<int>(std::strlen(plane.components));
  std::vector<int> widths(count, layout.bitDepth);
  int used = layout.bitDepth * count;
  for (int i = count - 1; i >= 0 && used > wordBits; --i) {
    if (plane.components[i] != 'A' && plane.components[i] != 'X') continue;
    const int shrink = std::min(used - wordBits, widths[i] - 1);
    widths[i] -= shrink;
    used -= shrink;
  }
  if (used > wordBits) {
    // One sample per pixel (mosaic layouts): every component is black alike.
    Store(block, 0, levels.Of(plane.components[0]), plane.blockBytes, layout.byteOrder);
    return;
  }
  unsigned long long word = 0;
  int shift = lowAligned ? used : wordBits;
  for (int i = 0; i < count; ++i) {
    shift -= widths[i];
    const Levels narrow{widths[i], levels.fullRange};
    word |= static_cast<unsigned long long>(narrow.Of(plane.components[i])) << shift;
  }
  Store(block, 0, word, plane.blockBytes, layout.byteOrder == PlaneLayout::SingleByte ? PlaneLayout::LittleEndian : layout.byteOrder);
}

// One block of the plane, filled.
std::vector<unsigned char> BuildBlock(unsigned int format, const PlaneLayout& layout, int planeIndex,
                                      const Levels& levels) {
  const PlaneLayout::Plane& plane = layout.planes[planeIndex];
  std::vector<unsigned char> block(plane.blockBytes, 0);
  const int count = static_cast<int>(std::strlen(plane.components));
  if (format == FourCC("v210")) {
    BuildV210(levels, block);
    return block;
  }
  if (count > 0 && plane.blockBytes % count == 0) {
    const int bytes = plane.blockBytes / count;
    if (bytes == 4 && layout.bitDepth == 32) {
      for (int i = 0; i < count; ++i) {
        const float value = levels.FloatOf(plane.components[i]);
        std::memcpy(&block[4 * i], &value, 4);
      }
      return block;
    }
    if (bytes * 8 >= layout.bitDepth && bytes <= 2 && (bytes == 1) == (layout.bitDepth <= 8)) {
      // Samples wider than the description's depth hold it in their top bits.
      const int shift = layout.bitDepth - levels.depth;
      for (int i = 0; i < count; ++i)
        Store(block, i * bytes, static_cast<unsigned long long>(levels.Of(plane.components[i])) << shift, bytes,
              layout.byteOrder);
      return block;
    }
  }
  BuildBitfield(layout, plane, Levels{layout.bitDepth, levels.fullRange}, block, format == FourCC("r210"));
  return block;
}

}  // namespace

bool BlackPicture::IsSupported(unsigned int format) { return PlaneLayout::Find(format) != nullptr; }

Result BlackPicture::Fill(const CVideoProperties* properties, unsigned char* data, long long length) {
  if (!properties) return ResultArgumentNull();
  const unsigned int format = properties->GetFormat();
  const PlaneLayout* layout = PlaneLayout::Find(format);
  if (!layout) return ResultNotSupported("unsupported video format, '%s'", FourString(format).GetChars());
  if (!data) return ResultArgumentNull();
  const int width = properties->GetWidth();
  const int height = properties->GetHeight();
  if (layout->GetSampleLength(width, height) > length) return ResultArgumentOutOfRange();
  int depth = properties->GetBitDepth();
  if (depth <= 0 || depth > layout->bitDepth) depth = layout->bitDepth;
  const Levels levels{depth, properties->IsFullRange()};
  unsigned char* at = data;
  for (int p = 0; p < layout->planeCount; ++p) {
    const std::vector<unsigned char> block = BuildBlock(layout->format, *layout, p, levels);
    const int stride = layout->GetStride(p, width);
    const int lines = layout->GetPlaneHeight(p, height);
    for (int line = 0; line < lines; ++line, at += stride)
      for (int x = 0; x < stride; x += static_cast<int>(block.size()))
        std::memcpy(at + x, block.data(), std::min<size_t>(block.size(), static_cast<size_t>(stride - x)));
  }
  return Result();
}

}  // namespace Corvane::Mox
