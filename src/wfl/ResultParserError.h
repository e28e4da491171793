#pragma once
// ResultParserError: the failures of WFL scripts. Besides the usual result
// fields each carries the line and the position in the line of the token
// concerned (both -1 without a token) and renders as
// "Title: line L:P; detail". The kinds below are generated from
// ResultParserErrors.def; each is made from the offending token alone (its
// text fills the kind's detail format) or from the token and a message that
// replaces the detail.

#include <cstdarg>

#include "System/Result.h"
#include "System/Types.h"

namespace Corvane::Mox::WFL {

class ResultParserError : public Result {
 public:
  // Code "!WFL" with the high bit set, title "Parser error". token is a CToken (or null).
  ResultParserError(const void* token, const char* format, ...) MOX_PRINTF(3, 4);
  // The high bit is set on code; title must be static text.
  ResultParserError(int code, const void* token, const char* title, const char* format, ...) MOX_PRINTF(5, 6);

  static constexpr unsigned int HighBit = 0x80000000u;
  static constexpr unsigned int Code = FourCC("!WFL") | HighBit;

  int GetLine() const { return line_; }
  int GetPosition() const { return position_; }
  const char* GetTitle() const { return GetErrorMessage(); }

  // "%s: line %d:%d; %s" from the title, line, position and detail.
  CString* FormatErrorMessage() const override;

  // The text of a CToken, "(null)" without one.
  static const char* GetTokenText(const void* token);

 protected:
  ResultParserError(unsigned int code, const void* token, const char* title, const char* format, va_list args);
  // Detail from a format that receives the token's text.
  ResultParserError(unsigned int code, const void* token, const char* title, const char* detailFormat);

 private:
  void SetDetails(const char* format, ...);

  int line_;
  int position_;
};

#define WFL_PARSER_ERROR(Name, CodeText, Title, Detail)                                      \
  class Name : public ResultParserError {                                                    \
   public:                                                                                   \
    static constexpr unsigned int Code = FourCC(CodeText) | HighBit;                         \
    explicit Name(const void* token) : ResultParserError(Code, token, Title, Detail) {}      \
    /* The message becomes the detail. */                                                    \
    Name(const void* token, const char* message)                                             \
        : ResultParserError(static_cast<int>(Code), token, Title, "%s", message ? message : "") {} \
  };
#include "wfl/ResultParserErrors.def"
#undef WFL_PARSER_ERROR

}  // namespace Corvane::Mox::WFL
