#include "System/Text/DirectionalString.h"

#include <optional>
#include <string_view>

#include "System/Collections/List.h"

namespace Corvane::Mox {

namespace {

struct CodePointRange {
  wchar_t first;
  wchar_t last;
};

// Hebrew, Arabic, Arabic Supplement, Arabic Extended-A, and the Hebrew and
// Arabic presentation forms.
constexpr CodePointRange kRightToLeftRanges[] = {
    {0x0590, 0x05FF}, {0x0600, 0x06FF}, {0x0750, 0x077F}, {0x08A0, 0x08FF},
    {0xFB1D, 0xFB4F}, {0xFB50, 0xFDFF}, {0xFE70, 0xFEFF},
};

// RIGHT-TO-LEFT EMBEDDING, OVERRIDE, ISOLATE, MARK and ARABIC LETTER MARK.
constexpr wchar_t kRightToLeftMarks[] = {0x202B, 0x202E, 0x2067, 0x200F, 0x061C};

// LEFT-TO-RIGHT EMBEDDING, OVERRIDE, ISOLATE and MARK.
constexpr wchar_t kLeftToRightMarks[] = {0x202A, 0x202D, 0x2066, 0x200E};

// ASCII punctuation and space that take the direction of their surroundings.
constexpr std::wstring_view kNeutrals = L" !\"#$%&'()*+,-./:;<=>?@[\\]^_{|}";

template <std::size_t N>
bool IsOneOf(wchar_t c, const wchar_t (&set)[N]) {
  for (wchar_t m : set)
    if (c == m) return true;
  return false;
}

bool IsAsciiLetterOrDigit(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

}  // namespace

CDirectionalString::CDirectionalString(const wchar_t* text, TextDirection direction)
    : CString(text), direction_(direction) {}

CDirectionalString::CDirectionalString(CString* text, TextDirection direction)
    : CString(text ? text->GetChars() : nullptr), direction_(direction) {}

CDirectionalString::CDirectionalString(const wchar_t* text, int count, TextDirection direction)
    : CString(text, count), direction_(direction) {}

bool CDirectionalString::IsStrongRTLChar(wchar_t c) {
  for (const CodePointRange& range : kRightToLeftRanges)
    if (c >= range.first && c <= range.last) return true;
  return IsOneOf(c, kRightToLeftMarks);
}

bool CDirectionalString::IsWeakDirectionalChar(wchar_t c) {
  return c != 0 && kNeutrals.find(c) != std::wstring_view::npos;
}

bool CDirectionalString::IsStrongLTRChar(wchar_t c) {
  if (IsAsciiLetterOrDigit(c) || (c >= 0x00C0 && c <= 0x02B8) || IsOneOf(c, kLeftToRightMarks)) return true;
  // Everything that is neither right-to-left nor neutral reads left to right.
  return !IsStrongRTLChar(c) && !IsWeakDirectionalChar(c);
}

CList<CDirectionalString>* CDirectionalString::GetBidiStrings(CString* text) {
  RObject<CList<CDirectionalString>> runs(new CList<CDirectionalString>());
  if (CString::IsNullOrEmpty(text)) return runs.Detach();
  const wchar_t* chars = text->GetWChars();
  int length = text->GetLength();

  auto emit = [&](int start, int end, TextDirection direction) {
    RObject<CDirectionalString> run(new CDirectionalString(chars + start, end - start, direction));
    Result added = runs->Add(run);
    if (added.Failed()) throw added;
  };

  std::optional<TextDirection> current;  // unset until the run's first strong character
  int start = 0;
  for (int i = 0; i < length; ++i) {
    if (IsWeakDirectionalChar(chars[i])) continue;
    TextDirection direction = IsStrongRTLChar(chars[i]) ? TextDirection::RightToLeft : TextDirection::LeftToRight;
    if (!current) {
      current = direction;
    } else if (direction != *current) {
      emit(start, i, *current);
      start = i;
      current = direction;
    }
  }
  emit(start, length, current.value_or(TextDirection::LeftToRight));
  return runs.Detach();
}

}  // namespace Corvane::Mox
