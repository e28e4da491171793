#include "System/Yaml/YamlAttribute.h"

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

CString* AcquireOrEmpty(CString* text) {
  if (!text) return new CString("");
  text->Acquire();
  return text;
}

}  // namespace

CYamlAttribute::CYamlAttribute(CString* name, CString* value)
    : CObject(TypeCode), name_(AcquireOrEmpty(name)), value_(AcquireOrEmpty(value)) {}

CYamlAttribute::CYamlAttribute(const char* name, const char* value)
    : CObject(TypeCode), name_(new CString(name ? name : "")), value_(new CString(value ? value : "")) {}

CYamlAttribute::~CYamlAttribute() {
  name_->Release();
  value_->Release();
}

void CYamlAttribute::SetValue(CString* value) {
  CString* old = value_;
  value_ = AcquireOrEmpty(value);
  old->Release();
}

CString* CYamlAttribute::ToString() const {
  return CString::WithFormat("%s: %s", name_->GetChars(), value_->GetChars());
}

}  // namespace Corvane::Mox
