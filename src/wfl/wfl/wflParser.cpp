#include "wfl/wfl/wflParser.h"

#include <initializer_list>
#include <memory>
#include <string>

#include "System/Collections/List.h"
#include "System/Text.h"
#include "wfl/AstExpressions.h"
#include "wfl/AstLiterals.h"
#include "wfl/AstLoops.h"
#include "wfl/AstStatements.h"
#include "wfl/ComponentExpression.h"
#include "wfl/ResultParserError.h"
#include "wfl/wfl/wflLexer.h"

namespace Corvane::Mox::WFL {

namespace {

using TokenSet = wflParser::TokenSet;

// EOF (-1) is kept in bit 0, which no real token uses.
std::size_t Bit(int type) { return type == TOKEN_EOF ? 0 : static_cast<std::size_t>(type); }

TokenSet Set(std::initializer_list<int> types) {
  TokenSet set;
  for (int type : types) set.set(Bit(type));
  return set;
}

bool In(const TokenSet& set, int type) { return type >= TOKEN_EOF && type <= wflTokenTypeEnd && set.test(Bit(type)); }

const int kMathFunctions[] = {TOK_ABS, TOK_CEIL, TOK_COS,  TOK_EXP, TOK_FLOOR, TOK_LOG,
                              TOK_LOG10, TOK_LOG2, TOK_POW, TOK_SIN, TOK_SQRT,  TOK_TAN};

const int kComponentKeywords[] = {
    TOK_CONTAINERREADER,        TOK_CONTAINERWRITER,       TOK_SIGNALREADER,         TOK_SIGNALWRITER,
    TOK_PACKAGE,                TOK_PACKAGECONTAINER,      TOK_MEDIAFILTER,          TOK_VIDEOANALYZER,
    TOK_VIDEOCOMPRESSOR,        TOK_VIDEOCONVERTER,        TOK_VIDEODECOMPRESSOR,    TOK_VIDEOFANINANALYZER,
    TOK_VIDEOFANINCONVERTER,    TOK_VIDEOFANOUTCOMPRESSOR, TOK_AUDIOANALYZER,        TOK_AUDIOCOMPRESSOR,
    TOK_AUDIOCONVERTER,         TOK_AUDIODECOMPRESSOR,     TOK_AUDIOFANINANALYZER,   TOK_AUDIOFANINCONVERTER,
    TOK_AUDIOFANOUTCONVERTER,   TOK_SUBTITLECONVERTER,     TOK_SUBTITLEFANINCONVERTER, TOK_METADATAANALYZER,
    TOK_METADATACONVERTER};

template <std::size_t N>
TokenSet SetOf(const int (&types)[N]) {
  TokenSet set;
  for (int type : types) set.set(Bit(type));
  return set;
}

const TokenSet kMath = SetOf(kMathFunctions);
const TokenSet kComponents = SetOf(kComponentKeywords);
const TokenSet kPrefixOperators = Set({TOK_DELETE, TOK_TYPEOF, TOK_INC, TOK_DEC, TOK_ADD, TOK_SUB, TOK_NEG, TOK_NOT});
const TokenSet kAssignmentOperators = Set({TOK_EQ, TOK_ADD_EQ, TOK_SUB_EQ, TOK_MUL_EQ, TOK_DIV_EQ, TOK_MOD_EQ,
                                           TOK_LSH_EQ, TOK_RSH_EQ, TOK_AND_EQ, TOK_OR_EQ, TOK_XOR_EQ, TOK_COAL_EQ});
const TokenSet kExpressionStart =
    Set({Identifier, NumericLiteral, StringLiteral, TOK_TRUE, TOK_FALSE, TOK_NULL, TOK_LPAREN, TOK_LBRACKET,
         TOK_LBRACE, TOK_NEW, TOK_DIE}) |
    kPrefixOperators | kMath;
const TokenSet kStatementStart = kExpressionStart | Set({TOK_VAR, TOK_SEMI, TOK_IF, TOK_DO, TOK_WHILE, TOK_FOR,
                                                         TOK_CONTINUE, TOK_BREAK, TOK_RETURN, TOK_WITH, TOK_SWITCH,
                                                         TOK_PRINT, TOK_PRINTLN});
const TokenSet kAfterStatement =
    kStatementStart | Set({TOK_RBRACE, TOKEN_EOF, TOK_CASE, TOK_DEFAULT, TOK_ELSE, TOK_FUNCTION});

// The binary levels from "->" (loosest) to "*" (tightest); each is left-associative.
struct Level {
  const char* rule;
  TokenSet operators;
};

const Level kLevels[] = {
    {"connectionExpression", Set({TOK_CONNECT})},
    {"logicalORExpression", Set({TOK_LOGICAL_OR, TOK_OR})},
    {"logicalANDExpression", Set({TOK_LOGICAL_AND, TOK_AND})},
    {"bitwiseORExpression", Set({TOK_BITWISE_OR})},
    {"bitwiseXORExpression", Set({TOK_XOR})},
    {"bitwiseANDExpression", Set({TOK_BITWISE_AND})},
    {"equalityExpression", Set({TOK_EQS, TOK_NEQ})},
    {"relationalExpression", Set({TOK_LESS, TOK_GRTR, TOK_LEQ, TOK_GEQ})},
    {"shiftExpression", Set({TOK_LSHIFT, TOK_RSHIFT})},
    {"additiveExpression", Set({TOK_ADD, TOK_SUB})},
    {"multiplicativeExpression", Set({TOK_MUL, TOK_DIV, TOK_MOD})},
};
constexpr int kLevelCount = sizeof kLevels / sizeof kLevels[0];

TokenSet BinaryOperators() {
  TokenSet set;
  for (const Level& level : kLevels) set |= level.operators;
  return set;
}

const TokenSet kAfterExpression =
    BinaryOperators() | kAssignmentOperators |
    Set({TOK_RPAREN, TOK_RBRACKET, TOK_COMMA, TOK_SEMI, TOK_COLON, TOK_CND, TOK_COAL, TOK_RBRACE, TOK_DOT,
         TOK_NULL_DOT, TOK_LBRACKET, TOK_NULL_INDEX, TOK_INC, TOK_DEC, TOKEN_EOF, TOK_IN, TOK_OF});

}  // namespace

struct wflParser::RecognitionError {
  enum Kind { Mismatched, NoViableAlternative } kind;
  CToken* token;
  int expected;
  const char* rule;
};

// Counts how deep the parse and the tree being built are. A nested statement
// or expression adds a level to both; each further operator of a chain ("a +
// b + c" is as deep as it is long) only to the tree, which is evaluated and
// freed recursively.
class wflParser::CNestingGuard {
 public:
  explicit CNestingGuard(wflParser* parser, bool chain = false)
      : parser_(parser), nesting_(0), depth_(0), chain_(chain) {
    Deeper();
  }
  ~CNestingGuard() {
    parser_->nesting_ -= nesting_;
    parser_->depth_ -= depth_;
  }

