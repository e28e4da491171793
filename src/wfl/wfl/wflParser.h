#pragma once
// wflParser: the recursive-descent parser of WFL. Each grammar rule is one
// member function of the same name and builds the syntax-tree nodes directly.
//
// Disambiguation follows the grammar: a "{" statement is a block when it
// parses as one (tried speculatively, else an expression statement with a
// dictionary literal); an expression is an assignment when it begins with a
// left-hand side followed by an assignment operator; "else" binds to the
// nearest "if"; a number followed by ":" number ":" starts a time code.
//
// Errors are reported with line, position and the offending text. A missing
// or extraneous single token is recovered (inserted or deleted) and parsing
// goes on with a complete tree; any other error leaves the rule without its
// node, and the node being built around it raises ResultInvalidAST. So a
// syntax error never yields a half-built tree.

#include <bitset>
#include <vector>

#include "System/Object.h"
#include "wfl/wfl/wflDiagnostics.h"
#include "wfl/wfl/wflToken.h"

namespace Corvane::Mox {
template <class T>
class CList;
}

namespace Corvane::Mox::WFL {

class CCallExpression;
class CExpression;
class CProgram;
class CStatement;
class CStatementBlock;
class CSwitchStatement;
class CVariableDeclaration;
class CVariableDeclarationStatement;
class wflLexer;

class wflParser {
 public:
  // Reads every token of the lexer up front.
  wflParser(wflLexer* lexer, wflDiagnostics* diagnostics);
  ~wflParser();

  // The whole script as a new CProgram. Raises ResultInvalidAST when the
  // input cannot be recovered into a complete tree.
  CProgram* program();

  int GetNumberOfSyntaxErrors() const { return errors_; }

  // Nesting of statements and expressions deeper than this is refused (with
  // ResultInvalidAST) rather than exhausting the stack: each nested level
  // costs the parser a descent through every precedence rule.
  static constexpr int MaximumNesting = 100;
  // A tree deeper than this is refused for the same reason. Operator chains
  // ("a + b + c ...") deepen the tree one level per operator but are parsed
  // in a loop, so they are bounded by this larger limit only.
  static constexpr int MaximumDepth = 1000;

  using TokenSet = std::bitset<wflTokenTypeEnd + 1>;

 private:
  struct RecognitionError;
  struct SpeculationFailed {};
  class CNestingGuard;

  // ---- token stream ----
  CToken* LT(int i) const;
  int LA(int i) const;
  CToken* Consume();
  // Matches the token type; recovers a single missing or extraneous token;
  // otherwise throws a recognition error.
  CToken* Match(int type, const TokenSet& follow);
  CToken* Match(int type);
  [[noreturn]] void NoViableAlternative(const char* rule);
  void Report(const RecognitionError& error);
  template <class Node, class Body>
  Node* Rule(Body body);
  template <class Body>
  bool Speculate(Body body, int& end);

  // ---- rules ----
  void sourceElements(CStatementBlock* block);
  CStatement* sourceElement();
  CStatement* functionDeclaration();
  CList<CString>* formalParameterList();
  CStatement* statement();
  CStatement* statementBlock();
  void statementList(CStatementBlock* block);
  CStatement* printStatement();
  CStatement* variableDeclarationStatement();
  void variableDeclarationList(CVariableDeclarationStatement* statement);
  CVariableDeclaration* variableDeclaration();
  CStatement* emptyStatement();
  CStatement* expressionStatement();
  CStatement* ifStatement();
  void elseStatement(CStatement* ifStatement);
  CStatement* iterationStatement();
  CStatement* doWhileStatement();
  CStatement* whileStatement();
  CStatement* forStatement();
  CStatement* forInitializerStatement();
  CExpression* forExpression();
  CStatement* forInStatement();
  CExpression* forEachInitializerExpression();
  CStatement* continueStatement();
  CStatement* breakStatement();
  CStatement* returnStatement();
  CStatement* withStatement();
  CStatement* switchStatement();
  void caseBlock(CSwitchStatement* statement);
  CStatement* caseClause();
  CStatement* defaultClause();
  CExpression* expression();
  CExpression* conditionalExpression();
  // connectionExpression down to multiplicativeExpression, from the precedence table.
  CExpression* binaryExpression(int level);
  CExpression* nullCoalescingExpression();
  CExpression* unaryExpression();
  CExpression* postfixExpression();
  CExpression* leftHandSideExpression();
  CExpression* newExpression();
  CExpression* memberExpression();
  CExpression* memberExpressionPrefix();
  CExpression* memberExpressionSuffix(CExpression* object);
  CExpression* identifierSuffix(CExpression* object);
  CExpression* indexSuffix(CExpression* object);
  CExpression* callExpression();
  void arguments(CCallExpression* call);
  CExpression* primaryExpression();
  CExpression* identifier();
  CExpression* literal();
  CExpression* arrayLiteral();
  CExpression* dictionaryLiteral();
  CExpression* propertyNameAndValue();
  CExpression* timeCodeLiteral();

  std::vector<RObject<CToken>> tokens_;
  std::vector<RObject<CToken>> conjured_;
  int index_;
  int speculating_;
  int nesting_;
  int depth_;
  int errors_;
  // Where the most recent leftHandSideExpression began and ended (token
  // indices): an expression that is exactly that span and is followed by an
  // assignment operator is an assignment.
  int lhsStart_;
  int lhsEnd_;
  wflDiagnostics* diagnostics_;
};

}  // namespace Corvane::Mox::WFL
