#pragma once
// wflLexer: turns script bytes into the tokens the parser sees. Bytes are
// classified one at a time (non-ASCII bytes may appear only inside strings
// and comments); white space and comments are dropped; keywords are whole
// words only; operators are matched longest first. A byte that begins no
// token, an unterminated string or comment and a malformed escape, hex number
// or exponent are reported, the offending byte is skipped and lexing goes on.

#include <string>
#include <vector>

#include "wfl/wfl/wflDiagnostics.h"
#include "wfl/wfl/wflToken.h"

namespace Corvane::Mox::WFL {

class wflLexer {
 public:
  // The bytes must outlive the lexer; diagnostics receives the error reports.
  wflLexer(const char* bytes, int size, wflDiagnostics* diagnostics);

  // The next token for the parser (acquired); an EOF token at the end.
  CToken* NextToken();
  // Every remaining token, ending with the EOF token.
  void Tokenize(std::vector<RObject<CToken>>& tokens);

  // The in-place escape translation of a non-verbatim string token's text
  // (quotes included).
  static std::string TranslateEscapes(const std::string& text);

 private:
  struct Failure {
    int at;  // offset of the offending byte (size_ at end of input)
  };

  int Peek(int offset) const;
  void Advance(int count);
  // Moves to offset, keeping line and position in step.
  void AdvanceTo(int offset);
  bool SkipTrivia();
  CToken* MakeToken(int type, int start, std::string text);
  CToken* LexIdentifier();
  CToken* LexNumber();
  CToken* LexString();
  CToken* LexOperator();
  int ScanExponent(int i) const;
  int ScanEscape(int i) const;
  // Reports the failure and skips the offending byte.
  void Recover(const Failure& failure);

  const unsigned char* bytes_;
  int size_;
  int index_;
  int line_;
  int position_;
  int tokenLine_;
  int tokenPosition_;
  wflDiagnostics* diagnostics_;
};

}  // namespace Corvane::Mox::WFL
