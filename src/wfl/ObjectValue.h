#pragma once
// CObjectValue and CArrayValue: WFL objects ({a: 1}) and arrays ([1, 2]).
// Both hold a CSymbolDictionary (an array's keys are "0", "1", ...) and are
// shared by reference: Clone answers the same value, and == compares the
// identity of the dictionaries, not their contents.

#include "wfl/ScalarValues.h"

namespace Corvane::Mox::WFL {

class CObjectValue : public CSymbolValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("oval");
  WFL_VALUE_OVERLOADS(CSymbolValue)

  // Shares the dictionary (acquired); a null one is replaced by a new empty one.
  explicit CObjectValue(CSymbolDictionary* dictionary);
  ~CObjectValue() override;

  bool IsType(unsigned int type) const override;
  // The dictionary, borrowed.
  CSymbolDictionary* GetDictionary() const { return dictionary_; }

  CSymbolValue* Clone() override;
  CSymbolValue* TypeOf() const override;
  CSymbolValue* operator==(CSymbolValue* right) override;
  CSymbolValue* operator!=(CSymbolValue* right) override;

  bool ToBoolean() const override { return true; }
  CSymbolDictionary* ToDictionary() const override;
  // "{ name : value, ... }".
  CString* ToString() const override;

 protected:
  CObjectValue(unsigned int type, CSymbolDictionary* dictionary);
  bool SameDictionary(CSymbolValue* right) const;

 private:
  CSymbolDictionary* dictionary_;
};

class CArrayValue : public CObjectValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("aval");
  WFL_VALUE_OVERLOADS(CObjectValue)

  explicit CArrayValue(CSymbolDictionary* dictionary);

  bool IsType(unsigned int type) const override;
  CSymbolValue* TypeOf() const override;
  // "[ item, ... ]" over the keys "0" up to the highest integer key; gaps print "(null)".
  CString* ToString() const override;
};

}  // namespace Corvane::Mox::WFL
