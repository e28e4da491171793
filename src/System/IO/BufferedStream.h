#pragma once
// CBufferedStream: turns the many small reads and writes of container parsers
// into few large ones. It keeps the N most recently used aligned windows of
// S bytes of the inner stream; requests larger than one window bypass them.
// Seeking only moves the buffered position; the inner stream is positioned
// when a window is filled or written back.

#include "System/Collections/List.h"
#include "System/IO/StreamBuffer.h"
#include "System/IO/WrappedStream.h"

namespace Corvane::Mox {

class CBufferedStream : public CWrappedStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("bfst");

  // Acquires stream; bufferSize and bufferCount are at least 1.
  CBufferedStream(CStream* stream, int bufferSize, int bufferCount);
  ~CBufferedStream() override;

  long long GetLength() override { return length_; }
  long long GetAvailableLength() override;
  Result SetLength(long long length) override;
  long long GetPosition() override { return position_; }
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  int ReadByte() override;
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;
  Result Flush() override;
  // Flushes, closes the inner stream and lets go of it and of the buffers.
  void Close() override;

  int GetBufferSize() const { return bufferSize_; }
  // Windows that hold a part of the stream (the others have never been
  // used, so their memory is untouched).
  int GetWindowsInUse() const;

  // A read or write that continues where the last window ends reuses the
  // least recently used of this many windows instead of a fresh one: a
  // stream read or written straight through keeps a few windows in memory,
  // not the whole cache.
  static constexpr int SequentialWindows = 4;

 private:
  // The window holding position, moved to the front; null when none does.
  CStreamBuffer* Find(long long position);
  // The least recently used window, written back, refilled at the aligned
  // window around position and moved to the front.
  // `wanted` is the bytes from position on the caller needs read.
  Result Recycle(long long position, int wanted, CStreamBuffer*& buffer);
  void MoveToFront(int index, CStreamBuffer* buffer);
  // Writes back windows overlapping a direct transfer; a direct write also
  // forgets them, as their bytes are about to change underneath.
  Result SettleOverlapping(long long position, long long count, bool forget);
  Result ReadDirect(long long position, unsigned char* buffer, int count, int& read);
  Result WriteDirect(long long position, const unsigned char* buffer, int count, int& written);
  // Bytes copied from the windows for one pass of a read.
  Result ReadPass(long long position, unsigned char* buffer, int count, int& read);
  Result WritePass(long long position, const unsigned char* buffer, int count, int& written);
  // Ends a transfer: advances the position and reports the count.
  Result Advance(int done, int count, int* reported);

  long long position_;
  long long length_;
  int bufferSize_;
  CList<CStreamBuffer>* buffers_;  // most recently used first
  CStreamBuffer* front_;           // the first element of buffers_, borrowed
};

}  // namespace Corvane::Mox
