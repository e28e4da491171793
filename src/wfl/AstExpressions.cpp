#include "wfl/AstExpressions.h"

#include <cmath>

#include "wfl/AstHold.h"
#include "wfl/AstNodeGuard.h"
#include "wfl/AstStatements.h"
#include "wfl/ResultParserError.h"
#include "wfl/ScalarValues.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

using BinaryOperation = CSymbolValue* (CSymbolValue::*)(CSymbolValue*);

enum class Category { Assign, AssignIfMissing, Logical, Equality, Relational, Operate };

struct BinaryRow {
  int token;
  Category category;
  BinaryOperation operation;
};

// How each operator token evaluates; the value operation where one applies.
const BinaryRow kBinaryRows[] = {
    {TOK_EQ, Category::Assign, nullptr},
    {TOK_COAL_EQ, Category::AssignIfMissing, nullptr},
    {TOK_ADD_EQ, Category::Operate, &CSymbolValue::operator+=},
    {TOK_SUB_EQ, Category::Operate, &CSymbolValue::operator-=},
    {TOK_MUL_EQ, Category::Operate, &CSymbolValue::operator*=},
    {TOK_DIV_EQ, Category::Operate, &CSymbolValue::operator/=},
    {TOK_MOD_EQ, Category::Operate, &CSymbolValue::operator%=},
    {TOK_LSH_EQ, Category::Operate, &CSymbolValue::operator<<=},
    {TOK_RSH_EQ, Category::Operate, &CSymbolValue::operator>>=},
    {TOK_AND_EQ, Category::Operate, &CSymbolValue::operator&=},
    {TOK_OR_EQ, Category::Operate, &CSymbolValue::operator|=},
    {TOK_XOR_EQ, Category::Operate, &CSymbolValue::operator^=},
    {TOK_LOGICAL_AND, Category::Logical, nullptr},
    {TOK_AND, Category::Logical, nullptr},
    {TOK_LOGICAL_OR, Category::Logical, nullptr},
    {TOK_OR, Category::Logical, nullptr},
    {TOK_EQS, Category::Equality, &CSymbolValue::operator==},
    {TOK_NEQ, Category::Equality, &CSymbolValue::operator!=},
    {TOK_LESS, Category::Relational, &CSymbolValue::operator<},
    {TOK_LEQ, Category::Relational, &CSymbolValue::operator<=},
    {TOK_GRTR, Category::Relational, &CSymbolValue::operator>},
    {TOK_GEQ, Category::Relational, &CSymbolValue::operator>=},
    {TOK_ADD, Category::Operate, &CSymbolValue::operator+},
    {TOK_SUB, Category::Operate, &CSymbolValue::operator-},
    {TOK_MUL, Category::Operate, &CSymbolValue::operator*},
    {TOK_DIV, Category::Operate, &CSymbolValue::operator/},
    {TOK_MOD, Category::Operate, &CSymbolValue::operator%},
    {TOK_LSHIFT, Category::Operate, &CSymbolValue::operator<<},
    {TOK_RSHIFT, Category::Operate, &CSymbolValue::operator>>},
    {TOK_BITWISE_AND, Category::Operate, &CSymbolValue::operator&},
    {TOK_BITWISE_OR, Category::Operate, &CSymbolValue::operator|},
    {TOK_XOR, Category::Operate, &CSymbolValue::operator^},
};

const BinaryRow* FindBinary(const CToken* op) {
  for (const BinaryRow& row : kBinaryRows)
    if (op && row.token == op->GetTokenType()) return &row;
  return nullptr;
}

struct MathRow {
  int token;
  double (*function)(double);
};

double Log2(double x) { return std::log2(x); }
double Log10(double x) { return std::log10(x); }

