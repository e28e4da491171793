#include "wfl/ScalarValues.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <typeinfo>

#include "System/Media/TimeCode/TimeCode.h"
#include "System/Text.h"
#include "wfl/EvaluationBudget.h"

namespace Corvane::Mox::WFL {

namespace {

CSymbolValue* Bool(bool value) { return new CBooleanValue(value); }
CSymbolValue* Number(double value) { return new CNumericValue(value); }
CSymbolValue* TypeName(const char* name) {
  RObject<CString> text(new CString(name));
  return new CStringValue(text.Get());
}

bool RightBool(CSymbolValue* right) { return CSymbolValue::ToBoolean(right); }
double RightDouble(CSymbolValue* right) { return CSymbolValue::ToDouble(right); }
long long RightInt(CSymbolValue* right) { return CSymbolValue::ToInt64(right); }

bool StartsWithHexPrefix(const char* text) { return text[0] == '0' && (text[1] == 'x' || text[1] == 'X'); }

}  // namespace

// ---- CBooleanValue ----

CBooleanValue::CBooleanValue(bool value) : CSymbolValue(TypeCode), value_(value) {}
CBooleanValue::CBooleanValue(const char* literal)
    : CSymbolValue(TypeCode), value_(!(literal && std::strcmp(literal, "false") == 0)) {}

CSymbolValue* CBooleanValue::Clone() { return Bool(value_); }
CSymbolValue* CBooleanValue::TypeOf() const { return TypeName("boolean"); }
CSymbolValue* CBooleanValue::operator!() { return Bool(!value_); }
CSymbolValue* CBooleanValue::operator==(CSymbolValue* right) { return Bool(value_ == RightBool(right)); }
CSymbolValue* CBooleanValue::operator!=(CSymbolValue* right) { return Bool(value_ != RightBool(right)); }
CSymbolValue* CBooleanValue::operator<(CSymbolValue* right) { return Bool(!value_ && RightBool(right)); }
CSymbolValue* CBooleanValue::operator>(CSymbolValue* right) { return Bool(value_ && !RightBool(right)); }
CSymbolValue* CBooleanValue::operator<=(CSymbolValue* right) { return Bool(!value_ || RightBool(right)); }
CSymbolValue* CBooleanValue::operator>=(CSymbolValue* right) { return Bool(value_ || !RightBool(right)); }
CSymbolValue* CBooleanValue::operator&&(CSymbolValue* right) { return Bool(value_ && RightBool(right)); }
CSymbolValue* CBooleanValue::operator||(CSymbolValue* right) { return Bool(value_ || RightBool(right)); }
CSymbolValue* CBooleanValue::operator&(CSymbolValue* right) { return Bool(value_ && RightBool(right)); }
CSymbolValue* CBooleanValue::operator|(CSymbolValue* right) { return Bool(value_ || RightBool(right)); }
CSymbolValue* CBooleanValue::operator^(CSymbolValue* right) { return Bool(value_ != RightBool(right)); }

CSymbolValue* CBooleanValue::operator&=(CSymbolValue* right) {
  value_ = value_ && RightBool(right);
  Acquire();
  return this;
}
CSymbolValue* CBooleanValue::operator|=(CSymbolValue* right) {
  value_ = value_ || RightBool(right);
  Acquire();
  return this;
}
CSymbolValue* CBooleanValue::operator^=(CSymbolValue* right) {
  value_ = value_ != RightBool(right);
  Acquire();
  return this;
}

CString* CBooleanValue::ToString() const { return new CString(value_ ? "true" : "false"); }

// ---- CNumericValue ----

CNumericValue::CNumericValue(double value) : CSymbolValue(TypeCode), value_(value) {}

CNumericValue::CNumericValue(const char* literal) : CSymbolValue(TypeCode), value_(0) {
  if (!literal) return;
  if (StartsWithHexPrefix(literal)) {
    value_ = static_cast<double>(std::strtoull(literal + 2, nullptr, 16));
  } else {
    value_ = std::strtod(literal, nullptr);
  }
}

double CNumericValue::Divide(double a, double b) {
  // Any division by zero is positive infinity, 0/0 and -1/0 included.
  return b == 0 ? std::numeric_limits<double>::infinity() : a / b;
}

double CNumericValue::Remainder(long long a, long long b) {
  if (b == 0) return std::numeric_limits<double>::quiet_NaN();
  if (b == -1) return 0;  // the one quotient that overflows
  return static_cast<double>(a % b);
}

// Shift counts are taken modulo 64 and the bits shifted as unsigned, so no
// count or sign is undefined.
long long CNumericValue::ShiftLeft(long long a, long long count) {
  return static_cast<long long>(static_cast<unsigned long long>(a) << (count & 63));
}

long long CNumericValue::ShiftRight(long long a, long long count) { return a >> (count & 63); }

CSymbolValue* CNumericValue::Clone() { return Number(value_); }
CSymbolValue* CNumericValue::TypeOf() const { return TypeName("number"); }
CSymbolValue* CNumericValue::operator!() { return Bool(!ToBoolean()); }
CSymbolValue* CNumericValue::operator~() { return Number(static_cast<double>(~ToInt64())); }
CSymbolValue* CNumericValue::operator+() { return Number(value_); }
CSymbolValue* CNumericValue::operator-() { return Number(-value_); }

CSymbolValue* CNumericValue::operator++() {
  value_ += 1;
  Acquire();
  return this;
}
CSymbolValue* CNumericValue::operator--() {
  value_ -= 1;
  Acquire();
  return this;
}
CSymbolValue* CNumericValue::operator++(int) {
  CSymbolValue* old = Number(value_);
  value_ += 1;
  return old;
}
CSymbolValue* CNumericValue::operator--(int) {
  CSymbolValue* old = Number(value_);
  value_ -= 1;
  return old;
}

CSymbolValue* CNumericValue::operator==(CSymbolValue* right) { return Bool(value_ == RightDouble(right)); }
CSymbolValue* CNumericValue::operator!=(CSymbolValue* right) { return Bool(value_ != RightDouble(right)); }
CSymbolValue* CNumericValue::operator>=(CSymbolValue* right) { return Bool(value_ >= RightDouble(right)); }
CSymbolValue* CNumericValue::operator<=(CSymbolValue* right) { return Bool(value_ <= RightDouble(right)); }
CSymbolValue* CNumericValue::operator>(CSymbolValue* right) { return Bool(value_ > RightDouble(right)); }
CSymbolValue* CNumericValue::operator<(CSymbolValue* right) { return Bool(value_ < RightDouble(right)); }
CSymbolValue* CNumericValue::operator+(CSymbolValue* right) { return Number(value_ + RightDouble(right)); }
CSymbolValue* CNumericValue::operator-(CSymbolValue* right) { return Number(value_ - RightDouble(right)); }
CSymbolValue* CNumericValue::operator*(CSymbolValue* right) { return Number(value_ * RightDouble(right)); }
CSymbolValue* CNumericValue::operator/(CSymbolValue* right) { return Number(Divide(value_, RightDouble(right))); }
CSymbolValue* CNumericValue::operator%(CSymbolValue* right) { return Number(Remainder(ToInt64(), RightInt(right))); }
CSymbolValue* CNumericValue::operator^(CSymbolValue* right) {
  return Number(static_cast<double>(ToInt64() ^ RightInt(right)));
}
CSymbolValue* CNumericValue::operator&(CSymbolValue* right) {
  return Number(static_cast<double>(ToInt64() & RightInt(right)));
}
CSymbolValue* CNumericValue::operator|(CSymbolValue* right) {
  return Number(static_cast<double>(ToInt64() | RightInt(right)));
}
CSymbolValue* CNumericValue::operator<<(CSymbolValue* right) {
  return Number(static_cast<double>(ShiftLeft(ToInt64(), RightInt(right))));
}
CSymbolValue* CNumericValue::operator>>(CSymbolValue* right) {
  return Number(static_cast<double>(ShiftRight(ToInt64(), RightInt(right))));
}

CSymbolValue* CNumericValue::Store(CSymbolValue* computed) {
  value_ = static_cast<CNumericValue*>(computed)->value_;
  computed->Release();
  Acquire();
  return this;
}

CSymbolValue* CNumericValue::operator+=(CSymbolValue* right) { return Store(*this + right); }
CSymbolValue* CNumericValue::operator-=(CSymbolValue* right) { return Store(*this - right); }
CSymbolValue* CNumericValue::operator*=(CSymbolValue* right) { return Store(*this * right); }
CSymbolValue* CNumericValue::operator/=(CSymbolValue* right) { return Store(*this / right); }
CSymbolValue* CNumericValue::operator^=(CSymbolValue* right) { return Store(*this ^ right); }
CSymbolValue* CNumericValue::operator&=(CSymbolValue* right) { return Store(*this & right); }
CSymbolValue* CNumericValue::operator|=(CSymbolValue* right) { return Store(*this | right); }
CSymbolValue* CNumericValue::operator%=(CSymbolValue* right) { return Store(*this % right); }
CSymbolValue* CNumericValue::operator>>=(CSymbolValue* right) { return Store(*this >> right); }
CSymbolValue* CNumericValue::operator<<=(CSymbolValue* right) { return Store(*this << right); }

CTimeCode CNumericValue::ToTimeCode() const {
  CTimeCode timeCode;
  long long frames = ToInt64();
  timeCode.FromFrames(static_cast<int>(frames > INT32_MAX ? INT32_MAX : frames < INT32_MIN ? INT32_MIN : frames));
  return timeCode;
}

CString* CNumericValue::ToString() const { return CString::WithFormat("%-.16G", value_); }

// ---- CStringValue ----

CStringValue::CStringValue(CString* text) : CSymbolValue(TypeCode), text_(text ? text : new CString()) {
  if (text) text_->Acquire();
}

CStringValue::~CStringValue() { text_->Release(); }

CSymbolValue* CStringValue::Clone() {
  RObject<CString> copy(new CString(text_->GetChars()));
  return new CStringValue(copy.Get());
}

CSymbolValue* CStringValue::TypeOf() const { return TypeName("string"); }
CSymbolValue* CStringValue::operator!() { return Bool(!ToBoolean()); }

int CStringValue::Compare(CSymbolValue* right) const {
  RObject<CString> other(CSymbolValue::ToString(right));
  return std::strcmp(text_->GetChars(), other->GetChars());
}

CSymbolValue* CStringValue::operator==(CSymbolValue* right) { return Bool(Compare(right) == 0); }
CSymbolValue* CStringValue::operator!=(CSymbolValue* right) { return Bool(Compare(right) != 0); }
CSymbolValue* CStringValue::operator>=(CSymbolValue* right) { return Bool(Compare(right) >= 0); }
CSymbolValue* CStringValue::operator<=(CSymbolValue* right) { return Bool(Compare(right) <= 0); }
CSymbolValue* CStringValue::operator>(CSymbolValue* right) { return Bool(Compare(right) > 0); }
CSymbolValue* CStringValue::operator<(CSymbolValue* right) { return Bool(Compare(right) < 0); }

CString* CStringValue::Concatenate(CSymbolValue* right) const {
  RObject<CString> other(CSymbolValue::ToString(right));
  const char* a = text_->GetChars();
  const char* b = other->GetChars();
  CEvaluationBudget::Charge(static_cast<long long>(std::strlen(a) + std::strlen(b)) / 16);
  return new CString(a, b);
}

CSymbolValue* CStringValue::operator+(CSymbolValue* right) {
  RObject<CString> joined(Concatenate(right));
  return new CStringValue(joined.Get());
}

CSymbolValue* CStringValue::operator+=(CSymbolValue* right) {
  CString* joined = Concatenate(right);
  text_->Release();
  text_ = joined;
  Acquire();
  return this;
}

bool CStringValue::ToBoolean() const { return std::strcmp(text_->GetChars(), "false") != 0; }

double CStringValue::ToDouble() const {
  const char* text = text_->GetChars();
  char* end = nullptr;
  double value = std::strtod(text, &end);
  if (!*text || end == text || *end) throw std::bad_cast();
  return value;
}

long long CStringValue::ToInt64() const {
  const char* text = text_->GetChars();
  if (StartsWithHexPrefix(text)) return static_cast<long long>(std::strtoull(text + 2, nullptr, 16));
  return std::strtoll(text, nullptr, 10);
}

CTimeCode CStringValue::ToTimeCode() const {
  CTimeCode timeCode;
  timeCode.FromString(text_->GetChars());
  return timeCode;
}

CString* CStringValue::ToString() const {
  text_->Acquire();
  return text_;
}

}  // namespace Corvane::Mox::WFL
