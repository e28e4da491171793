#include "wfl/ObjectValue.h"

#include <cstdlib>
#include <string>

#include "System/Text.h"
#include "wfl/EvaluationBudget.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/ValueNesting.h"

namespace Corvane::Mox::WFL {

namespace {

CSymbolValue* TypeName(const char* name) {
  RObject<CString> text(new CString(name));
  return new CStringValue(text.Get());
}

std::string SymbolText(CSymbol* symbol) {
  RObject<CString> text(CSymbolValue::ToString(symbol ? symbol->GetValue() : nullptr));
  return text->GetChars();
}

// The value of a key made only of decimal digits, or -1.
long long ArrayIndex(CString* name) {
  const char* text = name->GetChars();
  if (!*text || std::string(text).size() > 15) return -1;
  for (const char* c = text; *c; ++c)
    if (*c < '0' || *c > '9') return -1;
  return std::strtoll(text, nullptr, 10);
}

}  // namespace

CObjectValue::CObjectValue(CSymbolDictionary* dictionary) : CObjectValue(TypeCode, dictionary) {}

CObjectValue::CObjectValue(unsigned int type, CSymbolDictionary* dictionary)
    : CSymbolValue(type), dictionary_(dictionary ? dictionary : new CSymbolDictionary()) {
  if (dictionary) dictionary_->Acquire();
}

CObjectValue::~CObjectValue() { dictionary_->Release(); }

bool CObjectValue::IsType(unsigned int type) const { return type == TypeCode || CSymbolValue::IsType(type); }

CSymbolValue* CObjectValue::Clone() {
  Acquire();
  return this;
}

CSymbolValue* CObjectValue::TypeOf() const { return TypeName("object"); }

bool CObjectValue::SameDictionary(CSymbolValue* right) const {
  auto* other = right && right->IsType(CObjectValue::TypeCode) ? static_cast<CObjectValue*>(right) : nullptr;
  return other && other->dictionary_ == dictionary_;
}

CSymbolValue* CObjectValue::operator==(CSymbolValue* right) { return new CBooleanValue(SameDictionary(right)); }
CSymbolValue* CObjectValue::operator!=(CSymbolValue* right) { return new CBooleanValue(!SameDictionary(right)); }

CSymbolDictionary* CObjectValue::ToDictionary() const {
  dictionary_->Acquire();
  return dictionary_;
}

CString* CObjectValue::ToString() const {
  CValueNesting nesting;
  std::string text = "{ ";
  for (int i = 0; i < dictionary_->GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> symbol;
    dictionary_->GetKeyAndValue(i, name.Out(), symbol.Out());
    if (i > 0) text += ", ";
    text += std::string(name->GetChars()) + " : " + SymbolText(symbol);
  }
  text += " }";
  return new CString(text.c_str());
}

CArrayValue::CArrayValue(CSymbolDictionary* dictionary) : CObjectValue(TypeCode, dictionary) {}

bool CArrayValue::IsType(unsigned int type) const { return type == TypeCode || CObjectValue::IsType(type); }

CSymbolValue* CArrayValue::TypeOf() const { return TypeName("array"); }

CString* CArrayValue::ToString() const {
  CValueNesting nesting;
  CSymbolDictionary* items = GetDictionary();
  long long highest = -1;
  for (int i = 0; i < items->GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> symbol;
    items->GetKeyAndValue(i, name.Out(), symbol.Out());
    long long index = ArrayIndex(name);
    if (index > highest) highest = index;
  }
  CEvaluationBudget::Charge(highest / 16);  // a sparse array prints every gap
  std::string text = "[ ";
  for (long long index = 0; index <= highest; ++index) {
    RObject<CSymbol> symbol(items->GetSymbol(std::to_string(index).c_str()));
    if (index > 0) text += ", ";
    text += SymbolText(symbol);
  }
  text += " ]";
  return new CString(text.c_str());
}

}  // namespace Corvane::Mox::WFL
