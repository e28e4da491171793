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

// Cuts a UTF-8 buffer of n bytes at its first invalid sequence (writing the
// terminator there) and returns the number of code points kept.
int TerminateValidUtf8(char* buffer, std::size_t n) {
  int codePoints = 0;
  buffer[Utf8::Validate(buffer, n, codePoints)] = 0;
  return codePoints;
}

// Cuts a code-point buffer of n units at its first value that is not a
// Unicode scalar value and returns the number kept.
int TerminateValidWide(wchar_t* buffer, int n) {
  int valid = 0;
  Utf8::EncodedLength(buffer, n, valid);
  buffer[valid] = 0;
  return valid;
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
  char* joined = new char[na + nb + 1];
  if (na) std::memcpy(joined, a, na);
  if (nb) std::memcpy(joined + na, b, nb);
  length_ = TerminateValidUtf8(joined, na + nb);
  chars_.store(joined, std::memory_order_relaxed);
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
  std::size_t na = a ? std::wcslen(a) : 0;
  std::size_t nb = b ? std::wcslen(b) : 0;
  auto* joined = new wchar_t[na + nb + 1];
  if (na) std::wmemcpy(joined, a, na);
  if (nb) std::wmemcpy(joined + na, b, nb);
  length_ = TerminateValidWide(joined, static_cast<int>(na + nb));
  wchars_.store(joined, std::memory_order_relaxed);
}

CString::CString(int length, char* chars, wchar_t* wchars)
    : CObject(TypeCode), length_(length), chars_(chars), wchars_(wchars) {}

CString* CString::Adopt(int length, char* chars, wchar_t* wchars) { return new CString(length, chars, wchars); }

CString* CString::AdoptUtf8(char* buffer, std::size_t byteCount) {
  return new CString(TerminateValidUtf8(buffer, byteCount), buffer, nullptr);
}

CString* CString::AdoptWide(wchar_t* buffer, int count) {
  return new CString(TerminateValidWide(buffer, count), nullptr, buffer);
}

CString* CString::CopyWide(const wchar_t* text, int count) {
  return new CString(count, nullptr, NewWideCopy(text, count));
}

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
  // Byte access to the UTF-8 form; only the bytes up to the index are scanned
  // for the terminator.
  const char* chars = GetChars();
  if (index < 0 || std::memchr(chars, 0, static_cast<std::size_t>(index) + 1) != nullptr) return 0;
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
  // Most formatted texts are short: format once into the stack and copy, and
  // only format a second time when the text did not fit.
  char local[256];
  va_list again;
  va_copy(again, args);
  int n = std::vsnprintf(local, sizeof local, format, args);
  if (n < 0) {
    va_end(again);
    return nullptr;
  }
  auto size = static_cast<std::size_t>(n);
  char* text = new char[size + 1];
  if (size < sizeof local)
    std::memcpy(text, local, size + 1);
  else
    std::vsnprintf(text, size + 1, format, again);
  va_end(again);
  return AdoptUtf8(text, size);
}

CString* CString::Clone() const {
  const char* chars = GetChars();
  return Adopt(length_, NewUtf8Copy(chars, std::strlen(chars)), nullptr);
}

CString* CString::Concat(CString* a, CString* b) {
  if (!a) return b ? b->Clone() : new CString();
  return a->Append(b);
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

CString* CString::AppendUtf8(const char* text, std::size_t byteCount, int codePoints) const {
  // Both parts are known to be valid UTF-8 with a known length, so the joined
  // text needs no second validation pass.
  const char* chars = GetChars();
  std::size_t own = std::strlen(chars);
  char* joined = new char[own + byteCount + 1];
  std::memcpy(joined, chars, own);
  std::memcpy(joined + own, text, byteCount);
  joined[own + byteCount] = 0;
  return Adopt(length_ + codePoints, joined, nullptr);
}

CString* CString::Append(char c) const {
  return Append(static_cast<wchar_t>(static_cast<unsigned char>(c)));
}

CString* CString::Append(wchar_t c) const {
  char encoded[4];
  int n = Utf8::EncodeOne(c, encoded);
  return AppendUtf8(encoded, static_cast<std::size_t>(n), n > 0 ? 1 : 0);
}

CString* CString::Append(const char* text) const {
  if (!text) return AppendUtf8("", 0, 0);
  int codePoints = 0;
  std::size_t valid = Utf8::Validate(text, std::strlen(text), codePoints);
  return AppendUtf8(text, valid, codePoints);
}

CString* CString::Append(const wchar_t* text) const { return new CString(GetWChars(), text); }

CString* CString::Append(CString* text) const {
  if (!text) return AppendUtf8("", 0, 0);
  const char* chars = text->GetChars();
  return AppendUtf8(chars, std::strlen(chars), text->length_);
}

bool CString::Equals(const char* text) const { return text && std::strcmp(GetChars(), text) == 0; }

bool CString::Equals(const wchar_t* text) const { return text && std::wcscmp(GetWChars(), text) == 0; }

bool CString::Equals(CString* text) const {
  if (!text) return false;
  if (text == this) return true;
  // Equal texts have equal lengths; the length is known without a scan.
  return text->length_ == length_ && std::strcmp(GetChars(), text->GetChars()) == 0;
}

bool CString::EqualsIgnoreCase(const char* text) const { return text && strcasecmp(GetChars(), text) == 0; }

bool CString::EqualsIgnoreCase(CString* text) const { return text && strcasecmp(GetChars(), text->GetChars()) == 0; }

}  // namespace Corvane::Mox
