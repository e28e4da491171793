#pragma once
// CY4mFrame: one frame of a YUV4MPEG2 stream: where its picture bytes start,
// how many there are, and optionally the bytes themselves.

#include "System/Object.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;
class CByteArray;

class CY4mFrame : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("y4mf");

  explicit CY4mFrame(int length);
  ~CY4mFrame() override;

  int GetLength() const { return length_; }
  long long GetPosition() const { return position_; }
  CByteArray* GetBuffer() const { return buffer_; }  // not acquired; may be null
  void SetBuffer(CByteArray* buffer);

  // Reads the "FRAME" line (its parameters are skipped) and, with a buffer,
  // the picture; without one the stream is left at the picture. Anything but
  // "FRAME" is ResultUnexpected.
  Result Read(CBinaryReader* reader, unsigned char& last);
  // "FRAME", a line feed and the buffer's bytes.
  Result Write(CBinaryWriter* writer) const;

 private:
  int length_;
  long long position_;
  CByteArray* buffer_;
};

}  // namespace Corvane::Mox
