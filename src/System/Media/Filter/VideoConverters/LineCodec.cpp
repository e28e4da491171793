#include "System/Media/Filter/VideoConverters/LineCodec.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include "System/Media/Filter/VideoConverters/BayerMosaic.h"
#include "System/Media/Filter/VideoConverters/FloatPixels.h"
#include "System/Media/Filter/VideoConverters/PackedTenBit.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"
#include "System/Media/Video/PlaneLayout.h"

namespace Corvane::Mox {

namespace {


// Gathers every Stride-th sample of SB bytes into every K-th slot value; the
// constant strides let the compiler vectorise the common layouts.
template <int SB, int Stride, int K>
MOX_VECTOR_CLONES void GatherT(const uint8_t* src, uint16_t* dst, int blocks) {
  for (int b = 0; b < blocks; ++b) {
    if constexpr (SB == 1) {
      dst[b * K] = src[b * Stride];
    } else {
      uint16_t v;
      std::memcpy(&v, src + b * Stride * 2, 2);
      dst[b * K] = v;
    }
  }
}

template <int SB, int Stride, int K>
MOX_VECTOR_CLONES void ScatterT(const uint16_t* src, uint8_t* dst, int blocks) {
  for (int b = 0; b < blocks; ++b) {
    if constexpr (SB == 1) {
      dst[b * Stride] = static_cast<uint8_t>(src[b * K]);
    } else {
      const uint16_t v = src[b * K];
      std::memcpy(dst + b * Stride * 2, &v, 2);
    }
  }
}

using Gather = void (*)(const uint8_t*, uint16_t*, int);
using Scatter = void (*)(const uint16_t*, uint8_t*, int);

// Strides 1..8 samples, K of 1, 2 or 4, indexed [SB - 1][Stride - 1][K index].
template <int SB, int Stride>
constexpr Gather kGatherRow[3] = {&GatherT<SB, Stride, 1>, &GatherT<SB, Stride, 2>, &GatherT<SB, Stride, 4>};
template <int SB, int Stride>
constexpr Scatter kScatterRow[3] = {&ScatterT<SB, Stride, 1>, &ScatterT<SB, Stride, 2>, &ScatterT<SB, Stride, 4>};

template <int SB>
const Gather* GatherTable(int stride) {
  static const Gather* rows[8] = {kGatherRow<SB, 1>, kGatherRow<SB, 2>, kGatherRow<SB, 3>, kGatherRow<SB, 4>,
                                  kGatherRow<SB, 5>, kGatherRow<SB, 6>, kGatherRow<SB, 7>, kGatherRow<SB, 8>};
  return rows[stride - 1];
}

template <int SB>
const Scatter* ScatterTable(int stride) {
  static const Scatter* rows[8] = {kScatterRow<SB, 1>, kScatterRow<SB, 2>, kScatterRow<SB, 3>, kScatterRow<SB, 4>,
                                   kScatterRow<SB, 5>, kScatterRow<SB, 6>, kScatterRow<SB, 7>, kScatterRow<SB, 8>};
  return rows[stride - 1];
}

int KIndex(int k) { return k == 1 ? 0 : k == 2 ? 1 : k == 4 ? 2 : -1; }

// The fixed-stride kernel for a step, or null when only the general loop fits.
Gather FindGather(int sampleBytes, int stride, int k) {
  if (stride < 1 || stride > 8 || KIndex(k) < 0) return nullptr;
  return sampleBytes == 1 ? GatherTable<1>(stride)[KIndex(k)] : GatherTable<2>(stride)[KIndex(k)];
}

Scatter FindScatter(int sampleBytes, int stride, int k) {
  if (stride < 1 || stride > 8 || KIndex(k) < 0) return nullptr;
  return sampleBytes == 1 ? ScatterTable<1>(stride)[KIndex(k)] : ScatterTable<2>(stride)[KIndex(k)];
}

int CountOf(const char* letters, char letter) {
  int n = 0;
  for (const char* c = letters; *c; ++c) n += *c == letter;
  return n;
}

// Builds the steps of a regular layout (whole samples of one or two bytes);
// false when the layout is not one the codec reads.
bool BuildRegular(const PlaneLayout& layout, LineCodec& codec) {
  const int hf = layout.subsampling ? layout.subsampling >> 4 : 1;
  bool hasLuma = false;
  for (int p = 0; p < layout.planeCount; ++p) {
    const PlaneLayout::Plane& plane = layout.planes[p];
    const int letters = static_cast<int>(std::strlen(plane.components));
    if (letters == 0 || plane.blockBytes % letters != 0) return false;
    const int sampleBytes = plane.blockBytes / letters;
    if (sampleBytes != codec.sampleBytes) return false;
    codec.blockWidth[p] = plane.blockWidth;
    codec.blockBytes[p] = plane.blockBytes;
    codec.planeDivisor[p] = plane.verticalDivisor;
    for (int i = 0; i < letters; ++i) {
      const char letter = plane.components[i];
      const int slot = LineCodec::SlotOf(letter);
      if (slot == -2 || codec.stepCount == LineCodec::MaxSteps) return false;
      const int perBlock = CountOf(plane.components, letter);
      // Luma, RGB and alpha have a sample per pixel; chroma one per hf pixels.
      const int expected = (slot == 1 || slot == 2) && !codec.rgb ? plane.blockWidth / hf : plane.blockWidth;
      if (slot >= 0 && perBlock != expected) return false;
      hasLuma |= slot == 0;
      if (slot >= 0) codec.planeSlots[p] |= 1u << slot;
      LineCodec::Step& step = codec.steps[codec.stepCount++];
      step = {p, slot, i * sampleBytes, perBlock, 0};
      for (int j = 0; j < i; ++j) step.occurrence += plane.components[j] == letter;
    }
  }
  return hasLuma;
}

bool Build(const PlaneLayout& layout, LineCodec& codec) {
  codec.format = layout.format;
  codec.bitDepth = layout.bitDepth;
  codec.horizontalFactor = layout.subsampling ? layout.subsampling >> 4 : 1;
  codec.verticalFactor = layout.subsampling ? layout.subsampling & 15 : 1;
  codec.planeCount = layout.planeCount;
  for (int p = 0; p < layout.planeCount; ++p) {
    codec.rgb |= std::strchr(layout.planes[p].components, 'R') != nullptr;
    codec.alpha |= std::strchr(layout.planes[p].components, 'A') != nullptr;
  }
  codec.bigEndian = layout.byteOrder == PlaneLayout::BigEndian;
  // The formats with their own codecs: one plane, every line.
  const auto special = [&](LineCodec::Kind kind) {
    codec.kind = kind;
    codec.blockWidth[0] = layout.planes[0].blockWidth;
    codec.blockBytes[0] = layout.planes[0].blockBytes;
    codec.planeDivisor[0] = 1;
    codec.planeSlots[0] = LineCodec::Luma | LineCodec::Chroma | (codec.alpha ? LineCodec::Alpha : 0u);
    return true;
  };
  if (PackedTenBit::Find(layout.format, codec.packedDecode, codec.packedEncode)) return special(LineCodec::TenBit);
  if (BayerMosaic::Find(layout, codec.cell)) {
    codec.sampleBytes = 2;
    return special(LineCodec::Mosaic);
  }
  if (FloatPixels::Find(layout, codec.cell)) {
    codec.bitDepth = 16;  // carried as 16-bit code values
    codec.sampleBytes = 2;
    return special(LineCodec::Float);
  }
  if (layout.bitDepth < 8 || layout.bitDepth > 16) return false;
  codec.sampleBytes = layout.bitDepth > 8 ? 2 : 1;
  return BuildRegular(layout, codec);
}

std::vector<LineCodec> BuildAll() {
  std::vector<LineCodec> codecs;
  for (int i = 0; i < PlaneLayout::GetCount(); ++i) {
    LineCodec codec;
    if (Build(*PlaneLayout::GetAt(i), codec)) codecs.push_back(codec);
  }
  return codecs;
}

uint16_t LoadBigEndian(const uint8_t* p) { return static_cast<uint16_t>(p[0] << 8 | p[1]); }

void GatherGeneral(const LineCodec& codec, const LineCodec::Step& step, const uint8_t* src, uint16_t* dst,
                   int blocks) {
  const int bb = codec.blockBytes[step.plane];
  for (int b = 0; b < blocks; ++b) {
    const uint8_t* p = src + static_cast<long long>(b) * bb;
    uint16_t v = p[0];
    if (codec.sampleBytes == 2) {
      if (codec.bigEndian) {
        v = LoadBigEndian(p);
      } else {
        std::memcpy(&v, p, 2);
      }
    }
    dst[b * step.perBlock] = v;
  }
}

void ScatterGeneral(const LineCodec& codec, const LineCodec::Step& step, const uint16_t* src, uint8_t* dst,
                    int blocks) {
  const int bb = codec.blockBytes[step.plane];
  for (int b = 0; b < blocks; ++b) {
    uint8_t* p = dst + static_cast<long long>(b) * bb;
    const uint16_t v = src ? src[b * step.perBlock] : static_cast<uint16_t>(0xFFFF);
    if (codec.sampleBytes == 1) {
      p[0] = static_cast<uint8_t>(v);
    } else if (codec.bigEndian) {
      p[0] = static_cast<uint8_t>(v >> 8);
      p[1] = static_cast<uint8_t>(v);
    } else {
      std::memcpy(p, &v, 2);
    }
  }
}

unsigned StepMask(int slot) { return slot < 0 ? LineCodec::All : 1u << slot; }

// Whole pixels of three or four one-byte components (packed RGB, "v308",
// "v408"): one pass over the line moves every component, which the compiler
// vectorises with shuffles (in the x86-64-v3 clones); strided passes per
// component would touch each byte three or four times.
MOX_VECTOR_CLONES void Interleave3(const uint16_t* __restrict__ a, const uint16_t* __restrict__ b,
                                   const uint16_t* __restrict__ c, uint8_t* __restrict__ dst, int width) {
  for (int x = 0; x < width; ++x) {
    dst[x * 3] = static_cast<uint8_t>(a[x]);
    dst[x * 3 + 1] = static_cast<uint8_t>(b[x]);
    dst[x * 3 + 2] = static_cast<uint8_t>(c[x]);
  }
}

MOX_VECTOR_CLONES void Interleave4(const uint16_t* __restrict__ a, const uint16_t* __restrict__ b,
                                   const uint16_t* __restrict__ c, const uint16_t* __restrict__ d,
                                   uint8_t* __restrict__ dst, int width) {
  for (int x = 0; x < width; ++x) {
    dst[x * 4] = static_cast<uint8_t>(a[x]);
    dst[x * 4 + 1] = static_cast<uint8_t>(b[x]);
    dst[x * 4 + 2] = static_cast<uint8_t>(c[x]);
    dst[x * 4 + 3] = static_cast<uint8_t>(d[x]);
  }
}

MOX_VECTOR_CLONES void Deinterleave3(const uint8_t* __restrict__ src, uint16_t* __restrict__ a,
                                     uint16_t* __restrict__ b, uint16_t* __restrict__ c, int width) {
  for (int x = 0; x < width; ++x) {
    a[x] = src[x * 3];
    b[x] = src[x * 3 + 1];
    c[x] = src[x * 3 + 2];
  }
}

MOX_VECTOR_CLONES void Deinterleave4(const uint8_t* __restrict__ src, uint16_t* __restrict__ a,
                                     uint16_t* __restrict__ b, uint16_t* __restrict__ c, uint16_t* __restrict__ d,
                                     int width) {
  for (int x = 0; x < width; ++x) {
    a[x] = src[x * 4];
    b[x] = src[x * 4 + 1];
    c[x] = src[x * 4 + 2];
    d[x] = src[x * 4 + 3];
  }
}

// True when the codec's single plane is whole pixels of one-byte samples
// without padding.
bool IsWholePixelBytes(const LineCodec& codec, int& components) {
  if (codec.planeCount != 1 || codec.sampleBytes != 1 || codec.blockWidth[0] != 1 || codec.kind != LineCodec::Regular) return false;
  components = codec.blockBytes[0];
  if ((components != 3 && components != 4) || codec.stepCount != components) return false;
  for (int i = 0; i < components; ++i)
    if (codec.steps[i].slot < 0 || codec.steps[i].offset != i) return false;
  return true;
}

}  // namespace

const LineCodec* LineCodec::Find(unsigned int format) {
  static const std::vector<LineCodec> codecs = BuildAll();
  const PlaneLayout* layout = PlaneLayout::Find(format);
  if (!layout) return nullptr;
  for (const LineCodec& codec : codecs)
    if (codec.format == layout->format) return &codec;
  return nullptr;
}

void LineCodec::Decode(const SamplePlanes& planes, int width, int y, ComponentLines& lines, unsigned mask) const {
  switch (kind) {
    case TenBit: packedDecode(planes.data[0] + static_cast<long long>(y) * planes.stride[0], width, lines); return;
    case Mosaic: BayerMosaic::Decode(cell, planes, width, y, lines); return;
    case Float: FloatPixels::Decode(cell, planes.data[0] + static_cast<long long>(y) * planes.stride[0], width, lines); return;
    case Regular: break;
  }
  int components = 0;
  if (mask == All && IsWholePixelBytes(*this, components)) {
    uint16_t* targets[4];
    for (int i = 0; i < components; ++i) targets[i] = lines.slot[steps[i].slot];
    const uint8_t* src = planes.data[0] + static_cast<long long>(y) * planes.stride[0];
    if (components == 3) {
      Deinterleave3(src, targets[0], targets[1], targets[2], width);
    } else {
      Deinterleave4(src, targets[0], targets[1], targets[2], targets[3], width);
    }
    return;
  }
  for (int i = 0; i < stepCount; ++i) {
    const Step& step = steps[i];
    if (step.slot < 0 || !(mask & StepMask(step.slot))) continue;
    const int divisor = planeDivisor[step.plane];
    if (y % divisor != 0) continue;  // the plane line was read with its first picture line
    const uint8_t* src = planes.data[step.plane] + static_cast<long long>(y / divisor) * planes.stride[step.plane] +
                         step.offset;
    uint16_t* dst = lines.slot[step.slot] + step.occurrence;
    const int blocks = (width + blockWidth[step.plane] - 1) / blockWidth[step.plane];
    const Gather gather = bigEndian ? nullptr : FindGather(sampleBytes, blockBytes[step.plane] / sampleBytes, step.perBlock);
    if (gather) {
      gather(src, dst, blocks);
    } else {
      GatherGeneral(*this, step, src, dst, blocks);
    }
  }
}

void LineCodec::Encode(const ComponentLines& lines, int width, int y, SamplePlanes& planes, unsigned mask) const {
  uint8_t* line = planes.data[0] + static_cast<long long>(y) * planes.stride[0];
  switch (kind) {
    case TenBit: packedEncode(lines, width, line, std::abs(planes.stride[0])); return;
    case Mosaic: BayerMosaic::Encode(cell, lines, width, y, planes); return;
    case Float: FloatPixels::Encode(cell, lines, width, line); return;
    case Regular: break;
  }
  int components = 0;
  if (mask == All && IsWholePixelBytes(*this, components)) {
    const uint16_t* sources[4];
    for (int i = 0; i < components; ++i) sources[i] = lines.slot[steps[i].slot];
    uint8_t* dst = planes.data[0] + static_cast<long long>(y) * planes.stride[0];
    if (components == 3) {
      Interleave3(sources[0], sources[1], sources[2], dst, width);
    } else {
      Interleave4(sources[0], sources[1], sources[2], sources[3], dst, width);
    }
    return;
  }
  for (int i = 0; i < stepCount; ++i) {
    const Step& step = steps[i];
    if (!(mask & StepMask(step.slot))) continue;
    const int divisor = planeDivisor[step.plane];
    if (y % divisor != 0) continue;
    uint8_t* dst = planes.data[step.plane] + static_cast<long long>(y / divisor) * planes.stride[step.plane] + step.offset;
    const int blocks = (width + blockWidth[step.plane] - 1) / blockWidth[step.plane];
    if (step.slot < 0) {
      ScatterGeneral(*this, step, nullptr, dst, blocks);
      continue;
    }
    const uint16_t* src = lines.slot[step.slot] + step.occurrence;
    const Scatter scatter = bigEndian ? nullptr : FindScatter(sampleBytes, blockBytes[step.plane] / sampleBytes, step.perBlock);
    if (scatter) {
      scatter(src, dst, blocks);
    } else {
      ScatterGeneral(*this, step, src, dst, blocks);
    }
  }
}

int LineCodec::SlotOf(char letter) {
  switch (letter) {
    case 'Y': case 'G': return 0;
    case 'U': case 'B': return 1;
    case 'V': case 'R': return 2;
    case 'A': return 3;
    case 'X': return -1;
    default: return -2;
  }
}

}  // namespace Corvane::Mox
