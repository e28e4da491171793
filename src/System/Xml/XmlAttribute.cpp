#include "System/Xml/XmlAttribute.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

CXmlAttribute::CXmlAttribute(const char* name, const char* value) : CXmlAttribute(nullptr, name, value) {}

CXmlAttribute::CXmlAttribute(const char* namespaceUri, const char* name, const char* value)
    : CObject(TypeCode),
      namespaceUri_(namespaceUri ? namespaceUri : ""),
      name_(name ? name : ""),
      value_(value ? value : ""),
      hasNamespace_(namespaceUri && *namespaceUri) {}

const char* CXmlAttribute::GetLocalName() const {
  const char* colon = std::strchr(name_.c_str(), ':');
  return colon ? colon + 1 : name_.c_str();
}

CString* CXmlAttribute::GetValueString() const { return new CString(value_.c_str()); }

bool CXmlAttribute::IsNamespaceDeclaration() const {
  return name_ == "xmlns" || name_.compare(0, 6, "xmlns:") == 0;
}

bool CXmlAttribute::Equals(const CObject* other) const {
  if (other == this) return true;
  if (!other || !other->IsType(TypeCode)) return false;
  const auto* a = static_cast<const CXmlAttribute*>(other);
  return a->hasNamespace_ == hasNamespace_ && a->namespaceUri_ == namespaceUri_ && a->name_ == name_ &&
         a->value_ == value_;
}

CString* CXmlAttribute::ToString() const {
  return CString::WithFormat("%s=\"%s\"", name_.c_str(), value_.c_str());
}

}  // namespace Corvane::Mox
