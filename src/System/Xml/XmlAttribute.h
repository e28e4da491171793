#pragma once
// CXmlAttribute: one attribute as a value: namespace URI (may be null),
// name (qualified as written, "prefix:name" or "name") and value. Namespace
// declarations appear as attributes named "xmlns" or "xmlns:prefix".

#include <string>

#include "System/Object.h"

namespace Corvane::Mox {

class CXmlAttribute : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("n=\"\"");
  // The namespace that "xmlns" declarations belong to.
  static constexpr const char* XmlnsNamespaceUri = "http://www.w3.org/2000/xmlns/";

  CXmlAttribute(const char* name, const char* value);
  CXmlAttribute(const char* namespaceUri, const char* name, const char* value);

  // Null when the attribute has no namespace.
  const char* GetNamespaceUri() const { return hasNamespace_ ? namespaceUri_.c_str() : nullptr; }
  const char* GetName() const { return name_.c_str(); }
  // The name without its prefix.
  const char* GetLocalName() const;
  const char* GetValue() const { return value_.c_str(); }
  // A new string holding the value.
  CString* GetValueString() const;
  bool IsNamespaceDeclaration() const;

  using CObject::Equals;
  bool Equals(const CObject* other) const override;
  // name="value"
  CString* ToString() const override;

 private:
  std::string namespaceUri_;
  std::string name_;
  std::string value_;
  bool hasNamespace_;
};

}  // namespace Corvane::Mox
