// The numeric side of CVariant: construction from numbers and the
// conversions to numbers, booleans and four-character codes.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "System/ByteArray.h"
#include "System/Text.h"
#include "System/Types.h"
#include "System/Variant.h"

namespace Corvane::Mox {

namespace {

// value as To. Integers wrap at the target width (keeping the source's
// signedness on the way), floating values go toward zero and saturate at
// the target's range (NaN gives 0), so no conversion is ever undefined.
template <class To, class From>
To Convert(From value) {
  if constexpr (std::is_same_v<To, bool>) {
    return value != 0;
  } else if constexpr (std::is_floating_point_v<From> && std::is_integral_v<To>) {
    if (std::isnan(value)) return 0;
    if (value <= static_cast<From>(std::numeric_limits<To>::min())) return std::numeric_limits<To>::min();
    if (value >= static_cast<From>(std::numeric_limits<To>::max())) return std::numeric_limits<To>::max();
    return static_cast<To>(value);
  } else if constexpr (std::is_same_v<To, float> && std::is_same_v<From, double>) {
    if (value > std::numeric_limits<float>::max()) return std::numeric_limits<float>::infinity();
    if (value < -std::numeric_limits<float>::max()) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
  } else {
    return static_cast<To>(value);
  }
}

}  // namespace

CVariant::CVariant(bool value, VariantType type) : CVariant() { SetNumber(value, type, Boolean); }
CVariant::CVariant(char value, VariantType type) : CVariant() { SetNumber(value, type, Char); }
CVariant::CVariant(signed char value, VariantType type) : CVariant() { SetNumber(value, type, Int8); }
CVariant::CVariant(unsigned char value, VariantType type) : CVariant() { SetNumber(value, type, UInt8); }
CVariant::CVariant(short value, VariantType type) : CVariant() { SetNumber(value, type, Int16); }
CVariant::CVariant(unsigned short value, VariantType type) : CVariant() { SetNumber(value, type, UInt16); }
CVariant::CVariant(int value, VariantType type) : CVariant() { SetNumber(value, type, Int32); }
CVariant::CVariant(unsigned int value, VariantType type) : CVariant() { SetNumber(value, type, UInt32); }
CVariant::CVariant(long value, VariantType type) : CVariant() { SetNumber(value, type, Long); }
CVariant::CVariant(unsigned long value, VariantType type) : CVariant() { SetNumber(value, type, ULong); }
CVariant::CVariant(long long value, VariantType type) : CVariant() { SetNumber(value, type, Int64); }
CVariant::CVariant(unsigned long long value, VariantType type) : CVariant() { SetNumber(value, type, UInt64); }
CVariant::CVariant(float value, VariantType type) : CVariant() { SetNumber(value, type, Float); }
CVariant::CVariant(double value, VariantType type) : CVariant() { SetNumber(value, type, Double); }

template <class T>
void CVariant::SetNumber(T value, VariantType type, VariantType natural) {
  type_ = type <= Double ? type : natural;
  switch (type_) {
    case Four:
    case UInt32:
      value_.u32 = Convert<unsigned int>(value);
      break;
    case Boolean:
      value_.b = Convert<bool>(value);
      break;
    case Char:
      value_.c = Convert<char>(value);
      break;
    case Int8:
      value_.i8 = Convert<signed char>(value);
      break;
    case UInt8:
      value_.u8 = Convert<unsigned char>(value);
      break;
    case Int16:
      value_.i16 = Convert<short>(value);
      break;
    case UInt16:
      value_.u16 = Convert<unsigned short>(value);
      break;
    case Int32:
      value_.i32 = Convert<int>(value);
      break;
    case Int64:
      value_.i64 = Convert<long long>(value);
      break;
    case UInt64:
      value_.u64 = Convert<unsigned long long>(value);
      break;
    case Long:
      value_.l = Convert<long>(value);
      break;
    case ULong:
      value_.ul = Convert<unsigned long>(value);
      break;
    case Float:
      value_.f = Convert<float>(value);
      break;
    default:
      value_.d = Convert<double>(value);
      break;
  }
}

template <class T>
T CVariant::ToNumber() const {
  switch (type_) {
    case Four:
    case UInt32:
      return Convert<T>(value_.u32);
    case Boolean:
      return Convert<T>(value_.b);
    case Char:
      return Convert<T>(value_.c);
    case Int8:
      return Convert<T>(value_.i8);
    case UInt8:
      return Convert<T>(value_.u8);
    case Int16:
      return Convert<T>(value_.i16);
    case UInt16:
      return Convert<T>(value_.u16);
    case Int32:
      return Convert<T>(value_.i32);
    case Int64:
      return Convert<T>(value_.i64);
    case UInt64:
      return Convert<T>(value_.u64);
    case Long:
      return Convert<T>(value_.l);
    case ULong:
      return Convert<T>(value_.ul);
    case Float:
      return Convert<T>(value_.f);
    case Double:
      return Convert<T>(value_.d);
    case Pointer:
      return Convert<T>(reinterpret_cast<std::uintptr_t>(value_.p));
    case String:
      return FromText<T>();
    case ByteArray:
      return FromBytes<T>();
    default:
      return T(0);  // objects, bags and arrays have no numeric value
  }
}

// Text is parsed by the C library: integers with base detection (decimal,
// "0x" hexadecimal, leading "0" octal) at 64 bits and then cut to the width,
// floating values with the wide strtod; a character is the first byte.
template <class T>
T CVariant::FromText() const {
  auto* text = static_cast<CString*>(value_.o);
  if (!text) return T(0);
  if constexpr (std::is_same_v<T, char>) {
    return text->GetChars()[0];
  } else if constexpr (std::is_floating_point_v<T>) {
    return Convert<T>(text->ToDouble());
  } else if constexpr (std::is_signed_v<T>) {
    return Convert<T>(text->ToInt64(0));
  } else {
    return Convert<T>(text->ToUInt64(0));
  }
}

// The first sizeof(T) bytes in host order, or 0 when there are fewer.
template <class T>
T CVariant::FromBytes() const {
  auto* bytes = static_cast<CByteArray*>(value_.o);
  if (!bytes || bytes->GetLength() < static_cast<int>(sizeof(T))) return T(0);
  if constexpr (std::is_same_v<T, bool>) return bytes->GetData(0) != 0;
  T value;
  std::memcpy(&value, bytes->GetData(), sizeof value);
  return value;
}

bool CVariant::ToBoolean() const {
  switch (type_) {
    case Four:
      return value_.u32 == FourCC("true");
    case Pointer:
      return value_.p != nullptr;
    case String: {
      auto* text = static_cast<CString*>(value_.o);
      return text && !text->IsEmpty() && !text->EqualsIgnoreCase("false");
    }
    case ByteArray: {
      auto* bytes = static_cast<CByteArray*>(value_.o);
      return bytes && bytes->GetLength() > 0 && bytes->GetData(0) != 0;
    }
    case Object:
    case Properties:
    case VariantArray:
      return value_.o != nullptr;
    default:
      return ToNumber<bool>();
  }
}

char CVariant::ToChar() const { return ToNumber<char>(); }
signed char CVariant::ToInt8() const { return ToNumber<signed char>(); }
unsigned char CVariant::ToUInt8() const { return ToNumber<unsigned char>(); }
short CVariant::ToInt16() const { return ToNumber<short>(); }
unsigned short CVariant::ToUInt16() const { return ToNumber<unsigned short>(); }
int CVariant::ToInt32() const { return ToNumber<int>(); }
unsigned int CVariant::ToUInt32() const { return ToNumber<unsigned int>(); }
long long CVariant::ToInt64() const { return ToNumber<long long>(); }
unsigned long long CVariant::ToUInt64() const { return ToNumber<unsigned long long>(); }
float CVariant::ToFloat() const { return ToNumber<float>(); }
double CVariant::ToDouble() const { return ToNumber<double>(); }

// Codes parse from text ("%XX" escapes allowed) and from bytes most
// significant first; other values give their number.
unsigned int CVariant::ToFour() const {
  if (type_ == String) {
    auto* text = static_cast<CString*>(value_.o);
    return text ? text->ToFour() : 0;
  }
  if (type_ == ByteArray) {
    auto* bytes = static_cast<CByteArray*>(value_.o);
    unsigned int code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | (bytes && i < bytes->GetLength() ? bytes->GetData(i) : 0);
    return code;
  }
  return ToNumber<unsigned int>();
}

}  // namespace Corvane::Mox
