#include "wfl/wfl/wflLexer.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox::WFL {

namespace {

bool IsWhiteSpace(int c) { return c == 9 || c == 10 || c == 12 || c == 13 || c == 32 || c == 160; }
bool IsDigit(int c) { return c >= '0' && c <= '9'; }
bool IsHexDigit(int c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool IsLetter(int c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsIdentifierStart(int c) { return IsLetter(c) || c == '#' || c == '$'; }
bool IsIdentifierPart(int c) { return IsLetter(c) || IsDigit(c); }
bool IsLineEnd(int c) { return c == 10 || c == 13; }

// A hexadecimal digit's value; anything else counts as 0.
int HexValue(int c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 0;
}

// The single-character escapes; 0 when c is not one of them.
int SimpleEscape(char c) {
  static const char kFrom[] = "\"'abtnvfr";
  static const char kTo[] = {'"', '\'', 7, 8, 9, 10, 11, 12, 13};
  const char* found = c ? std::strchr(kFrom, c) : nullptr;
  return found ? kTo[found - kFrom] : 0;
}

// The UTF-8 bytes of the one-character string made from a code point.
std::string CodePointBytes(unsigned int codePoint) {
  wchar_t wide[2] = {static_cast<wchar_t>(codePoint), 0};
  RObject<CString> text(new CString(wide, 1));
  return text->GetChars();
}

}  // namespace

wflLexer::wflLexer(const char* bytes, int size, wflDiagnostics* diagnostics)
    : bytes_(reinterpret_cast<const unsigned char*>(bytes)),
      size_(bytes && size > 0 ? size : 0),
      index_(0),
      line_(1),
      position_(0),
      tokenLine_(1),
      tokenPosition_(0),
      diagnostics_(diagnostics) {}

int wflLexer::Peek(int offset) const {
  int at = index_ + offset;
  return at < size_ ? bytes_[at] : -1;
}

void wflLexer::Advance(int count) {
  for (int i = 0; i < count && index_ < size_; ++i) {
    if (bytes_[index_++] == '\n') {
      ++line_;
      position_ = 0;
    } else {
      ++position_;
    }
  }
}

void wflLexer::AdvanceTo(int offset) { Advance(offset - index_); }

void wflLexer::Recover(const Failure& failure) {
  AdvanceTo(failure.at);
  if (diagnostics_) diagnostics_->ReportLexerError(line_, position_, failure.at < size_ ? bytes_[failure.at] : -1);
  Advance(1);
}

void wflLexer::Tokenize(std::vector<RObject<CToken>>& tokens) {
  for (;;) {
    RObject<CToken> token(NextToken());
    bool end = token->GetTokenType() == TOKEN_EOF;
    tokens.push_back(std::move(token));
    if (end) return;
  }
}

CToken* wflLexer::NextToken() {
  for (;;) {
    if (SkipTrivia()) continue;
    tokenLine_ = line_;
    tokenPosition_ = position_;
    int c = Peek(0);
    if (c < 0) return MakeToken(TOKEN_EOF, index_, "<EOF>");
    try {
      // "#" and "$" may only begin a name: right after a name's character they begin nothing.
      bool glued = index_ > 0 && IsIdentifierPart(bytes_[index_ - 1]);
      if ((c == '#' || c == '$') && glued) throw Failure{index_};
      if (IsIdentifierStart(c)) return LexIdentifier();
      if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) return LexNumber();
      if (c == '"' || c == '\'' || (c == '@' && (Peek(1) == '"' || Peek(1) == '\''))) return LexString();
      if (CToken* token = LexOperator()) return token;
      throw Failure{index_};
    } catch (const Failure& failure) {
      Recover(failure);
    }
  }
}

// White space and comments; true when something was skipped.
bool wflLexer::SkipTrivia() {
  int c = Peek(0);
  if (c >= 0 && IsWhiteSpace(c)) {
    Advance(1);
    return true;
  }
  if (c != '/') return false;
  if (Peek(1) == '/') {
    int i = index_ + 2;
    while (i < size_ && !IsLineEnd(bytes_[i])) ++i;
    AdvanceTo(i);
    return true;
  }
  if (Peek(1) != '*') return false;
  const void* end = nullptr;
  for (int i = index_ + 2; i + 1 < size_ && !end; ++i)
    if (bytes_[i] == '*' && bytes_[i + 1] == '/') end = bytes_ + i;
  if (!end) {
    Recover(Failure{size_});  // unterminated: the error stands at end of input
    return true;
  }
  AdvanceTo(static_cast<int>(static_cast<const unsigned char*>(end) - bytes_) + 2);
  return true;
}

CToken* wflLexer::MakeToken(int type, int start, std::string text) {
  return new CToken(type, text.data(), static_cast<int>(text.size()), tokenLine_, tokenPosition_, start);
}

CToken* wflLexer::LexIdentifier() {
  int start = index_;
  int i = start + 1;
  while (i < size_ && IsIdentifierPart(bytes_[i])) ++i;
  const char* text = reinterpret_cast<const char*>(bytes_ + start);
  int keyword = wflTokenInfo::FindKeyword(text, i - start);
  AdvanceTo(i);
  return MakeToken(keyword != TOKEN_INVALID ? keyword : Identifier, start, std::string(text, i - start));
}

// The end of an optional exponent starting at i; throws on a malformed one.
int wflLexer::ScanExponent(int i) const {
  if (i >= size_ || (bytes_[i] != 'e' && bytes_[i] != 'E')) return i;
  ++i;
  if (i < size_ && (bytes_[i] == '+' || bytes_[i] == '-')) ++i;
  if (i >= size_ || !IsDigit(bytes_[i])) throw Failure{i};
  while (i < size_ && IsDigit(bytes_[i])) ++i;
  return i;
}

CToken* wflLexer::LexNumber() {
  int start = index_;
  int i = start;
  if (bytes_[i] == '0' && i + 1 < size_ && (bytes_[i + 1] == 'x' || bytes_[i + 1] == 'X')) {
    i += 2;
    if (i >= size_ || !IsHexDigit(bytes_[i])) throw Failure{i};
    while (i < size_ && IsHexDigit(bytes_[i])) ++i;
  } else {
    while (i < size_ && IsDigit(bytes_[i])) ++i;
    if (i < size_ && bytes_[i] == '.') {
      ++i;
      while (i < size_ && IsDigit(bytes_[i])) ++i;
    }
    i = ScanExponent(i);
  }
  AdvanceTo(i);
  return MakeToken(NumericLiteral, start, std::string(reinterpret_cast<const char*>(bytes_ + start), i - start));
}

// The end of the escape sequence whose backslash is at i; throws when malformed.
int wflLexer::ScanEscape(int i) const {
  int next = i + 1;
  if (next >= size_ || IsLineEnd(bytes_[next])) throw Failure{next};
  int digits = bytes_[next] == 'x' ? 2 : bytes_[next] == 'u' ? 4 : 0;
  for (int k = 1; k <= digits; ++k)
    if (next + k >= size_ || !IsHexDigit(bytes_[next + k])) throw Failure{next + k};
  return next + 1 + digits;
}

CToken* wflLexer::LexString() {
  int start = index_;
  bool verbatim = bytes_[start] == '@';
  int quote = bytes_[start + (verbatim ? 1 : 0)];
  int i = start + (verbatim ? 2 : 1);
  for (;;) {
    if (i >= size_ || IsLineEnd(bytes_[i])) throw Failure{i};
    if (bytes_[i] == quote) break;
    i = (!verbatim && bytes_[i] == '\\') ? ScanEscape(i) : i + 1;
  }
  ++i;
  AdvanceTo(i);
  std::string text(reinterpret_cast<const char*>(bytes_ + start), i - start);
  return MakeToken(StringLiteral, start, verbatim ? text : TranslateEscapes(text));
}

CToken* wflLexer::LexOperator() {
  int best = TOKEN_INVALID;
  int bestLength = 0;
  for (int type = wflTokenTypeBefore + 1; type < wflTokenTypeEnd; ++type) {
    if (wflTokenInfo::GetKind(type) != wflTokenKind::Operator) continue;
    const char* spelling = wflTokenInfo::GetSpelling(type);
    int length = static_cast<int>(std::strlen(spelling));
    if (length > bestLength && length <= size_ - index_ && std::memcmp(bytes_ + index_, spelling, length) == 0) {
      best = type;
      bestLength = length;
    }
  }
  if (best == TOKEN_INVALID) return nullptr;
  int start = index_;
  AdvanceTo(start + bestLength);
  return MakeToken(best, start, wflTokenInfo::GetSpelling(best));
}

std::string wflLexer::TranslateEscapes(const std::string& text) {
  std::string out;
  std::size_t n = text.size();
  for (std::size_t j = 0; j < n; ++j) {
    if (text[j] != '\\' || j + 1 >= n) {
      out += text[j];
      continue;
    }
    char d = text[++j];
    if (d >= '0' && d <= '7') {
      out += static_cast<char>(d - '0');
    } else if (int simple = SimpleEscape(d)) {
      out += static_cast<char>(simple);
    } else if (d == 'x') {
      // Only the first digit counts; the second is consumed and lost.
      out += static_cast<char>(j + 1 < n ? HexValue(static_cast<unsigned char>(text[j + 1])) : 0);
      j += 2;
    } else if (d == 'u') {
      unsigned int codePoint = 0;
      for (std::size_t k = 1; k <= 4; ++k)
        codePoint = codePoint * 16 + (j + k < n ? HexValue(static_cast<unsigned char>(text[j + k])) : 0);
      out += CodePointBytes(codePoint);
      j += 4;
    } else {
      out += '\\';  // any other escaped character is dropped
    }
  }
  return out;
}

}  // namespace Corvane::Mox::WFL
