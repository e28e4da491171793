#include "System/Text/Encoding.h"

#include <cstring>

#include "System/ByteArray.h"
#include "System/Text.h"
#include "System/Text/CharacterSetEncoding.h"
#include "System/Text/Iso6937Encoding.h"

namespace Corvane::Mox {

CEncoding* CEncoding::Create(const char* name) {
  // The platform converter does not know ISO/IEC 6937 everywhere (and where
  // it does, not with the currency and dollar signs swapped), so that one is
  // built in.
  if (name && std::strcmp(name, "ISO-6937") == 0) return new CIso6937Encoding();
  return new CCharacterSetEncoding(name);
}

CEncoding::CEncoding(const char* name) : CObject(TypeCode), encodingType_(new CString(name)) {}

CEncoding::~CEncoding() { encodingType_->Release(); }

CString* CEncoding::GetEncodingType() const {
  encodingType_->Acquire();
  return encodingType_;
}

int CEncoding::GetByteCount(CString* text) const { return GetByteCount(text ? text->GetWChars() : L""); }

CByteArray* CEncoding::GetBytes(CString* text) const { return text ? GetBytes(text->GetWChars()) : nullptr; }

CString* CEncoding::GetString(CByteArray* bytes) const {
  return bytes ? GetString(bytes->GetData(), bytes->GetLength()) : nullptr;
}

CByteArray* CEncoding::NewByteArray(const unsigned char* bytes, int count) {
  return new CByteArray(bytes, count);
}

}  // namespace Corvane::Mox
