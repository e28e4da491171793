#include "wfl/SymbolValue.h"

#include <cmath>
#include <limits>
#include <typeinfo>

#include "System/Media/TimeCode/TimeCode.h"
#include "System/Text.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

CSymbolValue::CSymbolValue(unsigned int type) : CObject(type) {}

CSymbolValue* CSymbolValue::Clone() { throw bad_operation(); }
CSymbolValue* CSymbolValue::TypeOf() const { throw bad_operation(); }

CSymbolValue* CSymbolValue::operator!() { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator~() { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator+() { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator-() { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator++() { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator--() { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator++(int) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator--(int) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator==(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator!=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator>=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator<=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator>(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator<(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator&&(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator||(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator+(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator-(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator*(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator/(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator^(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator&(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator|(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator%(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator<<(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator>>(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator+=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator-=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator*=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator/=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator^=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator&=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator|=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator%=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator>>=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::operator<<=(CSymbolValue*) { throw bad_operation(); }
CSymbolValue* CSymbolValue::Connect(CSymbolValue*) { throw bad_operation(); }

bool CSymbolValue::ToBoolean() const { throw std::bad_cast(); }
double CSymbolValue::ToDouble() const { throw std::bad_cast(); }
long long CSymbolValue::ToInt64() const { throw std::bad_cast(); }
CTimeCode CSymbolValue::ToTimeCode() const { throw std::bad_cast(); }
CSymbolDictionary* CSymbolValue::ToDictionary() const { throw std::bad_cast(); }
CString* CSymbolValue::ToString() const { throw std::bad_cast(); }

bool CSymbolValue::ToBoolean(const CSymbolValue* value) { return value ? value->ToBoolean() : false; }
double CSymbolValue::ToDouble(const CSymbolValue* value) { return value ? value->ToDouble() : 0.0; }
long long CSymbolValue::ToInt64(const CSymbolValue* value) { return value ? value->ToInt64() : 0; }
CString* CSymbolValue::ToString(const CSymbolValue* value) { return value ? value->ToString() : new CString("(null)"); }
CTimeCode CSymbolValue::ToTimeCode(const CSymbolValue* value) { return value ? value->ToTimeCode() : CTimeCode(); }
CSymbolDictionary* CSymbolValue::ToDictionary(const CSymbolValue* value) {
  return value ? value->ToDictionary() : nullptr;
}

long long CSymbolValue::Truncate(double value) {
  constexpr double kLimit = 9223372036854775807.0;  // 2^63
  if (std::isnan(value)) return 0;
  if (value >= kLimit) return std::numeric_limits<long long>::max();
  if (value <= -kLimit) return std::numeric_limits<long long>::min();
  return static_cast<long long>(value);
}

}  // namespace Corvane::Mox::WFL
