// CString: construction, the two cached forms, hashing, formatting, appending
// and equality. Searching, splitting and conversions live in TextOperations.cpp.
#include "System/Text.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <strings.h>

#include "System/Text/Utf8.h"

namespace Corvane::Mox {

namespace {

char* NewUtf8Copy(const char* text, std::size_t n) {
  char* copy = new char[n + 1];
  std::memcpy(copy, text, n);
  copy[n] = 0;
  return copy;
}

wchar_t* NewWideCopy(const wchar_t* text, int n) {
  auto* copy = new wchar_t[static_cast<std::size_t>(n) + 1];
  std::wmemcpy(copy, text, static_cast<std::size_t>(n));
  copy[n] = 0;
  return copy;
}

std::size_t BoundedLength(const wchar_t* text, int count) {
  std::size_t n = 0;
  while (static_cast<int>(n) < count && text[n] != 0) ++n;
  return n;
}

}  // namespace

CString::CString() : CObject(TypeCode), length_(0), chars_(NewUtf8Copy("", 0)), wchars_(nullptr) {}

CString::CString(const char* utf8) : CObject(TypeCode), length_(0), chars_(nullptr), wchars_(nullptr) {
  InitFromUtf8(utf8, utf8 ? std::strlen(utf8) : 0);
}

CString::CString(const char* utf8, int count) : CObject(TypeCode), length_(0), chars_(nullptr), wchars_(nullptr) {
  InitFromUtf8(utf8, count > 0 && utf8 ? static_cast<std::size_t>(count) : 0);
}

CString::CString(const char* a, const char* b) : CObject(TypeCode), length_(0), chars_(nullptr), wchars_(nullptr) {
  std::size_t na = a ? std::strlen(a) : 0;
  std::size_t nb = b ? std::strlen(b) : 0;
  std::string joined;
  joined.reserve(na + nb);
  if (a) joined.append(a, na);
  if (b) joined.append(b, nb);
  InitFromUtf8(joined.data(), joined.size());
}

CString::CString(const wchar_t* text) : CObject(TypeCode), length_(0), chars_(nullptr), wchars_(nullptr) {
  InitFromWide(text, text ? static_cast<int>(std::wcslen(text)) : 0);
}

CString::CString(const wchar_t* text, int count)
    : CObject(TypeCode), length_(0), chars_(nullptr), wchars_(nullptr) {
  InitFromWide(text, text && count > 0 ? static_cast<int>(BoundedLength(text, count)) : 0);
}

CString::CString(const wchar_t* a, const wchar_t* b)
    : CObject(TypeCode), length_(0), chars_(nullptr), wchars_(nullptr) {
  std::wstring joined;
  if (a) joined += a;
  if (b) joined += b;
  InitFromWide(joined.c_str(), static_cast<int>(joined.size()));
}

CString::CString(int length, char* chars, wchar_t* wchars)
    : CObject(TypeCode), length_(length), chars_(chars), wchars_(wchars) {}

CString* CString::Adopt(int length, char* chars, wchar_t* wchars) { return new CString(length, chars, wchars); }

CString::~CString() {
  delete[] chars_.load(std::memory_order_relaxed);
  delete[] wchars_.load(std::memory_order_relaxed);
}

void CString::InitFromUtf8(const char* utf8, std::size_t byteCount) {
  int codePoints = 0;
  std::size_t valid = utf8 ? Utf8::Validate(utf8, byteCount, codePoints) : 0;
  length_ = codePoints;
  chars_.store(NewUtf8Copy(utf8 ? utf8 : "", valid), std::memory_order_relaxed);
}

void CString::InitFromWide(const wchar_t* text, int count) {
  int valid = 0;
  if (text) Utf8::EncodedLength(text, count, valid);
  length_ = valid;
  wchars_.store(NewWideCopy(text ? text : L"", valid), std::memory_order_relaxed);
}

const char* CString::GetChars() const {
  char* chars = chars_.load(std::memory_order_acquire);
  if (chars) return chars;
  const wchar_t* wide = wchars_.load(std::memory_order_acquire);
  int valid = 0;
  std::size_t n = Utf8::EncodedLength(wide, length_, valid);
  char* built = new char[n + 1];
  built[Utf8::Encode(wide, valid, built)] = 0;
  if (chars_.compare_exchange_strong(chars, built, std::memory_order_acq_rel)) return built;
  delete[] built;
  return chars;
}

const wchar_t* CString::GetWChars() const {
  wchar_t* wide = wchars_.load(std::memory_order_acquire);
  if (wide) return wide;
  auto* built = new wchar_t[static_cast<std::size_t>(length_) + 1];
  Utf8::Decode(chars_.load(std::memory_order_acquire), length_, built);
  built[length_] = 0;
  if (wchars_.compare_exchange_strong(wide, built, std::memory_order_acq_rel)) return built;
  delete[] built;
  return wide;
}

char CString::GetChar(int index) const {
  const char* chars = GetChars();
  if (index < 0 || static_cast<std::size_t>(index) >= std::strlen(chars)) return 0;
  return chars[index];
}

wchar_t CString::GetWChar(int index) const {
  if (index < 0 || index >= length_) return 0;
  return GetWChars()[index];
}

int CString::GetHashCode() const {
  // Bytes are taken as signed and right shifts are arithmetic: stored hash
  // values of non-ASCII text depend on exactly this arithmetic.
  std::uint32_t h = 0;
  for (const char* p = GetChars(); *p; ++p) {
    h += static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(*p)));
    h += h << 10;
    h ^= static_cast<std::uint32_t>(static_cast<std::int32_t>(h) >> 6);
  }
  h += h << 3;
  h ^= static_cast<std::uint32_t>(static_cast<std::int32_t>(h) >> 11);
  h += h << 15;
  return static_cast<int>(h);
}

