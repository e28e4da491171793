#pragma once
// The tokens of WFL: the token-type numbers (generated from wflTokens.def),
// their names and spellings, and CToken, the reference-counted token that the
// lexer produces and every syntax-tree node keeps for its error messages.

#include <string>

#include "System/Object.h"

namespace Corvane::Mox::WFL {

enum wflTokenType : int {
  TOKEN_EOF = -1,
  TOKEN_INVALID = 0,
  TOKEN_EOR = 1,
  TOKEN_DOWN = 2,
  TOKEN_UP = 3,
  wflTokenTypeBefore = 3,
#define WFL_TOKEN(Name, Spelling, Kind) Name,
#include "wfl/wfl/wflTokens.def"
#undef WFL_TOKEN
  wflTokenTypeEnd
};

enum class wflTokenKind { Fragment, Form, Keyword, Operator };

// Static facts about a token type, looked up in the table built from the .def.
struct wflTokenInfo {
  static const char* GetName(int type);
  // The fixed spelling of a keyword or operator; "" for free-form tokens.
  static const char* GetSpelling(int type);
  static wflTokenKind GetKind(int type);
  // The keyword spelled by the text (whole word), or TOKEN_INVALID.
  static int FindKeyword(const char* text, int length);
  // How the parser names an expected token in diagnostics: "';'", "Identifier".
  static std::string Describe(int type);
};

class CToken : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("tokn");

  // text holds count bytes (string literals may carry any byte, NUL included).
  CToken(int type, const char* text, int count, int line, int position, int offset);

  int GetTokenType() const { return tokenType_; }
  // The token text as bytes; GetText() stops at an embedded NUL.
  const std::string& GetBytes() const { return text_; }
  const char* GetText() const { return text_.c_str(); }
  int GetLine() const { return line_; }
  int GetCharPositionInLine() const { return position_; }
  // Byte offset of the first character in the input.
  int GetStartIndex() const { return offset_; }

  // A token made up by error recovery; its text reads "<missing ...>".
  static CToken* CreateMissing(int type, const CToken* at);

  CString* ToString() const override;

 private:
  int tokenType_;
  std::string text_;
  int line_;
  int position_;
  int offset_;
};

}  // namespace Corvane::Mox::WFL
