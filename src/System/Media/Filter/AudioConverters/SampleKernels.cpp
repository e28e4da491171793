// The kernels are compiled once per vector target (SSSE3, SSE4, AVX2,
// AVX-512 on x86) and the widest one the processor supports is chosen on
// first use. Byte layouts are handled as interleaved byte lanes: a 24-bit
// little-endian sample is bytes (b0, b1, b2) and its wide value the bytes
// (0, b0, b1, b2) of a host-order 32-bit integer, so every integer width
// and byte order is one de-interleave and one re-interleave.

#include "System/Media/Filter/AudioConverters/SampleKernels.h"

#include <bit>
#include <cmath>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "System/Media/Filter/AudioConverters/SampleKernels.cpp"
#include "hwy/foreach_target.h"  // IWYU pragma: keep
#include "hwy/highway.h"

static_assert(std::endian::native == std::endian::little, "wide values are read as little-endian bytes");

HWY_BEFORE_NAMESPACE();
namespace Corvane::Mox::SampleKernels {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using ByteTag = hn::ScalableTag<uint8_t>;

inline uint8_t* Bytes(int32_t* p) { return reinterpret_cast<uint8_t*>(p); }
inline const uint8_t* Bytes(const int32_t* p) { return reinterpret_cast<const uint8_t*>(p); }

// A wide value from its four bytes, least significant first.
inline int32_t Wide(uint32_t b0, uint32_t b1, uint32_t b2, uint32_t b3) {
  return static_cast<int32_t>(b0 | (b1 << 8) | (b2 << 16) | (b3 << 24));
}

void LoadInt8Impl(const uint8_t* in, int32_t* out, size_t n, bool isUnsigned) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  const uint8_t flip = isUnsigned ? 0x80 : 0;
  const auto zero = hn::Zero(d);
  const auto flipV = hn::Set(d, flip);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes)
    hn::StoreInterleaved4(zero, zero, zero, hn::Xor(hn::LoadU(d, in + i), flipV), d, Bytes(out) + 4 * i);
  for (; i < n; ++i) out[i] = Wide(0, 0, 0, in[i] ^ flip);
}

void LoadInt16Impl(const uint8_t* in, int32_t* out, size_t n, bool bigEndian) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  const auto zero = hn::Zero(d);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> b0, b1;
    hn::LoadInterleaved2(d, in + 2 * i, b0, b1);
    if (bigEndian) std::swap(b0, b1);
    hn::StoreInterleaved4(zero, zero, b0, b1, d, Bytes(out) + 4 * i);
  }
  for (; i < n; ++i) {
    const uint8_t* p = in + 2 * i;
    out[i] = bigEndian ? Wide(0, 0, p[1], p[0]) : Wide(0, 0, p[0], p[1]);
  }
}

void LoadInt24Impl(const uint8_t* in, int32_t* out, size_t n, bool bigEndian, bool isUnsigned) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  const uint8_t flip = isUnsigned ? 0x80 : 0;
  const auto zero = hn::Zero(d);
  const auto flipV = hn::Set(d, flip);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> b0, b1, b2;
    hn::LoadInterleaved3(d, in + 3 * i, b0, b1, b2);
    if (bigEndian) std::swap(b0, b2);
    hn::StoreInterleaved4(zero, b0, b1, hn::Xor(b2, flipV), d, Bytes(out) + 4 * i);
  }
  for (; i < n; ++i) {
    const uint8_t* p = in + 3 * i;
    out[i] = bigEndian ? Wide(0, p[2], p[1], p[0] ^ flip) : Wide(0, p[0], p[1], p[2] ^ flip);
  }
}

void LoadInt32Impl(const uint8_t* in, int32_t* out, size_t n, bool bigEndian) {
  if (!bigEndian) {
    std::memcpy(out, in, n * 4);
    return;
  }
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> b0, b1, b2, b3;
    hn::LoadInterleaved4(d, in + 4 * i, b0, b1, b2, b3);
    hn::StoreInterleaved4(b3, b2, b1, b0, d, Bytes(out) + 4 * i);
  }
  for (; i < n; ++i) {
    const uint8_t* p = in + 4 * i;
    out[i] = Wide(p[3], p[2], p[1], p[0]);
  }
}

