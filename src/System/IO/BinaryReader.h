#pragma once
// CBinaryReader: reads fixed-size integers, floats, four-character codes,
// GUIDs and byte runs from a stream in a chosen byte order. Each read asks the
// stream for exactly the value's size; a shorter answer is the end of the
// stream.

#include "System/Guid.h"
#include "System/IO/Binary.h"
#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CByteArray;

class CBinaryReader : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("binr");

  // Acquires stream; little-endian order.
  explicit CBinaryReader(CStream* stream);
  CBinaryReader(CStream* stream, CBinary::ByteOrder order);
  ~CBinaryReader() override;

  // Each returns ResultArgumentNull for a null out pointer.
  Result ReadByte(unsigned char* value);
  Result ReadInt16(short* value);
  Result ReadInt32(int* value);
  // A field of the given type, zero-extended; FieldAbsent reads nothing and
  // yields defaultValue.
  Result ReadInt32(int* value, CBinary::FieldType type, int defaultValue);
  // Four bytes as a big-endian code, whatever the byte order.
  Result ReadFour(unsigned int* value);
  Result ReadInt64(long long* value);
  Result ReadFloat32(float* value);
  Result ReadFloat64(double* value);
  // In big-endian order the three leading fields are swapped one by one.
  Result ReadGuid(Guid* value);
  Result ReadBytes(unsigned char* bytes, int count);
  // Fills the array's length.
  Result ReadBytes(CByteArray* bytes);

  // The stream, acquired; null after Close.
  CStream* GetStream() const;
  CBinary::ByteOrder GetByteOrder() const { return order_; }
  long long GetLength();
  long long GetAvailableLength();
  long long GetPosition();
  // A relative seek.
  Result Skip(long long count);
  Result Seek(long long offset, SeekOrigin origin, long long* position);
  // Lets go of the stream.
  void Close();

 private:
  Result ReadExactly(unsigned char* bytes, int count);
  template <class T>
  Result ReadValue(T* value);

  CStream* stream_;
  CBinary::ByteOrder order_;
};

}  // namespace Corvane::Mox
