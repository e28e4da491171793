#pragma once
// The plain WFL values: booleans, numbers (doubles) and strings. Each is an
// independent value: Clone makes a copy, and the in-place operators (++,
// --, compound assignments) change the value object itself.

#include "wfl/SymbolValue.h"

// Brings the base's overloads of the operators and conversions that a value
// class overrides only in part into scope.
#define WFL_VALUE_OVERLOADS(Base) \
  using Base::operator+;          \
  using Base::operator-;          \
  using Base::operator++;         \
  using Base::operator--;         \
  using Base::ToBoolean;          \
  using Base::ToDouble;           \
  using Base::ToInt64;            \
  using Base::ToString;           \
  using Base::ToTimeCode;         \
  using Base::ToDictionary;

namespace Corvane::Mox::WFL {

class CBooleanValue : public CSymbolValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("bval");
  WFL_VALUE_OVERLOADS(CSymbolValue)

  explicit CBooleanValue(bool value);
  // Literal text: exactly "false" is false, anything else true.
  explicit CBooleanValue(const char* literal);

  bool GetValue() const { return value_; }

  CSymbolValue* Clone() override;
  CSymbolValue* TypeOf() const override;
  CSymbolValue* operator!() override;
  CSymbolValue* operator==(CSymbolValue* right) override;
  CSymbolValue* operator!=(CSymbolValue* right) override;
  CSymbolValue* operator>=(CSymbolValue* right) override;
  CSymbolValue* operator<=(CSymbolValue* right) override;
  CSymbolValue* operator>(CSymbolValue* right) override;
  CSymbolValue* operator<(CSymbolValue* right) override;
  CSymbolValue* operator&&(CSymbolValue* right) override;
  CSymbolValue* operator||(CSymbolValue* right) override;
  CSymbolValue* operator^(CSymbolValue* right) override;
  CSymbolValue* operator&(CSymbolValue* right) override;
  CSymbolValue* operator|(CSymbolValue* right) override;
  CSymbolValue* operator^=(CSymbolValue* right) override;
  CSymbolValue* operator&=(CSymbolValue* right) override;
  CSymbolValue* operator|=(CSymbolValue* right) override;

  bool ToBoolean() const override { return value_; }
  double ToDouble() const override { return value_ ? 1.0 : 0.0; }
  long long ToInt64() const override { return value_ ? 1 : 0; }
  CString* ToString() const override;

 private:
  bool value_;
};

class CNumericValue : public CSymbolValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("nval");
  WFL_VALUE_OVERLOADS(CSymbolValue)

  explicit CNumericValue(double value);
  // Literal text: "0x"/"0X" hexadecimal (unsigned 64-bit), else decimal.
  explicit CNumericValue(const char* literal);

  double GetValue() const { return value_; }

  CSymbolValue* Clone() override;
  CSymbolValue* TypeOf() const override;
  CSymbolValue* operator!() override;
  CSymbolValue* operator~() override;
  CSymbolValue* operator+() override;
  CSymbolValue* operator-() override;
  CSymbolValue* operator++() override;
  CSymbolValue* operator--() override;
  CSymbolValue* operator++(int) override;
  CSymbolValue* operator--(int) override;
  CSymbolValue* operator==(CSymbolValue* right) override;
  CSymbolValue* operator!=(CSymbolValue* right) override;
  CSymbolValue* operator>=(CSymbolValue* right) override;
  CSymbolValue* operator<=(CSymbolValue* right) override;
  CSymbolValue* operator>(CSymbolValue* right) override;
  CSymbolValue* operator<(CSymbolValue* right) override;
  CSymbolValue* operator+(CSymbolValue* right) override;
  CSymbolValue* operator-(CSymbolValue* right) override;
  CSymbolValue* operator*(CSymbolValue* right) override;
  CSymbolValue* operator/(CSymbolValue* right) override;
  CSymbolValue* operator^(CSymbolValue* right) override;
  CSymbolValue* operator&(CSymbolValue* right) override;
  CSymbolValue* operator|(CSymbolValue* right) override;
  CSymbolValue* operator%(CSymbolValue* right) override;
  CSymbolValue* operator<<(CSymbolValue* right) override;
  CSymbolValue* operator>>(CSymbolValue* right) override;
  CSymbolValue* operator+=(CSymbolValue* right) override;
  CSymbolValue* operator-=(CSymbolValue* right) override;
  CSymbolValue* operator*=(CSymbolValue* right) override;
  CSymbolValue* operator/=(CSymbolValue* right) override;
  CSymbolValue* operator^=(CSymbolValue* right) override;
  CSymbolValue* operator&=(CSymbolValue* right) override;
  CSymbolValue* operator|=(CSymbolValue* right) override;
  CSymbolValue* operator%=(CSymbolValue* right) override;
  CSymbolValue* operator>>=(CSymbolValue* right) override;
  CSymbolValue* operator<<=(CSymbolValue* right) override;

  bool ToBoolean() const override { return value_ != 0; }
  double ToDouble() const override { return value_; }
  long long ToInt64() const override { return Truncate(value_); }
  CTimeCode ToTimeCode() const override;
  // "%-.16G": 1920, 0.5, 1E+20, INF, NAN.
  CString* ToString() const override;

  // The arithmetic of the operators, shared with the compound forms.
  static double Divide(double a, double b);
  static double Remainder(long long a, long long b);
  static long long ShiftLeft(long long a, long long count);
  static long long ShiftRight(long long a, long long count);

 private:
  // Stores the result of a binary operation in place and returns this (acquired).
  CSymbolValue* Store(CSymbolValue* computed);

  double value_;
};

class CStringValue : public CSymbolValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("sval");
  WFL_VALUE_OVERLOADS(CSymbolValue)

  // Shares the text (acquired).
  explicit CStringValue(CString* text);
  ~CStringValue() override;

  // The text, borrowed.
  CString* GetText() const { return text_; }

  CSymbolValue* Clone() override;
  CSymbolValue* TypeOf() const override;
  CSymbolValue* operator!() override;
  CSymbolValue* operator==(CSymbolValue* right) override;
  CSymbolValue* operator!=(CSymbolValue* right) override;
  CSymbolValue* operator>=(CSymbolValue* right) override;
  CSymbolValue* operator<=(CSymbolValue* right) override;
  CSymbolValue* operator>(CSymbolValue* right) override;
  CSymbolValue* operator<(CSymbolValue* right) override;
  CSymbolValue* operator+(CSymbolValue* right) override;
  CSymbolValue* operator+=(CSymbolValue* right) override;

  // False only for the exact text "false".
  bool ToBoolean() const override;
  // The whole text as a decimal number; anything else is a conversion error.
  double ToDouble() const override;
  // "0x" hexadecimal in either case, else decimal.
  long long ToInt64() const override;
  CTimeCode ToTimeCode() const override;
  CString* ToString() const override;

 private:
  // strcmp order of this text and the right operand's text.
  int Compare(CSymbolValue* right) const;
  CString* Concatenate(CSymbolValue* right) const;

  CString* text_;
};

}  // namespace Corvane::Mox::WFL
