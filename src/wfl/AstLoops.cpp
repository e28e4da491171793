#include "wfl/AstLoops.h"

#include "wfl/AstHold.h"
#include "wfl/AstNodeGuard.h"
#include "wfl/ScalarValues.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

using Context = CStatement::ExecutionContext;

// ---- loops ----

CLoopStatement::CLoopStatement(unsigned int type, CToken* token, CStatement* body)
    : CStatement(type, Checked(token, {body})), body_(Hold(body)) {}

CLoopStatement::~CLoopStatement() { Drop(body_); }

bool CLoopStatement::RunBody(ExecutionContext& context) const {
  context = body_->Evaluate();
  switch (context.GetCompletion()) {
    case Context::Break:
      context = Context();
      return true;
    case Context::Return:
      return true;
    default:
      context = Context();
      return false;
  }
}

CWhileStatement::CWhileStatement(CToken* token, CExpression* condition, CStatement* body)
    : CLoopStatement(TypeCode, token, body), condition_(Hold(condition)) {
  Require(condition);
}

CWhileStatement::~CWhileStatement() { Drop(condition_); }

Context CWhileStatement::Execute() const {
  Context context;
  while (condition_->EvaluateToBoolean())
    if (RunBody(context)) break;
  return context;
}

CDoWhileStatement::CDoWhileStatement(CToken* token, CStatement* body, CExpression* condition)
    : CLoopStatement(TypeCode, token, body), condition_(Hold(condition)) {
  Require(condition);
}

CDoWhileStatement::~CDoWhileStatement() { Drop(condition_); }

Context CDoWhileStatement::Execute() const {
  Context context;
  do {
    if (RunBody(context)) break;
  } while (condition_->EvaluateToBoolean());
  return context;
}

CForStatement::CForStatement(CToken* token, CStatement* initializer, CExpression* condition, CExpression* step,
                             CStatement* body)
    : CLoopStatement(TypeCode, Checked(token, {initializer}), body),
      initializer_(Hold(initializer)),
      condition_(Hold(condition)),
      step_(Hold(step)) {}

CForStatement::~CForStatement() {
  Drop(initializer_);
  Drop(condition_);
  Drop(step_);
}

Context CForStatement::Execute() const {
  CAutoScope scope;  // "var i" in the initializer is local to the loop
  initializer_->Evaluate();
  Context context;
  while (!condition_ || condition_->EvaluateToBoolean()) {
    if (RunBody(context)) break;
    if (step_) RObject<CSymbol> stepped(step_->Evaluate());
  }
  return context;
}

CForEachStatement::CForEachStatement(unsigned int type, CToken* token, CExpression* variable,
                                     CExpression* collection, CStatement* body)
    : CLoopStatement(type, Checked(token, {variable, collection}), body),
      variable_(Hold(variable)),
      collection_(Hold(collection)) {}

CForEachStatement::~CForEachStatement() {
  Drop(variable_);
  Drop(collection_);
}

Context CForEachStatement::Execute() const {
  CAutoScope scope;
  RObject<CSymbol> variable(variable_->Evaluate());
  RObject<CSymbolDictionary> collection(collection_->EvaluateToDictionary());
  // Walk a snapshot: the body may change the collection.
  RObject<CList<CString>> names(collection->GetNames());
  RObject<CList<CSymbol>> members(collection->GetSymbols());
  Context context;
  for (int i = 0; i < names->GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> member;
    names->Get(i, name.Out());
    members->Get(i, member.Out());
    RObject<CSymbolValue> value(ItemValue(name, member));
    variable->SetValue(value);
    if (RunBody(context)) break;
  }
  return context;
}

CForInStatement::CForInStatement(CToken* token, CExpression* variable, CExpression* collection, CStatement* body)
    : CForEachStatement(TypeCode, token, variable, collection, body) {}

CSymbolValue* CForInStatement::ItemValue(CString* name, CSymbol*) const { return new CStringValue(name); }

CForOfStatement::CForOfStatement(CToken* token, CExpression* variable, CExpression* collection, CStatement* body)
    : CForEachStatement(TypeCode, token, variable, collection, body) {}

CSymbolValue* CForOfStatement::ItemValue(CString*, CSymbol* member) const {
  return Hold(member ? member->GetValue() : nullptr);
}

// ---- with ----

CWithStatement::CWithStatement(CToken* token, CExpression* object, CStatement* body)
    : CStatement(TypeCode, Checked(token, {object, body})), object_(Hold(object)), body_(Hold(body)) {}

CWithStatement::~CWithStatement() {
  Drop(object_);
  Drop(body_);
}

Context CWithStatement::Execute() const {
  RObject<CSymbolDictionary> object(object_->EvaluateToDictionary());
  CAutoScope scope(object);
  // New bare names belong to the object even inside the body's own block
  // scope; names declared with var there stay local to the block.
  CBareNameScope bareNames(object);
  return body_->Evaluate();
}

// ---- switch ----

CCaseClause::CCaseClause(CToken* token, CExpression* test) : CSwitchClause(TypeCode, token), test_(Hold(test)) {
  Require(test);
}

CCaseClause::~CCaseClause() { Drop(test_); }

bool CCaseClause::TestExpression(CSymbolValue* value) const {
  RObject<CSymbol> test(test_->Evaluate());
  CSymbolValue* expected = test->GetValue();
  if (!expected || !value) return !expected && !value;
  return CExpression::Guard(GetToken(), [&] {
    RObject<CSymbolValue> equal(*expected == value);
    return CSymbolValue::ToBoolean(equal.Get());
  });
}

CSwitchStatement::CSwitchStatement(CToken* token, CExpression* discriminant)
    : CStatement(TypeCode, token), discriminant_(Hold(discriminant)), default_(nullptr) {
  Require(discriminant);
}

CSwitchStatement::~CSwitchStatement() {
  Drop(discriminant_);
  for (CSwitchClause* clause : clauses_) clause->Release();
  Drop(default_);
}

void CSwitchStatement::AddClause(CSwitchClause* clause) {
  Require(clause);
  clauses_.push_back(Hold(clause));
}

void CSwitchStatement::SetDefaultClause(CDefaultClause* clause) {
  Require(clause);
  Drop(default_);
  default_ = Hold(clause);
}

Context CSwitchStatement::Finish(Context context) {
  return context.GetCompletion() == Context::Break ? Context() : context;
}

// Clauses run in source order from the first match, falling through; a
// default clause that is not last runs only when nothing else ran, and then
// alone.
Context CSwitchStatement::Execute() const {
  RObject<CSymbol> discriminant(discriminant_->Evaluate());
  CSymbolValue* value = discriminant->GetValue();
  bool falling = false;
  for (CSwitchClause* clause : clauses_) {
    bool isDefault = clause == default_;
    if (!falling && (isDefault || !clause->TestExpression(value))) continue;
    falling = true;
    Context context = clause->Evaluate();
    if (context.GetCompletion() != Context::Normal) return Finish(context);
  }
  if (!falling && default_) return Finish(default_->Evaluate());
  return Context();
}

}  // namespace Corvane::Mox::WFL
