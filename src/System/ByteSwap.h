#pragma once
// In-place byte reversal of 2-, 3-, 4- and 8-byte fields, for code that
// patches big-endian values inside a buffer. The word-sized forms reuse the
// value-level helpers of System/IO/ByteSwap.h.

#include <cstdint>
#include <cstring>
#include <utility>

#include "System/IO/ByteSwap.h"

namespace Corvane::Mox {

namespace ByteSwapDetail {

// Loads a word from unaligned memory, reverses it and stores it back.
template <class Word>
inline void ReverseInPlace(void* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  word = ByteSwap::Reverse(word);
  std::memcpy(bytes, &word, sizeof word);
}

}  // namespace ByteSwapDetail

inline void SwapInt16(void* bytes) { ByteSwapDetail::ReverseInPlace<std::uint16_t>(bytes); }

// Three bytes: the middle one stays, the outer two trade places.
inline void SwapInt24(void* bytes) {
  auto* p = static_cast<unsigned char*>(bytes);
  std::swap(p[0], p[2]);
}

inline void SwapInt32(void* bytes) { ByteSwapDetail::ReverseInPlace<std::uint32_t>(bytes); }
inline void SwapInt64(void* bytes) { ByteSwapDetail::ReverseInPlace<std::uint64_t>(bytes); }

}  // namespace Corvane::Mox
