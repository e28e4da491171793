#include "wfl/AstNode.h"

#include "wfl/AstNodeGuard.h"
#include "wfl/EvaluationBudget.h"
#include "wfl/ResultParserError.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/SymbolValue.h"

namespace Corvane::Mox::WFL {

CSymbolTable* CAstNode::symbols = nullptr;
CSymbolDictionary* CAstNode::bareNames = nullptr;
CFunctionTable* CAstNode::functions = nullptr;

CAstNode::CAstNode(unsigned int type, CToken* token) : CObject(type), token_(token) {
  if (token_) token_->Acquire();
}

CAstNode::~CAstNode() {
  if (token_) token_->Release();
}

void CAstNode::Require(const void* child) const {
  if (!child) throw ResultInvalidAST(token_);
}

CToken* CAstNode::Checked(CToken* token, std::initializer_list<const void*> children) {
  for (const void* child : children)
    if (!child) throw ResultInvalidAST(token);
  return token;
}

CSymbolTable* CAstNode::GetSymbolTable() {
  if (!symbols) symbols = new CSymbolTable();
  return symbols;
}

void CAstNode::ReleaseSymbolTable() {
  CSymbolTable* table = symbols;
  symbols = nullptr;
  if (table) table->Release();
}

CFunctionTable* CAstNode::GetFunctionTable() {
  if (!functions) functions = new CFunctionTable();
  return functions;
}

void CAstNode::ReleaseFunctionTable() {
  CFunctionTable* table = functions;
  functions = nullptr;
  if (table) table->Release();
}

CSymbolDictionary* CAstNode::GetInnermostScope() {
  CSymbolTable* table = GetSymbolTable();
  RObject<CSymbolDictionary> scope;
  if (table->Get(0, scope.Out()).Failed() || !scope) throw ResultInvalidOperation("no scope to declare symbols in");
  return scope.Get();  // the table keeps it alive
}

CSymbolDictionary* CAstNode::GetBareNameScope() { return bareNames ? bareNames : GetInnermostScope(); }

CAstNode::CBareNameScope::CBareNameScope(CSymbolDictionary* scope) : previous_(bareNames) { bareNames = scope; }

CAstNode::CBareNameScope::~CBareNameScope() { bareNames = previous_; }

CAstNode::CAutoScope::CAutoScope() {
  RObject<CSymbolDictionary> scope(new CSymbolDictionary());
  GetSymbolTable()->Insert(0, scope).ThrowIfFailed();
}

CAstNode::CAutoScope::CAutoScope(CSymbolDictionary* scope) { GetSymbolTable()->Insert(0, scope).ThrowIfFailed(); }

CAstNode::CAutoScope::~CAutoScope() {
  if (!symbols) return;
  CSymbolDictionary* scope = symbols->Dequeue();
  if (scope) scope->Release();
}

CStatement::ExecutionContext::ExecutionContext(int completion, CSymbolValue* value)
    : completion_(completion), value_(value) {
  if (value_) value_->Acquire();
}

CStatement::ExecutionContext::ExecutionContext(const ExecutionContext& other)
    : completion_(other.completion_), value_(other.value_) {
  if (value_) value_->Acquire();
}

CStatement::ExecutionContext::ExecutionContext(ExecutionContext&& other) noexcept
    : completion_(other.completion_), value_(other.value_) {
  other.value_ = nullptr;
}

CStatement::ExecutionContext& CStatement::ExecutionContext::operator=(ExecutionContext other) noexcept {
  std::swap(completion_, other.completion_);
  std::swap(value_, other.value_);
  return *this;
}

CStatement::ExecutionContext::~ExecutionContext() {
  if (value_) value_->Release();
}

CStatement::ExecutionContext CStatement::Evaluate() const {
  CEvaluationBudget::Charge(1);
  return Execute();
}

void CExpression::ThrowInvalidCast(const CToken* token) { throw ResultInvalidCast(token); }

bool CExpression::EvaluateToBoolean() const {
  RObject<CSymbol> symbol(Evaluate());
  return Guard(GetToken(), [&] { return symbol->ToBoolean(); });
}

double CExpression::EvaluateToDouble() const {
  RObject<CSymbol> symbol(Evaluate());
  return Guard(GetToken(), [&] { return symbol->ToDouble(); });
}

long long CExpression::EvaluateToInt64() const {
  RObject<CSymbol> symbol(Evaluate());
  return Guard(GetToken(), [&] { return symbol->ToInt64(); });
}

CString* CExpression::EvaluateToString() const {
  RObject<CSymbol> symbol(Evaluate());
  return Guard(GetToken(), [&] { return symbol->ToString(); });
}

CSymbolDictionary* CExpression::EvaluateToDictionary() const {
  RObject<CSymbol> symbol(Evaluate());
  if (!symbol->GetValue()) throw ResultNullReference(GetToken());
  return Guard(GetToken(), [&] { return symbol->ToDictionary(); });
}

}  // namespace Corvane::Mox::WFL