const MathRow kMathRows[] = {
    {TOK_ABS, [](double x) { return std::fabs(x); }}, {TOK_CEIL, [](double x) { return std::ceil(x); }},
    {TOK_FLOOR, [](double x) { return std::floor(x); }}, {TOK_SQRT, [](double x) { return std::sqrt(x); }},
    {TOK_EXP, [](double x) { return std::exp(x); }},     {TOK_LOG, [](double x) { return std::log(x); }},
    {TOK_LOG10, Log10},                                    {TOK_LOG2, Log2},
    {TOK_SIN, [](double x) { return std::sin(x); }},     {TOK_COS, [](double x) { return std::cos(x); }},
    {TOK_TAN, [](double x) { return std::tan(x); }},
};

// A value copy for storing: plain values are copied, objects shared.
CSymbolValue* CloneValue(CSymbolValue* value, const CToken* token) {
  if (!value) return nullptr;
  return CExpression::Guard(token, [&] { return value->Clone(); });
}

CSymbol* NewSymbol(CSymbolValue* adopted) {
  RObject<CSymbolValue> value(adopted);
  return new CSymbol(value.Get());
}

// The slot of name in the dictionary, created without value when absent.
CSymbol* FindOrCreate(CSymbolDictionary* dictionary, CString* name) {
  if (CSymbol* symbol = dictionary->GetSymbol(name)) return symbol;
  RObject<CSymbol> created(new CSymbol());
  dictionary->SetSymbol(name, created).ThrowIfFailed();
  return created.Detach();
}

// The dictionary of a present value; one without raises ResultInvalidCast.
CSymbolDictionary* DictionaryOf(CSymbolValue* value, const CToken* token) {
  return CExpression::Guard(token, [&] { return value->ToDictionary(); });
}

}  // namespace

// ---- names ----

CIdentifier::CIdentifier(CToken* token) : CExpression(TypeCode, token) { Require(token); }

CSymbol* CIdentifier::Evaluate() const {
  RObject<CString> name(new CString(GetName()));
  if (CSymbol* symbol = GetSymbolTable()->FindSymbol(name)) return symbol;
  return FindOrCreate(GetBareNameScope(), name);
}

CMemberIdentifier::CMemberIdentifier(CToken* token) : CExpression(TypeCode, token) { Require(token); }

CSymbol* CMemberIdentifier::Evaluate() const {
  RObject<CString> name(new CString(GetToken()->GetText()));
  return FindOrCreate(GetInnermostScope(), name);
}

// ---- members ----

CMemberIdentifierExpression::CMemberIdentifierExpression(CToken* token, CExpression* object,
                                                         CMemberIdentifier* member)
    : CMemberIdentifierExpression(TypeCode, token, object, member) {}

CMemberIdentifierExpression::CMemberIdentifierExpression(unsigned int type, CToken* token, CExpression* object,
                                                         CMemberIdentifier* member)
    : CExpression(type, Checked(token, {object, member})), object_(Hold(object)), member_(Hold(member)) {}

CMemberIdentifierExpression::~CMemberIdentifierExpression() {
  Drop(object_);
  Drop(member_);
}

CSymbol* CMemberIdentifierExpression::Lookup(CSymbolDictionary* dictionary) const {
  CAutoScope scope(dictionary);
  return member_->Evaluate();
}

CSymbol* CMemberIdentifierExpression::Evaluate() const {
  RObject<CSymbolDictionary> dictionary(object_->EvaluateToDictionary());
  return Lookup(dictionary);
}

CNullMemberIdentifierExpression::CNullMemberIdentifierExpression(CToken* token, CExpression* object,
                                                                 CMemberIdentifier* member)
    : CMemberIdentifierExpression(TypeCode, token, object, member) {}

CSymbol* CNullMemberIdentifierExpression::Evaluate() const {
  RObject<CSymbol> object(object_->Evaluate());
  if (!object->GetValue()) return new CSymbol();
  RObject<CSymbolDictionary> dictionary(DictionaryOf(object->GetValue(), object_->GetToken()));
  return Lookup(dictionary);
}

