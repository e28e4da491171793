// CString: substrings, replacement, trimming, case mapping, searching,
// pattern matching, number parsing, splitting and joining, and the
// hexadecimal byte conversions. Construction and the cached forms live in
// Text.cpp.
//
// Searches run on the code-point form so that positions are characters; the
// case-sensitive substring search runs on the UTF-8 form instead, where a
// byte match of valid UTF-8 always starts on a character boundary.
#include <algorithm>
#include <cstring>
#include <cwchar>
#include <iterator>
#include "System/Types.h"
#include <memory>
// GCC 12 reports a false maybe-uninitialized inside <regex> when the
// sanitizers are on; the library's own code keeps the warning.
MOX_SUPPRESS_MAYBE_UNINITIALIZED_BEGIN
#include <regex>
MOX_SUPPRESS_MAYBE_UNINITIALIZED_END
#include <string_view>
#include <vector>

#include "System/ByteArray.h"
#include "System/Collections/Array.h"
#include "System/Collections/List.h"
#include "System/Text.h"
#include "System/Text/CharacterClass.h"
#include "System/Text/Utf8.h"

namespace Corvane::Mox {

namespace {

using CharacterClass::ToLower;

// A UTF-8 argument converted to code points, on the stack when it is short.
class WideArgument {
 public:
  explicit WideArgument(const char* utf8) {
    if (!utf8) return;
    int count = 0;
    Utf8::Validate(utf8, std::strlen(utf8), count);
    wchar_t* buffer = local_;
    if (count >= static_cast<int>(std::size(local_))) {
      heap_ = std::make_unique<wchar_t[]>(static_cast<std::size_t>(count) + 1);
      buffer = heap_.get();
    }
    Utf8::Decode(utf8, count, buffer);
    buffer[count] = 0;
    text_ = buffer;
  }
  WideArgument(const WideArgument&) = delete;
  WideArgument& operator=(const WideArgument&) = delete;

  // Null when the argument was null.
  const wchar_t* Get() const { return text_; }

 private:
  wchar_t local_[64];
  std::unique_ptr<wchar_t[]> heap_;
  const wchar_t* text_ = nullptr;
};

inline std::wstring_view View(const CString* s) {
  return {s->GetWChars(), static_cast<std::size_t>(s->GetLength())};
}

inline wchar_t Widen(char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); }

// Character position of a byte offset into valid UTF-8: the number of lead
// (non-continuation) bytes before it.
int CharacterIndex(const char* text, std::size_t byteOffset) {
  int index = 0;
  for (std::size_t i = 0; i < byteOffset; ++i)
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) ++index;
  return index;
}

// Both views compared character by character, lower-cased when asked.
bool SameText(std::wstring_view a, std::wstring_view b, bool caseSensitive) {
  if (a.size() != b.size()) return false;
  if (caseSensitive) return a == b;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (ToLower(a[i]) != ToLower(b[i])) return false;
  return true;
}

// Copy of text with every non-overlapping occurrence of from replaced by to,
// scanning left to right, as a new[] buffer; count receives its length.
template <class Ch>
Ch* ReplaceAll(std::basic_string_view<Ch> text, std::basic_string_view<Ch> from, std::basic_string_view<Ch> to,
               std::size_t& count) {
  std::vector<std::size_t> hits;
  for (std::size_t p = text.find(from); p != text.npos; p = text.find(from, p + from.size())) hits.push_back(p);
  count = text.size() - hits.size() * from.size() + hits.size() * to.size();
  Ch* out = new Ch[count + 1];
  Ch* cursor = out;
  std::size_t done = 0;
  for (std::size_t hit : hits) {
    cursor = std::copy(text.data() + done, text.data() + hit, cursor);
    cursor = std::copy(to.begin(), to.end(), cursor);
    done = hit + from.size();
  }
  cursor = std::copy(text.data() + done, text.data() + text.size(), cursor);
  *cursor = 0;
  return out;
}

}  // namespace

// --- Substrings and new strings ----------------------------------------------

CString* CString::Substring(int start) const {
  if (start < 0 || start > length_) return nullptr;
  return CopyWide(GetWChars() + start, length_ - start);
}

