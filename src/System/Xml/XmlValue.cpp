#include "System/Xml/XmlValue.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace Corvane::Mox::XmlValue {

namespace {

bool IsBlank(const char* text) { return !text || !*text; }

// Runs a strtol-style conversion and reports whether any digits were taken.
template <class T, class F>
T Convert(const char* text, T fallback, F convert) {
  if (IsBlank(text)) return fallback;
  char* end = nullptr;
  errno = 0;
  auto value = convert(text, &end);
  if (end == text) return fallback;
  return static_cast<T>(value);
}

std::string FormatList(const char* format, va_list args) {
  va_list copy;
  va_copy(copy, args);
  int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  if (length <= 0) return std::string();
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, args);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace

bool ToBoolean(const char* text, bool fallback) {
  if (IsBlank(text)) return fallback;
  if (std::strcmp(text, "true") == 0 || std::strcmp(text, "1") == 0) return true;
  if (std::strcmp(text, "false") == 0 || std::strcmp(text, "0") == 0) return false;
  return fallback;
}

int ToInt32(const char* text, int fallback) {
  return Convert<int>(text, fallback, [](const char* s, char** end) { return std::strtol(s, end, 0); });
}

bool TryToInt32(const char* text, int& value) {
  if (IsBlank(text)) return false;
  char* end = nullptr;
  long parsed = std::strtol(text, &end, 0);
  if (end == text) return false;
  value = static_cast<int>(parsed);
  return true;
}

unsigned int ToUInt32(const char* text, unsigned int fallback) {
  return Convert<unsigned int>(text, fallback, [](const char* s, char** end) { return std::strtoul(s, end, 0); });
}

long long ToInt64(const char* text, long long fallback) {
  return Convert<long long>(text, fallback, [](const char* s, char** end) { return std::strtoll(s, end, 0); });
}

unsigned long long ToUInt64(const char* text, unsigned long long fallback) {
  return Convert<unsigned long long>(text, fallback,
                                     [](const char* s, char** end) { return std::strtoull(s, end, 0); });
}

double ToDouble(const char* text, double fallback) {
  return Convert<double>(text, fallback, [](const char* s, char** end) { return std::strtod(s, end); });
}

std::string Format(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = FormatList(format, args);
  va_end(args);
  return text;
}

std::string FormatDouble(double value, const char* format) {
  // The format comes from the caller; formatting a double through it is the contract.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  int length = std::snprintf(nullptr, 0, format ? format : "%g", value);
  if (length <= 0) return std::string();
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(text.data(), text.size(), format ? format : "%g", value);
#pragma GCC diagnostic pop
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace Corvane::Mox::XmlValue