  void Deeper() {
    ++depth_;
    ++parser_->depth_;
    if (!chain_ || nesting_ == 0) {
      ++nesting_;
      ++parser_->nesting_;
    }
    if (parser_->nesting_ <= MaximumNesting && parser_->depth_ <= MaximumDepth) return;
    CToken* token = parser_->LT(1);
    if (!parser_->speculating_ && parser_->diagnostics_)
      parser_->diagnostics_->ReportSyntaxError(token->GetLine(), token->GetCharPositionInLine(), token->GetText(),
                                               " : nesting too deep");
    throw ResultInvalidAST(token);
  }

 private:
  wflParser* parser_;
  int nesting_;
  int depth_;
  bool chain_;
};

wflParser::wflParser(wflLexer* lexer, wflDiagnostics* diagnostics)
    : index_(0), speculating_(0), nesting_(0), depth_(0), errors_(0), lhsStart_(-1), lhsEnd_(-1), diagnostics_(diagnostics) {
  lexer->Tokenize(tokens_);
}

wflParser::~wflParser() = default;

// ---- token stream ----

CToken* wflParser::LT(int i) const {
  std::size_t at = static_cast<std::size_t>(index_ + i - 1);
  return at < tokens_.size() ? tokens_[at].Get() : tokens_.back().Get();
}

int wflParser::LA(int i) const { return LT(i)->GetTokenType(); }

CToken* wflParser::Consume() {
  CToken* token = LT(1);
  if (static_cast<std::size_t>(index_) < tokens_.size() - 1) ++index_;
  return token;
}

CToken* wflParser::Match(int type) { return Match(type, TokenSet()); }

CToken* wflParser::Match(int type, const TokenSet& follow) {
  if (LA(1) == type) return Consume();
  if (speculating_) throw SpeculationFailed();
  std::string expected = wflTokenInfo::Describe(type);
  CToken* at = LT(1);
  if (LA(2) == type) {  // one extraneous token: delete it
    ++errors_;
    if (diagnostics_)
      diagnostics_->ReportSyntaxError(at->GetLine(), at->GetCharPositionInLine(), at->GetText(),
                                      " : Extraneous input - expected " + expected);
    Consume();
    return Consume();
  }
  if (In(follow, LA(1))) {  // one missing token: make it up
    ++errors_;
    if (diagnostics_)
      diagnostics_->ReportSyntaxError(at->GetLine(), at->GetCharPositionInLine(), at->GetText(),
                                      " : Missing " + expected);
    conjured_.emplace_back(CToken::CreateMissing(type, at));
    return conjured_.back().Get();
  }
  throw RecognitionError{RecognitionError::Mismatched, at, type, nullptr};
}

void wflParser::NoViableAlternative(const char* rule) {
  if (speculating_) throw SpeculationFailed();
  throw RecognitionError{RecognitionError::NoViableAlternative, LT(1), TOKEN_INVALID, rule};
}

void wflParser::Report(const RecognitionError& error) {
  ++errors_;
  if (!diagnostics_) return;
  std::string detail = error.kind == RecognitionError::Mismatched
                           ? " : unexpected input...\n  expected one of : " + wflTokenInfo::Describe(error.expected)
                           : std::string(" : cannot match to any predicted input... (") + error.rule + ")";
  diagnostics_->ReportSyntaxError(error.token->GetLine(), error.token->GetCharPositionInLine(),
                                  error.token->GetText(), detail);
}

// Runs a rule body; a recognition error is reported and leaves the rule
// without its node.
template <class Node, class Body>
Node* wflParser::Rule(Body body) {
  try {
    return body();
  } catch (const RecognitionError& error) {
    Report(error);
    return nullptr;
  }
}

// Tries a rule without reporting or keeping anything; answers whether it
// matched and where it ended.
template <class Body>
bool wflParser::Speculate(Body body, int& end) {
  int start = index_;
  ++speculating_;
  bool matched = true;
  try {
    RObject<CObject> discarded(body());
  } catch (const SpeculationFailed&) {
    matched = false;
  } catch (const Result&) {
    matched = false;
  }
  --speculating_;
  end = index_;
  index_ = start;
  return matched;
}

// ---- program and statements ----

CProgram* wflParser::program() {
  RObject<CProgram> program(new CProgram(LT(1)));
  try {
    sourceElements(program);
    Match(TOKEN_EOF);
  } catch (const RecognitionError& error) {
    Report(error);
    throw ResultInvalidAST(error.token);
  }
  return program.Detach();
}

void wflParser::sourceElements(CStatementBlock* block) {
  while (In(kStatementStart, LA(1)) || LA(1) == TOK_FUNCTION) {
    RObject<CStatement> element(sourceElement());
    block->AddStatement(element);
  }
}

CStatement* wflParser::sourceElement() {
  return LA(1) == TOK_FUNCTION ? functionDeclaration() : statement();
}

CStatement* wflParser::functionDeclaration() {
  return Rule<CStatement>([&]() -> CStatement* {
    Match(TOK_FUNCTION);
    CToken* name = Match(Identifier, Set({TOK_LPAREN}));
    RObject<CList<CString>> parameters(formalParameterList());
    RObject<CStatement> body(statementBlock());
    return new CFunctionDeclaration(name, parameters, static_cast<CStatementBlock*>(body.Get()));
  });
}

CList<CString>* wflParser::formalParameterList() {
  return Rule<CList<CString>>([&]() -> CList<CString>* {
    RObject<CList<CString>> names(new CList<CString>());
    Match(TOK_LPAREN, Set({Identifier, TOK_RPAREN}));
    if (LA(1) == Identifier) {
      RObject<CString> name(new CString(Consume()->GetText()));
      names->Add(name);
      while (LA(1) == TOK_COMMA) {
        Consume();
        RObject<CString> next(new CString(Match(Identifier, Set({TOK_COMMA, TOK_RPAREN}))->GetText()));
        names->Add(next);
      }
    }
    Match(TOK_RPAREN, Set({TOK_LBRACE}));
    return names.Detach();
  });
}

CStatement* wflParser::statement() {
  CNestingGuard nesting(this);
  return Rule<CStatement>([&]() -> CStatement* {
    switch (LA(1)) {
      case TOK_LBRACE: {
        int start = index_;
        int end = 0;
        if (!Speculate([&] { return statementBlock(); }, end)) return expressionStatement();
        if (!speculating_) return statementBlock();
        index_ = end;  // already known to match: skip it while speculating
        return new CEmptyStatement(tokens_[start]);
      }
      case TOK_VAR:
        return variableDeclarationStatement();
      case TOK_SEMI:
        return emptyStatement();
      case TOK_IF:
        return ifStatement();
      case TOK_DO:
      case TOK_WHILE:
      case TOK_FOR:
        return iterationStatement();
      case TOK_CONTINUE:
        return continueStatement();
      case TOK_BREAK:
        return breakStatement();
      case TOK_RETURN:
        return returnStatement();
      case TOK_WITH:
        return withStatement();
      case TOK_SWITCH:
        return switchStatement();
      case TOK_PRINT:
      case TOK_PRINTLN:
        return printStatement();
      default:
        if (!In(kExpressionStart, LA(1))) NoViableAlternative("statement");
        return expressionStatement();
    }
  });
}

CStatement* wflParser::statementBlock() {
  return Rule<CStatement>([&]() -> CStatement* {
    RObject<CStatementBlock> block(new CStatementBlock(Match(TOK_LBRACE)));
    if (In(kStatementStart, LA(1))) statementList(block);
    Match(TOK_RBRACE, kAfterStatement);
    return block.Detach();
  });
}

void wflParser::statementList(CStatementBlock* block) {
  do {
    RObject<CStatement> next(statement());
    block->AddStatement(next);
  } while (In(kStatementStart, LA(1)));
}

CStatement* wflParser::printStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Consume();
    Match(TOK_LPAREN, kExpressionStart);
    RObject<CExpression> value(expression());
    Match(TOK_RPAREN, Set({TOK_SEMI}));
    Match(TOK_SEMI, kAfterStatement);
    return new CPrintStatement(keyword, value);
  });
}