CString* CString::Substring(int start, int count) const {
  if (start < 0 || count < 0 || static_cast<long long>(start) + count > length_) return nullptr;
  return CopyWide(GetWChars() + start, count);
}

CString* CString::Replace(char oldChar, char newChar) const {
  // Single bytes are Latin-1 characters, as in Append(char). ASCII bytes never
  // occur inside a multi-byte sequence, so ASCII pairs are swapped in place
  // in the UTF-8 form without decoding it. No character is 0.
  if (oldChar == 0) return Clone();
  if (static_cast<unsigned char>(oldChar) >= 0x80 || static_cast<unsigned char>(newChar) >= 0x80 || newChar == 0)
    return Replace(Widen(oldChar), Widen(newChar));
  const char* chars = GetChars();
  std::size_t n = std::strlen(chars);
  char* copy = new char[n + 1];
  for (std::size_t i = 0; i <= n; ++i) copy[i] = chars[i] == oldChar ? newChar : chars[i];
  return Adopt(length_, copy, nullptr);
}

CString* CString::Replace(wchar_t oldChar, wchar_t newChar) const {
  auto* copy = new wchar_t[static_cast<std::size_t>(length_) + 1];
  const wchar_t* wide = GetWChars();
  for (int i = 0; i <= length_; ++i) copy[i] = wide[i] == oldChar && i < length_ ? newChar : wide[i];
  // A zero or an invalid replacement character ends the text there.
  return AdoptWide(copy, static_cast<int>(std::wcslen(copy)));
}

CString* CString::Replace(const char* oldText, const char* newText) const {
  if (!oldText || !*oldText) return Clone();
  const char* chars = GetChars();
  std::size_t count = 0;
  char* replaced = ReplaceAll<char>(chars, oldText, newText ? newText : "", count);
  return AdoptUtf8(replaced, count);
}

CString* CString::Replace(const wchar_t* oldText, const wchar_t* newText) const {
  if (!oldText || !*oldText) return Clone();
  std::size_t count = 0;
  wchar_t* replaced = ReplaceAll<wchar_t>(View(this), oldText, newText ? newText : L"", count);
  return AdoptWide(replaced, static_cast<int>(count));
}

CString* CString::TrimLeft() const {
  const wchar_t* wide = GetWChars();
  int start = 0;
  while (start < length_ && CharacterClass::IsSpace(wide[start])) ++start;
  return CopyWide(wide + start, length_ - start);
}

CString* CString::TrimRight() const {
  const wchar_t* wide = GetWChars();
  int end = length_;
  while (end > 0 && CharacterClass::IsSpace(wide[end - 1])) --end;
  return CopyWide(wide, end);
}

CString* CString::Trim() const {
  const wchar_t* wide = GetWChars();
  int start = 0;
  int end = length_;
  while (start < end && CharacterClass::IsSpace(wide[start])) ++start;
  while (end > start && CharacterClass::IsSpace(wide[end - 1])) --end;
  return CopyWide(wide + start, end - start);
}

CString* CString::Trim(const wchar_t* set) const {
  const wchar_t* wide = GetWChars();
  int start = 0;
  int end = length_;
  if (set) {
    // Characters of a string are never 0, so wcschr cannot match the terminator.
    while (start < end && std::wcschr(set, wide[start])) ++start;
    while (end > start && std::wcschr(set, wide[end - 1])) --end;
  }
  return CopyWide(wide + start, end - start);
}

CString* CString::ToLower() const {
  auto* copy = new wchar_t[static_cast<std::size_t>(length_) + 1];
  const wchar_t* wide = GetWChars();
  for (int i = 0; i < length_; ++i) copy[i] = CharacterClass::ToLower(wide[i]);
  return AdoptWide(copy, length_);
}

CString* CString::ToUpper() const {
  auto* copy = new wchar_t[static_cast<std::size_t>(length_) + 1];
  const wchar_t* wide = GetWChars();
  for (int i = 0; i < length_; ++i) copy[i] = CharacterClass::ToUpper(wide[i]);
  return AdoptWide(copy, length_);
}

// --- Comparison and classes --------------------------------------------------

