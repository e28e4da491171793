#pragma once
// CBinaryWriter: the mirror of CBinaryReader. Each value is swapped into the
// chosen byte order and written whole; a stream that takes fewer bytes ends
// the write with ResultEndOfStream.

#include "System/Guid.h"
#include "System/IO/Binary.h"
#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CByteArray;

class CBinaryWriter : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("binw");

  // Acquires stream; little-endian order.
  explicit CBinaryWriter(CStream* stream);
  CBinaryWriter(CStream* stream, CBinary::ByteOrder order);
  ~CBinaryWriter() override;

  Result WriteByte(unsigned char value);
  Result WriteInt16(short value);
  Result WriteInt32(int value);
  // The low 1, 2, 4 or 3 bytes of value; FieldAbsent writes nothing, an
  // unknown type is not supported.
  Result WriteInt32(int value, CBinary::FieldType type);
  // A four-character code, always big-endian.
  Result WriteFour(unsigned int value);
  Result WriteInt64(long long value);
  Result WriteFloat32(float value);
  Result WriteFloat64(double value);
  // In big-endian order the three leading fields are swapped one by one.
  Result WriteGuid(Guid value);
  // A zero count succeeds without touching the stream.
  Result WriteBytes(const unsigned char* bytes, int count);
  Result WriteBytes(CByteArray* bytes);
  Result WriteBytes(CByteArray* bytes, int offset, int count);
  Result Flush();
  // Lets go of the stream.
  void Close();

  // The stream, acquired; null after Close.
  CStream* GetStream() const;
  CBinary::ByteOrder GetByteOrder() const { return order_; }
  long long GetLength();
  long long GetPosition();
  // A relative seek.
  Result Skip(int count);
  Result Seek(long long offset, SeekOrigin origin, long long* position);

 private:
  Result WriteExactly(const unsigned char* bytes, int count);
  template <class T>
  Result WriteValue(T value);

  CStream* stream_;
  CBinary::ByteOrder order_;
};

}  // namespace Corvane::Mox
