#include "wfl/Symbol.h"

#include <vector>

#include "System/Media/TimeCode/TimeCode.h"
#include "System/Text.h"
#include "wfl/ObjectValue.h"
#include "wfl/ScalarValues.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/TimeCodeValue.h"

namespace Corvane::Mox::WFL {

CSymbol::CSymbol() : CObject(TypeCode), value_(nullptr) {}

CSymbol::CSymbol(const CSymbol* other) : CSymbol() { SetValue(other ? other->value_ : nullptr); }

CSymbol::CSymbol(CSymbolValue* value) : CSymbol() { SetValue(value); }

CSymbol::CSymbol(unsigned char value) : CSymbol() { Adopt(new CNumericValue(static_cast<double>(value))); }
CSymbol::CSymbol(short value) : CSymbol() { Adopt(new CNumericValue(static_cast<double>(value))); }
CSymbol::CSymbol(int value) : CSymbol() { Adopt(new CNumericValue(static_cast<double>(value))); }
CSymbol::CSymbol(long long value) : CSymbol() { Adopt(new CNumericValue(static_cast<double>(value))); }
CSymbol::CSymbol(double value) : CSymbol() { Adopt(new CNumericValue(value)); }
CSymbol::CSymbol(bool value) : CSymbol() { Adopt(new CBooleanValue(value)); }
CSymbol::CSymbol(const char* text) : CSymbol() {
  RObject<CString> string(new CString(text ? text : ""));
  Adopt(new CStringValue(string.Get()));
}
CSymbol::CSymbol(CString* text) : CSymbol() {
  if (text) Adopt(new CStringValue(text));
}
CSymbol::CSymbol(const CTimeCode& timeCode) : CSymbol() { Adopt(new CTimeCodeValue(timeCode)); }
CSymbol::CSymbol(CSymbolDictionary* dictionary) : CSymbol() {
  if (dictionary) Adopt(new CObjectValue(dictionary));
}

namespace {

// Values freed while another value is being freed wait here, so that freeing
// a long chain of nested objects runs in a loop instead of recursing once
// per level.
thread_local std::vector<CSymbolValue*> pendingReleases;
thread_local bool releasing = false;

}  // namespace

CSymbol::~CSymbol() {
  if (!value_) return;
  if (releasing) {
    pendingReleases.push_back(value_);
    return;
  }
  releasing = true;
  value_->Release();
  while (!pendingReleases.empty()) {
    CSymbolValue* next = pendingReleases.back();
    pendingReleases.pop_back();
    next->Release();
  }
  releasing = false;
}

void CSymbol::Adopt(CSymbolValue* value) {
  CSymbolValue* old = value_;
  value_ = value;
  if (old) old->Release();
}

void CSymbol::SetValue(CSymbolValue* value) {
  if (value) value->Acquire();
  Adopt(value);
}

CString* CSymbol::ToString() const { return CSymbolValue::ToString(value_); }
bool CSymbol::ToBoolean() const { return CSymbolValue::ToBoolean(value_); }
double CSymbol::ToDouble() const { return CSymbolValue::ToDouble(value_); }
long long CSymbol::ToInt64() const { return CSymbolValue::ToInt64(value_); }
CTimeCode CSymbol::ToTimeCode() const { return CSymbolValue::ToTimeCode(value_); }
CSymbolDictionary* CSymbol::ToDictionary() const { return CSymbolValue::ToDictionary(value_); }

}  // namespace Corvane::Mox::WFL
