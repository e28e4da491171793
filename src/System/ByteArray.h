#pragma once
// CByteArray: the library's byte buffer. An aligned, length-tracked block that
// either owns its storage (allocated on first access, never zeroed unless
// Clear is called) or views memory belonging to another object, which it keeps
// alive. Byte arrays are pool objects: a CByteArrayPool recycles them.

#include "System/PoolObject.h"

namespace Corvane::Mox {

class CByteArray : public CPoolObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("data");

  // capacity bytes (length = capacity), aligned to alignment; storage waits for first use.
  CByteArray(int capacity, int alignment);
  // A copy of length bytes (left uninitialised when bytes is null).
  CByteArray(const unsigned char* bytes, int length);
  // A view of length external bytes owned by owner (acquired, may be null).
  CByteArray(int length, unsigned char* bytes, const CObject* owner);
  ~CByteArray() override;

  // Parses pairs of hexadecimal digits; out receives the new array as soon as
  // it exists, so a bad pair leaves the partly filled array there.
  static Result FromHexString(const char* text, CByteArray*& out);

  // The bytes, allocated on first call.
  unsigned char* GetData();
  // One byte; 0 when no storage exists yet. Not bounds checked.
  unsigned char GetData(int index) const { return data_ ? data_[index] : 0; }
  int GetCapacity() const { return capacity_; }
  int GetLength() const { return length_; }
  int GetAlignment() const { return alignment_; }
  Result SetLength(int length);

  void Allocate();
  void Free();
  // Zeroes the first length bytes.
  void Clear();
  Result Clear(int offset, int count);

  bool StartsWith(const unsigned char* bytes, int count) const;
  using CObject::Equals;
  bool Equals(CByteArray* other) const;
  bool Equals(const unsigned char* bytes, int count) const;
  // FNV-1a over the first length bytes; 0 while no storage exists.
  int GetHashCode() const override;

 private:
  int capacity_;
  int length_;
  int alignment_;
  unsigned char* allocation_;
  unsigned char* data_;
  const CObject* owner_;
};

}  // namespace Corvane::Mox
