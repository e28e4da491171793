#pragma once
// CSymbol: a slot that holds one WFL value or nothing (the script's null).
// Names, members and array items are symbols; assigning to an expression
// stores into the slot it evaluated to. The constructors from plain C++
// values make the matching value; the one from a variant converts from the
// property system.

#include "System/Object.h"

namespace Corvane::Mox {
class CTimeCode;
class CVariant;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CSymbolDictionary;
class CSymbolValue;

class CSymbol : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("symb");

  CSymbol();
  // Shares the other symbol's value.
  explicit CSymbol(const CSymbol* other);
  explicit CSymbol(CSymbolValue* value);
  explicit CSymbol(unsigned char value);
  explicit CSymbol(short value);
  explicit CSymbol(int value);
  explicit CSymbol(long long value);
  explicit CSymbol(double value);
  explicit CSymbol(bool value);
  explicit CSymbol(const char* text);
  explicit CSymbol(CString* text);
  explicit CSymbol(const CTimeCode& timeCode);
  // An object value over the dictionary (shared).
  explicit CSymbol(CSymbolDictionary* dictionary);
  // Booleans, numbers, strings, bags (objects, converted recursively) and
  // variant arrays (arrays); a null variant makes an empty symbol.
  explicit CSymbol(CVariant* variant);
  ~CSymbol() override;

  // The value, borrowed; null when missing.
  CSymbolValue* GetValue() const { return value_; }
  void SetValue(CSymbolValue* value);

  CString* ToString() const override;
  bool ToBoolean() const;
  double ToDouble() const;
  long long ToInt64() const;
  CTimeCode ToTimeCode() const;
  // Acquired; null when the value is missing.
  CSymbolDictionary* ToDictionary() const;

 private:
  void Adopt(CSymbolValue* value);

  CSymbolValue* value_;
};

}  // namespace Corvane::Mox::WFL
