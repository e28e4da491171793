#pragma once
// Byte reversal of plain values, shared by the binary reader, writer and
// byte-order converter.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Corvane::Mox::ByteSwap {

// value with its bytes in reverse order; any 1-, 2-, 4- or 8-byte trivially
// copyable type (floats travel through an integer of their size).
template <class T>
inline T Reverse(T value) {
  static_assert(std::is_trivially_copyable_v<T>);
  if constexpr (sizeof(T) == 1) {
    return value;
  } else {
    using Word = std::conditional_t<sizeof(T) == 2, std::uint16_t,
                                    std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>>;
    static_assert(sizeof(T) == sizeof(Word));
    Word word;
    std::memcpy(&word, &value, sizeof word);
    if constexpr (sizeof(T) == 2) word = __builtin_bswap16(word);
    if constexpr (sizeof(T) == 4) word = __builtin_bswap32(word);
    if constexpr (sizeof(T) == 8) word = __builtin_bswap64(word);
    std::memcpy(&value, &word, sizeof word);
    return value;
  }
}

// value as stored in bytes of the given order (bigEndian) on this little-endian host.
template <class T>
inline T Load(const unsigned char* bytes, bool bigEndian) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return bigEndian ? Reverse(value) : value;
}

template <class T>
inline void Store(T value, bool bigEndian, unsigned char* out) {
  if (bigEndian) value = Reverse(value);
  std::memcpy(out, &value, sizeof value);
}

// Reverses the 4-, 2- and 2-byte leading fields of a 16-byte GUID in place;
// the last 8 bytes are a byte string and keep their order.
inline void ReverseGuidFields(unsigned char* bytes) {
  std::reverse(bytes, bytes + 4);
  std::reverse(bytes + 4, bytes + 6);
  std::reverse(bytes + 6, bytes + 8);
}

}  // namespace Corvane::Mox::ByteSwap
