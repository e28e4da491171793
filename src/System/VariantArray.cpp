#include "System/VariantArray.h"

#include <string>

#include "System/ByteArray.h"
#include "System/Text.h"

namespace Corvane::Mox {

CVariantArray::CVariantArray(int count) : CArray<CVariant>(count) {}

CString* CVariantArray::ToString() const {
  std::string text = "[ ";
  for (int i = 0; i < GetCount(); ++i) {
    if (i > 0) text += ", ";
    RObject<CVariant> element;
    Get(i, element.Out());
    RObject<CString> part(element ? element->ToString() : nullptr);
    text += part ? part->GetChars() : "<null>";
  }
  text += " ]";
  return new CString(text.c_str(), static_cast<int>(text.size()));
}

CByteArray* CVariantArray::ToBytes() const {
  auto* bytes = new CByteArray(GetCount(), 1);
  unsigned char* data = bytes->GetData();
  for (int i = 0; i < GetCount(); ++i) {
    RObject<CVariant> element;
    Get(i, element.Out());
    data[i] = element ? element->ToUInt8() : 0;
  }
  return bytes;
}

}  // namespace Corvane::Mox
