// IProperties: lookup, store, copy, descriptions and raw bytes; CProperties.
#include "System/Properties.h"

#include <cstring>

#include "System/ByteArray.h"

namespace Corvane::Mox {

namespace {

// Bags are keyed by CString; PropertyName keys are turned into one per call.
CString* NameOf(const PropertyName& name) { return new CString(static_cast<const char*>(name)); }

}  // namespace

IProperties::IProperties() : properties_(nullptr) {}

IProperties::IProperties(const IProperties* source) : properties_(nullptr) {
  if (source) SetProperties(source);
}

IProperties::~IProperties() {
  if (properties_) properties_->Release();
}

Result IProperties::GetProperty(CString* name, CVariant*& value) const {
  if (!properties_) return ResultOK();
  return properties_->Get(name, value).Failed() || !value ? Result(ResultFalse()) : Result(ResultOK());
}

Result IProperties::SetProperty(CString* name, CVariant* value) {
  if (!name) return ResultArgumentNull("the property name is null");
  if (!properties_) properties_ = new Dictionary();
  return properties_->SetItem(name, value);
}

Result IProperties::GetProperty(const PropertyName& name, int size, unsigned char* buffer) const {
  if (!properties_) return ResultFalse();
  RObject<CVariant> value(GetProperty(name));
  RObject<CByteArray> bytes(value ? value->ToByteArray() : nullptr);
  if (!bytes || bytes->GetLength() == 0) return ResultFalse();
  if (!buffer) return ResultOK();
  if (bytes->GetLength() > size) return ResultBufferTooSmall("%d bytes do not fit in %d", bytes->GetLength(), size);
  std::memcpy(buffer, bytes->GetData(), static_cast<std::size_t>(bytes->GetLength()));
  return ResultOK();
}

Result IProperties::SetProperty(const PropertyName& name, int size, const unsigned char* bytes) {
  if (size < 0 || (size > 0 && !bytes))
    return ResultArgumentOutOfRange("%d bytes at %p", size, static_cast<const void*>(bytes));
  RObject<CByteArray> copy(new CByteArray(bytes, size));
  RObject<CVariant> value(new CVariant(copy.Get()));
  return SetProperty(name, value.Get());
}

int IProperties::GetPropertyCount() const { return properties_ ? properties_->GetCount() : 0; }

IProperties::Dictionary* IProperties::GetProperties() const {
  if (properties_) properties_->Acquire();
  return properties_;
}

CString* IProperties::GetPropertyName(int index) const {
  if (!properties_) return nullptr;
  CString* key = nullptr;
  RObject<CVariant> value;
  if (properties_->GetKeyAndValue(index, key, value.Out()).Failed()) {
    if (key) key->Release();
    return nullptr;
  }
  return key;
}

CVariant* IProperties::GetProperty(CString* name) const {
  CVariant* value = nullptr;
  GetProperty(name, value);
  return value;
}

CVariant* IProperties::GetProperty(const PropertyName& name) const {
  RObject<CString> key(NameOf(name));
  return GetProperty(key.Get());
}

Result IProperties::GetProperty(const PropertyName& name, CVariant*& value) const {
  RObject<CString> key(NameOf(name));
  return GetProperty(key.Get(), value);
}

bool IProperties::ContainsProperty(CString* name) const {
  RObject<CVariant> value(GetProperty(name));
  return value.Get() != nullptr;
}

bool IProperties::ContainsProperty(const PropertyName& name) const {
  RObject<CString> key(NameOf(name));
  return ContainsProperty(key.Get());
}

Result IProperties::SetProperty(const PropertyName& name, CVariant* value) {
  RObject<CString> key(NameOf(name));
  return SetProperty(key.Get(), value);
}

Result IProperties::GetPropertyDescription(const PropertyName& name, CString*& description) const {
  description = nullptr;
  RObject<CVariant> value(GetProperty(name));
  if (!value) return ResultFalse();
  description = value->GetDescription();
  return description ? Result(ResultOK()) : Result(ResultFalse());
}

Result IProperties::SetPropertyDescription(const PropertyName& name, CString* description) {
  RObject<CVariant> value(GetProperty(name));
  if (!value) return ResultFalse();
  value->SetDescription(description);
  return ResultOK();
}

Result IProperties::SetPropertyDescription(const PropertyName& name, const char* description) {
  RObject<CString> text(description ? new CString(description) : nullptr);
  return SetPropertyDescription(name, text.Get());
}

Result IProperties::RemoveProperty(CString* name) {
  if (!properties_ || !name) return ResultFalse();
  return properties_->Remove(name);
}

Result IProperties::RemoveProperty(const PropertyName& name) {
  RObject<CString> key(NameOf(name));
  return RemoveProperty(key.Get());
}

Result IProperties::SetProperties(Dictionary* source) {
  if (!source) return ResultArgumentNull("the source dictionary is null");
  // Count first: merging a bag into itself must stop at its original end.
  int count = source->GetCount();
  for (int i = 0; i < count; ++i) {
    RObject<CString> key;
    RObject<CVariant> value;
    Result result = source->GetKeyAndValue(i, key.Out(), value.Out());
    if (result.Failed()) return result;
    result = SetProperty(key.Get(), value.Get());
    if (result.Failed()) return result;
  }
  return ResultOK();
}

Result IProperties::SetProperties(const IProperties* source) {
  if (!source) return ResultArgumentNull("the source bag is null");
  RObject<Dictionary> entries(source->GetProperties());
  return entries ? SetProperties(entries.Get()) : Result(ResultOK());
}

void IProperties::ClearProperties() {
  if (properties_) properties_->Clear();
}

CString* IProperties::FormatString(const char*) const {
  return new CString("FormatString has been deprecated, please use ToYaml or ToJson\n");
}

CProperties::CProperties() : CProperties(TypeCode, nullptr) {}

CProperties::CProperties(const IProperties* source) : CProperties(TypeCode, source) {}

CProperties::CProperties(unsigned int type, const IProperties* source) : CObject(type), IProperties(source) {}

bool CProperties::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

CString* CProperties::ToString() const { return ToJson(); }

}  // namespace Corvane::Mox
