#pragma once
// The statements of WFL: blocks and the program, print, expression, empty,
// break, continue, return, if, variable declarations and function
// declarations. Loops, with and switch are in AstLoops.h.

#include <vector>

#include "System/Collections/List.h"
#include "wfl/AstNode.h"

namespace Corvane::Mox::WFL {

class CVariableDeclaration;

// An ordered list of statements; evaluating it opens a scope.
class CStatementBlock : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("stbk");

  explicit CStatementBlock(CToken* token);
  ~CStatementBlock() override;

  void AddStatement(CStatement* statement);
  int GetStatementCount() const { return static_cast<int>(statements_.size()); }

 protected:
  CStatementBlock(unsigned int type, CToken* token);
  ExecutionContext Execute() const override;
  // Runs the statements in order up to the first that does not complete normally.
  ExecutionContext ExecuteStatements() const;

 private:
  std::vector<CStatement*> statements_;
};

// The root: a block that runs in the scope the caller prepared.
class CProgram : public CStatementBlock {
 public:
  static constexpr unsigned int TypeCode = FourCC("prog");
  explicit CProgram(CToken* token);

 protected:
  ExecutionContext Execute() const override;
};

class CPrintStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("prnt");
  using Callback = void (*)(CString*);

  // The keyword token tells print from println.
  CPrintStatement(CToken* keyword, CExpression* expression);
  ~CPrintStatement() override;

  // The print sink; the default writes to standard output and flushes.
  static Callback callback;
  static void DefaultCallback(CString* text);

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* expression_;
};

class CExpressionStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("exst");
  CExpressionStatement(CToken* token, CExpression* expression);
  ~CExpressionStatement() override;

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* expression_;
};

class CEmptyStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("emst");
  explicit CEmptyStatement(CToken* token) : CStatement(TypeCode, token) {}

 protected:
  ExecutionContext Execute() const override { return ExecutionContext(); }
};

class CBreakStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("brst");
  explicit CBreakStatement(CToken* token) : CStatement(TypeCode, token) {}

 protected:
  ExecutionContext Execute() const override { return ExecutionContext(ExecutionContext::Break, nullptr); }
};

class CContinueStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("cnst");
  explicit CContinueStatement(CToken* token) : CStatement(TypeCode, token) {}

 protected:
  ExecutionContext Execute() const override { return ExecutionContext(ExecutionContext::Continue, nullptr); }
};

class CReturnStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("rtst");
  explicit CReturnStatement(CToken* token);
  ~CReturnStatement() override;

  void SetExpression(CExpression* expression);

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* expression_;
};

class CIfStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("ifst");
  CIfStatement(CToken* token, CExpression* condition, CStatement* then);
  ~CIfStatement() override;

  void SetElseStatement(CStatement* otherwise);

 protected:
  ExecutionContext Execute() const override;

 private:
  CExpression* condition_;
  CStatement* then_;
  CStatement* else_;
};

class CVariableDeclarationStatement : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("vdst");
  explicit CVariableDeclarationStatement(CToken* token);
  ~CVariableDeclarationStatement() override;

  void AddDeclaration(CVariableDeclaration* declaration);

 protected:
  ExecutionContext Execute() const override;

 private:
  std::vector<CVariableDeclaration*> declarations_;
};

class CFunctionDeclaration : public CStatement {
 public:
  static constexpr unsigned int TypeCode = FourCC("fnst");

  // The name token, the parameter names and the body.
  CFunctionDeclaration(CToken* name, CList<CString>* parameters, CStatementBlock* body);
  ~CFunctionDeclaration() override;

  const char* GetName() const { return GetToken()->GetText(); }
  int GetParameterCount() const { return parameters_->GetCount(); }

  // Calls the function with the argument expressions (evaluated inside the
  // parameter scope); answers a new symbol holding the returned value.
  CSymbol* Execute(CList<CExpression>* arguments) const;

  // Calls nested deeper than this raise ResultOverflow instead of exhausting the stack.
  static constexpr int MaximumCallDepth = 200;

 protected:
  // Declaring stores the function in the function table under its name.
  ExecutionContext Execute() const override;

 private:
  CList<CString>* parameters_;
  CStatementBlock* body_;
};

}  // namespace Corvane::Mox::WFL
