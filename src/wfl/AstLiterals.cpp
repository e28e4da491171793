#include "wfl/AstLiterals.h"

#include <cmath>
#include <string>

#include "System/Media/TimeCode/TimeCode.h"
#include "wfl/AstHold.h"
#include "wfl/AstNodeGuard.h"
#include "wfl/ObjectValue.h"
#include "wfl/ResultParserError.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/TimeCodeValue.h"

namespace Corvane::Mox::WFL {

namespace {

CSymbol* NewSymbol(CSymbolValue* adopted) {
  RObject<CSymbolValue> value(adopted);
  return new CSymbol(value.Get());
}

// Frame rates a time code can be built for without overflowing its fields.
bool IsUsableRate(double rate) { return std::isfinite(rate) && rate > 0 && rate <= 1000; }

}  // namespace

CLiteralExpression::CLiteralExpression(unsigned int type, CToken* token)
    : CExpression(type, Checked(token, {token})) {}

CSymbol* CBooleanLiteral::Evaluate() const { return NewSymbol(new CBooleanValue(GetToken()->GetText())); }

CSymbol* CNullLiteral::Evaluate() const { return new CSymbol(); }

CSymbol* CNumericLiteral::Evaluate() const { return NewSymbol(new CNumericValue(GetToken()->GetText())); }

CString* CStringLiteral::GetContent(const CToken* token) {
  const std::string& text = token->GetBytes();
  std::size_t first = text.find_first_of("\"'");
  if (first == std::string::npos) return new CString(text.c_str());
  std::size_t last = text.rfind(text[first]);
  std::string content = last > first ? text.substr(first + 1, last - first - 1) : std::string();
  return new CString(content.c_str());
}

CSymbol* CStringLiteral::Evaluate() const {
  RObject<CString> content(GetContent(GetToken()));
  return new CSymbol(content.Get());
}

CTimeCodeLiteral::CTimeCodeLiteral(CToken* token, CNumericLiteral* hours, CNumericLiteral* minutes,
                                   CNumericLiteral* seconds, CNumericLiteral* frames, CNumericLiteral* rate,
                                   bool dropFrame)
    : CLiteralExpression(TypeCode, Checked(token, {hours, minutes, seconds, frames, rate})),
      parts_{Hold(hours), Hold(minutes), Hold(seconds), Hold(frames), Hold(rate)},
      dropFrame_(dropFrame) {}

CTimeCodeLiteral::~CTimeCodeLiteral() {
  for (CNumericLiteral* part : parts_) Drop(part);
}

CSymbol* CTimeCodeLiteral::Evaluate() const {
  long long hours = parts_[0]->EvaluateToInt64();
  long long minutes = parts_[1]->EvaluateToInt64();
  long long seconds = parts_[2]->EvaluateToInt64();
  long long frames = parts_[3]->EvaluateToInt64();
  double rate = parts_[4]->EvaluateToDouble();
  if (!IsUsableRate(rate)) throw ResultInvalidCast(parts_[4]->GetToken());
  char text[128];
  std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld%c%02lld", hours, minutes, seconds, dropFrame_ ? ';' : ':',
                frames);
  CTimeCode timeCode(rate, dropFrame_);
  timeCode.FromString(text).ThrowIfFailed();
  return new CSymbol(timeCode);
}

CArrayLiteral::~CArrayLiteral() {
  for (CExpression* item : items_) item->Release();
}

void CArrayLiteral::AddItem(CExpression* item) {
  Require(item);
  items_.push_back(Hold(item));
}

CSymbol* CArrayLiteral::Evaluate() const {
  RObject<CSymbolDictionary> items(new CSymbolDictionary());
  int index = 0;
  for (CExpression* item : items_) {
    RObject<CSymbol> evaluated(item->Evaluate());
    RObject<CSymbol> copy(new CSymbol(evaluated.Get()));
    items->SetSymbol(std::to_string(index++).c_str(), copy).ThrowIfFailed();
  }
  return NewSymbol(new CArrayValue(items));
}

CPropertyNameValue::CPropertyNameValue(CToken* key, CExpression* value)
    : CExpression(TypeCode, Checked(key, {key, value})), value_(Hold(value)) {}

CPropertyNameValue::~CPropertyNameValue() { Drop(value_); }

CString* CPropertyNameValue::GetName() const {
  if (GetToken()->GetTokenType() == StringLiteral) return CStringLiteral::GetContent(GetToken());
  return new CString(GetToken()->GetText());
}

CSymbol* CPropertyNameValue::Evaluate() const { return value_->Evaluate(); }

CDictionaryLiteral::~CDictionaryLiteral() {
  for (CPropertyNameValue* property : properties_) property->Release();
}

void CDictionaryLiteral::AddProperty(CPropertyNameValue* property) {
  Require(property);
  properties_.push_back(Hold(property));
}

// The entries are evaluated with the new dictionary as the innermost scope,
// so a value can name the keys defined before it.
CSymbol* CDictionaryLiteral::Evaluate() const {
  RObject<CSymbolDictionary> members(new CSymbolDictionary());
  {
    CAutoScope scope(members);
    for (CPropertyNameValue* property : properties_) {
      RObject<CString> name(property->GetName());
      if (members->ContainsKey(name)) throw ResultDuplicateSymbol(property->GetToken());
      RObject<CSymbol> evaluated(property->Evaluate());
      RObject<CSymbol> copy(new CSymbol(evaluated.Get()));
      members->SetSymbol(name, copy).ThrowIfFailed();
    }
  }
  return NewSymbol(new CObjectValue(members));
}

CVariableDeclaration::CVariableDeclaration(CToken* name) : CExpression(TypeCode, name), initializer_(nullptr) {
  Require(name);
}

CVariableDeclaration::~CVariableDeclaration() { Drop(initializer_); }

void CVariableDeclaration::SetExpression(CExpression* initializer) {
  Require(initializer);
  Drop(initializer_);
  initializer_ = Hold(initializer);
}

CSymbol* CVariableDeclaration::Evaluate() const {
  RObject<CString> name(new CString(GetToken()->GetText()));
  CSymbolDictionary* scope = GetInnermostScope();
  if (scope->ContainsKey(name)) throw ResultDuplicateSymbol(GetToken());
  RObject<CSymbolValue> value;
  if (initializer_) {
    RObject<CSymbol> initial(initializer_->Evaluate());
    CSymbolValue* source = initial->GetValue();
    if (source) value = Guard(GetToken(), [&] { return source->Clone(); });
  }
  RObject<CSymbol> declared(new CSymbol(value.Get()));
  scope->SetSymbol(name, declared).ThrowIfFailed();
  return declared.Detach();
}

}  // namespace Corvane::Mox::WFL
