#pragma once
// CCryptoStream: pushes the bytes read from or written to an inner stream
// through a crypto transform (a cipher direction or a digest).

#include <memory>

#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CCryptoTransform;

class CCryptoStream : public CStream {
 public:
  enum CryptoMode : int { ModeRead = 0, ModeWrite = 1 };
  static constexpr unsigned int TypeCode = FourCC("crst");

  CCryptoStream(CStream* inner, CCryptoTransform* transform, CryptoMode mode);
  // A write-mode stream flushes its final block when its last reference goes.
  ~CCryptoStream() override;

  bool CanRead() override { return mode_ == ModeRead; }
  bool CanWrite() override { return mode_ == ModeWrite; }
  bool CanSeek() override { return false; }
  long long GetLength() override { return -1; }
  long long GetPosition() override { return -1; }
  Result SetLength(long long) override { return ResultNotSupported(); }
  Result Seek(long long, SeekOrigin, long long*) override { return ResultNotSupported(); }

  using CStream::Read;
  using CStream::Write;
  using CStream::WriteByte;
  Result Read(unsigned char* buffer, int count, int* read) override;
  int ReadByte() override;
  Result Write(const unsigned char* buffer, int count, int* written) override;
  Result WriteByte(unsigned char value, int* written) override;
  // Transforms what is buffered, then the transform's final block, into the inner stream.
  Result FlushFinalBlock();
  void Close() override;

 private:
  Result Refill();
  Result TransformInput();
  Result WriteOutput(int count);

  CStream* inner_;
  CCryptoTransform* transform_;
  CryptoMode mode_;
  int inputCapacity_;
  int inputCount_ = 0;
  std::unique_ptr<unsigned char[]> input_;
  int outputCapacity_;
  int outputPosition_ = 0;
  int outputCount_ = 0;
  std::unique_ptr<unsigned char[]> output_;
  bool finalDone_ = false;
};

}  // namespace Corvane::Mox
