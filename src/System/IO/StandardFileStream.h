#pragma once
// CStandardFileStream: a file stream on the C library's buffered files. It
// follows a growing file like the descriptor stream, without the log lines
// and without waiting for a margin before reading.

#include <cstdio>

#include "System/IO/FileStream.h"

namespace Corvane::Mox {

class CStandardFileStream : public CFileStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("sfst");

  explicit CStandardFileStream(FileMode mode);
  ~CStandardFileStream() override;

  // Opens path with mode and hands over the open stream; out is null on failure.
  static Result Open(const char* path, FileMode mode, CStream*& out);
  static Result Open(CString* path, FileMode mode, CStream*& out);

  using CFileStream::Open;
  Result Open(const char* path) override;
  Result Open(CString* path) override;

  bool CanSeek() override { return file_ != nullptr; }
  long long GetLength() override { return knownLength_; }
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

 protected:
  Result ReadOnce(unsigned char* buffer, int count, int& read) override;
  Result SeekTo(long long position) override;

 private:
  enum class Direction { None, Reading, Writing };

  // The C library needs a positioning call between reading and writing.
  void Turn(Direction direction);

  FILE* file_;
  Direction direction_;
};

}  // namespace Corvane::Mox