CStatement* wflParser::variableDeclarationStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    RObject<CVariableDeclarationStatement> statement(new CVariableDeclarationStatement(Match(TOK_VAR)));
    variableDeclarationList(statement);
    Match(TOK_SEMI, kAfterStatement);
    return statement.Detach();
  });
}

void wflParser::variableDeclarationList(CVariableDeclarationStatement* statement) {
  RObject<CVariableDeclaration> first(variableDeclaration());
  statement->AddDeclaration(first);
  while (LA(1) == TOK_COMMA) {
    Consume();
    RObject<CVariableDeclaration> next(variableDeclaration());
    statement->AddDeclaration(next);
  }
}

CVariableDeclaration* wflParser::variableDeclaration() {
  return Rule<CVariableDeclaration>([&]() -> CVariableDeclaration* {
    RObject<CVariableDeclaration> declaration(
        new CVariableDeclaration(Match(Identifier, Set({TOK_EQ, TOK_COMMA, TOK_SEMI}))));
    if (LA(1) == TOK_EQ) {
      Consume();
      RObject<CExpression> initializer(expression());
      declaration->SetExpression(initializer);
    }
    return declaration.Detach();
  });
}

CStatement* wflParser::emptyStatement() {
  return Rule<CStatement>([&]() -> CStatement* { return new CEmptyStatement(Match(TOK_SEMI)); });
}

