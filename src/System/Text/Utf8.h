#pragma once
// UTF-8 <-> UTF-32 conversion. Hand-written because the C library's iconv has
// no native-endian 32-bit name; like iconv, conversion stops at the first
// invalid sequence and keeps what came before it.

#include <cstddef>

namespace Corvane::Mox::Utf8 {

// Scans at most byteCount bytes (stopping at a zero byte). Returns the number
// of whole, valid bytes and stores the number of code points in them.
std::size_t Validate(const char* text, std::size_t byteCount, int& codePoints);

// Decodes `codePoints` code points from valid UTF-8 into out (no terminator).
void Decode(const char* text, int codePoints, wchar_t* out);

// Bytes needed for the first `count` code points (stopping at the first
// invalid one); validCount receives how many were valid.
std::size_t EncodedLength(const wchar_t* text, int count, int& validCount);

// Encodes `count` valid code points; returns the bytes written (no terminator).
std::size_t Encode(const wchar_t* text, int count, char* out);

// Encodes one code point into out[4]; returns 0 when it is not a valid scalar value.
int EncodeOne(wchar_t c, char* out);

}  // namespace Corvane::Mox::Utf8
