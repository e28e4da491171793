#pragma once
// CSymbolDictionary: named symbols in insertion order — a scope, the members
// of an object or the items of an array ("0", "1", ...). CSymbolTable: the
// scope stack, innermost scope first.
//
// Script objects can refer to themselves ("o.self = o"), which reference
// counting alone never frees; every dictionary is therefore registered while
// it lives so that ClearAll can break such cycles when the interpreter state
// is released.

#include "System/Collections/Dictionary.h"
#include "System/Collections/List.h"
#include "System/Text.h"

namespace Corvane::Mox {
class CProperties;
}

namespace Corvane::Mox::WFL {

class CSymbol;

class CSymbolDictionary : public CDictionary<CString, CSymbol> {
 public:
  static constexpr unsigned int TypeCode = FourCC("sydc");

  CSymbolDictionary();
  ~CSymbolDictionary() override;

  // The symbol of name, acquired; null when absent.
  CSymbol* GetSymbol(const char* name) const;
  CSymbol* GetSymbol(CString* name) const;
  // Replaces the symbol of name or appends it.
  Result SetSymbol(const char* name, CSymbol* symbol);
  Result SetSymbol(CString* name, CSymbol* symbol);
  // ResultFalse when absent.
  Result RemoveSymbol(const char* name);
  Result RemoveSymbol(CString* name);
  // New lists of the names and of the symbols, in order.
  CList<CString>* GetNames() const;
  CList<CSymbol>* GetSymbols() const;
  // A new bag with one property per member that has a value.
  CProperties* ToProperties() const;

  // Empties every live dictionary, breaking reference cycles between script
  // objects. Only for the end of a script's life.
  static void ClearAll();
  static int GetLiveCount();

 private:
  CSymbolDictionary* previous_;
  CSymbolDictionary* next_;
};

class CSymbolTable : public CList<CSymbolDictionary> {
 public:
  // The first symbol of name searching from the innermost scope, acquired; null when absent.
  CSymbol* FindSymbol(const char* name) const;
  CSymbol* FindSymbol(CString* name) const;
};

}  // namespace Corvane::Mox::WFL