void StoreInt8Impl(const int32_t* in, uint8_t* out, size_t n, bool isUnsigned) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  const uint8_t flip = isUnsigned ? 0x80 : 0;
  const auto flipV = hn::Set(d, flip);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> w0, w1, w2, w3;
    hn::LoadInterleaved4(d, Bytes(in) + 4 * i, w0, w1, w2, w3);
    hn::StoreU(hn::Xor(w3, flipV), d, out + i);
  }
  for (; i < n; ++i) out[i] = static_cast<uint8_t>((static_cast<uint32_t>(in[i]) >> 24) ^ flip);
}

void StoreInt16Impl(const int32_t* in, uint8_t* out, size_t n, bool bigEndian) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> w0, w1, w2, w3;
    hn::LoadInterleaved4(d, Bytes(in) + 4 * i, w0, w1, w2, w3);
    if (bigEndian) std::swap(w2, w3);
    hn::StoreInterleaved2(w2, w3, d, out + 2 * i);
  }
  for (; i < n; ++i) {
    const uint32_t v = static_cast<uint32_t>(in[i]);
    uint8_t* p = out + 2 * i;
    p[bigEndian ? 1 : 0] = static_cast<uint8_t>(v >> 16);
    p[bigEndian ? 0 : 1] = static_cast<uint8_t>(v >> 24);
  }
}

void StoreInt24Impl(const int32_t* in, uint8_t* out, size_t n, bool bigEndian, bool isUnsigned) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  const uint8_t flip = isUnsigned ? 0x80 : 0;
  const auto flipV = hn::Set(d, flip);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> w0, w1, w2, w3;
    hn::LoadInterleaved4(d, Bytes(in) + 4 * i, w0, w1, w2, w3);
    w3 = hn::Xor(w3, flipV);
    if (bigEndian) std::swap(w1, w3);
    hn::StoreInterleaved3(w1, w2, w3, d, out + 3 * i);
  }
  for (; i < n; ++i) {
    const uint32_t v = static_cast<uint32_t>(in[i]);
    uint8_t* p = out + 3 * i;
    const uint8_t top = static_cast<uint8_t>((v >> 24) ^ flip);
    p[bigEndian ? 2 : 0] = static_cast<uint8_t>(v >> 8);
    p[1] = static_cast<uint8_t>(v >> 16);
    p[bigEndian ? 0 : 2] = top;
  }
}

void StoreInt32Impl(const int32_t* in, uint8_t* out, size_t n, bool bigEndian) {
  if (!bigEndian) {
    std::memcpy(out, in, n * 4);
    return;
  }
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<ByteTag> w0, w1, w2, w3;
    hn::LoadInterleaved4(d, Bytes(in) + 4 * i, w0, w1, w2, w3);
    hn::StoreInterleaved4(w3, w2, w1, w0, d, out + 4 * i);
  }
  for (; i < n; ++i) {
    const uint32_t v = static_cast<uint32_t>(in[i]);
    uint8_t* p = out + 4 * i;
    p[0] = static_cast<uint8_t>(v >> 24);
    p[1] = static_cast<uint8_t>(v >> 16);
    p[2] = static_cast<uint8_t>(v >> 8);
    p[3] = static_cast<uint8_t>(v);
  }
}

constexpr float kWideToFloat = 4.656612873077393e-10f;  // 2^-31

void WideToFloat32Impl(const int32_t* in, float* out, size_t n) {
  const hn::ScalableTag<float> df;
  const hn::RebindToSigned<decltype(df)> di;
  const size_t lanes = hn::Lanes(df);
  const auto scale = hn::Set(df, kWideToFloat);
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) hn::StoreU(hn::Mul(hn::ConvertTo(df, hn::LoadU(di, in + i)), scale), df, out + i);
  for (; i < n; ++i) out[i] = static_cast<float>(in[i]) * kWideToFloat;
}

// One float value to a wide value, exactly as the vector loop does it.
inline int32_t ScalarToWide(double value, int bits) {
  if (std::isnan(value)) return 0;
  const double limit = std::ldexp(1.0, bits - 1);
  double scaled = std::round(value * limit);  // ties away from zero
  if (scaled < -limit) scaled = -limit;
  if (scaled > limit - 1) scaled = limit - 1;
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<int64_t>(scaled)) << (32 - bits));
}

