// IProperties: the typed getters and setters, all built on the variant forms.
#include <cwchar>

#include "System/ByteArray.h"
#include "System/Properties.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

// Reads name and, when it holds a value, stores convert(value) in out.
template <class T, class Convert>
Result GetConverted(const IProperties& bag, const PropertyName& name, T& out, Convert convert) {
  RObject<CVariant> value(bag.GetProperty(name));
  if (!value) return ResultFalse();
  out = static_cast<T>(convert(*value));
  return ResultOK();
}

}  // namespace

#define MOX_TYPED_GETTER(Type, Conversion)                                                     \
  Result IProperties::GetProperty(const PropertyName& name, Type& value) const {               \
    return GetConverted(*this, name, value, [](const CVariant& v) { return v.Conversion(); }); \
  }

MOX_TYPED_GETTER(bool, ToBoolean)
MOX_TYPED_GETTER(char, ToChar)
MOX_TYPED_GETTER(signed char, ToInt8)
MOX_TYPED_GETTER(unsigned char, ToUInt8)
MOX_TYPED_GETTER(short, ToInt16)
MOX_TYPED_GETTER(unsigned short, ToUInt16)
MOX_TYPED_GETTER(int, ToInt32)
MOX_TYPED_GETTER(unsigned int, ToUInt32)
MOX_TYPED_GETTER(long, ToInt64)
MOX_TYPED_GETTER(unsigned long, ToUInt64)
MOX_TYPED_GETTER(long long, ToInt64)
MOX_TYPED_GETTER(unsigned long long, ToUInt64)
MOX_TYPED_GETTER(float, ToFloat)
MOX_TYPED_GETTER(double, ToDouble)
MOX_TYPED_GETTER(void*, ToPointer)
MOX_TYPED_GETTER(CObject*, ToObject)
MOX_TYPED_GETTER(CByteArray*, ToByteArray)
MOX_TYPED_GETTER(CString*, ToString)
MOX_TYPED_GETTER(CVariantArray*, ToVariantArray)
MOX_TYPED_GETTER(CProperties*, ToProperties)

#undef MOX_TYPED_GETTER

Result IProperties::GetFourProperty(const PropertyName& name, unsigned int& value) const {
  return GetConverted(*this, name, value, [](const CVariant& v) { return v.ToFour(); });
}

CByteArray* IProperties::GetByteArray(CString* name) const {
  RObject<CVariant> value(GetProperty(name));
  return value ? value->ToByteArray() : nullptr;
}

CByteArray* IProperties::GetByteArray(const PropertyName& name) const {
  RObject<CVariant> value(GetProperty(name));
  return value ? value->ToByteArray() : nullptr;
}

#define MOX_TYPED_SETTER(Type)                                            \
  Result IProperties::SetProperty(const PropertyName& name, Type value) { \
    RObject<CVariant> variant(new CVariant(value));                       \
    return SetProperty(name, variant.Get());                              \
  }

MOX_TYPED_SETTER(bool)
MOX_TYPED_SETTER(char)
MOX_TYPED_SETTER(signed char)
MOX_TYPED_SETTER(unsigned char)
MOX_TYPED_SETTER(short)
MOX_TYPED_SETTER(unsigned short)
MOX_TYPED_SETTER(int)
MOX_TYPED_SETTER(unsigned int)
MOX_TYPED_SETTER(long)
MOX_TYPED_SETTER(unsigned long)
MOX_TYPED_SETTER(long long)
MOX_TYPED_SETTER(unsigned long long)
MOX_TYPED_SETTER(float)
MOX_TYPED_SETTER(double)
MOX_TYPED_SETTER(void*)
MOX_TYPED_SETTER(CObject*)
MOX_TYPED_SETTER(CByteArray*)
MOX_TYPED_SETTER(CVariantArray*)
MOX_TYPED_SETTER(CProperties*)
MOX_TYPED_SETTER(CString*)

#undef MOX_TYPED_SETTER

Result IProperties::SetProperty(const PropertyName& name, const char* value) {
  RObject<CVariant> variant(value ? new CVariant(value) : nullptr);
  return SetProperty(name, variant.Get());
}

Result IProperties::SetProperty(const PropertyName& name, const wchar_t* value) {
  RObject<CString> text(value ? new CString(value) : nullptr);
  RObject<CVariant> variant(text ? new CVariant(text.Get()) : nullptr);
  return SetProperty(name, variant.Get());
}

Result IProperties::SetFourProperty(const PropertyName& name, unsigned int value) {
  RObject<CVariant> variant(new CVariant(value, CVariant::Four));
  return SetProperty(name, variant.Get());
}

}  // namespace Corvane::Mox
