#pragma once
// FourString: a four-character code as readable text. Each byte, most
// significant first, is written as its character when printable and
// otherwise (when escaping) as "%" and two hexadecimal digits, so codes with
// spaces, zeros or binary bytes stay legible and can be parsed back with
// ToFour. A zero code reads as the empty string.

namespace Corvane::Mox {

class CString;

class FourString {
 public:
  FourString();
  // Without escaping the bytes are copied as they are (a zero byte ends the text).
  explicit FourString(unsigned int code, bool escape = true);
  FourString& operator=(unsigned int code);

  unsigned int GetCode() const { return code_; }
  const char* GetChars() const { return text_; }
  operator const char*() const { return text_; }  // NOLINT: printed with %s throughout

  // The escaped text of code, as a new string.
  static CString* ToString(unsigned int code);
  // The code of up to four characters or "%XX" escapes; 0 for null text.
  static unsigned int ToFour(const char* text);

 private:
  void Format();

  unsigned int code_;
  bool escape_;
  char text_[4 * 3 + 1];  // four "%XX" escapes and a terminator at most
};

}  // namespace Corvane::Mox