void Float32ToWideImpl(const float* in, int32_t* out, size_t n, int bits) {
  const hn::ScalableTag<float> df;
  const hn::RebindToSigned<decltype(df)> di;
  const size_t lanes = hn::Lanes(df);
  const float limit = std::ldexp(1.0f, bits - 1);
  const auto scale = hn::Set(df, limit);
  const auto one = hn::Set(df, 1.0f);
  const auto half = hn::Set(df, 0.5f);
  const auto low = hn::Set(df, -limit);
  // 2^31 - 1 has no float form: the largest float below 2^31 is the last
  // value converted directly, anything at or above 2^31 saturates.
  const auto high = hn::Set(df, bits == 32 ? 2147483520.0f : limit - 1.0f);
  const auto overflow = hn::Set(df, limit);
  const auto maximum = hn::Set(di, bits == 32 ? 0x7FFFFFFF : static_cast<int32_t>(limit) - 1);
  const int shift = 32 - bits;
  size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    const auto y = hn::Mul(hn::LoadU(df, in + i), scale);
    auto t = hn::Trunc(y);
    const auto roundUp = hn::Ge(hn::Abs(hn::Sub(y, t)), half);
    t = hn::Add(t, hn::IfThenElseZero(roundUp, hn::CopySign(one, y)));
    const auto saturated = hn::RebindMask(di, hn::Ge(t, overflow));
    const auto isNumber = hn::RebindMask(di, hn::Eq(y, y));
    auto r = hn::ConvertTo(di, hn::Min(hn::Max(t, low), high));
    r = hn::IfThenElse(saturated, maximum, r);
    r = hn::IfThenElseZero(isNumber, r);
    hn::StoreU(hn::ShiftLeftSame(r, shift), di, out + i);
  }
  for (; i < n; ++i) out[i] = ScalarToWide(in[i], bits);
}