CMemberIndexExpression::CMemberIndexExpression(CToken* token, CExpression* object, CExpression* index)
    : CMemberIndexExpression(TypeCode, token, object, index) {}

CMemberIndexExpression::CMemberIndexExpression(unsigned int type, CToken* token, CExpression* object,
                                               CExpression* index)
    : CExpression(type, Checked(token, {object, index})), object_(Hold(object)), index_(Hold(index)) {}

CMemberIndexExpression::~CMemberIndexExpression() {
  Drop(object_);
  Drop(index_);
}

CSymbol* CMemberIndexExpression::Lookup(CSymbolDictionary* dictionary) const {
  CAutoScope scope(dictionary);
  RObject<CString> name(index_->EvaluateToString());
  return FindOrCreate(dictionary, name);
}

CSymbol* CMemberIndexExpression::Evaluate() const {
  RObject<CSymbolDictionary> dictionary(object_->EvaluateToDictionary());
  return Lookup(dictionary);
}

CNullMemberIndexExpression::CNullMemberIndexExpression(CToken* token, CExpression* object, CExpression* index)
    : CMemberIndexExpression(TypeCode, token, object, index) {}

CSymbol* CNullMemberIndexExpression::Evaluate() const {
  RObject<CSymbol> object(object_->Evaluate());
  if (!object->GetValue()) return new CSymbol();
  RObject<CSymbolDictionary> dictionary(DictionaryOf(object->GetValue(), object_->GetToken()));
  return Lookup(dictionary);
}

// ---- binary operators ----

CBinaryExpression::CBinaryExpression(CToken* op, CExpression* left, CExpression* right)
    : CBinaryExpression(TypeCode, op, left, right) {}

CBinaryExpression::CBinaryExpression(unsigned int type, CToken* op, CExpression* left, CExpression* right)
    : CExpression(type, Checked(op, {op, left, right})), left_(Hold(left)), right_(Hold(right)) {}

CBinaryExpression::~CBinaryExpression() {
  Drop(left_);
  Drop(right_);
}

CSymbol* CBinaryExpression::Evaluate() const {
  const BinaryRow* row = FindBinary(GetToken());
  if (!row) throw ResultInvalidExpression(GetToken());
  switch (row->category) {
    case Category::Assign:
      return Assign();
    case Category::AssignIfMissing:
      return AssignIfMissing();
    case Category::Logical:
      return Logical();
    case Category::Equality:
      return Equality();
    case Category::Relational:
      return Relational();
    case Category::Operate:
      return Operate();
  }
  throw ResultInvalidExpression(GetToken());
}

CSymbol* CBinaryExpression::Assign() const {
  RObject<CSymbol> slot(left_->Evaluate());
  RObject<CSymbol> right(right_->Evaluate());
  RObject<CSymbolValue> value(CloneValue(right->GetValue(), GetToken()));
  slot->SetValue(value);
  return new CSymbol(value.Get());
}

CSymbol* CBinaryExpression::AssignIfMissing() const {
  RObject<CSymbol> slot(left_->Evaluate());
  if (!slot->GetValue()) {
    RObject<CSymbol> right(right_->Evaluate());
    RObject<CSymbolValue> value(CloneValue(right->GetValue(), GetToken()));
    slot->SetValue(value);
  }
  return NewSymbol(CloneValue(slot->GetValue(), GetToken()));
}

CSymbol* CBinaryExpression::Logical() const {
  int type = GetToken()->GetTokenType();
  bool isAnd = type == TOK_LOGICAL_AND || type == TOK_AND;
  bool left = left_->EvaluateToBoolean();
  bool result = isAnd ? (left && right_->EvaluateToBoolean()) : (left || right_->EvaluateToBoolean());
  return new CSymbol(result);
}

