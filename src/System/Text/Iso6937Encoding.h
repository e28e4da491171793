#pragma once
// CIso6937Encoding: the ISO/IEC 6937 character set used by broadcast teletext
// and DVB service information: ASCII with the currency sign at 0x24, a right
// half of symbols and letters, and accented letters written as a
// non-spacing diacritic byte (0xC1-0xCF) followed by the base letter.

#include "System/Text/Encoding.h"

namespace Corvane::Mox {

class CIso6937Encoding : public CEncoding {
 public:
  CIso6937Encoding();

  using CEncoding::GetByteCount;
  using CEncoding::GetBytes;
  using CEncoding::GetString;
  int GetByteCount(const wchar_t* text) const override;
  CByteArray* GetBytes(const wchar_t* text) const override;
  int GetCharCount(const unsigned char* bytes, int count) const override;
  CString* GetString(const unsigned char* bytes, int count) const override;
};

}  // namespace Corvane::Mox
