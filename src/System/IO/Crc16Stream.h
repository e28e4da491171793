#pragma once
// CCrc16Stream: a pass-through stream that folds every byte read or written
// into a 16-bit CRC (most significant bit first, no reflection, no final
// exclusive-or). The CRC starts at 0; the polynomial is given without its
// top term (0x1021 for CCITT). Subclasses may change the algorithm through
// UpdateCrc.

#include "System/IO/ObservingStream.h"

namespace Corvane::Mox {

class CCrc16Stream : public CObservingStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("cr16");

  // Acquires inner (may be null: then every operation fails as for a
  // wrapped stream without a stream).
  CCrc16Stream(unsigned short polynomial, CStream* inner);

  unsigned short GetCrc() const { return crc_; }
  unsigned short GetPolynomial() const { return polynomial_; }
  // Folds one byte into the current CRC.
  void ComputeCrc(unsigned char byte);
  // crc with byte folded in.
  virtual unsigned short UpdateCrc(unsigned short crc, unsigned char byte);

 private:
  void Observe(const unsigned char* bytes, int count) override;

  unsigned short crc_;
  unsigned short polynomial_;
};

}  // namespace Corvane::Mox