CStatement* wflParser::expressionStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* first = LT(1);
    RObject<CExpression> value(expression());
    Match(TOK_SEMI, kAfterStatement);
    return new CExpressionStatement(first, value);
  });
}

CStatement* wflParser::ifStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_IF);
    Match(TOK_LPAREN, kExpressionStart);
    RObject<CExpression> condition(expression());
    Match(TOK_RPAREN, kStatementStart);
    RObject<CStatement> then(statement());
    RObject<CIfStatement> node(new CIfStatement(keyword, condition, then));
    if (LA(1) == TOK_ELSE) elseStatement(node);  // the nearest if takes the else
    return node.Detach();
  });
}

void wflParser::elseStatement(CStatement* ifStatement) {
  Match(TOK_ELSE);
  RObject<CStatement> otherwise(statement());
  static_cast<CIfStatement*>(ifStatement)->SetElseStatement(otherwise);
}

CStatement* wflParser::iterationStatement() {
  if (LA(1) == TOK_DO) return doWhileStatement();
  if (LA(1) == TOK_WHILE) return whileStatement();
  bool forEach = LA(2) == TOK_LPAREN && ((LA(3) == TOK_VAR && LA(4) == Identifier && (LA(5) == TOK_IN || LA(5) == TOK_OF)) ||
                                         (LA(3) == Identifier && (LA(4) == TOK_IN || LA(4) == TOK_OF)));
  return forEach ? forInStatement() : forStatement();
}

