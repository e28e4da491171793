#include "System/IO/Base64Alphabet.h"

#include <cstring>

#include "System/IO/Base64Encoder.h"

namespace Corvane::Mox {

const CBase64Alphabet* CBase64Alphabet::For(const char* alphabet, std::unique_ptr<CBase64Alphabet>& owned) {
  static const CBase64Alphabet standard(CBase64Encoder::Standard);
  static const CBase64Alphabet wmrm(CBase64Encoder::WMRM);
  if (!alphabet || std::strlen(alphabet) < 64 || std::strncmp(alphabet, CBase64Encoder::Standard, 64) == 0)
    return &standard;
  if (std::strncmp(alphabet, CBase64Encoder::WMRM, 64) == 0) return &wmrm;
  owned = std::make_unique<CBase64Alphabet>(alphabet);
  return owned.get();
}

CBase64Alphabet::CBase64Alphabet(const char* alphabet) {
  std::memcpy(characters_, alphabet, sizeof characters_);
  auto isAlphanumeric = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
  };
  lettersAndDigits_ = std::strncmp(characters_, CBase64Encoder::Standard, 62) == 0 && characters_[62] != characters_[63] &&
                      !isAlphanumeric(characters_[62]) && !isAlphanumeric(characters_[63]);
  for (unsigned int i = 0; i < 4096; ++i) {
    pairs_[i] = static_cast<std::uint16_t>(static_cast<unsigned char>(characters_[i >> 6]) |
                                           static_cast<unsigned char>(characters_[i & 63]) << 8);
  }
  // Characters outside the alphabet decode as 0.
  std::memset(decode_, 0, sizeof decode_);
  for (unsigned int value = 0; value < 64; ++value) {
    auto c = static_cast<unsigned char>(characters_[value]);
    for (int k = 0; k < 4; ++k) decode_[k][c] = value << (18 - 6 * k);
  }
  for (int c = 0; c < 256; ++c) {
    if (!IsSpace(static_cast<unsigned char>(c)) && c != '=') continue;
    for (int k = 0; k < 4; ++k) decode_[k][c] = NotData;
  }
}

}  // namespace Corvane::Mox
