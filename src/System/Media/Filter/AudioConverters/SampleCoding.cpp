#include "System/Media/Filter/AudioConverters/SampleCoding.h"

#include <algorithm>
#include <memory>

#include "System/Media/Audio/G711.h"
#include "System/Media/Filter/AudioConverters/SampleKernels.h"
#include "System/Types.h"

namespace Corvane::Mox {

namespace {

using K = SampleCoding;

constexpr SampleCoding kCodings[] = {
    {FourCC("int8"), K::Signed, 1, 8, false},   {FourCC("raw "), K::Unsigned, 1, 8, false},
    {FourCC("sowt"), K::Signed, 2, 16, false},  {FourCC("twos"), K::Signed, 2, 16, true},
    {FourCC("02ni"), K::Signed, 3, 20, false},  {FourCC("in20"), K::Signed, 3, 20, true},
    {FourCC("42ni"), K::Signed, 3, 24, false},  {FourCC("in24"), K::Signed, 3, 24, true},
    {FourCC("u24l"), K::Unsigned, 3, 24, false}, {FourCC("u24b"), K::Unsigned, 3, 24, true},
    {FourCC("23ni"), K::Signed, 4, 32, false},  {FourCC("in32"), K::Signed, 4, 32, true},
    {FourCC("23lf"), K::Float, 4, 32, false},   {FourCC("fl32"), K::Float, 4, 32, true},
    {FourCC("46lf"), K::Float, 8, 64, false},   {FourCC("fl64"), K::Float, 8, 64, true},
    {FourCC("alaw"), K::ALaw, 1, 8, false},     {FourCC("ulaw"), K::MuLaw, 1, 8, false},
};

// Values per pass: 4,096 wide values and as many doubles stay within the
// second-level cache of any current processor.
constexpr size_t kBlock = 4096;

struct Scratch {
  int32_t wide[kBlock];
  float singles[kBlock];
  double doubles[kBlock];
};

// Low bits below a 20-bit value's precision are not part of it.
void KeepTwentyBits(int32_t* wide, size_t n) {
  for (size_t i = 0; i < n; ++i) wide[i] = static_cast<int32_t>(static_cast<uint32_t>(wide[i]) & 0xFFFFF000u);
}

void LoadWide(const SampleCoding& c, const uint8_t* in, int32_t* wide, size_t n) {
  switch (c.kind) {
    case K::ALaw:
    case K::MuLaw: {
      const int16_t* table = c.kind == K::ALaw ? G711::AlawExpansionTable() : G711::UlawExpansionTable();
      for (size_t i = 0; i < n; ++i) wide[i] = static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint16_t>(table[in[i]])) << 16);
      return;
    }
    default:
      break;
  }
  const bool isUnsigned = c.kind == K::Unsigned;
  switch (c.bytes) {
    case 1: SampleKernels::LoadInt8(in, wide, n, isUnsigned); break;
    case 2: SampleKernels::LoadInt16(in, wide, n, c.bigEndian); break;
    case 3: SampleKernels::LoadInt24(in, wide, n, c.bigEndian, isUnsigned); break;
    default: SampleKernels::LoadInt32(in, wide, n, c.bigEndian); break;
  }
  if (c.bits == 20) KeepTwentyBits(wide, n);
}

void StoreWide(const SampleCoding& c, int32_t* wide, uint8_t* out, size_t n) {
  if (c.IsCompanded()) {
    // The 16-bit value read as unsigned, shifted to the table's precision.
    const bool alaw = c.kind == K::ALaw;
    const uint8_t* table = alaw ? G711::AlawCompressionTable() : G711::UlawCompressionTable();
    const int shift = alaw ? 16 + 3 : 16 + 2;
    for (size_t i = 0; i < n; ++i) out[i] = table[static_cast<uint32_t>(wide[i]) >> shift];
    return;
  }
  if (c.bits == 20) KeepTwentyBits(wide, n);
  const bool isUnsigned = c.kind == K::Unsigned;
  switch (c.bytes) {
    case 1: SampleKernels::StoreInt8(wide, out, n, isUnsigned); break;
    case 2: SampleKernels::StoreInt16(wide, out, n, c.bigEndian); break;
    case 3: SampleKernels::StoreInt24(wide, out, n, c.bigEndian, isUnsigned); break;
    default: SampleKernels::StoreInt32(wide, out, n, c.bigEndian); break;
  }
}

void ConvertBlock(const SampleCoding& from, const SampleCoding& to, const uint8_t* in, uint8_t* out, size_t n,
                  Scratch& s) {
  if (from.IsFloat() && from.bytes == 4) {
    SampleKernels::LoadFloat32(in, s.singles, n, from.bigEndian);
    if (to.IsFloat()) {  // only the wider form is left: the same width is a byte swap
      SampleKernels::Float32ToFloat64(s.singles, s.doubles, n);
      SampleKernels::StoreFloat64(s.doubles, out, n, to.bigEndian);
      return;
    }
    SampleKernels::Float32ToWide(s.singles, s.wide, n, to.FloatScaleBits());
    StoreWide(to, s.wide, out, n);
    return;
  }
  if (from.IsFloat()) {
    SampleKernels::LoadFloat64(in, s.doubles, n, from.bigEndian);
    if (to.IsFloat()) {
      SampleKernels::Float64ToFloat32(s.doubles, s.singles, n);
      SampleKernels::StoreFloat32(s.singles, out, n, to.bigEndian);
      return;
    }
    SampleKernels::Float64ToWide(s.doubles, s.wide, n, to.FloatScaleBits());
    StoreWide(to, s.wide, out, n);
    return;
  }
  LoadWide(from, in, s.wide, n);
  if (to.IsFloat() && to.bytes == 4) {
    SampleKernels::WideToFloat32(s.wide, s.singles, n);
    SampleKernels::StoreFloat32(s.singles, out, n, to.bigEndian);
  } else if (to.IsFloat()) {
    SampleKernels::WideToFloat64(s.wide, s.doubles, n);
    SampleKernels::StoreFloat64(s.doubles, out, n, to.bigEndian);
  } else {
    StoreWide(to, s.wide, out, n);
  }
}

}  // namespace

int SampleCoding::FloatScaleBits() const {
  if (IsCompanded()) return 16;
  return bytes <= 2 ? bits : 32;
}

bool SampleCoding::DiffersOnlyInByteOrder(const SampleCoding& other) const {
  return kind == other.kind && bytes == other.bytes && bits == other.bits;
}

const SampleCoding* SampleCoding::Find(unsigned int format) {
  for (const SampleCoding& coding : kCodings)
    if (coding.format == format) return &coding;
  return nullptr;
}

void ConvertSamples(const SampleCoding& from, const SampleCoding& to, const uint8_t* in, uint8_t* out, size_t n) {
  if (from.DiffersOnlyInByteOrder(to)) {
    if (from.bigEndian == to.bigEndian || from.bytes == 1) std::copy(in, in + n * from.bytes, out);
    else SampleKernels::SwapBytes(in, out, n, from.bytes);
    return;
  }
  // One scratch block per converting thread, made on its first use.
  thread_local std::unique_ptr<Scratch> scratch;
  if (!scratch) scratch = std::make_unique<Scratch>();
  for (size_t done = 0; done < n; done += kBlock) {
    const size_t count = std::min(kBlock, n - done);
    ConvertBlock(from, to, in + done * from.bytes, out + done * to.bytes, count, *scratch);
  }
}

}  // namespace Corvane::Mox
