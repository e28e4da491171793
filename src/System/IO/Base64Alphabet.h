#pragma once
// CBase64Alphabet: the lookup tables of one Base64 alphabet, shared by the
// encoder and decoder. The two public alphabets are built once per process;
// any other alphabet gets tables of its own.

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Corvane::Mox {

class CBase64Alphabet {
 public:
  // Set in a decoding table entry for white space and "=": a group holding
  // one cannot take the four-character fast path.
  static constexpr std::uint32_t NotData = 0x80000000u;

  // The tables for alphabet (64 characters; null or shorter means the
  // standard one): a shared instance, or a new one kept in owned.
  static const CBase64Alphabet* For(const char* alphabet, std::unique_ptr<CBase64Alphabet>& owned);

  explicit CBase64Alphabet(const char* alphabet);

  char Character(unsigned int sixBits) const { return characters_[sixBits & 63]; }
  // The two characters of 12 input bits, first character in the low byte.
  std::uint16_t Pair(unsigned int twelveBits) const { return pairs_[twelveBits & 4095]; }
  // The 6-bit value of character c at place k (0..3) of a group, shifted to
  // its place in the group's 24 bits, or NotData.
  std::uint32_t Decode(int k, unsigned char c) const { return decode_[k][c]; }
  const std::uint32_t* DecodeTable(int k) const { return decode_[k]; }
  // The 6-bit value of a character; 0 outside the alphabet.
  unsigned int Value(unsigned char c) const { return (decode_[3][c] & ~NotData); }
  // Whether the alphabet is A-Z, a-z, 0-9 and two other distinct characters,
  // as both public ones are: such text can be decoded by character ranges.
  bool IsLettersAndDigits() const { return lettersAndDigits_; }
  unsigned char Character62() const { return static_cast<unsigned char>(characters_[62]); }
  unsigned char Character63() const { return static_cast<unsigned char>(characters_[63]); }
  // White space: every byte up to and including the space character.
  static bool IsSpace(unsigned char c) { return c <= ' '; }

 private:
  char characters_[64];
  bool lettersAndDigits_;
  std::uint16_t pairs_[4096];
  std::uint32_t decode_[4][256];
};

}  // namespace Corvane::Mox