CStatement* wflParser::doWhileStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_DO);
    RObject<CStatement> body(statement());
    Match(TOK_WHILE, Set({TOK_LPAREN}));
    Match(TOK_LPAREN, kExpressionStart);
    RObject<CExpression> condition(expression());
    Match(TOK_RPAREN, Set({TOK_SEMI}));
    Match(TOK_SEMI, kAfterStatement);
    return new CDoWhileStatement(keyword, body, condition);
  });
}

CStatement* wflParser::whileStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_WHILE);
    Match(TOK_LPAREN, kExpressionStart);
    RObject<CExpression> condition(expression());
    Match(TOK_RPAREN, kStatementStart);
    RObject<CStatement> body(statement());
    return new CWhileStatement(keyword, condition, body);
  });
}

CStatement* wflParser::forStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_FOR);
    Match(TOK_LPAREN, kStatementStart);
    RObject<CStatement> initializer(forInitializerStatement());
    RObject<CExpression> condition(LA(1) != TOK_SEMI ? forExpression() : nullptr);
    Match(TOK_SEMI, kExpressionStart | Set({TOK_RPAREN}));
    RObject<CExpression> step(LA(1) != TOK_RPAREN ? forExpression() : nullptr);
    Match(TOK_RPAREN, kStatementStart);
    RObject<CStatement> body(statement());
    return new CForStatement(keyword, initializer, condition, step, body);
  });
}

CStatement* wflParser::forInitializerStatement() {
  if (LA(1) == TOK_SEMI) return emptyStatement();
  if (LA(1) == TOK_VAR) return variableDeclarationStatement();
  return expressionStatement();
}

CExpression* wflParser::forExpression() {
  // A missing or malformed clause must not pass for an absent one.
  RObject<CExpression> value(expression());
  if (!value) throw ResultInvalidAST(LT(1));
  return value.Detach();
}

CStatement* wflParser::forInStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_FOR);
    Match(TOK_LPAREN);
    RObject<CExpression> variable(forEachInitializerExpression());
    CToken* kind = Consume();  // "in" or "of", checked by the lookahead
    RObject<CExpression> collection(expression());
    Match(TOK_RPAREN, kStatementStart);
    RObject<CStatement> body(statement());
    if (kind->GetTokenType() == TOK_OF) return new CForOfStatement(keyword, variable, collection, body);
    return new CForInStatement(keyword, variable, collection, body);
  });
}

CExpression* wflParser::forEachInitializerExpression() {
  if (LA(1) == TOK_VAR) {
    Consume();
    return new CVariableDeclaration(Match(Identifier));
  }
  return new CIdentifier(Match(Identifier));
}

CStatement* wflParser::continueStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    RObject<CStatement> node(new CContinueStatement(Match(TOK_CONTINUE)));
    Match(TOK_SEMI, kAfterStatement);
    return node.Detach();
  });
}

CStatement* wflParser::breakStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    RObject<CStatement> node(new CBreakStatement(Match(TOK_BREAK)));
    Match(TOK_SEMI, kAfterStatement);
    return node.Detach();
  });
}

CStatement* wflParser::returnStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    RObject<CReturnStatement> node(new CReturnStatement(Match(TOK_RETURN)));
    if (LA(1) != TOK_SEMI && In(kExpressionStart, LA(1))) {
      RObject<CExpression> value(expression());
      node->SetExpression(value);
    }
    Match(TOK_SEMI, kAfterStatement);
    return node.Detach();
  });
}

