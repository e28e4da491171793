#include "System/PathTemplate/PathTemplateToken.h"

#include <cstdio>
#include <cstring>

#include "System/PathTemplate/PathTemplateContext.h"
#include "System/Text.h"
#include "System/Variant.h"

namespace Corvane::Mox {

namespace {

// Widths and precisions beyond this are refused: a template must not be able
// to ask for a gigabyte of padding.
constexpr int MaxFieldWidth = 64;

// Reads digits at text[i] into value; false when the number exceeds the limit.
bool ReadField(const char* text, std::size_t& i, int& value) {
  value = 0;
  while (text[i] >= '0' && text[i] <= '9') {
    value = value * 10 + (text[i] - '0');
    if (value > MaxFieldWidth) return false;
    ++i;
  }
  return true;
}

// Copies one conversion "%[flags][width][.precision][length]conversion" from
// format[i] into out with the given length modifier; false when it is not an
// integer conversion of bounded size.
bool CopyConversion(const char* format, std::size_t& i, const char* length, std::string& out, char& conversion) {
  std::size_t start = i++;
  while (format[i] && std::strchr("-+ #0", format[i])) ++i;
  int field = 0;
  if (!ReadField(format, i, field)) return false;
  if (format[i] == '.') {
    ++i;
    if (!ReadField(format, i, field)) return false;
  }
  std::string conversionText(format + start, i - start);
  while (format[i] && std::strchr("hlLqjzt", format[i])) ++i;
  conversion = format[i];
  if (!conversion || !std::strchr("diouxX", conversion)) return false;
  ++i;
  out += conversionText + length + conversion;
  return true;
}

// The 32-bit conversions of the value types; 64-bit ones go through ToInt64.
bool IsNarrowInteger(CVariant::VariantType type) {
  switch (type) {
    case CVariant::Int8:
    case CVariant::UInt8:
    case CVariant::Int16:
    case CVariant::UInt16:
    case CVariant::Int32:
    case CVariant::UInt32:
    case CVariant::Long:
    case CVariant::ULong:
      return true;
    default:
      return false;
  }
}

bool IsWideInteger(CVariant::VariantType type) { return type == CVariant::Int64 || type == CVariant::UInt64; }

}  // namespace

CPathTemplate::CToken::CToken(CString* name, CString* format, char prefix, char suffix)
    : CSyntaxElement(TypeCode), name_(name ? name : new CString("")), format_(format), prefix_(prefix), suffix_(suffix) {
  if (name) name->Acquire();
  if (format_) format_->Acquire();
}

CPathTemplate::CToken::~CToken() {
  name_->Release();
  if (format_) format_->Release();
}

bool CPathTemplate::CToken::FormatInteger(const char* format, long long value, bool wide, std::string& out) {
  if (!format) return false;
  std::string pattern;
  char conversion = 0;
  int conversions = 0;
  for (std::size_t i = 0; format[i];) {
    if (format[i] != '%') {
      pattern += format[i++];
    } else if (format[i + 1] == '%') {
      pattern += "%%";
      i += 2;
    } else {
      if (++conversions > 1 || !CopyConversion(format, i, wide ? "ll" : "", pattern, conversion)) return false;
    }
  }
  if (conversions != 1) return false;
  bool isSigned = conversion == 'd' || conversion == 'i';
  // The pattern was checked above: one integer conversion of bounded width.
  auto print = [&](char* buffer, std::size_t size) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    if (wide && isSigned) return std::snprintf(buffer, size, pattern.c_str(), value);
    if (wide) return std::snprintf(buffer, size, pattern.c_str(), static_cast<unsigned long long>(value));
    int narrow = static_cast<int>(value);
    if (isSigned) return std::snprintf(buffer, size, pattern.c_str(), narrow);
    return std::snprintf(buffer, size, pattern.c_str(), static_cast<unsigned int>(narrow));
#pragma GCC diagnostic pop
  };
  int length = print(nullptr, 0);
  if (length < 0) return false;
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  print(text.data(), text.size());
  text.resize(static_cast<std::size_t>(length));
  out = std::move(text);
  return true;
}

std::string CPathTemplate::CToken::FormatValue(CVariant* value) const {
  if (format_) {
    CVariant::VariantType type = value->GetVariantType();
    std::string text;
    if (IsNarrowInteger(type) && FormatInteger(format_->GetChars(), value->ToInt32(), false, text)) return text;
    if (IsWideInteger(type) && FormatInteger(format_->GetChars(), value->ToInt64(), true, text)) return text;
  }
  RObject<CString> text(value->ToString());
  return text ? std::string(text->GetChars()) : std::string();
}

CString* CPathTemplate::CToken::Evaluate(CContext* context) const {
  RObject<CVariant> value(context ? context->GetValue(name_->GetChars()) : nullptr);
  if (!value) return new CString("");
  std::string text;
  if (prefix_) text += prefix_;
  text += FormatValue(value);
  if (!format_ && suffix_) text += suffix_;
  return new CString(text.c_str(), static_cast<int>(text.size()));
}

}  // namespace Corvane::Mox
