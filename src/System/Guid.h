#pragma once
// Guid: a 16-byte identifier. The first three fields are kept in host byte
// order and the last eight bytes as a byte string, so the in-memory form is
// the little-endian ("mixed-endian") layout on little-endian machines; Swap
// converts the three fields for big-endian serialisation.

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;

class Guid {
 public:
  // Bytes a buffer passed to ToString(char, char*) must hold.
  static constexpr int MaxStringLength = 40;

  // All zero.
  Guid();
  // The 16 bytes in memory layout (what ToByteArray writes).
  explicit Guid(const unsigned char* bytes);
  // The first 16 bytes of the array; ResultArgumentNull or
  // ResultArgumentOutOfRange (fewer bytes) is thrown.
  explicit Guid(const CByteArray* bytes);
  Guid(unsigned int data1, unsigned short data2, unsigned short data3, unsigned char b0, unsigned char b1,
       unsigned char b2, unsigned char b3, unsigned char b4, unsigned char b5, unsigned char b6, unsigned char b7);

  // Version 4: random bits from the platform with the version and variant
  // fields set. Any other version gives the all-zero GUID.
  static Guid NewGuid(unsigned int version);
  static Guid NewPseudoRandom();

  // Reads 8, 4, 4 and eight times 2 hexadecimal digits, treating every other
  // character as a separator, so braced, parenthesised, dashed and plain
  // forms all parse. Texts of 40 or more characters are refused. On failure
  // (ResultError) the value is unchanged.
  Result Parse(const char* text);
  Result Parse(CString* text);

  unsigned int GetData1() const { return data1_; }
  unsigned short GetData2() const { return data2_; }
  unsigned short GetData3() const { return data3_; }
  const unsigned char* GetData4() const { return data4_; }
  bool IsEmpty() const;

  bool Equals(const Guid& other) const;
  bool operator==(const Guid& other) const { return Equals(other); }
  bool operator!=(const Guid& other) const { return !Equals(other); }

  // Reverses the byte order of the first three fields.
  void Swap();
  // The 16 bytes in memory layout.
  void ToByteArray(unsigned char* bytes) const;
  CByteArray* ToByteArray() const;
  Result ToByteArray(CByteArray*& bytes) const;

  // "B" braced, "N" digits only, "P" parenthesised, anything else dashed;
  // lower-case hexadecimal. Returns buffer.
  char* ToString(char format, char* buffer) const;
  // The same choice by the codes "brac", "numb" and "pare".
  CString* ToString(unsigned int style) const;

 private:
  unsigned int data1_;
  unsigned short data2_;
  unsigned short data3_;
  unsigned char data4_[8];
};

static_assert(sizeof(Guid) == 16, "a Guid is read and written as 16 raw bytes");

}  // namespace Corvane::Mox
