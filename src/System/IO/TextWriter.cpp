#include "System/IO/TextWriter.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <vector>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Wide formatting has no measuring mode: grow the buffer until the text fits,
// giving up at a size no sensible line reaches.
constexpr std::size_t FirstWideBuffer = 256;
constexpr std::size_t LargestWideBuffer = std::size_t(1) << 26;

}  // namespace

CTextWriter::CTextWriter() : CTextWriter(TypeCode) {}

CTextWriter::CTextWriter(unsigned int type) : CObject(type), newLine_(new CString("\n")) {}

bool CTextWriter::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

CTextWriter::~CTextWriter() { newLine_->Release(); }

CString* CTextWriter::GetNewLine() const {
  newLine_->Acquire();
  return newLine_;
}

void CTextWriter::SetNewLine(CString* newLine) {
  CString* replacement = newLine ? newLine : new CString("\n");
  if (newLine) newLine->Acquire();
  newLine_->Release();
  newLine_ = replacement;
}

Result CTextWriter::WriteNewLine() { return Write(newLine_); }

Result CTextWriter::Write(char c) { return Write(reinterpret_cast<const unsigned char*>(&c), 1); }

Result CTextWriter::Write(const char* text) {
  if (!text) return ResultOK();
  return Write(reinterpret_cast<const unsigned char*>(text), static_cast<int>(std::strlen(text)));
}

Result CTextWriter::WriteLine(const char* text) {
  Result result = Write(text);
  return result.Failed() ? result : WriteNewLine();
}

Result CTextWriter::Write(wchar_t c) {
  const wchar_t text[2] = {c, 0};
  return Write(text);
}

Result CTextWriter::Write(const wchar_t* text) {
  if (!text) return ResultOK();
  RObject<CString> string(new CString(text));
  return Write(string.Get());
}

Result CTextWriter::WriteLine(const wchar_t* text) {
  Result result = Write(text);
  return result.Failed() ? result : WriteNewLine();
}

Result CTextWriter::WriteLine(CString* text) {
  Result result = Write(text);
  return result.Failed() ? result : WriteNewLine();
}

Result CTextWriter::WriteWithArgList(const char* format, va_list args) {
  if (!format) return ResultArgumentNull();
  va_list measure;
  va_copy(measure, args);
  int length = std::vsnprintf(nullptr, 0, format, measure);
  va_end(measure);
  if (length < 0) return ResultFormatError("cannot format '%s'", format);
  std::vector<char> text(static_cast<std::size_t>(length) + 1);
  std::vsnprintf(text.data(), text.size(), format, args);
  return Write(reinterpret_cast<const unsigned char*>(text.data()), length);
}

Result CTextWriter::WriteWithArgList(const wchar_t* format, va_list args) {
  if (!format) return ResultArgumentNull();
  for (std::size_t size = FirstWideBuffer; size <= LargestWideBuffer; size *= 4) {
    std::vector<wchar_t> text(size);
    va_list attempt;
    va_copy(attempt, args);
    int length = std::vswprintf(text.data(), size, format, attempt);
    va_end(attempt);
    if (length >= 0) return Write(text.data());
  }
  return ResultFormatError("cannot format the wide text");
}

Result CTextWriter::WriteWithFormat(const char* format, ...) {
  va_list args;
  va_start(args, format);
  Result result = WriteWithArgList(format, args);
  va_end(args);
  return result;
}

Result CTextWriter::WriteLineWithFormat(const char* format, ...) {
  va_list args;
  va_start(args, format);
  Result result = WriteWithArgList(format, args);
  va_end(args);
  return result.Failed() ? result : WriteNewLine();
}

Result CTextWriter::WriteWithFormat(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  Result result = WriteWithArgList(format, args);
  va_end(args);
  return result;
}

Result CTextWriter::WriteLineWithFormat(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  Result result = WriteWithArgList(format, args);
  va_end(args);
  return result.Failed() ? result : WriteNewLine();
}

}  // namespace Corvane::Mox