CString* CString::WithString(const char* utf8) { return new CString(utf8); }

CString* CString::WithFormat(const char* format, ...) {
  va_list args;
  va_start(args, format);
  CString* s = WithArgList(format, args);
  va_end(args);
  return s;
}

CString* CString::WithArgList(const char* format, va_list args) {
  if (!format) return nullptr;
  va_list measure;
  va_copy(measure, args);
  int n = std::vsnprintf(nullptr, 0, format, measure);
  va_end(measure);
  if (n < 0) return nullptr;
  std::string text(static_cast<std::size_t>(n), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, args);
  auto* s = new CString();
  delete[] s->chars_.exchange(nullptr);
  s->InitFromUtf8(text.data(), text.size());
  return s;
}

CString* CString::Clone() const { return new CString(GetChars()); }

CString* CString::Concat(CString* a, CString* b) {
  return new CString(a ? a->GetChars() : nullptr, b ? b->GetChars() : nullptr);
}

CString* CString::Concat(CString* a, const char* b) { return new CString(a ? a->GetChars() : nullptr, b); }

CString* CString::Concat(CString* a, const wchar_t* b) { return new CString(a ? a->GetWChars() : nullptr, b); }

bool CString::IsNullOrEmpty(CString* s) { return !s || s->length_ == 0; }

int CString::GetLength(const char* utf8) {
  if (!utf8) return 0;
  int codePoints = 0;
  Utf8::Validate(utf8, std::strlen(utf8), codePoints);
  return codePoints;
}

int CString::GetLength(const wchar_t* text) { return text ? static_cast<int>(std::wcslen(text)) : 0; }

wchar_t* CString::GetWChars(const char* utf8) {
  if (!utf8) utf8 = "";
  int codePoints = 0;
  Utf8::Validate(utf8, std::strlen(utf8), codePoints);
  auto* out = new wchar_t[static_cast<std::size_t>(codePoints) + 1];
  Utf8::Decode(utf8, codePoints, out);
  out[codePoints] = 0;
  return out;
}

char* CString::GetChars(const wchar_t* text) {
  if (!text) text = L"";
  int valid = 0;
  std::size_t n = Utf8::EncodedLength(text, static_cast<int>(std::wcslen(text)), valid);
  char* out = new char[n + 1];
  out[Utf8::Encode(text, valid, out)] = 0;
  return out;
}

CString* CString::Append(char c) const {
  return Append(static_cast<wchar_t>(static_cast<unsigned char>(c)));
}

CString* CString::Append(wchar_t c) const {
  char encoded[5] = {};
  Utf8::EncodeOne(c, encoded);
  return new CString(GetChars(), encoded);
}

CString* CString::Append(const char* text) const { return new CString(GetChars(), text); }

CString* CString::Append(const wchar_t* text) const { return new CString(GetWChars(), text); }

CString* CString::Append(CString* text) const { return new CString(GetChars(), text ? text->GetChars() : nullptr); }

bool CString::Equals(const char* text) const { return text && std::strcmp(GetChars(), text) == 0; }

bool CString::Equals(const wchar_t* text) const { return text && std::wcscmp(GetWChars(), text) == 0; }

bool CString::Equals(CString* text) const { return text && std::strcmp(GetChars(), text->GetChars()) == 0; }

bool CString::EqualsIgnoreCase(const char* text) const { return text && strcasecmp(GetChars(), text) == 0; }

bool CString::EqualsIgnoreCase(CString* text) const { return text && strcasecmp(GetChars(), text->GetChars()) == 0; }

}  // namespace Corvane::Mox
