#pragma once
// Case mapping and character classes for code points. The C locale that a
// process starts in only knows ASCII, so these use the platform's UTF-8
// character tables ("C.UTF-8") whatever the host's global locale is; when
// that locale is missing they fall back to the global one. ASCII is answered
// inline: it is most of the text and the hot loops of searching and
// comparing should not pay a call for it.

namespace Corvane::Mox::CharacterClass {

// The platform tables, for any code point.
wchar_t ToLowerFromTable(wchar_t c);
wchar_t ToUpperFromTable(wchar_t c);
bool IsSpaceFromTable(wchar_t c);
bool IsDigitFromTable(wchar_t c);

inline wchar_t ToLower(wchar_t c) {
  if (c < 0x80) return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c;
  return ToLowerFromTable(c);
}

inline wchar_t ToUpper(wchar_t c) {
  if (c < 0x80) return (c >= L'a' && c <= L'z') ? static_cast<wchar_t>(c - 32) : c;
  return ToUpperFromTable(c);
}

inline bool IsSpace(wchar_t c) {
  if (c < 0x80) return c == L' ' || (c >= L'\t' && c <= L'\r');
  return IsSpaceFromTable(c);
}

inline bool IsDigit(wchar_t c) {
  if (c < 0x80) return c >= L'0' && c <= L'9';
  return IsDigitFromTable(c);
}

}  // namespace Corvane::Mox::CharacterClass
