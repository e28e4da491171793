#include "wfl/ResultParserError.h"

#include "System/Text.h"
#include "wfl/wfl/wflToken.h"

namespace Corvane::Mox::WFL {

namespace {

const CToken* AsToken(const void* token) { return static_cast<const CToken*>(token); }

}  // namespace

ResultParserError::ResultParserError(const void* token, const char* format, ...)
    : Result(Code, static_cast<int>(Code), "Parser error", nullptr),
      line_(token ? AsToken(token)->GetLine() : -1),
      position_(token ? AsToken(token)->GetCharPositionInLine() : -1) {
  va_list args;
  va_start(args, format);
  FormatDetails(format, args);
  va_end(args);
}

ResultParserError::ResultParserError(int code, const void* token, const char* title, const char* format, ...)
    : Result(static_cast<unsigned int>(code) | HighBit, static_cast<int>(static_cast<unsigned int>(code) | HighBit),
             title, nullptr),
      line_(token ? AsToken(token)->GetLine() : -1),
      position_(token ? AsToken(token)->GetCharPositionInLine() : -1) {
  va_list args;
  va_start(args, format);
  FormatDetails(format, args);
  va_end(args);
}

ResultParserError::ResultParserError(unsigned int code, const void* token, const char* title, const char* format,
                                     va_list args)
    : Result(code | HighBit, static_cast<int>(code | HighBit), title, nullptr),
      line_(token ? AsToken(token)->GetLine() : -1),
      position_(token ? AsToken(token)->GetCharPositionInLine() : -1) {
  FormatDetails(format, args);
}

ResultParserError::ResultParserError(unsigned int code, const void* token, const char* title,
                                     const char* detailFormat)
    : Result(code | HighBit, static_cast<int>(code | HighBit), title, nullptr),
      line_(token ? AsToken(token)->GetLine() : -1),
      position_(token ? AsToken(token)->GetCharPositionInLine() : -1) {
  if (!detailFormat) return;
  SetDetails(detailFormat, GetTokenText(token));
}

void ResultParserError::SetDetails(const char* format, ...) {
  va_list args;
  va_start(args, format);
  FormatDetails(format, args);
  va_end(args);
}

const char* ResultParserError::GetTokenText(const void* token) { return token ? AsToken(token)->GetText() : "(null)"; }

CString* ResultParserError::FormatErrorMessage() const {
  const char* detail = GetDetails();
  return CString::WithFormat("%s: line %d:%d; %s", GetTitle() ? GetTitle() : "", line_, position_,
                             detail ? detail : "");
}

}  // namespace Corvane::Mox::WFL
