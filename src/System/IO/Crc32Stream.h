#pragma once
// CCrc32Stream: a pass-through stream that folds every byte read or written
// into a 32-bit CRC (most significant bit first, no reflection, no final
// exclusive-or). The CRC starts at 0 (SetCrc starts it elsewhere, 0xFFFFFFFF
// for the MPEG-2 CRC); the polynomial is given without its top term
// (0x04C11DB7). Subclasses may change the algorithm through UpdateCrc, as
// the reflected CRC of PNG chunks does.

#include "System/IO/ObservingStream.h"

namespace Corvane::Mox {

class CCrc32Stream : public CObservingStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("cr32");

  // Acquires inner (may be null: then every operation fails as for a
  // wrapped stream without a stream).
  CCrc32Stream(unsigned int polynomial, CStream* inner);

  unsigned int GetCrc() const { return crc_; }
  void SetCrc(unsigned int crc) { crc_ = crc; }
  unsigned int GetPolynomial() const { return polynomial_; }
  // crc with byte folded in.
  virtual unsigned int UpdateCrc(unsigned int crc, unsigned char byte);

 private:
  void Observe(const unsigned char* bytes, int count) override;

  unsigned int crc_;
  unsigned int polynomial_;
};

}  // namespace Corvane::Mox
