#include "System/Media/Filter/VideoConverters/FloatPixels.h"

#include <cmath>
#include <cstring>

#include "System/Media/Video/PlaneLayout.h"

namespace Corvane::Mox {

namespace {

constexpr float kTop = 65535.0f;

uint16_t ToCode(float value) {
  // NaN fails both comparisons and lands on 0.
  if (!(value > 0.0f)) return 0;
  if (value >= 1.0f) return 0xFFFF;
  return static_cast<uint16_t>(std::lround(value * kTop));
}

}  // namespace

bool FloatPixels::Find(const PlaneLayout& layout, int (&order)[4]) {
  if (layout.planeCount != 1 || layout.bitDepth != 32 || layout.planes[0].blockWidth != 1 ||
      layout.planes[0].blockBytes != 16 || std::strlen(layout.planes[0].components) != 4)
    return false;
  unsigned seen = 0;
  for (int i = 0; i < 4; ++i) {
    order[i] = LineCodec::SlotOf(layout.planes[0].components[i]);  // padding and unknown letters are negative
    if (order[i] < 0) return false;
    seen |= 1u << order[i];
  }
  return seen == 15;
}

void FloatPixels::Decode(const int (&order)[4], const uint8_t* line, int width, ComponentLines& lines) {
  for (int x = 0; x < width; ++x)
    for (int i = 0; i < 4; ++i) {
      float value;
      std::memcpy(&value, line + (x * 4 + i) * 4, 4);
      lines.slot[order[i]][x] = ToCode(value);
    }
}

void FloatPixels::Encode(const int (&order)[4], const ComponentLines& lines, int width, uint8_t* line) {
  for (int x = 0; x < width; ++x)
    for (int i = 0; i < 4; ++i) {
      const float value = static_cast<float>(lines.slot[order[i]][x]) / kTop;
      std::memcpy(line + (x * 4 + i) * 4, &value, 4);
    }
}

}  // namespace Corvane::Mox
