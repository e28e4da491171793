// The mix is a plain loop the compiler vectorises (per vector target through
// MOX_VECTOR_CLONES); the interleave of the byte lines into pixels uses
// Highway's interleaved stores, compiled once per vector target and chosen
// on first use, which the compiler does not find on its own for three-byte
// pixels.

#include "System/Media/Filter/VideoConverters/PackedMix.h"

#include <algorithm>
#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "System/Media/Filter/VideoConverters/PackedMix.cpp"
#include "hwy/foreach_target.h"  // IWYU pragma: keep
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace Corvane::Mox::PackedMixKernels {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// dst holds count pixels whose byte k comes from line k (three or four lines).
void InterleaveImpl(const uint8_t* l0, const uint8_t* l1, const uint8_t* l2, const uint8_t* l3, uint8_t* dst,
                    size_t count) {
  const hn::ScalableTag<uint8_t> d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  if (l3) {
    for (; i + lanes <= count; i += lanes)
      hn::StoreInterleaved4(hn::LoadU(d, l0 + i), hn::LoadU(d, l1 + i), hn::LoadU(d, l2 + i), hn::LoadU(d, l3 + i), d,
                            dst + 4 * i);
    for (; i < count; ++i) {
      dst[4 * i] = l0[i], dst[4 * i + 1] = l1[i], dst[4 * i + 2] = l2[i], dst[4 * i + 3] = l3[i];
    }
    return;
  }
  for (; i + lanes <= count; i += lanes)
    hn::StoreInterleaved3(hn::LoadU(d, l0 + i), hn::LoadU(d, l1 + i), hn::LoadU(d, l2 + i), d, dst + 3 * i);
  for (; i < count; ++i) dst[3 * i] = l0[i], dst[3 * i + 1] = l1[i], dst[3 * i + 2] = l2[i];
}

}  // namespace HWY_NAMESPACE
}  // namespace Corvane::Mox::PackedMixKernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"

namespace Corvane::Mox {

namespace PackedMixKernels {
HWY_EXPORT(InterleaveImpl);
}  // namespace PackedMixKernels

namespace {

// Pixels go through in chunks that stay in the first-level cache: the mix
// into one byte line per slot, then the interleave.
constexpr int kChunk = 512;

MOX_VECTOR_CLONES void MixChunk(const float* __restrict__ m, const uint16_t* __restrict__ s0,
                                const uint16_t* __restrict__ s1, const uint16_t* __restrict__ s2,
                                const uint16_t* __restrict__ alpha, uint8_t* __restrict__ o0,
                                uint8_t* __restrict__ o1, uint8_t* __restrict__ o2, uint8_t* __restrict__ o3, int count,
                                float maximum) {
  // Byte stores may alias anything: the matrix is read once up front.
  float k[12];
  std::copy(m, m + 12, k);
  for (int x = 0; x < count; ++x) {
    const float a = s0[x], b = s1[x], c = s2[x];
    const float v0 = k[0] * a + k[1] * b + k[2] * c + k[3] + 0.5f;
    const float v1 = k[4] * a + k[5] * b + k[6] * c + k[7] + 0.5f;
    const float v2 = k[8] * a + k[9] * b + k[10] * c + k[11] + 0.5f;
    o0[x] = static_cast<uint8_t>(static_cast<uint16_t>(std::min(std::max(v0, 0.0f), maximum)));
    o1[x] = static_cast<uint8_t>(static_cast<uint16_t>(std::min(std::max(v1, 0.0f), maximum)));
    o2[x] = static_cast<uint8_t>(static_cast<uint16_t>(std::min(std::max(v2, 0.0f), maximum)));
    o3[x] = static_cast<uint8_t>(alpha[x]);
  }
}

}  // namespace

PackedMix PackedMix::Find(const LineCodec& output) {
  PackedMix packing;
  const int bytes = output.blockBytes[0];
  if (output.kind != LineCodec::Regular || output.planeCount != 1 || output.sampleBytes != 1 ||
      output.blockWidth[0] != 1 || !output.rgb || (bytes != 3 && bytes != 4) || output.stepCount != bytes)
    return packing;
  for (int i = 0; i < bytes; ++i) {
    if (output.steps[i].offset != i || output.steps[i].perBlock != 1) return packing;
    packing.slots[i] = output.steps[i].slot;
  }
  packing.bytes = bytes;
  return packing;
}

void PackedMix::Run(const float* m, const uint16_t* s0, const uint16_t* s1, const uint16_t* s2, const uint16_t* alpha,
                    uint8_t* dst, int width, float maximum) const {
  // Lines 0..3 hold the slots, line 4 the padding bytes.
  alignas(64) uint8_t chunk[5][kChunk];
  std::fill(chunk[4], chunk[4] + kChunk, static_cast<uint8_t>(0xFF));
  const uint8_t* lines[4];
  for (int k = 0; k < 4; ++k) lines[k] = chunk[slots[k] < 0 ? 4 : slots[k]];
  for (int start = 0; start < width; start += kChunk) {
    const int count = std::min(kChunk, width - start);
    MixChunk(m, s0 + start, s1 + start, s2 + start, alpha + start, chunk[0], chunk[1], chunk[2], chunk[3], count,
             maximum);
    HWY_DYNAMIC_DISPATCH(PackedMixKernels::InterleaveImpl)(lines[0], lines[1], lines[2], bytes == 4 ? lines[3] : nullptr,
                                                           dst + static_cast<long long>(start) * bytes,
                                                           static_cast<size_t>(count));
  }
}

}  // namespace Corvane::Mox
#endif  // HWY_ONCE
