#pragma once
// Basic vocabulary shared by every header of the library.

#include <cstdint>

// GCC 12 raises false maybe-uninitialized warnings in a few places (fresh
// malloc memory passed as const void*, the internals of <regex>); clang has no
// such warning, so the suppression exists only for GCC.
#if defined(__GNUC__) && !defined(__clang__)
#define MOX_SUPPRESS_MAYBE_UNINITIALIZED_BEGIN \
  _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wmaybe-uninitialized\"")
#define MOX_SUPPRESS_MAYBE_UNINITIALIZED_END _Pragma("GCC diagnostic pop")
#else
#define MOX_SUPPRESS_MAYBE_UNINITIALIZED_BEGIN
#define MOX_SUPPRESS_MAYBE_UNINITIALIZED_END
#endif

namespace Corvane::Mox {

// A four-character code packed big-endian into 32 bits: the first character
// lands in the most significant byte ("vcon" == 0x76636F6E). Trailing spaces
// are significant.
constexpr unsigned int FourCC(const char (&code)[5]) noexcept {
  return (static_cast<unsigned int>(static_cast<unsigned char>(code[0])) << 24) |
         (static_cast<unsigned int>(static_cast<unsigned char>(code[1])) << 16) |
         (static_cast<unsigned int>(static_cast<unsigned char>(code[2])) << 8) |
         static_cast<unsigned int>(static_cast<unsigned char>(code[3]));
}

// Writes the four characters of a code (and a terminator) into out[5].
inline void FourCCToChars(unsigned int code, char out[5]) noexcept {
  out[0] = static_cast<char>(code >> 24);
  out[1] = static_cast<char>(code >> 16);
  out[2] = static_cast<char>(code >> 8);
  out[3] = static_cast<char>(code);
  out[4] = 0;
}

class CObject;
class CString;
class Result;

}  // namespace Corvane::Mox
