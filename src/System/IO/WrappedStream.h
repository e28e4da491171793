#pragma once
// CWrappedStream: a stream in front of another one. By itself it passes every
// operation through; subclasses change what they need. Its monitor is the
// inner stream's monitor, so locking a wrapper locks what it wraps.

#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CWrappedStream : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("wpst");

  // Acquires stream (may be null).
  explicit CWrappedStream(CStream* stream);
  ~CWrappedStream() override;

  // Nothing matches while the inner stream is of type "rrst".
  bool IsType(unsigned int type) const override;

  Result Enter() const override;
  bool TryEnter() const override;
  bool Wait() const override;
  bool Wait(int milliseconds) const override;
  Result Notify() const override;
  Result NotifyAll() const override;
  Result Exit() const override;

  bool IsDataAvailable() override;
  Result Control(unsigned int code, int length, unsigned char* data) override;
  bool CanRead() override;
  bool CanSeek() override;
  bool CanWrite() override;
  long long GetLength() override;
  long long GetAvailableLength() override;
  Result SetLength(long long length) override;
  long long GetPosition() override;
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;
  Result Flush() override;
  void Close() override;

  // The inner stream, acquired; null once released.
  virtual CStream* GetStream() const;

 protected:
  CWrappedStream(unsigned int type, CStream* stream);
  // Drops the reference to the inner stream.
  void ReleaseStream();

  CStream* stream_;
};

}  // namespace Corvane::Mox
