#include "wfl/TimeCodeValue.h"

#include <climits>
#include <limits>

#include "System/Text.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

CSymbolValue* Bool(bool value) { return new CBooleanValue(value); }

void AddMember(CSymbolDictionary* dictionary, const char* name, CSymbol* symbol) {
  RObject<CSymbol> held(symbol);
  dictionary->SetSymbol(name, symbol).ThrowIfFailed();
}

}  // namespace

CTimeCodeValue::CTimeCodeValue(const CTimeCode& timeCode) : CSymbolValue(TypeCode), timeCode_(timeCode) {}

int CTimeCodeValue::Frames(CSymbolValue* right) {
  long long frames = CSymbolValue::ToInt64(right);
  return static_cast<int>(frames > INT_MAX ? INT_MAX : frames < INT_MIN ? INT_MIN : frames);
}

CSymbolValue* CTimeCodeValue::Clone() { return new CTimeCodeValue(timeCode_); }

CSymbolValue* CTimeCodeValue::TypeOf() const {
  RObject<CString> text(new CString("timecode"));
  return new CStringValue(text.Get());
}

CSymbolValue* CTimeCodeValue::operator++() {
  ++timeCode_;
  Acquire();
  return this;
}
CSymbolValue* CTimeCodeValue::operator--() {
  --timeCode_;
  Acquire();
  return this;
}
CSymbolValue* CTimeCodeValue::operator++(int) {
  CSymbolValue* old = new CTimeCodeValue(timeCode_);
  ++timeCode_;
  return old;
}
CSymbolValue* CTimeCodeValue::operator--(int) {
  CSymbolValue* old = new CTimeCodeValue(timeCode_);
  --timeCode_;
  return old;
}

CSymbolValue* CTimeCodeValue::operator==(CSymbolValue* right) { return Bool(ToInt64() == CSymbolValue::ToInt64(right)); }
CSymbolValue* CTimeCodeValue::operator!=(CSymbolValue* right) { return Bool(ToInt64() != CSymbolValue::ToInt64(right)); }
CSymbolValue* CTimeCodeValue::operator>=(CSymbolValue* right) { return Bool(ToInt64() >= CSymbolValue::ToInt64(right)); }
CSymbolValue* CTimeCodeValue::operator<=(CSymbolValue* right) { return Bool(ToInt64() <= CSymbolValue::ToInt64(right)); }
CSymbolValue* CTimeCodeValue::operator>(CSymbolValue* right) { return Bool(ToInt64() > CSymbolValue::ToInt64(right)); }
CSymbolValue* CTimeCodeValue::operator<(CSymbolValue* right) { return Bool(ToInt64() < CSymbolValue::ToInt64(right)); }

CSymbolValue* CTimeCodeValue::operator+(CSymbolValue* right) { return new CTimeCodeValue(timeCode_ + Frames(right)); }
CSymbolValue* CTimeCodeValue::operator-(CSymbolValue* right) { return new CTimeCodeValue(timeCode_ - Frames(right)); }

CSymbolValue* CTimeCodeValue::operator%(CSymbolValue* right) {
  int divisor = Frames(right);
  if (divisor == 0) return new CNumericValue(std::numeric_limits<double>::quiet_NaN());
  CTimeCode reduced(timeCode_);
  reduced.FromFrames(divisor == -1 ? 0 : timeCode_.GetTotalFrames() % divisor);
  return new CTimeCodeValue(reduced);
}

CSymbolValue* CTimeCodeValue::operator+=(CSymbolValue* right) {
  timeCode_ += Frames(right);
  Acquire();
  return this;
}
CSymbolValue* CTimeCodeValue::operator-=(CSymbolValue* right) {
  timeCode_ -= Frames(right);
  Acquire();
  return this;
}
CSymbolValue* CTimeCodeValue::operator%=(CSymbolValue* right) {
  int divisor = Frames(right);
  if (divisor == 0) return new CNumericValue(std::numeric_limits<double>::quiet_NaN());
  timeCode_.FromFrames(divisor == -1 ? 0 : timeCode_.GetTotalFrames() % divisor);
  Acquire();
  return this;
}

CSymbolDictionary* CTimeCodeValue::ToDictionary() const {
  RObject<CSymbolDictionary> parts(new CSymbolDictionary());
  AddMember(parts, "hours", new CSymbol(timeCode_.GetHours()));
  AddMember(parts, "minutes", new CSymbol(timeCode_.GetMinutes()));
  AddMember(parts, "seconds", new CSymbol(timeCode_.GetSeconds()));
  AddMember(parts, "frames", new CSymbol(timeCode_.GetFrames()));
  AddMember(parts, "dropFrame", new CSymbol(timeCode_.IsDropFrame()));
  AddMember(parts, "duration", new CSymbol(timeCode_.GetDuration()));
  AddMember(parts, "modulus", new CSymbol(timeCode_.GetModulus()));
  return parts.Detach();
}

CString* CTimeCodeValue::ToString() const {
  CString* text = timeCode_.ToString(';');
  return text ? text : new CString("(null)");
}

}  // namespace Corvane::Mox::WFL
