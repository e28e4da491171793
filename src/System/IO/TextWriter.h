#pragma once
// CTextWriter: writes text. A subclass supplies the two primitives (raw
// bytes, and a string in the writer's encoding) plus Flush and Close; the
// narrow, wide, formatted and line forms are built on them here. Narrow
// (char) text is written as its bytes; wide text and strings go through the
// writer's encoding. WriteLine ends the text with the line separator, "\n"
// unless SetNewLine chose another.

#include <cstdarg>

#include "System/Object.h"

namespace Corvane::Mox {

class CTextWriter : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("txtw");

  CTextWriter();
  ~CTextWriter() override;

  // Accepts "txtw" as well as the subclass's own code.
  bool IsType(unsigned int type) const override;

  // The line separator, acquired.
  CString* GetNewLine() const;
  // Acquires newLine; null restores "\n".
  void SetNewLine(CString* newLine);

  // The primitives.
  virtual Result Write(const unsigned char* bytes, int count) = 0;
  virtual Result Write(CString* text) = 0;
  virtual Result Flush() = 0;
  virtual Result Close() = 0;

  virtual Result Write(char c);
  virtual Result Write(const char* text);
  virtual Result WriteLine(const char* text);
  virtual Result Write(wchar_t c);
  virtual Result Write(const wchar_t* text);
  virtual Result WriteLine(const wchar_t* text);
  virtual Result WriteLine(CString* text);
  // printf rules.
  Result WriteWithFormat(const char* format, ...) MOX_PRINTF(2, 3);
  Result WriteLineWithFormat(const char* format, ...) MOX_PRINTF(2, 3);
  Result WriteWithFormat(const wchar_t* format, ...);
  Result WriteLineWithFormat(const wchar_t* format, ...);
  virtual Result WriteWithArgList(const char* format, va_list args);
  virtual Result WriteWithArgList(const wchar_t* format, va_list args);

 protected:
  explicit CTextWriter(unsigned int type);
  Result WriteNewLine();

 private:
  CString* newLine_;
};

}  // namespace Corvane::Mox
