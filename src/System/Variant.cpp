#include "System/Variant.h"

#include <cstring>

#include "System/ByteArray.h"
#include "System/FourString.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

// XML Schema names by variant type; null where a value has no XML form.
constexpr const char* XsiTypes[] = {
    "four",              // Four
    "xs:boolean",        // Boolean
    "char",              // Char
    "xs:byte",           // Int8
    "xs:unsignedByte",   // UInt8
    "xs:short",          // Int16
    "xs:unsignedShort",  // UInt16
    "xs:int",            // Int32
    "xs:unsignedInt",    // UInt32
    "xs:long",           // Int64
    "xs:unsignedLong",   // UInt64
    "xs:long",           // Long
    "xs:unsignedLong",   // ULong
    "xs:float",          // Float
    "xs:double",         // Double
    nullptr,             // Pointer
    nullptr,             // Object
    "xs:string",         // String
    "xs:base64Binary",   // ByteArray
    "object",            // Properties
    "array",             // VariantArray
};

// Whether object really is of the kind a reference type names.
bool IsOfKind(CObject* object, CVariant::VariantType type) {
  switch (type) {
    case CVariant::Object:
      return true;
    case CVariant::String:
      return dynamic_cast<CString*>(object) != nullptr;
    case CVariant::ByteArray:
      return dynamic_cast<CByteArray*>(object) != nullptr;
    case CVariant::Properties:
      return dynamic_cast<CProperties*>(object) != nullptr;
    case CVariant::VariantArray:
      return dynamic_cast<CVariantArray*>(object) != nullptr;
    default:
      return false;
  }
}

template <class T>
T* Acquired(T* object) {
  if (object) object->Acquire();
  return object;
}

}  // namespace

CVariant::CVariant() : CObject(TypeCode), type_(Object), value_{}, description_(nullptr) { value_.u64 = 0; }

CVariant::CVariant(void* value, VariantType) : CVariant() {
  type_ = Pointer;
  value_.p = value;
}

CVariant::CVariant(CObject* value, VariantType type) : CVariant() {
  SetReference(value, IsOfKind(value, type) || !value ? type : Object);
}
CVariant::CVariant(CString* value, VariantType type) : CVariant() {
  SetReference(value, type == Object ? Object : String);
}
CVariant::CVariant(CByteArray* value, VariantType type) : CVariant() {
  SetReference(value, type == Object ? Object : ByteArray);
}
CVariant::CVariant(CVariantArray* value, VariantType type) : CVariant() {
  SetReference(value, type == Object ? Object : VariantArray);
}
CVariant::CVariant(CProperties* value, VariantType type) : CVariant() {
  SetReference(value, type == Object ? Object : Properties);
}

CVariant::CVariant(const char* text) : CVariant() {
  RObject<CString> string(text ? new CString(text) : nullptr);
  SetReference(string, String);
}

void CVariant::SetReference(CObject* object, VariantType type) {
  type_ = IsReferenceType(type) ? type : Object;
  value_.o = Acquired(object);
}

CVariant::~CVariant() {
  if (IsReferenceType(type_) && value_.o) value_.o->Release();
  if (description_) description_->Release();
}

CString* CVariant::GetDescription() const { return Acquired(description_); }

void CVariant::SetDescription(CString* description) {
  Acquired(description);
  CString* old = description_;
  description_ = description;
  if (old) old->Release();
}

void CVariant::SetDescription(const char* description) {
  RObject<CString> text(description ? new CString(description) : nullptr);
  SetDescription(text);
}

const char* CVariant::GetXsiType(VariantType type) { return type <= VariantArray ? XsiTypes[type] : nullptr; }

void* CVariant::ToPointer() const {
  if (type_ == Pointer) return value_.p;
  return IsReferenceType(type_) ? static_cast<void*>(value_.o) : nullptr;
}

CObject* CVariant::ToObject() const { return IsReferenceType(type_) ? Acquired(value_.o) : nullptr; }

