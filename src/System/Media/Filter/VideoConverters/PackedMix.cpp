#include "System/Media/Filter/VideoConverters/PackedMix.h"

#include <algorithm>

#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"

namespace Corvane::Mox {

namespace {

// Pixels go through in chunks that stay in the first-level cache: the mix
// into one 16-bit line per slot, then the interleave into bytes. Each loop
// is one the compiler vectorises; a single loop doing both is not.
constexpr int kChunk = 256;

MOX_VECTOR_CLONES void MixChunk(const float* __restrict__ m, const uint16_t* __restrict__ s0,
                                const uint16_t* __restrict__ s1, const uint16_t* __restrict__ s2,
                                const uint16_t* __restrict__ alpha, uint16_t* __restrict__ o0,
                                uint16_t* __restrict__ o1, uint16_t* __restrict__ o2, uint16_t* __restrict__ o3, int count,
                                float maximum) {
  float k[12];
  std::copy(m, m + 12, k);
  for (int x = 0; x < count; ++x) {
    const float a = s0[x], b = s1[x], c = s2[x];
    const float v0 = k[0] * a + k[1] * b + k[2] * c + k[3] + 0.5f;
    const float v1 = k[4] * a + k[5] * b + k[6] * c + k[7] + 0.5f;
    const float v2 = k[8] * a + k[9] * b + k[10] * c + k[11] + 0.5f;
    o0[x] = static_cast<uint16_t>(std::min(std::max(v0, 0.0f), maximum));
    o1[x] = static_cast<uint16_t>(std::min(std::max(v1, 0.0f), maximum));
    o2[x] = static_cast<uint16_t>(std::min(std::max(v2, 0.0f), maximum));
    o3[x] = alpha[x];
  }
}

// N bytes a pixel; byte k holds component slot Bk (0 G, 1 B, 2 R, 3 alpha,
// -1 padding written as 0xFF).
template <int N, int B0, int B1, int B2, int B3>
MOX_VECTOR_CLONES void InterleaveChunk(const uint16_t (*__restrict__ in)[kChunk], uint8_t* __restrict__ dst, int count) {
  for (int x = 0; x < count; ++x) {
    dst[x * N] = B0 < 0 ? 0xFF : static_cast<uint8_t>(in[B0 < 0 ? 0 : B0][x]);
    dst[x * N + 1] = B1 < 0 ? 0xFF : static_cast<uint8_t>(in[B1 < 0 ? 0 : B1][x]);
    dst[x * N + 2] = B2 < 0 ? 0xFF : static_cast<uint8_t>(in[B2 < 0 ? 0 : B2][x]);
    if constexpr (N == 4) dst[x * N + 3] = B3 < 0 ? 0xFF : static_cast<uint8_t>(in[B3 < 0 ? 0 : B3][x]);
  }
}

template <int N, int B0, int B1, int B2, int B3>
void MixPack(const float* m, const uint16_t* s0, const uint16_t* s1, const uint16_t* s2, const uint16_t* alpha,
             uint8_t* dst, int width, float maximum) {
  alignas(32) uint16_t chunk[4][kChunk];
  for (int start = 0; start < width; start += kChunk) {
    const int count = std::min(kChunk, width - start);
    MixChunk(m, s0 + start, s1 + start, s2 + start, alpha + start, chunk[0], chunk[1], chunk[2], chunk[3], count,
             maximum);
    InterleaveChunk<N, B0, B1, B2, B3>(chunk, dst + static_cast<long long>(start) * N, count);
  }
}

struct Order {
  int bytes;
  int slots[4];
  PackedMix::Kernel kernel;
};

constexpr Order kOrders[] = {
    {3, {1, 0, 2, -1}, &MixPack<3, 1, 0, 2, -1>},  // B G R
    {3, {2, 0, 1, -1}, &MixPack<3, 2, 0, 1, -1>},  // R G B
    {4, {1, 0, 2, 3}, &MixPack<4, 1, 0, 2, 3>},    // B G R A
    {4, {2, 0, 1, 3}, &MixPack<4, 2, 0, 1, 3>},    // R G B A
    {4, {3, 2, 0, 1}, &MixPack<4, 3, 2, 0, 1>},    // A R G B
    {4, {1, 0, 2, -1}, &MixPack<4, 1, 0, 2, -1>},  // B G R X
    {4, {-1, 2, 0, 1}, &MixPack<4, -1, 2, 0, 1>},  // X R G B
};

}  // namespace

PackedMix::Kernel PackedMix::Find(const LineCodec& output) {
  if (output.kind != LineCodec::Regular || output.planeCount != 1 || output.sampleBytes != 1 ||
      output.blockWidth[0] != 1 || !output.rgb || output.stepCount != output.blockBytes[0])
    return nullptr;
  for (const Order& order : kOrders) {
    if (order.bytes != output.blockBytes[0]) continue;
    bool same = true;
    for (int i = 0; i < order.bytes; ++i) same &= output.steps[i].offset == i && output.steps[i].slot == order.slots[i];
    if (same) return order.kernel;
  }
  return nullptr;
}

}  // namespace Corvane::Mox
