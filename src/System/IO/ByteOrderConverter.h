#pragma once
// CByteOrderConverter: converts single values between the host order and a
// fixed byte order. The two process-wide instances cover every caller.

#include "System/IO/Binary.h"

namespace Corvane::Mox {

class CByteOrderConverter {
 public:
  static const CByteOrderConverter BigEndian;
  static const CByteOrderConverter LittleEndian;

  explicit CByteOrderConverter(CBinary::ByteOrder order) : order_(order) {}

  CBinary::ByteOrder GetByteOrder() const { return order_; }
  // Stores the 4 bytes of value in this converter's order.
  void GetBytes(int value, unsigned char* out) const;
  void GetBytes(short value, unsigned char* out) const;
  void GetBytes(long long value, unsigned char* out) const;
  // Reads a value stored in this converter's order.
  int ToInt32(const unsigned char* bytes) const;
  short ToInt16(const unsigned char* bytes) const;
  long long ToInt64(const unsigned char* bytes) const;

 private:
  CBinary::ByteOrder order_;
};

}  // namespace Corvane::Mox