CStatement* wflParser::withStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_WITH);
    Match(TOK_LPAREN, kExpressionStart);
    RObject<CExpression> object(expression());
    Match(TOK_RPAREN, kStatementStart);
    RObject<CStatement> body(statement());
    return new CWithStatement(keyword, object, body);
  });
}

CStatement* wflParser::switchStatement() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_SWITCH);
    Match(TOK_LPAREN, kExpressionStart);
    RObject<CExpression> discriminant(expression());
    Match(TOK_RPAREN, Set({TOK_LBRACE}));
    RObject<CSwitchStatement> node(new CSwitchStatement(keyword, discriminant));
    caseBlock(node);
    return node.Detach();
  });
}

void wflParser::caseBlock(CSwitchStatement* statement) {
  Match(TOK_LBRACE, Set({TOK_CASE, TOK_DEFAULT, TOK_RBRACE}));
  auto cases = [&] {
    while (LA(1) == TOK_CASE) {
      RObject<CStatement> clause(caseClause());
      statement->AddClause(static_cast<CSwitchClause*>(clause.Get()));
    }
  };
  cases();
  if (LA(1) == TOK_DEFAULT) {
    RObject<CStatement> clause(defaultClause());
    auto* fallback = static_cast<CDefaultClause*>(clause.Get());
    statement->AddClause(fallback);
    statement->SetDefaultClause(fallback);
    cases();
  }
  Match(TOK_RBRACE, kAfterStatement);
}

CStatement* wflParser::caseClause() {
  return Rule<CStatement>([&]() -> CStatement* {
    CToken* keyword = Match(TOK_CASE);
    RObject<CExpression> test(expression());
    Match(TOK_COLON, kStatementStart | Set({TOK_CASE, TOK_DEFAULT, TOK_RBRACE}));
    RObject<CCaseClause> clause(new CCaseClause(keyword, test));
    if (In(kStatementStart, LA(1))) statementList(clause);
    return clause.Detach();
  });
}

CStatement* wflParser::defaultClause() {
  return Rule<CStatement>([&]() -> CStatement* {
    RObject<CDefaultClause> clause(new CDefaultClause(Match(TOK_DEFAULT)));
    Match(TOK_COLON, kStatementStart | Set({TOK_CASE, TOK_RBRACE}));
    if (In(kStatementStart, LA(1))) statementList(clause);
    return clause.Detach();
  });
}

// ---- expressions ----

CExpression* wflParser::expression() {
  CNestingGuard nesting(this);
  return Rule<CExpression>([&]() -> CExpression* {
    int start = index_;
    RObject<CExpression> value(conditionalExpression());
    if (!(lhsStart_ == start && lhsEnd_ == index_ && In(kAssignmentOperators, LA(1)))) return value.Detach();
    // assignmentExpression: the left side alone, then the operator (right-associative).
    CToken* op = Consume();
    RObject<CExpression> right(expression());
    return new CBinaryExpression(op, value, right);
  });
}

CExpression* wflParser::conditionalExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CExpression> condition(binaryExpression(0));
    if (LA(1) != TOK_CND) return condition.Detach();
    CToken* question = Consume();
    RObject<CExpression> then(expression());
    Match(TOK_COLON, kExpressionStart);
    RObject<CExpression> otherwise(expression());
    return new CConditionalExpression(question, condition, then, otherwise);
  });
}

CExpression* wflParser::binaryExpression(int level) {
  if (level == kLevelCount) return nullCoalescingExpression();
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CExpression> left(binaryExpression(level + 1));
    std::unique_ptr<CNestingGuard> chain;
    while (In(kLevels[level].operators, LA(1))) {
      if (chain) chain->Deeper();
      else chain = std::make_unique<CNestingGuard>(this, true);
      CToken* op = Consume();
      RObject<CExpression> right(binaryExpression(level + 1));
      if (level == 0) {
        left = new CConnectionExpression(op, left, right);
      } else {
        left = new CBinaryExpression(op, left, right);
      }
    }
    return left.Detach();
  });
}

