#pragma once
// CBitStream: the most-significant-bit-first bit reader and writer of codec
// headers. Bit n of the stream is bit 7 - n % 8 of byte n / 8. Besides fixed
// widths it reads and writes Exp-Golomb codes and decodes prefix codes from a
// table. Positions and lengths count bits.

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;

class CBitStream : public CObject {
 public:
  // One prefix code: the code occupies the low length bits of code.
  struct PrefixCode {
    int value;
    unsigned int code;
    int length;
  };
  // Codes sorted by increasing length.
  struct PrefixTable {
    int count;
    const PrefixCode* entries;
  };

  // An empty stream for writing up to bits bits.
  explicit CBitStream(int bits);
  // Reads buffer (acquired): length is 8 bits per byte, position 0. A null
  // buffer makes every operation fail with ResultNullPointer.
  explicit CBitStream(CByteArray* buffer);
  ~CBitStream() override;

  // The buffer, acquired.
  CByteArray* GetBuffer() const;
  int GetLength() const { return length_; }
  int GetPosition() const { return position_; }
  // p must lie in [0, length).
  Result SetPosition(int position);
  // The index of the last 1 bit before the length: the stop bit of a payload.
  Result GetStopPosition(int& position) const;
  // The new position must lie in [0, length].
  Result Skip(int bits);

  Result Read(bool& value);
  Result Read(int bits, unsigned char& value);
  Result Read(int bits, unsigned short& value);
  // value = prefix followed by the bits read (prefix << bits | bits read).
  Result Read(int bits, unsigned int& value, unsigned int prefix = 0);
  Result Read(int bits, unsigned long long& value);
  Result Read(unsigned char& value);
  Result Read(unsigned short& value);
  Result Read(signed char& value);
  Result Read(short& value);
  // Exp-Golomb, unsigned (ue) and signed (se). A failed read leaves the
  // position where it was.
  Result Read(unsigned int& value);
  Result Read(int& value);
  // The value of the table entry whose code comes next; ResultError when
  // none does (the position is then left where it was).
  Result Read(const PrefixTable* table, int& value);

  // The low bits of value, most significant first.
  Result Write(int bits, unsigned long long value);
  Result Write(bool value);
  Result Write(unsigned char value);
  // Exp-Golomb, unsigned (ue) and signed (se).
  Result Write(unsigned int value);
  Result Write(int value);

  // A copy of the bytes that hold the stream's bits.
  CByteArray* ToByteArray() const;

 private:
  // The n (<= 57) bits at position, without bounds checks beyond the buffer.
  unsigned long long Peek(int n) const;
  // Reads n <= 64 bits that are known to be there.
  unsigned long long Take(int n);
  // Checks that n bits (0..limit) can be read.
  Result CheckRead(int n, int limit) const;
  // Exp-Golomb code of up to 32 + 1 + 32 bits, whose value may need 33 bits.
  Result ReadExpGolomb(unsigned long long& value);
  Result WriteExpGolomb(unsigned long long value);

  CByteArray* buffer_;
  unsigned char* data_;
  int bytes_;
  int length_;
  int position_;
};

}  // namespace Corvane::Mox
