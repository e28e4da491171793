#pragma once
// Conversions between the text of documents (XML attribute and element
// values, YAML attribute values) and typed values. An absent (null) or empty
// text, or one with no number at its start, gives the caller's default.

#include <string>

namespace Corvane::Mox::XmlValue {

// "true" or "1" -> true, "false" or "0" -> false, anything else -> fallback.
bool ToBoolean(const char* text, bool fallback);
// Integers with base detection: decimal, "0x" hexadecimal, leading "0" octal.
int ToInt32(const char* text, int fallback);
// False (value unchanged) when the text has no number at its start.
bool TryToInt32(const char* text, int& value);
unsigned int ToUInt32(const char* text, unsigned int fallback);
long long ToInt64(const char* text, long long fallback);
unsigned long long ToUInt64(const char* text, unsigned long long fallback);
// The C library's conversion.
double ToDouble(const char* text, double fallback);

// printf formatting into a std::string.
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
// A double through the caller's format ("%g" when it is null).
std::string FormatDouble(double value, const char* format);

}  // namespace Corvane::Mox::XmlValue
