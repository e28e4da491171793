#pragma once
// CEncoding: conversion between code points and a byte encoding. Create
// gives the built-in ISO/IEC 6937 converter for "ISO-6937" and a converter
// over the platform's character-set converter (iconv) for any other name.

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;

class CEncoding : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("enc ");

  // The caller owns the result.
  static CEncoding* Create(const char* name);

  explicit CEncoding(const char* name);
  ~CEncoding() override;

  // The name this encoding was created with (acquired).
  CString* GetEncodingType() const;

  // Bytes needed for the zero-terminated code points of text.
  virtual int GetByteCount(const wchar_t* text) const = 0;
  // The encoded bytes of text in a new array owned by the caller.
  virtual CByteArray* GetBytes(const wchar_t* text) const = 0;
  // Characters decoded from count bytes.
  virtual int GetCharCount(const unsigned char* bytes, int count) const = 0;
  // The text decoded from count bytes, owned by the caller.
  virtual CString* GetString(const unsigned char* bytes, int count) const = 0;

  // Forwarding forms over the string's code points and the array's bytes.
  int GetByteCount(CString* text) const;
  CByteArray* GetBytes(CString* text) const;
  CString* GetString(CByteArray* bytes) const;

 protected:
  // A new byte array holding a copy of count bytes.
  static CByteArray* NewByteArray(const unsigned char* bytes, int count);

 private:
  CString* encodingType_;
};

}  // namespace Corvane::Mox
