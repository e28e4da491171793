#pragma once
// CSymbolValue: the base of every WFL value. Each operator of the language is
// a virtual operation; binary operators take the right operand (possibly
// missing) and return a new value owned by the caller. The base implements
// every operator by throwing bad_operation and every conversion by throwing
// std::bad_cast; the evaluator turns both into an invalid-cast error on the
// operator's token. The static helpers accept a missing value.

#include "System/Object.h"

namespace Corvane::Mox {
class CTimeCode;
class CVariant;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CSymbolDictionary;

// Thrown by an operator that the value's type does not support.
class bad_operation {};

class CSymbolValue : public CObject {
 public:
  explicit CSymbolValue(unsigned int type);

  // An independent copy for plain values; objects answer themselves (acquired).
  virtual CSymbolValue* Clone();
  // The type name as a new string value.
  virtual CSymbolValue* TypeOf() const;

  virtual CSymbolValue* operator!();
  virtual CSymbolValue* operator~();
  virtual CSymbolValue* operator+();
  virtual CSymbolValue* operator-();
  // Prefix forms change the value in place and return it (acquired); postfix
  // forms change it and return a copy of the old value.
  virtual CSymbolValue* operator++();
  virtual CSymbolValue* operator--();
  virtual CSymbolValue* operator++(int);
  virtual CSymbolValue* operator--(int);
  virtual CSymbolValue* operator==(CSymbolValue* right);
  virtual CSymbolValue* operator!=(CSymbolValue* right);
  virtual CSymbolValue* operator>=(CSymbolValue* right);
  virtual CSymbolValue* operator<=(CSymbolValue* right);
  virtual CSymbolValue* operator>(CSymbolValue* right);
  virtual CSymbolValue* operator<(CSymbolValue* right);
  virtual CSymbolValue* operator&&(CSymbolValue* right);
  virtual CSymbolValue* operator||(CSymbolValue* right);
  virtual CSymbolValue* operator+(CSymbolValue* right);
  virtual CSymbolValue* operator-(CSymbolValue* right);
  virtual CSymbolValue* operator*(CSymbolValue* right);
  virtual CSymbolValue* operator/(CSymbolValue* right);
  virtual CSymbolValue* operator^(CSymbolValue* right);
  virtual CSymbolValue* operator&(CSymbolValue* right);
  virtual CSymbolValue* operator|(CSymbolValue* right);
  virtual CSymbolValue* operator%(CSymbolValue* right);
  virtual CSymbolValue* operator<<(CSymbolValue* right);
  virtual CSymbolValue* operator>>(CSymbolValue* right);
  // Compound assignments update this value in place and return it (acquired).
  virtual CSymbolValue* operator+=(CSymbolValue* right);
  virtual CSymbolValue* operator-=(CSymbolValue* right);
  virtual CSymbolValue* operator*=(CSymbolValue* right);
  virtual CSymbolValue* operator/=(CSymbolValue* right);
  virtual CSymbolValue* operator^=(CSymbolValue* right);
  virtual CSymbolValue* operator&=(CSymbolValue* right);
  virtual CSymbolValue* operator|=(CSymbolValue* right);
  virtual CSymbolValue* operator%=(CSymbolValue* right);
  virtual CSymbolValue* operator>>=(CSymbolValue* right);
  virtual CSymbolValue* operator<<=(CSymbolValue* right);
  // "a -> b"; only component and connection values connect.
  virtual CSymbolValue* Connect(CSymbolValue* right);

  virtual bool ToBoolean() const;
  virtual double ToDouble() const;
  virtual long long ToInt64() const;
  virtual CTimeCode ToTimeCode() const;
  // The value's dictionary, acquired (objects share theirs).
  virtual CSymbolDictionary* ToDictionary() const;
  CString* ToString() const override;

  // Conversions of a possibly missing value: false, 0.0, 0, "(null)", a
  // default time code and no dictionary when it is missing.
  static bool ToBoolean(const CSymbolValue* value);
  static double ToDouble(const CSymbolValue* value);
  static long long ToInt64(const CSymbolValue* value);
  static CString* ToString(const CSymbolValue* value);
  static CTimeCode ToTimeCode(const CSymbolValue* value);
  static CSymbolDictionary* ToDictionary(const CSymbolValue* value);

  // The variant form of a value for the property system; null when missing.
  static CVariant* CreateVariant(CSymbolValue* value);

  // Doubles convert to 64-bit integers by truncation, saturating at the
  // limits (NaN gives 0) so that no script can provoke undefined behaviour.
  static long long Truncate(double value);
};

}  // namespace Corvane::Mox::WFL
