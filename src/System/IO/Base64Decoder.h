#pragma once
// CBase64Decoder: a read-only stream of the bytes that Base64 text stands
// for. White space is skipped; "=" or the end of the text ends the data.
// Characters outside the alphabet are not detected and decode as 0.

#include <cstddef>
#include <memory>

#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CBase64Alphabet;

class CBase64Decoder : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("b64d");

  // A null alphabet is CBase64Encoder::Standard; the text is copied.
  CBase64Decoder(const char* text, const char* alphabet);
  // Acquires text.
  CBase64Decoder(CString* text, const char* alphabet);
  ~CBase64Decoder() override;

  bool CanRead() override { return true; }
  // Both are the decoded length.
  long long GetLength() override { return decodedLength_; }
  long long GetAvailableLength() override { return decodedLength_; }
  long long GetPosition() override { return produced_; }
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  int ReadByte() override;
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;

  // A new array of the decoded length, read full.
  static Result Decode(const char* text, CByteArray*& out, const char* alphabet);
  static Result Decode(CString* text, CByteArray*& out, const char* alphabet);
  // The same, returning the array or null.
  static CByteArray* Decode(const char* text, const char* alphabet);
  static CByteArray* Decode(CString* text, const char* alphabet);

 private:
  // Reads text in place; it must outlive the decoder.
  CBase64Decoder(const char* text, const char* alphabet, bool borrowed);
  void Start(const char* alphabet);
  // Decodes whole groups of four data characters straight into out.
  int DecodeGroups(unsigned char* out, int count);
  // One step of the general path: a byte out of the carried bits, a skipped
  // space, or one more character into them. False at the end of the data.
  bool Step(unsigned char* out, int& produced);

  CString* text_;
  const char* chars_;
  std::size_t size_;
  std::unique_ptr<CBase64Alphabet> ownAlphabet_;
  const CBase64Alphabet* alphabet_;
  std::size_t index_;  // next character
  long long decodedLength_;
  long long produced_;
  unsigned int carried_;
  int carriedBits_;
};

}  // namespace Corvane::Mox
