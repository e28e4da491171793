#include "wfl/SymbolDictionary.h"

#include <vector>

#include "System/Properties.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolValue.h"
#include "wfl/ValueNesting.h"

namespace Corvane::Mox::WFL {

namespace {

// The live dictionaries, linked through themselves. The interpreter runs one
// script at a time, so the chain needs no lock.
CSymbolDictionary* liveHead = nullptr;
int liveCount = 0;

}  // namespace

CSymbolDictionary::CSymbolDictionary() : previous_(nullptr), next_(liveHead) {
  SetType(TypeCode);
  if (liveHead) liveHead->previous_ = this;
  liveHead = this;
  ++liveCount;
}

CSymbolDictionary::~CSymbolDictionary() {
  if (previous_) previous_->next_ = next_;
  else liveHead = next_;
  if (next_) next_->previous_ = previous_;
  --liveCount;
}

CSymbol* CSymbolDictionary::GetSymbol(const char* name) const {
  RObject<CString> key(new CString(name ? name : ""));
  return GetSymbol(key.Get());
}

CSymbol* CSymbolDictionary::GetSymbol(CString* name) const {
  CSymbol* symbol = nullptr;
  Get(name, symbol);
  return symbol;
}

Result CSymbolDictionary::SetSymbol(const char* name, CSymbol* symbol) {
  RObject<CString> key(new CString(name ? name : ""));
  return SetSymbol(key.Get(), symbol);
}

Result CSymbolDictionary::SetSymbol(CString* name, CSymbol* symbol) { return SetItem(name, symbol); }

Result CSymbolDictionary::RemoveSymbol(const char* name) {
  RObject<CString> key(new CString(name ? name : ""));
  return RemoveSymbol(key.Get());
}

Result CSymbolDictionary::RemoveSymbol(CString* name) { return Remove(name); }

CList<CString>* CSymbolDictionary::GetNames() const {
  auto* names = new CList<CString>();
  for (int i = 0; i < GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> symbol;
    GetKeyAndValue(i, name.Out(), symbol.Out());
    names->Add(name);
  }
  return names;
}

CList<CSymbol>* CSymbolDictionary::GetSymbols() const {
  auto* symbols = new CList<CSymbol>();
  for (int i = 0; i < GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> symbol;
    GetKeyAndValue(i, name.Out(), symbol.Out());
    symbols->Add(symbol);
  }
  return symbols;
}

CProperties* CSymbolDictionary::ToProperties() const {
  CValueNesting nesting;
  RObject<CProperties> properties(new CProperties());
  for (int i = 0; i < GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> symbol;
    GetKeyAndValue(i, name.Out(), symbol.Out());
    CSymbolValue* value = symbol ? symbol->GetValue() : nullptr;
    if (!value) continue;
    RObject<CVariant> variant(CSymbolValue::CreateVariant(value));
    if (variant) properties->SetProperty(name.Get(), variant.Get()).ThrowIfFailed();
  }
  return properties.Detach();
}

void CSymbolDictionary::ClearAll() {
  // Hold every dictionary first: clearing one may free others.
  std::vector<CSymbolDictionary*> all;
  for (CSymbolDictionary* d = liveHead; d; d = d->next_) {
    d->Acquire();
    all.push_back(d);
  }
  for (CSymbolDictionary* d : all) d->Clear();
  for (CSymbolDictionary* d : all) d->Release();
}

int CSymbolDictionary::GetLiveCount() { return liveCount; }

CSymbol* CSymbolTable::FindSymbol(const char* name) const {
  RObject<CString> key(new CString(name ? name : ""));
  return FindSymbol(key.Get());
}

CSymbol* CSymbolTable::FindSymbol(CString* name) const {
  for (CSymbolDictionary* scope : *this) {
    if (CSymbol* symbol = scope->GetSymbol(name)) return symbol;
  }
  return nullptr;
}

}  // namespace Corvane::Mox::WFL
