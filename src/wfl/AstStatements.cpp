#include "wfl/AstStatements.h"

#include <cstdio>

#include "wfl/AstHold.h"
#include "wfl/AstLiterals.h"
#include "wfl/AstNodeGuard.h"
#include "wfl/ResultParserError.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

// How deep user functions are calling each other right now, and where the
// stack stood at the outermost call.
int callDepth = 0;
const char* stackBase = nullptr;

// Stack a script's calls may use, whatever the depth: a body may nest
// expressions deeply, so the depth alone does not bound the stack.
constexpr long kStackBudget = 2L * 1024 * 1024;

class CCallDepthGuard {
 public:
  CCallDepthGuard() {
    char here = 0;
    if (callDepth == 0) stackBase = &here;
    long used = stackBase - &here;
    if (callDepth >= CFunctionDeclaration::MaximumCallDepth || used > kStackBudget || used < -kStackBudget)
      throw ResultOverflow("function calls nested more than %d deep", callDepth);
    ++callDepth;
  }
  ~CCallDepthGuard() { --callDepth; }
};

}  // namespace

// ---- blocks ----

CStatementBlock::CStatementBlock(CToken* token) : CStatementBlock(TypeCode, token) {}
CStatementBlock::CStatementBlock(unsigned int type, CToken* token) : CStatement(type, token) {}

CStatementBlock::~CStatementBlock() {
  for (CStatement* statement : statements_) statement->Release();
}

void CStatementBlock::AddStatement(CStatement* statement) {
  Require(statement);
  statements_.push_back(Hold(statement));
}

CStatement::ExecutionContext CStatementBlock::ExecuteStatements() const {
  for (CStatement* statement : statements_) {
    ExecutionContext context = statement->Evaluate();
    if (context.GetCompletion() != ExecutionContext::Normal) return context;
  }
  return ExecutionContext();
}

CStatement::ExecutionContext CStatementBlock::Execute() const {
  CAutoScope scope;
  return ExecuteStatements();
}

CProgram::CProgram(CToken* token) : CStatementBlock(TypeCode, token) {}

CStatement::ExecutionContext CProgram::Execute() const { return ExecuteStatements(); }

// ---- print ----

void CPrintStatement::DefaultCallback(CString* text) {
  if (!text) return;
  std::fputs(text->GetChars(), stdout);
  std::fflush(stdout);
}

CPrintStatement::Callback CPrintStatement::callback = CPrintStatement::DefaultCallback;

CPrintStatement::CPrintStatement(CToken* keyword, CExpression* expression)
    : CStatement(TypeCode, Checked(keyword, {expression})), expression_(Hold(expression)) {}

CPrintStatement::~CPrintStatement() { Drop(expression_); }

CStatement::ExecutionContext CPrintStatement::Execute() const {
  RObject<CString> text(expression_->EvaluateToString());
  if (GetToken() && GetToken()->GetTokenType() == TOK_PRINTLN) text = CString::WithFormat("%s\n", text->GetChars());
  if (callback) callback(text);
  return ExecutionContext();
}

// ---- simple statements ----

CExpressionStatement::CExpressionStatement(CToken* token, CExpression* expression)
    : CStatement(TypeCode, Checked(token, {expression})), expression_(Hold(expression)) {}

CExpressionStatement::~CExpressionStatement() { Drop(expression_); }

CStatement::ExecutionContext CExpressionStatement::Execute() const {
  RObject<CSymbol> discarded(expression_->Evaluate());
  return ExecutionContext();
}

CReturnStatement::CReturnStatement(CToken* token) : CStatement(TypeCode, token), expression_(nullptr) {}
CReturnStatement::~CReturnStatement() { Drop(expression_); }

void CReturnStatement::SetExpression(CExpression* expression) {
  Require(expression);
  Drop(expression_);
  expression_ = Hold(expression);
}

CStatement::ExecutionContext CReturnStatement::Execute() const {
  if (!expression_) return ExecutionContext(ExecutionContext::Return, nullptr);
  RObject<CSymbol> result(expression_->Evaluate());
  return ExecutionContext(ExecutionContext::Return, result->GetValue());
}

CIfStatement::CIfStatement(CToken* token, CExpression* condition, CStatement* then)
    : CStatement(TypeCode, Checked(token, {condition, then})),
      condition_(Hold(condition)),
      then_(Hold(then)),
      else_(nullptr) {}

CIfStatement::~CIfStatement() {
  Drop(condition_);
  Drop(then_);
  Drop(else_);
}

void CIfStatement::SetElseStatement(CStatement* otherwise) {
  Require(otherwise);
  Drop(else_);
  else_ = Hold(otherwise);
}

CStatement::ExecutionContext CIfStatement::Execute() const {
  if (condition_->EvaluateToBoolean()) return then_->Evaluate();
  return else_ ? else_->Evaluate() : ExecutionContext();
}

// ---- declarations ----

CVariableDeclarationStatement::CVariableDeclarationStatement(CToken* token) : CStatement(TypeCode, token) {}

CVariableDeclarationStatement::~CVariableDeclarationStatement() {
  for (CVariableDeclaration* declaration : declarations_) declaration->Release();
}

void CVariableDeclarationStatement::AddDeclaration(CVariableDeclaration* declaration) {
  Require(declaration);
  declarations_.push_back(Hold(declaration));
}

CStatement::ExecutionContext CVariableDeclarationStatement::Execute() const {
  for (CVariableDeclaration* declaration : declarations_) RObject<CSymbol> declared(declaration->Evaluate());
  return ExecutionContext();
}

CFunctionDeclaration::CFunctionDeclaration(CToken* name, CList<CString>* parameters, CStatementBlock* body)
    : CStatement(TypeCode, Checked(name, {name, parameters, body})), parameters_(Hold(parameters)), body_(Hold(body)) {}

CFunctionDeclaration::~CFunctionDeclaration() {
  Drop(parameters_);
  Drop(body_);
}

CStatement::ExecutionContext CFunctionDeclaration::Execute() const {
  RObject<CString> name(new CString(GetName()));
  GetFunctionTable()->Set(name, this).ThrowIfFailed();
  return ExecutionContext();
}

CSymbol* CFunctionDeclaration::Execute(CList<CExpression>* arguments) const {
  int count = arguments ? arguments->GetCount() : 0;
  if (count != parameters_->GetCount()) throw ResultInvalidArgs(GetToken());
  CCallDepthGuard depth;
  CAutoScope parameterScope;
  // A function's bare names follow its own scopes, not its caller's with.
  CBareNameScope bareNames(nullptr);
  CSymbolDictionary* scope = GetInnermostScope();
  int index = 0;
  for (CString* parameter : *parameters_) {
    RObject<CExpression> argument;
    arguments->Get(index++, argument.Out());
    RObject<CSymbol> slot(argument->Evaluate());
    scope->SetSymbol(parameter, slot).ThrowIfFailed();
  }
  ExecutionContext context = body_->Evaluate();
  return new CSymbol(context.GetValue());
}

}  // namespace Corvane::Mox::WFL
