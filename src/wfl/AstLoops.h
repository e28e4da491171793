#pragma once
// The loop statements (while, do-while, for, for-in, for-of), with, and
// switch with its case and default clauses.

#include <vector>

#include "wfl/AstStatements.h"

namespace Corvane::Mox::WFL {

// Shared body handling: break ends the loop normally, return ends it and
// propagates, continue and normal completion go on.
class CLoopStatement : public CStatement {
 public:
  ~CLoopStatement() override;

 protected:
  CLoopStatement(unsigned int type, CToken* token, CStatement* body);
  // True when the loop must stop; context then holds what the loop completes with.
  bool RunBody(ExecutionContext& context) const;

  CStatement* body_;
};

class CWhileStatement : public CLoopStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("whst");
  CWhileStatement(CToken* token, CExpression* condition, CStatement* body);
  ~CWhileStatement() override;

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* condition_;
};

class CDoWhileStatement : public CLoopStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("dwst");
  CDoWhileStatement(CToken* token, CStatement* body, CExpression* condition);
  ~CDoWhileStatement() override;

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* condition_;
};

class CForStatement : public CLoopStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("frst");
  // condition and step may be missing (for (;;)).
  CForStatement(CToken* token, CStatement* initializer, CExpression* condition, CExpression* step, CStatement* body);
  ~CForStatement() override;

 protected:
  ExecutionContext Execute() const override;

 private:
  CStatement* initializer_;
  CExpression* condition_;
  CExpression* step_;
};

// for (x in c) and for (x of c): the loop variable is a CVariableDeclaration
// or a CIdentifier.
class CForEachStatement : public CLoopStatement {
 public:
  ~CForEachStatement() override;

 protected:
  CForEachStatement(unsigned int type, CToken* token, CExpression* variable, CExpression* collection,
                    CStatement* body);
  ExecutionContext Execute() const override;
  // The value the loop variable takes for one member.
  virtual CSymbolValue* ItemValue(CString* name, CSymbol* member) const = 0;

 private:
  CExpression* variable_;
  CExpression* collection_;
};

class CForInStatement : public CForEachStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("fist");
  CForInStatement(CToken* token, CExpression* variable, CExpression* collection, CStatement* body);

 protected:
  // A new string value of the member's name.
  CSymbolValue* ItemValue(CString* name, CSymbol* member) const override;
};

class CForOfStatement : public CForEachStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("fost");
  CForOfStatement(CToken* token, CExpression* variable, CExpression* collection, CStatement* body);

 protected:
  // The member's value, shared.
  CSymbolValue* ItemValue(CString* name, CSymbol* member) const override;
};

class CWithStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("wist");
  CWithStatement(CToken* token, CExpression* object, CStatement* body);
  ~CWithStatement() override;

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* object_;
  CStatement* body_;
};

// A run of statements guarded by a test against the switch value.
class CSwitchClause : public CStatementBlock {
 public:
  virtual bool TestExpression(CSymbolValue* value) const = 0;

 protected:
  CSwitchClause(unsigned int type, CToken* token) : CStatementBlock(type, token) {}
};

class CCaseClause : public CSwitchClause {
 public:
  static constexpr unsigned int TypeCode = FourCC("case");
  CCaseClause(CToken* token, CExpression* test);
  ~CCaseClause() override;

  // Two missing values match, one does not; otherwise the case value's ==.
  bool TestExpression(CSymbolValue* value) const override;

 private:
  CExpression* test_;
};

class CDefaultClause : public CSwitchClause {
 public:
  static constexpr unsigned int TypeCode = FourCC("dflt");
  explicit CDefaultClause(CToken* token) : CSwitchClause(TypeCode, token) {}

  bool TestExpression(CSymbolValue*) const override { return true; }
};

class CSwitchStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("swst");
  CSwitchStatement(CToken* token, CExpression* discriminant);
  ~CSwitchStatement() override;

  void AddClause(CSwitchClause* clause);
  void SetDefaultClause(CDefaultClause* clause);

 protected:
  ExecutionContext Execute() const override;

 private:
  // What a clause's completion means for the switch: break is consumed.
  static ExecutionContext Finish(ExecutionContext context);

  CExpression* discriminant_;
  std::vector<CSwitchClause*> clauses_;
  CDefaultClause* default_;
};

}  // namespace Corvane::Mox::WFL
