#pragma once
// How a PCM format code stores one sample value: its kind, width in bytes,
// significant bits and byte order. The audio format converter reads and
// writes every format through these descriptions.

#include <cstddef>
#include <cstdint>

namespace Corvane::Mox {

struct SampleCoding {
  enum Kind : uint8_t { Signed, Unsigned, Float, ALaw, MuLaw };

  unsigned int format;
  Kind kind;
  uint8_t bytes;
  uint8_t bits;
  bool bigEndian;

  bool IsFloat() const { return kind == Float; }
  bool IsCompanded() const { return kind == ALaw || kind == MuLaw; }
  // The width a float value is scaled to before it becomes this format:
  // 8 and 16 bits for those widths (and 16 for the companded codes that are
  // made from 16-bit values), otherwise 32 with low bits dropped later.
  int FloatScaleBits() const;
  // Same storage apart from byte order: converting is a byte swap.
  bool DiffersOnlyInByteOrder(const SampleCoding& other) const;

  // The coding of a format code, or null for a code that is not plain PCM.
  static const SampleCoding* Find(unsigned int format);
};

// Converts n values from one coding to another through a small scratch
// block, so that a whole buffer makes two passes over cache-resident data.
void ConvertSamples(const SampleCoding& from, const SampleCoding& to, const uint8_t* in, uint8_t* out, size_t n);

}  // namespace Corvane::Mox
