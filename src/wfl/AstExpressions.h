#pragma once
// The expressions of WFL: names, member and index access (with their
// null-conditional forms), binary operators and assignments, connections,
// the conditional and null-coalescing operators, prefix and postfix
// operators, and calls. Literals and declarations are in AstLiterals.h.

#include "System/Collections/List.h"
#include "wfl/AstNode.h"

namespace Corvane::Mox::WFL {

// A bare name: found in the innermost scope that has it, else created
// (without value) in the innermost scope.
class CIdentifier : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("iden");
  explicit CIdentifier(CToken* token);

  const char* GetName() const { return GetToken()->GetText(); }
  CSymbol* Evaluate() const override;
};

// The name after "." or "?.": found or created in the innermost scope alone
// (the member access pushes the object's dictionary as that scope).
class CMemberIdentifier : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("mbid");
  explicit CMemberIdentifier(CToken* token);

  CSymbol* Evaluate() const override;
};

class CMemberIdentifierExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("mbie");
  CMemberIdentifierExpression(CToken* token, CExpression* object, CMemberIdentifier* member);
  ~CMemberIdentifierExpression() override;

  CSymbol* Evaluate() const override;

 protected:
  CMemberIdentifierExpression(unsigned int type, CToken* token, CExpression* object, CMemberIdentifier* member);
  // The member of an object's dictionary (borrowed dictionary).
  CSymbol* Lookup(CSymbolDictionary* dictionary) const;

  CExpression* object_;
  CMemberIdentifier* member_;
};

// "a?.b": a missing a gives a new empty symbol and b is not looked up.
class CNullMemberIdentifierExpression : public CMemberIdentifierExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("nmie");
  CNullMemberIdentifierExpression(CToken* token, CExpression* object, CMemberIdentifier* member);

  CSymbol* Evaluate() const override;
};

class CMemberIndexExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("mbix");
  CMemberIndexExpression(CToken* token, CExpression* object, CExpression* index);
  ~CMemberIndexExpression() override;

  CSymbol* Evaluate() const override;

 protected:
  CMemberIndexExpression(unsigned int type, CToken* token, CExpression* object, CExpression* index);
  // The index is evaluated with the object's dictionary as innermost scope.
  CSymbol* Lookup(CSymbolDictionary* dictionary) const;

  CExpression* object_;
  CExpression* index_;
};

class CNullMemberIndexExpression : public CMemberIndexExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("nmix");
  CNullMemberIndexExpression(CToken* token, CExpression* object, CExpression* index);

  CSymbol* Evaluate() const override;
};

// Every binary operator and every assignment; the token is the operator.
class CBinaryExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("bine");
  CBinaryExpression(CToken* op, CExpression* left, CExpression* right);
  ~CBinaryExpression() override;

  CSymbol* Evaluate() const override;

 protected:
  CBinaryExpression(unsigned int type, CToken* op, CExpression* left, CExpression* right);

  CSymbol* Assign() const;
  CSymbol* AssignIfMissing() const;
  CSymbol* Logical() const;
  CSymbol* Equality() const;
  CSymbol* Relational() const;
  // Arithmetic, bitwise and compound assignment: both values required.
  CSymbol* Operate() const;

  CExpression* left_;
  CExpression* right_;
};

// "a -> b".
class CConnectionExpression : public CBinaryExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("cone");
  CConnectionExpression(CToken* op, CExpression* left, CExpression* right);

  CSymbol* Evaluate() const override;
};

class CConditionalExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("cnde");
  CConditionalExpression(CToken* token, CExpression* condition, CExpression* then, CExpression* otherwise);
  ~CConditionalExpression() override;

  CSymbol* Evaluate() const override;

 private:
  CExpression* condition_;
  CExpression* then_;
  CExpression* else_;
};

// "a ?? b": a's slot when it has a value, else b.
class CNullCoalescingExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("nule");
  CNullCoalescingExpression(CToken* op, CExpression* left, CExpression* right);
  ~CNullCoalescingExpression() override;

  CSymbol* Evaluate() const override;

 private:
  CExpression* left_;
  CExpression* right_;
};

class CPrefixUnaryExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("preu");
  CPrefixUnaryExpression(CToken* op, CExpression* operand);
  ~CPrefixUnaryExpression() override;

  CSymbol* Evaluate() const override;

 private:
  CExpression* operand_;
};

class CPostfixUnaryExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("posu");
  CPostfixUnaryExpression(CToken* op, CExpression* operand);
  ~CPostfixUnaryExpression() override;

  CSymbol* Evaluate() const override;

 private:
  CExpression* operand_;
};

// A call of a math function, "die" or a user function; the token is the callee.
class CCallExpression : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("call");
  explicit CCallExpression(CToken* callee);
  ~CCallExpression() override;

  void AddArgument(CExpression* argument);
  int GetArgumentCount() const { return arguments_->GetCount(); }

  CSymbol* Evaluate() const override;

 protected:
  CCallExpression(unsigned int type, CToken* callee);
  // The argument at index, borrowed.
  CExpression* GetArgument(int index) const;
  // Raises ResultInvalidArgs unless there are exactly count arguments.
  void ExpectArguments(int count) const;

  CList<CExpression>* arguments_;

 private:
  CSymbol* CallMath(double (*function)(double)) const;
  CSymbol* CallPow() const;
  [[noreturn]] void CallDie() const;
  CSymbol* CallFunction() const;
};

}  // namespace Corvane::Mox::WFL
