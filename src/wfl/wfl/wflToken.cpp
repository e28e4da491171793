#include "wfl/wfl/wflToken.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox::WFL {

namespace {

struct Row {
  const char* name;
  const char* spelling;
  wflTokenKind kind;
};

constexpr Row kRows[] = {
#define WFL_TOKEN(Name, Spelling, Kind) {#Name, Spelling, wflTokenKind::Kind},
#include "wfl/wfl/wflTokens.def"
#undef WFL_TOKEN
};

constexpr int kFirst = wflTokenTypeBefore + 1;

const Row* Find(int type) {
  if (type < kFirst || type >= wflTokenTypeEnd) return nullptr;
  return &kRows[type - kFirst];
}

}  // namespace

const char* wflTokenInfo::GetName(int type) {
  static const char* const reserved[] = {"<invalid>", "<EOR>", "<DOWN>", "<UP>"};
  if (type == TOKEN_EOF) return "EOF";
  if (type >= 0 && type < kFirst) return reserved[type];
  const Row* row = Find(type);
  return row ? row->name : "<invalid>";
}

const char* wflTokenInfo::GetSpelling(int type) {
  const Row* row = Find(type);
  return row ? row->spelling : "";
}

wflTokenKind wflTokenInfo::GetKind(int type) {
  const Row* row = Find(type);
  return row ? row->kind : wflTokenKind::Fragment;
}

int wflTokenInfo::FindKeyword(const char* text, int length) {
  for (int type = kFirst; type < wflTokenTypeEnd; ++type) {
    const Row& row = kRows[type - kFirst];
    if (row.kind != wflTokenKind::Keyword) continue;
    if (static_cast<int>(std::strlen(row.spelling)) == length && std::memcmp(row.spelling, text, length) == 0)
      return type;
  }
  return TOKEN_INVALID;
}

std::string wflTokenInfo::Describe(int type) {
  wflTokenKind kind = GetKind(type);
  if (kind == wflTokenKind::Keyword || kind == wflTokenKind::Operator) return std::string("'") + GetSpelling(type) + "'";
  return GetName(type);
}

CToken::CToken(int type, const char* text, int count, int line, int position, int offset)
    : CObject(TypeCode), tokenType_(type), text_(text ? text : "", text && count > 0 ? count : 0), line_(line),
      position_(position), offset_(offset) {}

CToken* CToken::CreateMissing(int type, const CToken* at) {
  std::string text = "<missing " + wflTokenInfo::Describe(type) + ">";
  return new CToken(type, text.c_str(), static_cast<int>(text.size()), at ? at->line_ : -1, at ? at->position_ : -1,
                    at ? at->offset_ : -1);
}

CString* CToken::ToString() const { return new CString(text_.c_str()); }

}  // namespace Corvane::Mox::WFL
