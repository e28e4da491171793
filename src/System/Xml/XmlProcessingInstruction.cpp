#include "System/Xml/XmlProcessingInstruction.h"

#include "System/Text.h"
#include "System/Xml/XmlLibrary.h"

namespace Corvane::Mox {

CString* CXmlProcessingInstruction::GetValue() const { return new CString(XmlLibrary::GetContent(GetXmlNode()).c_str()); }

Result CXmlProcessingInstruction::SetValue(CString* value) {
  if (!value) return ResultArgumentNull("value must not be nullptr");
  // For text-like nodes libxml2 stores the content as given, without parsing entities.
  xmlNodeSetContent(GetXmlNode(), reinterpret_cast<const xmlChar*>(value->GetChars()));
  return ResultOK();
}

CString* CXmlProcessingInstruction::GetTarget() const {
  const xmlNode* node = GetXmlNode();
  return new CString(node->name ? reinterpret_cast<const char*>(node->name) : "");
}

}  // namespace Corvane::Mox