CSymbol* CBinaryExpression::Equality() const {
  RObject<CSymbol> left(left_->Evaluate());
  RObject<CSymbol> right(right_->Evaluate());
  bool equalsOperator = GetToken()->GetTokenType() == TOK_EQS;
  CSymbolValue* a = left->GetValue();
  CSymbolValue* b = right->GetValue();
  if (!a || !b) return new CSymbol((!a && !b) == equalsOperator);
  BinaryOperation operation = FindBinary(GetToken())->operation;
  return NewSymbol(Guard(GetToken(), [&] { return (a->*operation)(b); }));
}

CSymbol* CBinaryExpression::Relational() const {
  RObject<CSymbol> left(left_->Evaluate());
  RObject<CSymbol> right(right_->Evaluate());
  CSymbolValue* a = left->GetValue();
  CSymbolValue* b = right->GetValue();
  // Two missing values compare as "<", "<=" and ">=" but not ">".
  if (!a && !b) return new CSymbol(GetToken()->GetTokenType() != TOK_GRTR);
  if (!a) throw ResultNullReference(left_->GetToken());
  if (!b) throw ResultNullReference(right_->GetToken());
  BinaryOperation operation = FindBinary(GetToken())->operation;
  return NewSymbol(Guard(GetToken(), [&] { return (a->*operation)(b); }));
}

CSymbol* CBinaryExpression::Operate() const {
  RObject<CSymbol> left(left_->Evaluate());
  RObject<CSymbol> right(right_->Evaluate());
  CSymbolValue* a = left->GetValue();
  CSymbolValue* b = right->GetValue();
  if (!a) throw ResultNullReference(left_->GetToken());
  if (!b) throw ResultNullReference(right_->GetToken());
  BinaryOperation operation = FindBinary(GetToken())->operation;
  return NewSymbol(Guard(GetToken(), [&] { return (a->*operation)(b); }));
}

CConnectionExpression::CConnectionExpression(CToken* op, CExpression* left, CExpression* right)
    : CBinaryExpression(TypeCode, op, left, right) {}

CSymbol* CConnectionExpression::Evaluate() const {
  RObject<CSymbol> left(left_->Evaluate());
  RObject<CSymbol> right(right_->Evaluate());
  CSymbolValue* a = left->GetValue();
  CSymbolValue* b = right->GetValue();
  if (a && b) return NewSymbol(Guard(GetToken(), [&] { return a->Connect(b); }));
  return new CSymbol(a ? a : b);
}

// ---- conditional and null coalescing ----

CConditionalExpression::CConditionalExpression(CToken* token, CExpression* condition, CExpression* then,
                                               CExpression* otherwise)
    : CExpression(TypeCode, Checked(token, {condition, then, otherwise})),
      condition_(Hold(condition)),
      then_(Hold(then)),
      else_(Hold(otherwise)) {}

CConditionalExpression::~CConditionalExpression() {
  Drop(condition_);
  Drop(then_);
  Drop(else_);
}

CSymbol* CConditionalExpression::Evaluate() const {
  return condition_->EvaluateToBoolean() ? then_->Evaluate() : else_->Evaluate();
}

CNullCoalescingExpression::CNullCoalescingExpression(CToken* op, CExpression* left, CExpression* right)
    : CExpression(TypeCode, Checked(op, {left, right})), left_(Hold(left)), right_(Hold(right)) {}

CNullCoalescingExpression::~CNullCoalescingExpression() {
  Drop(left_);
  Drop(right_);
}

CSymbol* CNullCoalescingExpression::Evaluate() const {
  RObject<CSymbol> left(left_->Evaluate());
  if (left->GetValue()) return left.Detach();
  return right_->Evaluate();
}

// ---- unary operators ----

CPrefixUnaryExpression::CPrefixUnaryExpression(CToken* op, CExpression* operand)
    : CExpression(TypeCode, Checked(op, {op, operand})), operand_(Hold(operand)) {}

CPrefixUnaryExpression::~CPrefixUnaryExpression() { Drop(operand_); }

