#include "System/Media/Audio/G711.h"

#include <array>
#include <cstddef>

namespace Corvane::Mox::G711 {

int16_t AlawExpand(uint8_t code) {
  // Even bits are inverted on the line; the low seven bits then hold a
  // three-bit segment and a four-bit step.
  const int folded = (code ^ 0x55) & 0x7F;
  const int segment = folded >> 4;
  int magnitude = folded & 0x0F;
  if (segment > 0) magnitude += 16;          // the implicit leading one
  magnitude = (magnitude << 4) + 8;          // the middle of the step
  if (segment > 1) magnitude <<= segment - 1;
  return static_cast<int16_t>(code & 0x80 ? magnitude : -magnitude);
}

int16_t UlawExpand(uint8_t code) {
  // Every bit is inverted on the line; the value is biased by 33 (in 14-bit
  // units) so that the segments are powers of two.
  const int inverted = ~code & 0xFF;
  const int exponent = (inverted >> 4) & 0x07;
  const int mantissa = inverted & 0x0F;
  const int step = 4 << (exponent + 1);
  const int magnitude = (0x80 << exponent) + step * mantissa + step / 2 - 4 * 33;
  return static_cast<int16_t>(code & 0x80 ? magnitude : -magnitude);
}

uint8_t AlawCompress(int16_t value) {
  // Negative values use the one's complement, so -1 and 0 share the
  // smallest step on either side of zero.
  int magnitude = value < 0 ? (~value) >> 4 : value >> 4;
  if (magnitude > 15) {
    int segment = 1;
    while (magnitude > 16 + 15) {
      magnitude >>= 1;
      ++segment;
    }
    magnitude -= 16;
    magnitude += segment << 4;
  }
  if (value >= 0) magnitude |= 0x80;
  return static_cast<uint8_t>(magnitude ^ 0x55);
}

uint8_t UlawCompress(int16_t value) {
  int magnitude = value < 0 ? (~value) >> 2 : value >> 2;
  magnitude += 33;
  if (magnitude > 0x1FFF) magnitude = 0x1FFF;
  int segment = 1;
  for (int rest = magnitude >> 6; rest != 0; rest >>= 1) ++segment;
  const int high = 0x08 - segment;
  const int low = 0x0F - ((magnitude >> segment) & 0x0F);
  int code = (high << 4) | low;
  if (value >= 0) code |= 0x80;
  return static_cast<uint8_t>(code);
}

namespace {

template <std::size_t N, class T, class F>
std::array<T, N> Tabulate(F&& f) {
  std::array<T, N> table{};
  for (std::size_t i = 0; i < N; ++i) table[i] = f(i);
  return table;
}

}  // namespace

const int16_t* AlawExpansionTable() {
  static const auto table = Tabulate<256, int16_t>([](std::size_t i) { return AlawExpand(static_cast<uint8_t>(i)); });
  return table.data();
}

const int16_t* UlawExpansionTable() {
  static const auto table = Tabulate<256, int16_t>([](std::size_t i) { return UlawExpand(static_cast<uint8_t>(i)); });
  return table.data();
}

const uint8_t* AlawCompressionTable() {
  static const auto table =
      Tabulate<8192, uint8_t>([](std::size_t i) { return AlawCompress(static_cast<int16_t>(static_cast<uint16_t>(i << 3))); });
  return table.data();
}

const uint8_t* UlawCompressionTable() {
  static const auto table =
      Tabulate<16384, uint8_t>([](std::size_t i) { return UlawCompress(static_cast<int16_t>(static_cast<uint16_t>(i << 2))); });
  return table.data();
}

}  // namespace Corvane::Mox::G711