void SwapBytesImpl(const uint8_t* in, uint8_t* out, size_t n, int width) {
  const ByteTag d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  if (width == 2) {
    for (; i + lanes <= n; i += lanes) {
      hn::Vec<ByteTag> b0, b1;
      hn::LoadInterleaved2(d, in + 2 * i, b0, b1);
      hn::StoreInterleaved2(b1, b0, d, out + 2 * i);
    }
  } else if (width == 3) {
    for (; i + lanes <= n; i += lanes) {
      hn::Vec<ByteTag> b0, b1, b2;
      hn::LoadInterleaved3(d, in + 3 * i, b0, b1, b2);
      hn::StoreInterleaved3(b2, b1, b0, d, out + 3 * i);
    }
  } else if (width == 4) {
    for (; i + lanes <= n; i += lanes) {
      hn::Vec<ByteTag> b0, b1, b2, b3;
      hn::LoadInterleaved4(d, in + 4 * i, b0, b1, b2, b3);
      hn::StoreInterleaved4(b3, b2, b1, b0, d, out + 4 * i);
    }
  }
  // The rest (and every 8-byte value) a value at a time; in and out may be
  // the same buffer, so each value is read whole before it is written.
  for (; i < n; ++i) {
    uint8_t value[8];
    std::memcpy(value, in + i * width, width);
    for (int b = 0; b < width; ++b) out[i * width + b] = value[width - 1 - b];
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace Corvane::Mox::SampleKernels
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Corvane::Mox::SampleKernels {

HWY_EXPORT(LoadInt8Impl);
HWY_EXPORT(LoadInt16Impl);
HWY_EXPORT(LoadInt24Impl);
HWY_EXPORT(LoadInt32Impl);
HWY_EXPORT(StoreInt8Impl);
HWY_EXPORT(StoreInt16Impl);
HWY_EXPORT(StoreInt24Impl);
HWY_EXPORT(StoreInt32Impl);
HWY_EXPORT(WideToFloat32Impl);
HWY_EXPORT(Float32ToWideImpl);
HWY_EXPORT(SwapBytesImpl);

void LoadInt8(const uint8_t* in, int32_t* out, size_t n, bool isUnsigned) {
  HWY_DYNAMIC_DISPATCH(LoadInt8Impl)(in, out, n, isUnsigned);
}
void LoadInt16(const uint8_t* in, int32_t* out, size_t n, bool bigEndian) {
  HWY_DYNAMIC_DISPATCH(LoadInt16Impl)(in, out, n, bigEndian);
}
void LoadInt24(const uint8_t* in, int32_t* out, size_t n, bool bigEndian, bool isUnsigned) {
  HWY_DYNAMIC_DISPATCH(LoadInt24Impl)(in, out, n, bigEndian, isUnsigned);
}
void LoadInt32(const uint8_t* in, int32_t* out, size_t n, bool bigEndian) {
  HWY_DYNAMIC_DISPATCH(LoadInt32Impl)(in, out, n, bigEndian);
}
void StoreInt8(const int32_t* in, uint8_t* out, size_t n, bool isUnsigned) {
  HWY_DYNAMIC_DISPATCH(StoreInt8Impl)(in, out, n, isUnsigned);
}
void StoreInt16(const int32_t* in, uint8_t* out, size_t n, bool bigEndian) {
  HWY_DYNAMIC_DISPATCH(StoreInt16Impl)(in, out, n, bigEndian);
}
void StoreInt24(const int32_t* in, uint8_t* out, size_t n, bool bigEndian, bool isUnsigned) {
  HWY_DYNAMIC_DISPATCH(StoreInt24Impl)(in, out, n, bigEndian, isUnsigned);
}
void StoreInt32(const int32_t* in, uint8_t* out, size_t n, bool bigEndian) {
  HWY_DYNAMIC_DISPATCH(StoreInt32Impl)(in, out, n, bigEndian);
}
void WideToFloat32(const int32_t* in, float* out, size_t n) { HWY_DYNAMIC_DISPATCH(WideToFloat32Impl)(in, out, n); }
void Float32ToWide(const float* in, int32_t* out, size_t n, int bits) {
  HWY_DYNAMIC_DISPATCH(Float32ToWideImpl)(in, out, n, bits);
}
void SwapBytes(const uint8_t* in, uint8_t* out, size_t n, int width) {
  HWY_DYNAMIC_DISPATCH(SwapBytesImpl)(in, out, n, width);
}

// The double-precision paths are rare (64-bit float audio); plain loops that
// the compiler unrolls are enough for them.
void WideToFloat64(const int32_t* in, double* out, size_t n) {
  constexpr double scale = 1.0 / 2147483648.0;
  for (size_t i = 0; i < n; ++i) out[i] = static_cast<double>(in[i]) * scale;
}

void Float64ToWide(const double* in, int32_t* out, size_t n, int bits) {
  for (size_t i = 0; i < n; ++i) out[i] = HWY_NAMESPACE::ScalarToWide(in[i], bits);
}

void LoadFloat32(const uint8_t* in, float* out, size_t n, bool bigEndian) {
  if (bigEndian) SwapBytes(in, reinterpret_cast<uint8_t*>(out), n, 4);
  else std::memcpy(out, in, n * 4);
}
void StoreFloat32(const float* in, uint8_t* out, size_t n, bool bigEndian) {
  if (bigEndian) SwapBytes(reinterpret_cast<const uint8_t*>(in), out, n, 4);
  else std::memcpy(out, in, n * 4);
}
void LoadFloat64(const uint8_t* in, double* out, size_t n, bool bigEndian) {
  if (bigEndian) SwapBytes(in, reinterpret_cast<uint8_t*>(out), n, 8);
  else std::memcpy(out, in, n * 8);
}
void StoreFloat64(const double* in, uint8_t* out, size_t n, bool bigEndian) {
  if (bigEndian) SwapBytes(reinterpret_cast<const uint8_t*>(in), out, n, 8);
  else std::memcpy(out, in, n * 8);
}
void Float32ToFloat64(const float* in, double* out, size_t n) {
  for (size_t i = 0; i < n; ++i) out[i] = in[i];
}
void Float64ToFloat32(const double* in, float* out, size_t n) {
  for (size_t i = 0; i < n; ++i) out[i] = static_cast<float>(in[i]);
}

}  // namespace Corvane::Mox::SampleKernels
#endif  // HWY_ONCE
