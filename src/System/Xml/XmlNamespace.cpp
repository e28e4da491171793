#include "System/Xml/XmlNamespace.h"

#include "System/Text.h"

namespace Corvane::Mox {

CXmlNamespace::CXmlNamespace(const char* uri, const char* prefix)
    : CObject(TypeCode), uri_(uri ? uri : ""), prefix_(prefix ? prefix : "") {}

CString* CXmlNamespace::GetQualifiedName(const char* name) const {
  if (!name) return nullptr;
  if (prefix_.empty()) return new CString(name);
  return CString::WithFormat("%s:%s", prefix_.c_str(), name);
}

bool CXmlNamespace::Equals(const CObject* other) const {
  if (other == this) return true;
  if (!other || !other->IsType(TypeCode)) return false;
  const auto* ns = static_cast<const CXmlNamespace*>(other);
  return ns->uri_ == uri_ && ns->prefix_ == prefix_;
}

CString* CXmlNamespace::ToString() const {
  if (prefix_.empty()) return CString::WithFormat("xmlns=\"%s\"", uri_.c_str());
  return CString::WithFormat("xmlns:%s=\"%s\"", prefix_.c_str(), uri_.c_str());
}

}  // namespace Corvane::Mox
