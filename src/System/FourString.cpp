#include "System/FourString.h"

#include <cstdio>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Printable 7-bit characters; bytes above 0x7F are not characters of their own in UTF-8.
bool IsPrintable(unsigned char c) { return c >= 0x20 && c < 0x7F; }

}  // namespace

FourString::FourString() : FourString(0, true) {}

FourString::FourString(unsigned int code, bool escape) : code_(code), escape_(escape), text_{} { Format(); }

FourString& FourString::operator=(unsigned int code) {
  code_ = code;
  Format();
  return *this;
}

void FourString::Format() {
  char* out = text_;
  if (code_ != 0) {
    for (int shift = 24; shift >= 0; shift -= 8) {
      auto c = static_cast<unsigned char>(code_ >> shift);
      if (!escape_ || IsPrintable(c)) {
        *out++ = static_cast<char>(c);
      } else {
        std::snprintf(out, 4, "%%%02X", c);
        out += 3;
      }
    }
  }
  *out = 0;
}

CString* FourString::ToString(unsigned int code) { return new CString(FourString(code, true).GetChars()); }

unsigned int FourString::ToFour(const char* text) {
  if (!text) return 0;
  RObject<CString> string(new CString(text));
  return string->ToFour();
}

}  // namespace Corvane::Mox
