#pragma once
// Data references to bytes in addressable memory ("dram"): one contiguous
// run ("1d[]"), a run in a byte array ("byte"), a compressed access unit
// ("unit"). Pictures live in the pixel references beside them.

#include "System/Media/DataReference.h"

namespace Corvane::Mox {

class CByteArray;
class CVideoProperties;

class CMemoryDataReference : public CDataReference {
 public:
  explicit CMemoryDataReference(unsigned int type);

  bool IsType(unsigned int type) const override;

  // Wraps an uncompressed picture buffer as the pixel reference that fits the
  // description (interlaced field buffers included); stride 0 takes the
  // description's own line stride.
  static Result Create(CVideoProperties* properties, CByteArray* buffer, CMemoryDataReference*& reference);
  static Result Create(CVideoProperties* properties, CByteArray* buffer, int stride,
                       CMemoryDataReference*& reference);
};

class CLinearDataReference : public CMemoryDataReference {
 public:
  explicit CLinearDataReference(unsigned int type, int length = 0);

  bool IsType(unsigned int type) const override;
  int GetLength() override { return length_; }
  // The 32-bit length.
  int GetSize() const override { return 4; }
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) const override;

 protected:
  int length_;
};

class CBufferDataReference : public CLinearDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("byte");

  // A new buffer of capacity bytes (aligned to 64); the length is the capacity.
  explicit CBufferDataReference(int capacity);
  // Acquires buffer (may be null); the length is the buffer's.
  explicit CBufferDataReference(CByteArray* buffer);
  ~CBufferDataReference() override;

  bool IsType(unsigned int type) const override;
  unsigned char* GetData() override;
  // 0 ≤ length ≤ GetAvailableLength(), else ResultArgumentOutOfRange.
  Result SetLength(int length) override;
  // The length, then that many bytes.
  int GetSize() const override { return length_ + 4; }
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) const override;

  // The buffer's length: the room SetLength may use.
  int GetAvailableLength() const;
  // The buffer, acquired.
  CByteArray* GetBuffer() const;
  // Acquires buffer; the length becomes the buffer's.
  void SetBuffer(CByteArray* buffer);

 private:
  CByteArray* buffer_;
};

class CAccessUnitDataReference : public CMemoryDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("unit");

  // Acquires bytes (may be null).
  explicit CAccessUnitDataReference(CByteArray* bytes);
  ~CAccessUnitDataReference() override;

  bool IsType(unsigned int type) const override;
  int GetLength() override;
  unsigned char* GetData() override;

  // The access unit's bytes, acquired.
  CByteArray* GetBytes() const;

 private:
  CByteArray* bytes_;
};

}  // namespace Corvane::Mox
