#pragma once
// CBase64Encoder: a write-only stream that turns the bytes written into
// Base64 text, with a selectable alphabet and an optional line separator
// after every 76 characters (57 input bytes). The text buffer is sized for
// the capacity given at construction; Close completes the last group.

#include <cstddef>
#include <memory>
#include <string>

#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CBase64Alphabet;

class CBase64Encoder : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("b64e");
  static constexpr char Standard[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  // The Windows Media Rights Manager variant.
  static constexpr char WMRM[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789!*";
  // Input bytes per line of output.
  static constexpr int LineBytes = 57;

  // Up to capacity input bytes; line breaks are "\n". A null alphabet is Standard.
  CBase64Encoder(int capacity, bool lineBreaks, const char* alphabet);
  // separator (null or empty for none) follows every line.
  CBase64Encoder(int capacity, const char* separator, const char* alphabet);
  ~CBase64Encoder() override;

  bool CanWrite() override { return true; }
  long long GetLength() override { return inputCount_; }
  long long GetPosition() override { return inputCount_; }
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  // Bytes beyond the capacity are refused whole with ResultEndOfStream.
  Result Write(const unsigned char* buffer, int count, int* written) override;
  // Completes a partial group with "=" padding; later writes are refused.
  void Close() override;

  // The text so far, as a new string.
  CString* GetEncoded() const;

  // The text of bytes as a new string; null on failure.
  static CString* Encode(const unsigned char* bytes, int count, bool lineBreaks, const char* alphabet);
  static CString* Encode(CByteArray* bytes, bool lineBreaks, const char* alphabet);
  static CString* Encode(const unsigned char* bytes, int count, const char* separator, const char* alphabet);
  static CString* Encode(CByteArray* bytes, const char* separator, const char* alphabet);

 private:
  // Encodes whole groups of 3 bytes, ending lines where they fall.
  const unsigned char* EncodeGroups(const unsigned char* input, int count);
  // Encodes count (a multiple of 3) bytes within one line.
  void EncodeRun(const unsigned char* input, int count);
  void EndLineIfFull();

  std::unique_ptr<CBase64Alphabet> ownAlphabet_;
  const CBase64Alphabet* alphabet_;
  int capacity_;
  std::string separator_;
  std::unique_ptr<char[]> text_;
  std::size_t length_;  // characters written to text_
  int inputCount_;
  unsigned char carried_[3];
  int carriedCount_;
  int lineCount_;  // input bytes in the current line
  bool closed_;
};

}  // namespace Corvane::Mox
