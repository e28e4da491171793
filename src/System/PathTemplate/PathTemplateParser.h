#pragma once
// CPathTemplate::CParser: the state machine that turns template text into a
// CSyntaxTree. Syntax errors are thrown as Results:
//   ResultError "Unknown Token '%s' at offset %d" for a name not in ValidTokens,
//   ResultError "Closing $ for token '%s' is missing" at the end of the text,
//   ResultNotSupported for ':' outside a token name and for '\' outside
//   literal text and formats.

#include <string>

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CPathTemplate::CParser {
 public:
  CParser() = default;
  CParser(const CParser&) = delete;
  CParser& operator=(const CParser&) = delete;
  ~CParser();

  // The tree of text (acquired); an empty text gives an empty tree.
  CSyntaxTree* Parse(const char* text);

 private:
  enum class State { Start, Literal, TokenStart, TokenName, TokenEndPending, Escape, Format, Error, End };

  void OnDollar();
  void OnBackSlash();
  void OnDefault(char c, char next);
  void OnEnd();
  void AddLiteral();
  void AddFormat();
  void AddToken();

  void OnTokenStart(char c, char next);
  void OnTokenName(char c, char next);
  [[noreturn]] void ThrowColon();
  [[noreturn]] void ThrowBackSlash();
  void Reset();

  State state_ = State::Start;
  int offset_ = 0;       // of the character being read
  int tokenOffset_ = 0;  // of the "$" that opened the token
  std::string literal_;
  std::string name_;
  std::string format_;
  bool hasFormat_ = false;
  bool formatEscape_ = false;
  char prefix_ = 0;
  char suffix_ = 0;
  CSyntaxTree* tree_ = nullptr;
};

}  // namespace Corvane::Mox
