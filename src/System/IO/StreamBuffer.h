#pragma once
// CStreamBuffer: one aligned window of a stream held in memory by
// CBufferedStream. It knows where in the stream it starts, which of its
// bytes are valid and whether it holds writes not yet passed on. A window
// over a stream it cannot read holds only the run of bytes written into it,
// so that writing it back never replaces bytes of the stream it never saw.

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;
class CStream;

class CStreamBuffer : public CObject {
 public:
  explicit CStreamBuffer(int size);
  ~CStreamBuffer() override;

  int GetSize() const { return size_; }
  // Stream offset of the first byte, -1 while empty.
  long long GetOffset() const { return offset_; }
  int GetValidLength() const { return valid_; }
  // Whether a write at position can join the bytes the window holds (always
  // for windows filled from the stream).
  bool Accepts(long long position) const {
    return !blind_ || valid_ == held_ || (position >= offset_ + held_ && position <= offset_ + valid_);
  }
  // Empties the window in place (after Finalize), keeping its offset.
  void Restart() {
    held_ = valid_ = 0;
    dirty_ = false;
  }
  bool IsDirty() const { return dirty_; }
  // Whether position falls in the window (valid or not).
  bool Covers(long long position) const { return offset_ >= 0 && position >= offset_ && position - offset_ < size_; }
  // Whether the window and [position, position + count) share bytes.
  bool Overlaps(long long position, long long count) const {
    return offset_ >= 0 && position < offset_ + size_ && offset_ < position + count;
  }

  // Moves stream to position; a stream that cannot seek must already be there.
  static Result MoveTo(CStream* stream, long long position);
  // Places the window at position (seeking the stream there if it is not
  // already) and fills it from a readable, non-empty stream. Over a stream
  // that follows a growing file the fill asks for no more than the stream
  // holds beyond position, but for at least `wanted` bytes (the caller's
  // need), so that it waits only for bytes someone asked for.
  Result Initialize(CStream* stream, long long position, int wanted);
  // Writes the window back when it holds writes.
  Result Finalize(CStream* stream);
  // Forgets the window.
  void Invalidate();
  // Copies valid bytes from position on; read receives the count.
  Result Read(long long position, unsigned char* buffer, int count, int* read) const;
  // Copies bytes into the window from position on, as far as it reaches.
  Result Write(long long position, const unsigned char* buffer, int count, int* written);

  // The bytes valid from position on within the window (0 outside it):
  // the inline fast path of the buffered stream.
  int Available(long long position) const {
    long long end = offset_ + valid_;
    return position >= offset_ + held_ && position < end ? static_cast<int>(end - position) : 0;
  }
  const unsigned char* At(long long position) const { return data_ + (position - offset_); }

  // memcpy, except where it is slow. The C library copies large blocks with
  // a string instruction that some processors run many times slower when the
  // destination lies less than 64 bytes after the source modulo a page; such
  // copies go in pieces small enough for its vector loop.
  static void Copy(unsigned char* to, const unsigned char* from, std::size_t count) {
    constexpr std::size_t Piece = 2048;
    std::size_t distance = (reinterpret_cast<std::uintptr_t>(to) - reinterpret_cast<std::uintptr_t>(from)) & 4095;
    if (count <= Piece || distance == 0 || distance >= 64) {
      std::memcpy(to, from, count);
      return;
    }
    for (std::size_t done = 0; done < count; done += Piece) std::memcpy(to + done, from + done, std::min(Piece, count - done));
  }

 private:

  int size_;
  CByteArray* storage_;
  unsigned char* data_;
  long long offset_;
  int valid_;  // bytes [held_, valid_) of the window are valid
  int held_;
  bool blind_;  // the stream could not be read when the window was placed
  bool dirty_;
};

}  // namespace Corvane::Mox
