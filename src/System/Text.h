#pragma once
// CString: the library's immutable, reference-counted Unicode string. Text is
// kept as UTF-8 bytes and as 32-bit code points, each built on demand from the
// other and then cached. Every "changing" operation returns a new string owned
// by the caller.

#include <atomic>
#include <cstdarg>
#include <cstddef>

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CArray;
template <class T>
class CList;
class CByteArray;

class CString : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("text");

  CString();
  explicit CString(const char* utf8);
  CString(const char* utf8, int count);
  CString(const char* a, const char* b);
  explicit CString(const wchar_t* text);
  CString(const wchar_t* text, int count);
  CString(const wchar_t* a, const wchar_t* b);
  ~CString() override;

  // Factories (the caller owns the result).
  static CString* WithString(const char* utf8);
  static CString* WithFormat(const char* format, ...) MOX_PRINTF(1, 2);
  // printf rules on UTF-8 text; null when formatting fails.
  static CString* WithArgList(const char* format, va_list args);
  // Lower-case hexadecimal, two digits per byte.
  static CString* FromBytes(CByteArray* bytes);
  CString* Clone() const;

  static CString* Concat(CString* a, CString* b);
  static CString* Concat(CString* a, const char* b);
  static CString* Concat(CString* a, const wchar_t* b);
  // The elements with separator between them; null elements count as empty.
  static CString* Join(const wchar_t* separator, CArray<CString>* array);
  // Case-insensitive ordering by code point; null sorts first.
  static int Compare(CString* a, CString* b);
  static bool IsNullOrEmpty(CString* s);
  static bool IsNullOrWhiteSpace(CString* s);
  static int GetLength(const char* utf8);
  static int GetLength(const wchar_t* text);
  // Conversions into new arrays owned by the caller (delete[]).
  static wchar_t* GetWChars(const char* utf8);
  static char* GetChars(const wchar_t* text);

  int GetHashCode() const override;

  // Access.
  int GetLength() const { return length_; }
  const char* GetChars() const;
  const wchar_t* GetWChars() const;
  char GetChar(int index) const;
  wchar_t GetWChar(int index) const;
  bool IsEmpty() const { return length_ == 0; }
  bool IsWhiteSpace() const;
  bool IsWhiteSpace(int index) const;
  bool IsDigit(int index) const;

  // New strings.
  CString* Append(char c) const;
  CString* Append(wchar_t c) const;
  CString* Append(const char* text) const;
  CString* Append(const wchar_t* text) const;
  CString* Append(CString* text) const;
  CString* operator+(char c) const { return Append(c); }
  CString* operator+(wchar_t c) const { return Append(c); }
  CString* operator+(const char* text) const { return Append(text); }
  CString* operator+(const wchar_t* text) const { return Append(text); }
  CString* operator+(CString* text) const { return Append(text); }
  // Null when the range does not lie within the string.
  CString* Substring(int start) const;
  CString* Substring(int start, int count) const;
  CString* Replace(char oldChar, char newChar) const;
  CString* Replace(wchar_t oldChar, wchar_t newChar) const;
  // Non-overlapping occurrences, left to right; an empty old text copies.
  CString* Replace(const char* oldText, const char* newText) const;
  CString* Replace(const wchar_t* oldText, const wchar_t* newText) const;
  CString* TrimLeft() const;
  CString* TrimRight() const;
  CString* Trim() const;
  CString* Trim(const wchar_t* set) const;
  CString* ToLower() const;
  CString* ToUpper() const;
  // One piece more than there are separators; empty pieces are kept.
  CArray<CString>* Split(wchar_t separator) const;
  // Any character of separators ends a piece; empty pieces are dropped except
  // the remainder after the last separator, which is always added.
  CList<CString>* Split(const char* separators) const;

  // Searching and testing; positions are characters, -1 when not found.
  bool Contains(const char* text) const;
  bool Contains(const wchar_t* text) const;
  bool ContainsIgnoreCase(const char* text) const;
  bool ContainsIgnoreCase(const wchar_t* text) const;
  int IndexOf(char c) const;
  int IndexOf(char c, int from) const;
  int IndexOf(wchar_t c) const;
  int IndexOf(wchar_t c, int from) const;
  int IndexOf(const char* text) const;
  int IndexOf(const wchar_t* text) const;
  int IndexOf(CString* text) const;
  int IndexOfIgnoreCase(const char* text) const;
  int IndexOfIgnoreCase(const wchar_t* text) const;
  int IndexOfAny(const char* set, int from) const;
  int IndexOfAny(const wchar_t* set, int from) const;
  int LastIndexOf(char c) const;
  int LastIndexOf(char c, int from) const;
  int LastIndexOf(wchar_t c) const;
  int LastIndexOf(wchar_t c, int from) const;
  bool StartsWith(const char* prefix, bool caseSensitive = true) const;
  bool StartsWith(const wchar_t* prefix, bool caseSensitive = true) const;
  bool EndsWith(const char* suffix, bool caseSensitive = true) const;
  using CObject::Equals;
  bool Equals(const char* text) const;
  bool Equals(const wchar_t* text) const;
  bool Equals(CString* text) const;
  bool EqualsIgnoreCase(const char* text) const;
  bool EqualsIgnoreCase(CString* text) const;
  // The whole string must match the ECMAScript regular expression.
  bool Matches(const char* pattern) const;
  bool Matches(CString* pattern) const;

  // Conversion. Integers follow the C library's rules (base 0: decimal,
  // "0x" hexadecimal, leading "0" octal); trailing text is ignored.
  int ToInt() const { return ToInt(0); }
  int ToInt(int base) const;
  unsigned int ToUInt() const { return ToUInt(0); }
  unsigned int ToUInt(int base) const;
  long long ToInt64() const { return ToInt64(0); }
  long long ToInt64(int base) const;
  unsigned long long ToUInt64() const { return ToUInt64(0); }
  unsigned long long ToUInt64(int base) const;
  double ToDouble() const;
  // Four-character code of up to four characters or "%XX" escapes.
  unsigned int ToFour() const;
  // count bytes from hexadecimal text left-padded with '0' (or cut) to
  // 2 x count digits; null when a pair is not two hexadecimal digits.
  CByteArray* ToBytes(int count) const;

 protected:
  // Adopts buffers allocated with new[]; either may be null but not both.
  CString(int length, char* chars, wchar_t* wchars);
  // A new string adopting the given buffers.
  static CString* Adopt(int length, char* chars, wchar_t* wchars);
  // A new string adopting a new[] buffer of byteCount UTF-8 bytes (room for a
  // terminator included); the text is cut at its first invalid sequence.
  static CString* AdoptUtf8(char* buffer, std::size_t byteCount);
  // The same for a buffer of count code points.
  static CString* AdoptWide(wchar_t* buffer, int count);
  // A new string holding a copy of count code points already known to be valid.
  static CString* CopyWide(const wchar_t* text, int count);

 private:
  void InitFromUtf8(const char* utf8, std::size_t byteCount);
  void InitFromWide(const wchar_t* text, int count);
  // This text followed by byteCount valid UTF-8 bytes holding codePoints characters.
  CString* AppendUtf8(const char* text, std::size_t byteCount, int codePoints) const;

  // The cached forms are published with a compare-and-swap: two threads may
  // both build a missing form, and the loser frees its copy.
  int length_;
  mutable std::atomic<char*> chars_;
  mutable std::atomic<wchar_t*> wchars_;
};

}  // namespace Corvane::Mox
