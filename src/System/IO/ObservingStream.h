#pragma once
// CObservingStream: a wrapped stream that shows every byte successfully read
// or written through it to Observe, the base of the CRC streams.

#include "System/IO/WrappedStream.h"

namespace Corvane::Mox {

class CObservingStream : public CWrappedStream {
 public:
  using CWrappedStream::Read;
  using CWrappedStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;

 protected:
  CObservingStream(unsigned int type, CStream* inner) : CWrappedStream(type, inner) {}
  // The bytes that passed, in order.
  virtual void Observe(const unsigned char* bytes, int count) = 0;
};

}  // namespace Corvane::Mox
