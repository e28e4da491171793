#pragma once
// CFileDescriptorStream: a file stream on a raw descriptor, with 64-bit
// offsets. Besides following a growing file it can wait before a read until
// the file holds the requested bytes plus a safety margin, and it exposes the
// platform's read-ahead and page-cache switches.

#include <atomic>

#include "System/IO/FileStream.h"

namespace Corvane::Mox {

class CFileDescriptorStream : public CFileStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("fdst");
  // Controls with a 1-byte argument: read-ahead on or off, caching on or off.
  static constexpr unsigned int ReadAheadCode = FourCC("rdah");
  static constexpr unsigned int CacheCode = FourCC("cach");

  explicit CFileDescriptorStream(FileMode mode);
  ~CFileDescriptorStream() override;

  // Opens path with mode and hands over the open stream; out is null on failure.
  static Result Open(const char* path, FileMode mode, CStream*& out);
  static Result Open(CString* path, FileMode mode, CStream*& out);

  using CFileStream::Open;
  Result Open(const char* path) override;
  Result Open(CString* path) override;

  Result Control(unsigned int code, int length, unsigned char* data) override;
  bool CanSeek() override { return descriptor_ >= 0; }
  long long GetLength() override { return knownLength_; }
  long long GetAvailableLength() override;
  Result SetLength(long long length) override;
  long long GetPosition() override;
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;
  void Close() override;

  // Keeps the pages read in the page cache (the default) or drops them.
  Result Cache(bool enable);
  // Lets the platform read ahead of sequential reads (the default) or not.
  Result ReadAhead(bool enable);
  // With a read timeout and a margin set, polls until the file holds count
  // bytes plus the margin beyond the position or timeout runs out; timeout is
  // counted down as it goes.
  Result WaitForData(int count, int& timeout);

 protected:
  Result ReadOnce(unsigned char* buffer, int count, int& read) override;
  Result SeekTo(long long position) override;

 private:
  // Whether pages just read leave the cache: caching was turned off, or the
  // stream is following a file that is still being written.
  bool DropsPages() const;

  int descriptor_;
  // The descriptor's offset, kept here so that asking for it costs no call.
  long long position_;
  bool append_;
  std::atomic<bool> dropPages_;
};

}  // namespace Corvane::Mox