int CString::Compare(CString* a, CString* b) {
  if (!a) return b ? -1 : 0;
  if (!b) return 1;
  const wchar_t* wa = a->GetWChars();
  const wchar_t* wb = b->GetWChars();
  int common = a->length_ < b->length_ ? a->length_ : b->length_;
  for (int i = 0; i < common; ++i) {
    if (wa[i] == wb[i]) continue;  // equal characters need no case mapping
    int ca = CharacterClass::ToLower(wa[i]);
    int cb = CharacterClass::ToLower(wb[i]);
    if (ca != cb) return ca - cb;
  }
  // The end of the shorter text compares as character 0.
  if (a->length_ > common) return CharacterClass::ToLower(wa[common]);
  if (b->length_ > common) return -CharacterClass::ToLower(wb[common]);
  return 0;
}

bool CString::IsNullOrWhiteSpace(CString* s) { return !s || s->IsWhiteSpace(); }

bool CString::IsWhiteSpace() const {
  const wchar_t* wide = GetWChars();
  for (int i = 0; i < length_; ++i)
    if (!CharacterClass::IsSpace(wide[i])) return false;
  return true;
}

bool CString::IsWhiteSpace(int index) const { return CharacterClass::IsSpace(GetWChar(index)); }

bool CString::IsDigit(int index) const {
  wchar_t c = GetWChar(index);
  return c >= 0 && c <= 0xFF && CharacterClass::IsDigit(c);
}

// --- Searching ---------------------------------------------------------------

bool CString::Contains(const char* text) const { return IndexOf(text) >= 0; }

bool CString::Contains(const wchar_t* text) const { return IndexOf(text) >= 0; }

bool CString::ContainsIgnoreCase(const char* text) const { return IndexOfIgnoreCase(text) >= 0; }

bool CString::ContainsIgnoreCase(const wchar_t* text) const { return IndexOfIgnoreCase(text) >= 0; }

int CString::IndexOf(char c) const { return IndexOf(Widen(c), 0); }

int CString::IndexOf(char c, int from) const { return IndexOf(Widen(c), from); }

int CString::IndexOf(wchar_t c) const { return IndexOf(c, 0); }

int CString::IndexOf(wchar_t c, int from) const {
  if (from < 0 || from >= length_ || c == 0) return -1;
  const wchar_t* wide = GetWChars();
  const wchar_t* hit = std::wmemchr(wide + from, c, static_cast<std::size_t>(length_ - from));
  return hit ? static_cast<int>(hit - wide) : -1;
}

int CString::IndexOf(const char* text) const {
  if (!text) return -1;
  // Like every conversion of UTF-8 input, the needle ends at an invalid
  // sequence; a stray byte could otherwise match inside a character.
  int needleLength = 0;
  std::string_view needle(text, Utf8::Validate(text, std::strlen(text), needleLength));
  std::string_view chars(GetChars());
  std::size_t offset = chars.find(needle);
  if (offset == std::string_view::npos) return -1;
  // Pure ASCII text has as many bytes as characters.
  return chars.size() == static_cast<std::size_t>(length_) ? static_cast<int>(offset)
                                                           : CharacterIndex(chars.data(), offset);
}

int CString::IndexOf(const wchar_t* text) const {
  if (!text) return -1;
  std::size_t hit = View(this).find(text);
  return hit == std::wstring_view::npos ? -1 : static_cast<int>(hit);
}

int CString::IndexOf(CString* text) const { return text ? IndexOf(text->GetChars()) : -1; }

int CString::IndexOfIgnoreCase(const char* text) const {
  WideArgument wide(text);
  return IndexOfIgnoreCase(wide.Get());
}

int CString::IndexOfIgnoreCase(const wchar_t* text) const {
  if (!text) return -1;
  std::wstring_view needle(text);
  std::wstring_view hay = View(this);
  if (needle.size() > hay.size()) return -1;
  for (std::size_t i = 0; i + needle.size() <= hay.size(); ++i)
    if (SameText(hay.substr(i, needle.size()), needle, false)) return static_cast<int>(i);
  return -1;
}

