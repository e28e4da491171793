#include "System/PathTemplate/PathTemplateParser.h"

#include <cstring>

#include "System/PathTemplate/PathTemplateStringLiteral.h"
#include "System/PathTemplate/PathTemplateSyntaxTree.h"
#include "System/PathTemplate/PathTemplateToken.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Characters taken as a token's prefix (right after the opening "$") or
// suffix (right before the closing "$").
bool IsAffix(char c) { return c != 0 && std::strchr(" -./_", c) != nullptr; }

}  // namespace

CPathTemplate::CParser::~CParser() {
  if (tree_) tree_->Release();
}

void CPathTemplate::CParser::Reset() {
  if (tree_) tree_->Release();
  tree_ = nullptr;
  state_ = State::Start;
  offset_ = 0;
  tokenOffset_ = 0;
  literal_.clear();
  name_.clear();
  format_.clear();
  hasFormat_ = false;
  formatEscape_ = false;
  prefix_ = 0;
  suffix_ = 0;
}

CPathTemplate::CSyntaxTree* CPathTemplate::CParser::Parse(const char* text) {
  Reset();
  tree_ = new CSyntaxTree();
  try {
    for (offset_ = 0; text && text[offset_]; ++offset_) {
      char c = text[offset_];
      if (c == '$') {
        OnDollar();
      } else if (c == '\\') {
        OnBackSlash();
      } else {
        OnDefault(c, text[offset_ + 1]);
      }
    }
    OnEnd();
  } catch (...) {
    state_ = State::Error;
    tree_->Release();
    tree_ = nullptr;
    throw;
  }
  CSyntaxTree* tree = tree_;
  tree_ = nullptr;
  return tree;
}

void CPathTemplate::CParser::OnDollar() {
  switch (state_) {
    case State::Start:
    case State::Literal:
      AddLiteral();
      tokenOffset_ = offset_;
      state_ = State::TokenStart;
      break;
    case State::Escape:
      literal_ += '$';
      state_ = State::Literal;
      break;
    case State::TokenStart:
      // "$$" opens a token whose prefix is a dollar sign.
      prefix_ = '$';
      state_ = State::TokenName;
      break;
    case State::Format:
      if (formatEscape_) {
        format_ += '$';
        formatEscape_ = false;
        break;
      }
      AddFormat();
      AddToken();
      state_ = State::Literal;
      break;
    default:
      AddToken();
      state_ = State::Literal;
      break;
  }
}

void CPathTemplate::CParser::OnBackSlash() {
  switch (state_) {
    case State::Start:
    case State::Literal:
      state_ = State::Escape;
      break;
    case State::Escape:
      literal_ += '\\';
      state_ = State::Literal;
      break;
    case State::Format:
      if (formatEscape_) format_ += '\\';
      formatEscape_ = !formatEscape_;
      break;
    default:
      ThrowBackSlash();
  }
}

void CPathTemplate::CParser::OnDefault(char c, char next) {
  switch (state_) {
    case State::Start:
    case State::Literal:
      if (c == ':') ThrowColon();
      literal_ += c;
      state_ = State::Literal;
      break;
    case State::Escape:
      literal_ += c;
      state_ = State::Literal;
      break;
    case State::TokenStart:
      OnTokenStart(c, next);
      break;
    case State::Format:
      if (c == ':' && !formatEscape_) ThrowColon();
      format_ += c;
      formatEscape_ = false;
      break;
    default:
      OnTokenName(c, next);
      break;
  }
}

void CPathTemplate::CParser::OnTokenStart(char c, char) {
  if (c == ':') ThrowColon();
  if (IsAffix(c)) {
    prefix_ = c;
  } else {
    name_ += c;
  }
  state_ = State::TokenName;
}

void CPathTemplate::CParser::OnTokenName(char c, char next) {
  if (c == ':') {
    hasFormat_ = true;
    state_ = State::Format;
  } else if (next == '$' && IsAffix(c)) {
    suffix_ = c;
    state_ = State::TokenEndPending;
  } else {
    name_ += c;
  }
}

void CPathTemplate::CParser::OnEnd() {
  switch (state_) {
    case State::Escape:
      // A backslash at the very end has nothing to escape: it stays.
      literal_ += '\\';
      [[fallthrough]];
    case State::Literal:
      AddLiteral();
      break;
    case State::Start:
      break;
    default:
      throw ResultError("Closing $ for token '%s' is missing", name_.c_str());
  }
  state_ = State::End;
}

void CPathTemplate::CParser::AddLiteral() {
  if (literal_.empty()) return;
  RObject<CString> text(new CString(literal_.c_str(), static_cast<int>(literal_.size())));
  RObject<CSyntaxElement> element(new CStringLiteral(text));
  tree_->Add(element);
  literal_.clear();
}

void CPathTemplate::CParser::AddFormat() {
  // The text collected since the ":" becomes the format of the token being built.
  hasFormat_ = true;
  formatEscape_ = false;
}

void CPathTemplate::CParser::AddToken() {
  if (!IsValidToken(name_.c_str())) throw ResultError("Unknown Token '%s' at offset %d", name_.c_str(), tokenOffset_);
  RObject<CString> name(new CString(name_.c_str()));
  RObject<CString> format(hasFormat_ ? new CString(format_.c_str(), static_cast<int>(format_.size())) : nullptr);
  RObject<CSyntaxElement> token(new CToken(name, format, prefix_, hasFormat_ ? 0 : suffix_));
  tree_->Add(token);
  name_.clear();
  format_.clear();
  hasFormat_ = false;
  prefix_ = 0;
  suffix_ = 0;
}

[[noreturn]] void CPathTemplate::CParser::ThrowColon() {
  throw ResultNotSupported("invalid char ':' at offset %d, use ':' to separate token from format ($segment:_%%d_$",
                           offset_);
}

[[noreturn]] void CPathTemplate::CParser::ThrowBackSlash() {
  throw ResultNotSupported("invalid char '\\' at offset %d, '' only allowed in format part", offset_);
}

}  // namespace Corvane::Mox
