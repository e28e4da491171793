#pragma once
// CCrc16Stream: a pass-through stream that folds every byte read or written
// into a 16-bit CRC (most significant bit first, no reflection, no final
// exclusive-or). The CRC starts at 0; the polynomial is given without its
// top term (0x1021 for CCITT). Subclasses may change the algorithm through
// UpdateCrc.

#include "System/IO/WrappedStream.h"

namespace Corvane::Mox {

class CCrc16Stream : public CWrappedStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("cr16");

  // Acquires inner (may be null: then every operation fails as for a
  // wrapped stream without a stream).
  CCrc16Stream(unsigned short polynomial, CStream* inner);

  using CWrappedStream::Read;
  using CWrappedStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;

  unsigned short GetCrc() const { return crc_; }
  unsigned short GetPolynomial() const { return polynomial_; }
  // Folds one byte into the current CRC.
  void ComputeCrc(unsigned char byte);
  // crc with byte folded in.
  virtual unsigned short UpdateCrc(unsigned short crc, unsigned char byte);

 private:
  void Fold(const unsigned char* bytes, int count);

  unsigned short crc_;
  unsigned short polynomial_;
};

}  // namespace Corvane::Mox
