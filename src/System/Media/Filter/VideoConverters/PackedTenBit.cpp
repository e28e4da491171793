#include "System/Media/Filter/VideoConverters/PackedTenBit.h"

#include <cstring>

namespace Corvane::Mox {

namespace {

uint32_t LoadLE(const uint8_t* p) { return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24; }
uint32_t LoadBE(const uint8_t* p) { return static_cast<uint32_t>(p[0]) << 24 | p[1] << 16 | p[2] << 8 | p[3]; }
void StoreLE(uint8_t* p, uint32_t v) {
  p[0] = static_cast<uint8_t>(v);
  p[1] = static_cast<uint8_t>(v >> 8);
  p[2] = static_cast<uint8_t>(v >> 16);
  p[3] = static_cast<uint8_t>(v >> 24);
}
void StoreBE(uint8_t* p, uint32_t v) {
  p[0] = static_cast<uint8_t>(v >> 24);
  p[1] = static_cast<uint8_t>(v >> 16);
  p[2] = static_cast<uint8_t>(v >> 8);
  p[3] = static_cast<uint8_t>(v);
}
uint16_t Ten(uint32_t word, int shift) { return static_cast<uint16_t>(word >> shift & 0x3FF); }
uint32_t Put(uint16_t value, int shift) { return static_cast<uint32_t>(value & 0x3FF) << shift; }

// v210: each group of six pixels is four words holding, from bit 0 up,
// Cb0 Y0 Cr0 | Y1 Cb1 Y2 | Cr1 Y3 Cb2 | Y4 Cr2 Y5. The sequence of samples
// is the 4:2:2 UYVY order, so the decoder walks it as one stream.
void DecodeV210(const uint8_t* line, int width, ComponentLines& lines) {
  const int groups = (width + 5) / 6;
  uint16_t* y = lines.slot[0];
  uint16_t* u = lines.slot[1];
  uint16_t* v = lines.slot[2];
  for (int g = 0; g < groups; ++g, line += 16) {
    const uint32_t w0 = LoadLE(line), w1 = LoadLE(line + 4), w2 = LoadLE(line + 8), w3 = LoadLE(line + 12);
    u[0] = Ten(w0, 0), y[0] = Ten(w0, 10), v[0] = Ten(w0, 20);
    y[1] = Ten(w1, 0), u[1] = Ten(w1, 10), y[2] = Ten(w1, 20);
    v[1] = Ten(w2, 0), y[3] = Ten(w2, 10), u[2] = Ten(w2, 20);
    y[4] = Ten(w3, 0), v[2] = Ten(w3, 10), y[5] = Ten(w3, 20);
    y += 6, u += 3, v += 3;
  }
}

// Samples past the picture width are written as zeros, and so is the rest
// of the line up to its stride, so a line's bytes depend on the picture only.
void EncodeV210(const ComponentLines& lines, int width, uint8_t* line, int lineBytes) {
  const int groups = (width + 5) / 6;
  const int chromaWidth = (width + 1) / 2;
  uint8_t* const end = line + lineBytes;
  for (int g = 0; g < groups; ++g, line += 16) {
    uint16_t y[6], u[3], v[3];
    for (int i = 0; i < 6; ++i) y[i] = g * 6 + i < width ? lines.slot[0][g * 6 + i] : 0;
    for (int i = 0; i < 3; ++i) {
      const bool inside = g * 3 + i < chromaWidth;
      u[i] = inside ? lines.slot[1][g * 3 + i] : 0;
      v[i] = inside ? lines.slot[2][g * 3 + i] : 0;
    }
    StoreLE(line, Put(u[0], 0) | Put(y[0], 10) | Put(v[0], 20));
    StoreLE(line + 4, Put(y[1], 0) | Put(u[1], 10) | Put(y[2], 20));
    StoreLE(line + 8, Put(v[1], 0) | Put(y[3], 10) | Put(u[2], 20));
    StoreLE(line + 12, Put(y[4], 0) | Put(v[2], 10) | Put(y[5], 20));
  }
  if (line < end) std::memset(line, 0, static_cast<size_t>(end - line));
}

// v410: U at bit 2, Y at bit 12, V at bit 22 of a little-endian word.
void DecodeV410(const uint8_t* line, int width, ComponentLines& lines) {
  for (int x = 0; x < width; ++x, line += 4) {
    const uint32_t w = LoadLE(line);
    lines.slot[1][x] = Ten(w, 2), lines.slot[0][x] = Ten(w, 12), lines.slot[2][x] = Ten(w, 22);
  }
}

void EncodeV410(const ComponentLines& lines, int width, uint8_t* line, int) {
  for (int x = 0; x < width; ++x, line += 4)
    StoreLE(line, Put(lines.slot[1][x], 2) | Put(lines.slot[0][x], 12) | Put(lines.slot[2][x], 22));
}

// RGB in a big-endian word, R highest; shift is the position of B.
template <int Shift>
void DecodeRgb10(const uint8_t* line, int width, ComponentLines& lines) {
  for (int x = 0; x < width; ++x, line += 4) {
    const uint32_t w = LoadBE(line);
    lines.slot[2][x] = Ten(w, Shift + 20), lines.slot[0][x] = Ten(w, Shift + 10), lines.slot[1][x] = Ten(w, Shift);
  }
}

template <int Shift>
void EncodeRgb10(const ComponentLines& lines, int width, uint8_t* line, int) {
  for (int x = 0; x < width; ++x, line += 4)
    StoreBE(line, Put(lines.slot[2][x], Shift + 20) | Put(lines.slot[0][x], Shift + 10) | Put(lines.slot[1][x], Shift));
}

struct PackedEntry {
  unsigned int format;
  LineCodec::PackedDecode decode;
  LineCodec::PackedEncode encode;
};

constexpr PackedEntry kPacked[] = {
    {FourCC("v210"), &DecodeV210, &EncodeV210},
    {FourCC("v410"), &DecodeV410, &EncodeV410},
    {FourCC("r210"), &DecodeRgb10<0>, &EncodeRgb10<0>},
    {FourCC("R10k"), &DecodeRgb10<2>, &EncodeRgb10<2>},
};

}  // namespace

bool PackedTenBit::Find(unsigned int format, LineCodec::PackedDecode& decode, LineCodec::PackedEncode& encode) {
  for (const PackedEntry& entry : kPacked) {
    if (entry.format != format) continue;
    decode = entry.decode;
    encode = entry.encode;
    return true;
  }
  return false;
}

}  // namespace Corvane::Mox