CExpression* wflParser::nullCoalescingExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CExpression> left(unaryExpression());
    if (LA(1) != TOK_COAL) return left.Detach();
    CNestingGuard nesting(this);
    CToken* op = Consume();
    RObject<CExpression> right(nullCoalescingExpression());
    return new CNullCoalescingExpression(op, left, right);
  });
}

CExpression* wflParser::unaryExpression() {
  if (!In(kPrefixOperators, LA(1))) return postfixExpression();
  CNestingGuard nesting(this);
  return Rule<CExpression>([&]() -> CExpression* {
    CToken* op = Consume();
    RObject<CExpression> operand(unaryExpression());
    return new CPrefixUnaryExpression(op, operand);
  });
}

CExpression* wflParser::postfixExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CExpression> operand(leftHandSideExpression());
    if (LA(1) != TOK_INC && LA(1) != TOK_DEC) return operand.Detach();
    CToken* op = Consume();
    return new CPostfixUnaryExpression(op, operand);
  });
}

CExpression* wflParser::leftHandSideExpression() {
  int start = index_;
  RObject<CExpression> value(LA(1) == TOK_NEW ? newExpression() : memberExpression());
  lhsStart_ = start;
  lhsEnd_ = index_;
  return value.Detach();
}

CExpression* wflParser::newExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    Match(TOK_NEW);
    if (!In(kComponents, LA(1))) NoViableAlternative("newExpression");
    RObject<CComponentExpression> component(new CComponentExpression(Consume()));
    arguments(component);
    return component.Detach();
  });
}

CExpression* wflParser::memberExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CExpression> value(memberExpressionPrefix());
    std::unique_ptr<CNestingGuard> chain;
    while (LA(1) == TOK_DOT || LA(1) == TOK_NULL_DOT || LA(1) == TOK_LBRACKET || LA(1) == TOK_NULL_INDEX) {
      if (chain) chain->Deeper();
      else chain = std::make_unique<CNestingGuard>(this, true);
      value = memberExpressionSuffix(value);
    }
    return value.Detach();
  });
}

CExpression* wflParser::memberExpressionPrefix() {
  bool callee = LA(1) == Identifier || LA(1) == TOK_DIE || In(kMath, LA(1));
  return callee && LA(2) == TOK_LPAREN ? callExpression() : primaryExpression();
}

CExpression* wflParser::memberExpressionSuffix(CExpression* object) {
  return LA(1) == TOK_DOT || LA(1) == TOK_NULL_DOT ? identifierSuffix(object) : indexSuffix(object);
}

CExpression* wflParser::identifierSuffix(CExpression* object) {
  return Rule<CExpression>([&]() -> CExpression* {
    bool conditional = Consume()->GetTokenType() == TOK_NULL_DOT;
    CToken* name = Match(Identifier, kAfterExpression);
    RObject<CMemberIdentifier> member(new CMemberIdentifier(name));
    if (conditional) return new CNullMemberIdentifierExpression(name, object, member);
    return new CMemberIdentifierExpression(name, object, member);
  });
}

CExpression* wflParser::indexSuffix(CExpression* object) {
  return Rule<CExpression>([&]() -> CExpression* {
    CToken* open = Consume();
    RObject<CExpression> index(expression());
    Match(TOK_RBRACKET, kAfterExpression);
    CToken* token = object ? object->GetToken() : open;
    if (open->GetTokenType() == TOK_NULL_INDEX) return new CNullMemberIndexExpression(token, object, index);
    return new CMemberIndexExpression(token, object, index);
  });
}

CExpression* wflParser::callExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CCallExpression> call(new CCallExpression(Consume()));
    arguments(call);
    return call.Detach();
  });
}

void wflParser::arguments(CCallExpression* call) {
  Match(TOK_LPAREN, kExpressionStart | Set({TOK_RPAREN}));
  if (In(kExpressionStart, LA(1))) {
    RObject<CExpression> first(expression());
    call->AddArgument(first);
    while (LA(1) == TOK_COMMA) {
      Consume();
      RObject<CExpression> next(expression());
      call->AddArgument(next);
    }
  }
  Match(TOK_RPAREN, kAfterExpression);
}