CProperties* CVariant::ToProperties() const {
  if (type_ != Properties && type_ != Object) return nullptr;
  return Acquired(dynamic_cast<CProperties*>(value_.o));
}

CVariantArray* CVariant::ToVariantArray() const {
  if (type_ != VariantArray && type_ != Object) return nullptr;
  return Acquired(dynamic_cast<CVariantArray*>(value_.o));
}

CString* CVariant::ToString() const {
  switch (type_) {
    case Four:
      return FourString::ToString(value_.u32);
    case Boolean:
      return new CString(value_.b ? "true" : "false");
    case Char:
      return CString::WithFormat("%c", value_.c);
    case Int8:
      return CString::WithFormat("%hhd", value_.i8);
    case UInt8:
      return CString::WithFormat("%hhu", value_.u8);
    case Int16:
      return CString::WithFormat("%hd", value_.i16);
    case UInt16:
      return CString::WithFormat("%hu", value_.u16);
    case Int32:
      return CString::WithFormat("%d", value_.i32);
    case UInt32:
      return CString::WithFormat("%u", value_.u32);
    case Int64:
      return CString::WithFormat("%lld", value_.i64);
    case UInt64:
      return CString::WithFormat("%llu", value_.u64);
    case Long:
      return CString::WithFormat("%ld", value_.l);
    case ULong:
      return CString::WithFormat("%lu", value_.ul);
    case Float:
      return CString::WithFormat("%f", static_cast<double>(value_.f));
    case Double:
      return CString::WithFormat("%f", value_.d);
    case Pointer:
      return CString::WithFormat("%p", value_.p);
    case Object:
    case Properties:
    case VariantArray:
      return value_.o ? value_.o->ToString() : nullptr;
    case String:
      return Acquired(static_cast<CString*>(value_.o));
    case ByteArray: {
      auto* bytes = static_cast<CByteArray*>(value_.o);
      if (!bytes) return nullptr;
      return new CString(reinterpret_cast<const char*>(bytes->GetData()), bytes->GetLength());
    }
  }
  return nullptr;
}

CByteArray* CVariant::ToByteArray() const {
  switch (type_) {
    case Four: {
      const unsigned char bytes[4] = {
          static_cast<unsigned char>(value_.u32 >> 24), static_cast<unsigned char>(value_.u32 >> 16),
          static_cast<unsigned char>(value_.u32 >> 8), static_cast<unsigned char>(value_.u32)};
      return new CByteArray(bytes, 4);
    }
    case Boolean:
    case Char:
    case Int8:
    case UInt8:
      return new CByteArray(reinterpret_cast<const unsigned char*>(&value_), 1);
    case Int16:
    case UInt16:
      return new CByteArray(reinterpret_cast<const unsigned char*>(&value_), 2);
    case Int32:
    case UInt32:
    case Float:
      return new CByteArray(reinterpret_cast<const unsigned char*>(&value_), 4);
    case Int64:
    case UInt64:
    case Long:
    case ULong:
    case Double:
    case Pointer:
      return new CByteArray(reinterpret_cast<const unsigned char*>(&value_), 8);
    case Object: {
      auto* bytes = dynamic_cast<CByteArray*>(value_.o);
      return bytes && bytes->IsType(CByteArray::TypeCode) ? Acquired(bytes) : nullptr;
    }
    case String: {
      auto* text = static_cast<CString*>(value_.o);
      if (!text) return nullptr;
      const char* chars = text->GetChars();
      return new CByteArray(reinterpret_cast<const unsigned char*>(chars), static_cast<int>(std::strlen(chars)));
    }
    case ByteArray:
      return Acquired(static_cast<CByteArray*>(value_.o));
    case VariantArray:
      return value_.o ? static_cast<CVariantArray*>(value_.o)->ToBytes() : nullptr;
    case Properties:
      return nullptr;
  }
  return nullptr;
}

}  // namespace Corvane::Mox
