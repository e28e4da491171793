#pragma once
// CXmlNamespace: a namespace URI and the prefix it is bound to (none for the
// default namespace). A value object: it is not tied to a document.

#include <string>

#include "System/Object.h"

namespace Corvane::Mox {

class CXmlNamespace : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("xmns");

  // A null or empty prefix stands for the default namespace.
  CXmlNamespace(const char* uri, const char* prefix);

  const char* GetUri() const { return uri_.c_str(); }
  // Null for the default namespace.
  const char* GetPrefix() const { return prefix_.empty() ? nullptr : prefix_.c_str(); }
  // "prefix:name", or the bare name without a prefix.
  CString* GetQualifiedName(const char* name) const;

  using CObject::Equals;
  bool Equals(const CObject* other) const override;
  CString* ToString() const override;

 private:
  std::string uri_;
  std::string prefix_;
};

}  // namespace Corvane::Mox
