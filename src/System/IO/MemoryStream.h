#pragma once
// CMemoryStream: a stream over a byte array, either growing as it is written
// (the default constructor) or fixed to the memory it was given. Positions
// are limited to 31 bits, the size of a byte array.

#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CMemoryStream : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("mems");

  // An empty stream over a 32-byte buffer that grows as needed.
  CMemoryStream();
  // A fixed buffer of max(capacity, 0) bytes.
  explicit CMemoryStream(int capacity);
  // The whole array (acquired) as content; null gives an empty stream.
  explicit CMemoryStream(CByteArray* array);
  // A window of the array: an offset outside [0, length] counts as length,
  // count is clamped to what remains.
  CMemoryStream(CByteArray* array, int offset, int count);
  // length bytes of external memory that must outlive the stream.
  CMemoryStream(int length, unsigned char* bytes);
  ~CMemoryStream() override;

  bool CanRead() override { return true; }
  bool CanSeek() override { return true; }
  bool CanWrite() override { return true; }
  long long GetLength() override { return length_; }
  long long GetAvailableLength() override { return length_; }
  Result SetLength(long long length) override;
  long long GetPosition() override { return position_; }

  using CStream::Read;
  using CStream::Write;
  using CStream::WriteByte;
  Result Read(unsigned char* buffer, int count, int* read) override;
  int ReadByte() override;
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;
  Result WriteByte(unsigned char value, int* written) override;
  // Writes value count times.
  Result Write(unsigned char value, int count, int* written);

  // The underlying array, acquired.
  CByteArray* GetBuffer() const;
  // The first content byte.
  unsigned char* GetData() const { return data_; }
  // Grows an expandable stream so that it holds at least size bytes.
  void Expand(long long size);
  // A copy of the content.
  CByteArray* ToByteArray() const;

 private:
  // Checks a write of count bytes at the position and makes room for it.
  Result PrepareWrite(int count, bool fullIsEndOfStream);
  Result Fill(unsigned char value, int count, int* written, bool fullIsEndOfStream);
  void Adopt(CByteArray* buffer, int offset, int length, int room);

  CByteArray* buffer_;
  unsigned char* data_;
  int length_;
  int room_;  // bytes from data_ to the end of the buffer or window
  long long position_;
  bool expandable_;
};

}  // namespace Corvane::Mox