int CString::IndexOfAny(const char* set, int from) const {
  WideArgument wide(set);
  return IndexOfAny(wide.Get(), from);
}

int CString::IndexOfAny(const wchar_t* set, int from) const {
  if (!set || from < 0 || from >= length_) return -1;
  const wchar_t* wide = GetWChars();
  for (int i = from; i < length_; ++i)
    if (std::wcschr(set, wide[i])) return i;
  return -1;
}

int CString::LastIndexOf(char c) const { return LastIndexOf(Widen(c), length_ - 1); }

int CString::LastIndexOf(char c, int from) const { return LastIndexOf(Widen(c), from); }

int CString::LastIndexOf(wchar_t c) const { return LastIndexOf(c, length_ - 1); }

int CString::LastIndexOf(wchar_t c, int from) const {
  // Searches backwards from `from` (inclusive).
  if (from < 0 || from >= length_) return -1;
  const wchar_t* wide = GetWChars();
  for (int i = from; i >= 0; --i)
    if (wide[i] == c) return i;
  return -1;
}

bool CString::StartsWith(const char* prefix, bool caseSensitive) const {
  if (!prefix) return false;
  if (!caseSensitive) {
    WideArgument wide(prefix);
    return StartsWith(wide.Get(), false);
  }
  return std::strncmp(GetChars(), prefix, std::strlen(prefix)) == 0;
}

bool CString::StartsWith(const wchar_t* prefix, bool caseSensitive) const {
  if (!prefix) return false;
  std::wstring_view p(prefix);
  std::wstring_view text = View(this);
  return p.size() <= text.size() && SameText(text.substr(0, p.size()), p, caseSensitive);
}

bool CString::EndsWith(const char* suffix, bool caseSensitive) const {
  if (!suffix) return false;
  WideArgument wide(suffix);
  std::wstring_view s(wide.Get());
  std::wstring_view text = View(this);
  return s.size() <= text.size() && SameText(text.substr(text.size() - s.size()), s, caseSensitive);
}

bool CString::Matches(const char* pattern) const {
  if (!pattern) return false;
  // Matching on code points lets "." and character classes take whole
  // characters rather than UTF-8 bytes.
  WideArgument widePattern(pattern);
  std::wregex expression(widePattern.Get(), std::regex_constants::ECMAScript);
  std::wstring_view text = View(this);
  return std::regex_match(text.begin(), text.end(), expression);
}

bool CString::Matches(CString* pattern) const { return pattern && Matches(pattern->GetChars()); }

// --- Number parsing ----------------------------------------------------------

int CString::ToInt(int base) const { return static_cast<int>(std::wcstol(GetWChars(), nullptr, base)); }

unsigned int CString::ToUInt(int base) const {
  return static_cast<unsigned int>(std::wcstoul(GetWChars(), nullptr, base));
}

long long CString::ToInt64(int base) const { return std::wcstoll(GetWChars(), nullptr, base); }

unsigned long long CString::ToUInt64(int base) const { return std::wcstoull(GetWChars(), nullptr, base); }

double CString::ToDouble() const { return std::wcstod(GetWChars(), nullptr); }

