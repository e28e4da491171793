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
  static CString* WithArgList(const char* format, va_list args);
  static CString* FromBytes(CByteArray* bytes);
  CString* Clone() const;

  static CString* Concat(CString* a, CString* b);
  static CString* Concat(CString* a, const char* b);
  static CString* Concat(CString* a, const wchar_t* b);
  static CString* Join(const wchar_t* separator, CArray<CString>* array);
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
  CString* Substring(int start) const;
  CString* Substring(int start, int count) const;
  CString* Replace(char oldChar, char newChar) const;
  CString* Replace(wchar_t oldChar, wchar_t newChar) const;
  CString* Replace(const char* oldText, const char* newText) const;
  CString* Replace(const wchar_t* oldText, const wchar_t* newText) const;
  CString* TrimLeft() const;
  CString* TrimRight() const;
  CString* Trim() const;
  CString* Trim(const wchar_t* set) const;
  CString* ToLower() const;
  CString* ToUpper() const;
  CArray<CString>* Split(wchar_t separator) const;
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

  // Conversion.
  int ToInt() const { return ToInt(0); }
  int ToInt(int base) const;
  unsigned int ToUInt() const { return ToUInt(0); }
  unsigned int ToUInt(int base) const;
  long long ToInt64() const { return ToInt64(0); }
  long long ToInt64(int base) const;
  unsigned long long ToUInt64() const { return ToUInt64(0); }
  unsigned long long ToUInt64(int base) const;
  double ToDouble() const;
  unsigned int ToFour() const;
  CByteArray* ToBytes(int count) const;

 protected:
  // Adopts buffers allocated with new[]; either may be null but not both.
  CString(int length, char* chars, wchar_t* wchars);
  // A new string adopting the given buffers.
  static CString* Adopt(int length, char* chars, wchar_t* wchars);

 private:
  void InitFromUtf8(const char* utf8, std::size_t byteCount);
  void InitFromWide(const wchar_t* text, int count);

  // The cached forms are published with a compare-and-swap: two threads may
  // both build a missing form, and the loser frees its copy.
  int length_;
  mutable std::atomic<char*> chars_;
  mutable std::atomic<wchar_t*> wchars_;
};

}  // namespace Corvane::Mox
