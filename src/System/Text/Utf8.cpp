#include "System/Text/Utf8.h"

namespace Corvane::Mox::Utf8 {

namespace {

inline bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

inline bool IsScalar(unsigned int c) { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

// Length of the sequence starting at p, or 0 when it is invalid or truncated.
std::size_t SequenceLength(const unsigned char* p, std::size_t available) {
  unsigned char c = p[0];
  if (c < 0x80) return 1;
  if (c < 0xC2) return 0;  // continuation byte or overlong 2-byte lead
  if (c < 0xE0) return (available >= 2 && IsContinuation(p[1])) ? 2 : 0;
  if (c < 0xF0) {
    if (available < 3 || !IsContinuation(p[1]) || !IsContinuation(p[2])) return 0;
    if (c == 0xE0 && p[1] < 0xA0) return 0;   // overlong
    if (c == 0xED && p[1] >= 0xA0) return 0;  // surrogate
    return 3;
  }
  if (c < 0xF5) {
    if (available < 4 || !IsContinuation(p[1]) || !IsContinuation(p[2]) || !IsContinuation(p[3])) return 0;
    if (c == 0xF0 && p[1] < 0x90) return 0;   // overlong
    if (c == 0xF4 && p[1] >= 0x90) return 0;  // above U+10FFFF
    return 4;
  }
  return 0;
}

}  // namespace

std::size_t Validate(const char* text, std::size_t byteCount, int& codePoints) {
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  std::size_t i = 0;
  int count = 0;
  while (i < byteCount && p[i] != 0) {
    if (p[i] < 0x80) {
      ++i;
      ++count;
      continue;
    }
    std::size_t n = SequenceLength(p + i, byteCount - i);
    if (n == 0) break;
    // A zero byte inside a sequence fails the continuation test above.
    i += n;
    ++count;
  }
  codePoints = count;
  return i;
}

void Decode(const char* text, int codePoints, wchar_t* out) {
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  for (int k = 0; k < codePoints; ++k) {
    unsigned int c = *p++;
    if (c >= 0x80) {
      if (c < 0xE0) {
        c = ((c & 0x1F) << 6) | (p[0] & 0x3F);
        p += 1;
      } else if (c < 0xF0) {
        c = ((c & 0x0F) << 12) | ((p[0] & 0x3Fu) << 6) | (p[1] & 0x3F);
        p += 2;
      } else {
        c = ((c & 0x07) << 18) | ((p[0] & 0x3Fu) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3F);
        p += 3;
      }
    }
    out[k] = static_cast<wchar_t>(c);
  }
}

std::size_t EncodedLength(const wchar_t* text, int count, int& validCount) {
  std::size_t bytes = 0;
  int k = 0;
  for (; k < count; ++k) {
    auto c = static_cast<unsigned int>(text[k]);
    if (!IsScalar(c)) break;
    bytes += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  }
  validCount = k;
  return bytes;
}

int EncodeOne(wchar_t wc, char* out) {
  auto c = static_cast<unsigned int>(wc);
  if (!IsScalar(c)) return 0;
  if (c < 0x80) {
    out[0] = static_cast<char>(c);
    return 1;
  }
  if (c < 0x800) {
    out[0] = static_cast<char>(0xC0 | (c >> 6));
    out[1] = static_cast<char>(0x80 | (c & 0x3F));
    return 2;
  }
  if (c < 0x10000) {
    out[0] = static_cast<char>(0xE0 | (c >> 12));
    out[1] = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out[2] = static_cast<char>(0x80 | (c & 0x3F));
    return 3;
  }
  out[0] = static_cast<char>(0xF0 | (c >> 18));
  out[1] = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
  out[2] = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
  out[3] = static_cast<char>(0x80 | (c & 0x3F));
  return 4;
}

std::size_t Encode(const wchar_t* text, int count, char* out) {
  std::size_t n = 0;
  for (int k = 0; k < count; ++k) n += static_cast<std::size_t>(EncodeOne(text[k], out + n));
  return n;
}

}  // namespace Corvane::Mox::Utf8