namespace {

int HexDigitValue(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

// The byte of a four-character code at text[i], advancing i past it: a "%XX"
// escape (for spaces, zeros and other bytes awkward in text) or a plain
// character, of which a code keeps the low byte.
unsigned int NextCodeByte(const wchar_t* text, int length, int& i) {
  if (text[i] == L'%' && i + 2 < length) {
    int high = HexDigitValue(text[i + 1]);
    int low = HexDigitValue(text[i + 2]);
    if (high >= 0 && low >= 0) {
      i += 3;
      return static_cast<unsigned int>(high << 4 | low);
    }
  }
  return static_cast<unsigned int>(text[i++]) & 0xFF;
}

}  // namespace

unsigned int CString::ToFour() const {
  const wchar_t* wide = GetWChars();
  unsigned int code = 0;
  int i = 0;
  // Missing characters are zero bytes; the first lands in the top byte.
  for (int slot = 0; slot < 4; ++slot) code = code << 8 | (i < length_ ? NextCodeByte(wide, length_, i) : 0);
  return code;
}

// --- Splitting and joining ---------------------------------------------------

CArray<CString>* CString::Split(wchar_t separator) const {
  std::wstring_view text = View(this);
  auto pieces = static_cast<int>(std::count(text.begin(), text.end(), separator)) + 1;
  RObject<CArray<CString>> array(new CArray<CString>(pieces));
  std::size_t start = 0;
  for (int i = 0; i < pieces; ++i) {
    std::size_t end = i + 1 < pieces ? text.find(separator, start) : text.size();
    RObject<CString> piece(CopyWide(text.data() + start, static_cast<int>(end - start)));
    array->Set(i, piece);
    start = end + 1;
  }
  return array.Detach();
}

CList<CString>* CString::Split(const char* separators) const {
  WideArgument set(separators);
  const wchar_t* separatorSet = set.Get() ? set.Get() : L"";
  std::wstring_view text = View(this);
  RObject<CList<CString>> list(new CList<CString>());
  auto add = [&](std::size_t start, std::size_t end) {
    RObject<CString> piece(CopyWide(text.data() + start, static_cast<int>(end - start)));
    Result added = list->Add(piece);
    if (added.Failed()) throw added;
  };
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!std::wcschr(separatorSet, text[i])) continue;
    // Empty pieces between separators are dropped...
    if (i > start) add(start, i);
    start = i + 1;
  }
  // ...but the remainder after the last separator is always kept.
  add(start, text.size());
  return list.Detach();
}

CString* CString::Join(const wchar_t* separator, CArray<CString>* array) {
  if (!separator || !array || array->GetCount() == 0) return new CString();
  RObject<CString> glue(new CString(separator));
  const char* glueChars = glue->GetChars();
  std::size_t glueBytes = std::strlen(glueChars);
  // First pass: hold the elements and measure; second pass: copy.
  std::vector<RObject<CString>> items(static_cast<std::size_t>(array->GetCount()));
  std::size_t bytes = glueBytes * (items.size() - 1);
  int length = glue->length_ * static_cast<int>(items.size() - 1);
  for (std::size_t i = 0; i < items.size(); ++i) {
    array->Get(static_cast<int>(i), items[i].Out());
    if (!items[i]) continue;  // a null element counts as empty text
    bytes += std::strlen(items[i]->GetChars());
    length += items[i]->length_;
  }
  char* joined = new char[bytes + 1];
  char* cursor = joined;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) cursor = std::copy(glueChars, glueChars + glueBytes, cursor);
    if (items[i]) cursor = stpcpy(cursor, items[i]->GetChars());
  }
  *cursor = 0;
  return Adopt(length, joined, nullptr);
}

// --- Hexadecimal bytes -------------------------------------------------------

CByteArray* CString::ToBytes(int count) const {
  if (count < 0) return nullptr;
  // The digits, left-padded with '0' to two per byte (or cut to that many).
  auto digits = static_cast<std::size_t>(count) * 2;
  const char* chars = GetChars();
  std::size_t n = strnlen(chars, digits);
  std::vector<char> text(digits - n, '0');
  text.insert(text.end(), chars, chars + n);

  RObject<CByteArray> bytes(new CByteArray(count, 1));
  unsigned char* out = bytes->GetData();
  for (std::size_t i = 0; i < digits; i += 2) {
    int high = HexDigitValue(Widen(text[i]));
    int low = HexDigitValue(Widen(text[i + 1]));
    if (high < 0 || low < 0) return nullptr;
    out[i / 2] = static_cast<unsigned char>(high << 4 | low);
  }
  return bytes.Detach();
}

CString* CString::FromBytes(CByteArray* bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  int n = bytes ? bytes->GetLength() : 0;
  char* text = new char[static_cast<std::size_t>(n) * 2 + 1];
  const unsigned char* data = n > 0 ? bytes->GetData() : nullptr;
  for (int i = 0; i < n; ++i) {
    text[2 * i] = kDigits[data[i] >> 4];
    text[2 * i + 1] = kDigits[data[i] & 0x0F];
  }
  text[2 * n] = 0;
  return Adopt(2 * n, text, nullptr);
}

}  // namespace Corvane::Mox
