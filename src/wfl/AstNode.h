#pragma once
// The syntax tree of WFL. CAstNode is the root of every node: it keeps the
// token that begins the node (for "line L:P" in error messages) and owns the
// interpreter state shared by the whole process — the symbol table (the
// scope stack), the function table and the scope guard CAutoScope.
// CStatement and CExpression are the two node families; a tree is evaluated
// once, straight after parsing.
//
// Every constructor and Add.../Set... that receives a missing child raises
// ResultInvalidAST: this is how a parse whose error recovery left a gap is
// rejected before anything is evaluated.

#include <initializer_list>

#include "System/Collections/HashTable.h"
#include "System/Object.h"
#include "System/Text.h"
#include "wfl/wfl/wflToken.h"

namespace Corvane::Mox {
class CTimeCode;
}

namespace Corvane::Mox::WFL {

class CFunctionDeclaration;
class CSymbol;
class CSymbolDictionary;
class CSymbolTable;
class CSymbolValue;

using CFunctionTable = CHashTable<CString, const CFunctionDeclaration>;

class CAstNode : public CObject {
 public:
  CAstNode(unsigned int type, CToken* token);
  ~CAstNode() override;

  // The token that begins the node, borrowed (null for a made-up node).
  CToken* GetToken() const { return token_; }

  // The scope stack, created on first use (borrowed).
  static CSymbolTable* GetSymbolTable();
  static void ReleaseSymbolTable();
  // The user functions by name, created on first use with 7 buckets (borrowed).
  static CFunctionTable* GetFunctionTable();
  static void ReleaseFunctionTable();

  // Pushes a scope for its lifetime: a fresh empty dictionary, or the given
  // one; the destructor pops the front scope.
  class CAutoScope {
   public:
    CAutoScope();
    explicit CAutoScope(CSymbolDictionary* scope);
    ~CAutoScope();
    CAutoScope(const CAutoScope&) = delete;
    CAutoScope& operator=(const CAutoScope&) = delete;
  };

  // The innermost scope, borrowed; raises ResultInvalidOperation when no
  // scope has been pushed.
  static CSymbolDictionary* GetInnermostScope();

  // Where an assignment to a name found nowhere creates it: the object of
  // the enclosing with statement, whatever block scopes its body opened, or
  // else the innermost scope. Borrowed.
  static CSymbolDictionary* GetBareNameScope();
  // Directs bare names into scope (null: back to the innermost scope) for its
  // lifetime, restoring the previous direction afterwards.
  class CBareNameScope {
   public:
    explicit CBareNameScope(CSymbolDictionary* scope);
    ~CBareNameScope();
    CBareNameScope(const CBareNameScope&) = delete;
    CBareNameScope& operator=(const CBareNameScope&) = delete;

   private:
    CSymbolDictionary* previous_;
  };

 protected:
  // Raises ResultInvalidAST on this node's token when child is missing.
  void Require(const void* child) const;
  // For constructors: raises ResultInvalidAST on token when any child is
  // missing, before the node holds anything; answers token.
  static CToken* Checked(CToken* token, std::initializer_list<const void*> children);

  static CSymbolTable* symbols;
  static CFunctionTable* functions;
  static CSymbolDictionary* bareNames;

 private:
  CToken* token_;
};

class CStatement : public CAstNode {
 public:
  // The outcome of a statement: how it completed and, for return, the value.
  class ExecutionContext {
   public:
    enum Completion : int { Normal = 0, Continue = 1, Break = 2, Return = 3 };

    ExecutionContext() : completion_(Normal), value_(nullptr) {}
    // The value is acquired.
    ExecutionContext(int completion, CSymbolValue* value);
    ExecutionContext(const ExecutionContext& other);
    ExecutionContext(ExecutionContext&& other) noexcept;
    ExecutionContext& operator=(ExecutionContext other) noexcept;
    ~ExecutionContext();

    int GetCompletion() const { return completion_; }
    // The returned value, borrowed; null when missing.
    CSymbolValue* GetValue() const { return value_; }

   private:
    int completion_;
    CSymbolValue* value_;
  };

  CStatement(unsigned int type, CToken* token) : CAstNode(type, token) {}

  // Counts one step against the evaluation budget, then runs Execute.
  ExecutionContext Evaluate() const;

 protected:
  virtual ExecutionContext Execute() const = 0;
};

class CExpression : public CAstNode {
 public:
  CExpression(unsigned int type, CToken* token) : CAstNode(type, token) {}

  // A new reference to the resulting slot. Names, members and indices answer
  // the stored slot itself (so assigning to it changes the variable); other
  // expressions answer a fresh slot.
  virtual CSymbol* Evaluate() const = 0;

  // Evaluate, then convert the value. A missing value gives false, 0.0, 0 and
  // "(null)"; a value that does not convert raises ResultInvalidCast.
  bool EvaluateToBoolean() const;
  double EvaluateToDouble() const;
  long long EvaluateToInt64() const;
  CString* EvaluateToString() const;
  // Acquired; a missing value raises ResultNullReference.
  CSymbolDictionary* EvaluateToDictionary() const;

  // Runs a value operation (defined in AstNodeGuard.h), reporting unsupported operators and failed
  // conversions (bad_operation, std::bad_cast) as ResultInvalidCast on token.
  template <class Operation>
  static auto Guard(const CToken* token, Operation operation) -> decltype(operation());

 protected:
  [[noreturn]] static void ThrowInvalidCast(const CToken* token);
};

}  // namespace Corvane::Mox::WFL
