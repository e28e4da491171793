#pragma once
// CChecksumStream: a pass-through stream that keeps the 8-bit sum of the
// bytes passing through (caption data packets close with such a sum).
// Written bytes are summed before the write is forwarded. A successful read
// sums the first count bytes of the caller's buffer, count as requested and
// not as delivered: a short read at the end of the data also adds whatever
// the buffer held beyond the delivered bytes. ReadByte sums the byte it
// returns.

#include "System/IO/WrappedStream.h"

namespace Corvane::Mox {

class CChecksumStream : public CWrappedStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("cksm");

  // Acquires inner (may be null).
  explicit CChecksumStream(CStream* inner);

  using CWrappedStream::Read;
  using CWrappedStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  int ReadByte() override;
  Result Write(const unsigned char* buffer, int count, int* written) override;

  unsigned char GetChecksum() const { return sum_; }
  void SetChecksum(unsigned char sum) { sum_ = sum; }

 private:
  void Add(const unsigned char* bytes, int count);

  unsigned char sum_;
};

}  // namespace Corvane::Mox