CExpression* wflParser::primaryExpression() {
  return Rule<CExpression>([&]() -> CExpression* {
    switch (LA(1)) {
      case Identifier:
        return identifier();
      case TOK_LBRACE:
        return dictionaryLiteral();
      case TOK_LBRACKET:
        return arrayLiteral();
      case TOK_LPAREN: {
        Consume();
        RObject<CExpression> inner(expression());
        Match(TOK_RPAREN, kAfterExpression);
        return inner.Detach();
      }
      case TOK_FALSE:
      case TOK_TRUE:
      case TOK_NULL:
      case StringLiteral:
      case NumericLiteral:
        return literal();
      default:
        NoViableAlternative("primaryExpression");
    }
  });
}

CExpression* wflParser::identifier() { return new CIdentifier(Match(Identifier)); }

CExpression* wflParser::literal() {
  if (LA(1) == NumericLiteral && LA(2) == TOK_COLON && LA(3) == NumericLiteral && LA(4) == TOK_COLON)
    return timeCodeLiteral();
  CToken* token = Consume();
  switch (token->GetTokenType()) {
    case TOK_FALSE:
    case TOK_TRUE:
      return new CBooleanLiteral(token);
    case TOK_NULL:
      return new CNullLiteral(token);
    case StringLiteral:
      return new CStringLiteral(token);
    default:
      return new CNumericLiteral(token);
  }
}

CExpression* wflParser::arrayLiteral() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CArrayLiteral> array(new CArrayLiteral(Match(TOK_LBRACKET)));
    if (In(kExpressionStart, LA(1))) {
      RObject<CExpression> first(expression());
      array->AddItem(first);
      while (LA(1) == TOK_COMMA && LA(2) != TOK_RBRACKET) {
        Consume();
        RObject<CExpression> next(expression());
        array->AddItem(next);
      }
    }
    if (LA(1) == TOK_COMMA) Consume();  // a trailing comma
    Match(TOK_RBRACKET, kAfterExpression);
    return array.Detach();
  });
}

CExpression* wflParser::dictionaryLiteral() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CDictionaryLiteral> dictionary(new CDictionaryLiteral(Match(TOK_LBRACE)));
    auto isKey = [&] { return LA(1) == Identifier || LA(1) == StringLiteral || LA(1) == NumericLiteral; };
    if (isKey()) {
      RObject<CExpression> first(propertyNameAndValue());
      dictionary->AddProperty(static_cast<CPropertyNameValue*>(first.Get()));
      while (LA(1) == TOK_COMMA && LA(2) != TOK_RBRACE) {
        Consume();
        RObject<CExpression> next(propertyNameAndValue());
        dictionary->AddProperty(static_cast<CPropertyNameValue*>(next.Get()));
      }
    }
    if (LA(1) == TOK_COMMA) Consume();  // a trailing comma
    Match(TOK_RBRACE, kAfterExpression);
    return dictionary.Detach();
  });
}

CExpression* wflParser::propertyNameAndValue() {
  return Rule<CExpression>([&]() -> CExpression* {
    if (LA(1) != Identifier && LA(1) != StringLiteral && LA(1) != NumericLiteral)
      NoViableAlternative("propertyNameAndValue");
    CToken* key = Consume();
    Match(TOK_COLON, kExpressionStart);
    RObject<CExpression> value(expression());
    return new CPropertyNameValue(key, value);
  });
}

CExpression* wflParser::timeCodeLiteral() {
  return Rule<CExpression>([&]() -> CExpression* {
    RObject<CNumericLiteral> parts[5];
    CToken* first = Match(NumericLiteral);
    parts[0] = new CNumericLiteral(first);
    Match(TOK_COLON);
    parts[1] = new CNumericLiteral(Match(NumericLiteral));
    Match(TOK_COLON);
    parts[2] = new CNumericLiteral(Match(NumericLiteral, Set({TOK_COLON, TOK_SEMI})));
    if (LA(1) != TOK_COLON && LA(1) != TOK_SEMI) NoViableAlternative("timeCodeLiteral");
    bool dropFrame = Consume()->GetTokenType() == TOK_SEMI;
    parts[3] = new CNumericLiteral(Match(NumericLiteral, Set({TOK_AT})));
    Match(TOK_AT, Set({NumericLiteral}));
    parts[4] = new CNumericLiteral(Match(NumericLiteral, kAfterExpression));
    return new CTimeCodeLiteral(first, parts[0], parts[1], parts[2], parts[3], parts[4], dropFrame);
  });
}

}  // namespace Corvane::Mox::WFL
