#include "System/Xml/XmlCharacterData.h"

#include "System/Text.h"
#include "System/Xml/XmlLibrary.h"

namespace Corvane::Mox {

CString* CXmlCharacterData::GetValue() const { return new CString(XmlLibrary::GetContent(GetXmlNode()).c_str()); }

Result CXmlCharacterData::SetValue(CString* value) {
  if (!value) return ResultArgumentNull("value must not be nullptr");
  // For text-like nodes libxml2 stores the content as given, without parsing entities.
  xmlNodeSetContent(GetXmlNode(), reinterpret_cast<const xmlChar*>(value->GetChars()));
  return ResultOK();
}

}  // namespace Corvane::Mox