CSymbol* CPrefixUnaryExpression::Evaluate() const {
  int type = GetToken()->GetTokenType();
  if (type == TOK_DELETE) throw ResultInvalidExpression(GetToken());
  RObject<CSymbol> operand(operand_->Evaluate());
  CSymbolValue* value = operand->GetValue();
  if (type == TOK_TYPEOF) {
    if (!value) return new CSymbol("undefined");
    return NewSymbol(Guard(GetToken(), [&] { return value->TypeOf(); }));
  }
  if (!value) throw ResultNullReference(operand_->GetToken());
  return NewSymbol(Guard(GetToken(), [&]() -> CSymbolValue* {
    switch (type) {
      case TOK_INC:
        return ++*value;
      case TOK_DEC:
        return --*value;
      case TOK_ADD:
        return +*value;
      case TOK_SUB:
        return -*value;
      case TOK_NEG:
        return ~*value;
      case TOK_NOT:
        return !*value;
      default:
        throw ResultInvalidExpression(GetToken());
    }
  }));
}

CPostfixUnaryExpression::CPostfixUnaryExpression(CToken* op, CExpression* operand)
    : CExpression(TypeCode, Checked(op, {op, operand})), operand_(Hold(operand)) {}

CPostfixUnaryExpression::~CPostfixUnaryExpression() { Drop(operand_); }

CSymbol* CPostfixUnaryExpression::Evaluate() const {
  RObject<CSymbol> operand(operand_->Evaluate());
  CSymbolValue* value = operand->GetValue();
  if (!value) throw ResultNullReference(operand_->GetToken());
  bool increment = GetToken()->GetTokenType() == TOK_INC;
  return NewSymbol(Guard(GetToken(), [&] { return increment ? (*value)++ : (*value)--; }));
}

// ---- calls ----

CCallExpression::CCallExpression(CToken* callee) : CCallExpression(TypeCode, callee) {}

CCallExpression::CCallExpression(unsigned int type, CToken* callee)
    : CExpression(type, Checked(callee, {callee})), arguments_(new CList<CExpression>()) {}

CCallExpression::~CCallExpression() { arguments_->Release(); }

void CCallExpression::AddArgument(CExpression* argument) {
  Require(argument);
  arguments_->Add(argument);
}

CExpression* CCallExpression::GetArgument(int index) const {
  RObject<CExpression> argument;
  arguments_->Get(index, argument.Out());
  return argument.Get();  // the list keeps it alive
}

void CCallExpression::ExpectArguments(int count) const {
  if (arguments_->GetCount() != count) throw ResultInvalidArgs(GetToken());
}

CSymbol* CCallExpression::Evaluate() const {
  int type = GetToken()->GetTokenType();
  for (const MathRow& row : kMathRows)
    if (row.token == type) return CallMath(row.function);
  if (type == TOK_POW) return CallPow();
  if (type == TOK_DIE) CallDie();
  return CallFunction();
}

CSymbol* CCallExpression::CallMath(double (*function)(double)) const {
  ExpectArguments(1);
  return new CSymbol(function(GetArgument(0)->EvaluateToDouble()));
}

// The first argument raised to its own power: the second is evaluated and
// required, but not used.
CSymbol* CCallExpression::CallPow() const {
  ExpectArguments(2);
  double base = GetArgument(0)->EvaluateToDouble();
  GetArgument(1)->EvaluateToDouble();
  return new CSymbol(std::pow(base, base));
}

void CCallExpression::CallDie() const {
  if (arguments_->GetCount() == 0) throw ResultExit(GetToken());
  ExpectArguments(1);
  RObject<CString> message(GetArgument(0)->EvaluateToString());
  throw ResultExit(GetToken(), message->GetChars());
}

CSymbol* CCallExpression::CallFunction() const {
  RObject<CString> name(new CString(GetToken()->GetText()));
  RObject<const CFunctionDeclaration> function;
  GetFunctionTable()->Get(name, function.Out());
  if (!function) throw ResultUnknownFunction(GetToken());
  return function->Execute(arguments_);
}

}  // namespace Corvane::Mox::WFL
