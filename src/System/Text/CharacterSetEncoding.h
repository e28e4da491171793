#pragma once
// CCharacterSetEncoding: an encoding over the platform's character-set
// converter (iconv). The two converters are opened once, with the encoding;
// each call resets their shift state, so calls are independent. Calls on one
// object are serialised through its monitor.
//
// A character set the platform does not know leaves the converters closed:
// IsAvailable() is false, the counts are -1 and the conversions return null.

#include "System/Text/Encoding.h"

namespace Corvane::Mox {

class CCharacterSetEncoding : public CEncoding {
 public:
  explicit CCharacterSetEncoding(const char* name);
  ~CCharacterSetEncoding() override;

  bool IsAvailable() const;

  using CEncoding::GetByteCount;
  using CEncoding::GetBytes;
  using CEncoding::GetString;
  int GetByteCount(const wchar_t* text) const override;
  CByteArray* GetBytes(const wchar_t* text) const override;
  int GetCharCount(const unsigned char* bytes, int count) const override;
  CString* GetString(const unsigned char* bytes, int count) const override;

 private:
  // iconv_t handles, kept opaque so that this header does not need <iconv.h>.
  void* toBytes_;
  void* toCodePoints_;
};

}  // namespace Corvane::Mox
