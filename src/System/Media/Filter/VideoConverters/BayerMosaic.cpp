#include "System/Media/Filter/VideoConverters/BayerMosaic.h"

#include <cstring>

#include "System/Media/Video/PlaneLayout.h"

namespace Corvane::Mox {

namespace {

int SlotOfColour(char letter) { return letter == 'G' ? 0 : letter == 'B' ? 1 : letter == 'R' ? 2 : -1; }

uint16_t Load(const uint8_t* line, int x) { return static_cast<uint16_t>(line[x * 2] | line[x * 2 + 1] << 8); }

}  // namespace

bool BayerMosaic::Find(const PlaneLayout& layout, int (&cell)[4]) {
  // One plane of one 16-bit sample per pixel whose letters name a 2x2 cell.
  if (layout.planeCount != 1 || layout.bitDepth != 16 || layout.planes[0].blockWidth != 1 ||
      layout.planes[0].blockBytes != 2 || std::strlen(layout.planes[0].components) != 4)
    return false;
  int counts[3] = {};
  for (int i = 0; i < 4; ++i) {
    cell[i] = SlotOfColour(layout.planes[0].components[i]);
    if (cell[i] < 0) return false;
    ++counts[cell[i]];
  }
  // Two greens on one diagonal, one red and one blue.
  const bool greenDiagonal = (cell[0] == 0 && cell[3] == 0) || (cell[1] == 0 && cell[2] == 0);
  return greenDiagonal && counts[1] == 1 && counts[2] == 1;
}

void BayerMosaic::Decode(const int (&cell)[4], const SamplePlanes& planes, int width, int y, ComponentLines& lines) {
  const int height = planes.height[0];
  const uint8_t* rows[3] = {};
  for (int d = -1; d <= 1; ++d)
    if (y + d >= 0 && y + d < height) rows[d + 1] = planes.data[0] + static_cast<long long>(y + d) * planes.stride[0];
  for (int x = 0; x < width; ++x) {
    unsigned sums[3] = {}, counts[3] = {};
    for (int dy = -1; dy <= 1; ++dy) {
      if (!rows[dy + 1]) continue;
      const int* places = &cell[((y + dy) & 1) * 2];
      for (int dx = -1; dx <= 1; ++dx) {
        if (x + dx < 0 || x + dx >= width) continue;
        const int slot = places[(x + dx) & 1];
        sums[slot] += Load(rows[dy + 1], x + dx);
        ++counts[slot];
      }
    }
    const int own = cell[(y & 1) * 2 + (x & 1)];
    for (int slot = 0; slot < 3; ++slot) {
      uint16_t value = 0;
      if (slot == own) {
        value = Load(rows[1], x);
      } else if (counts[slot] != 0) {
        value = static_cast<uint16_t>((sums[slot] + counts[slot] / 2) / counts[slot]);
      }
      lines.slot[slot][x] = value;
    }
  }
}

void BayerMosaic::Encode(const int (&cell)[4], const ComponentLines& lines, int width, int y, SamplePlanes& planes) {
  uint8_t* line = planes.data[0] + static_cast<long long>(y) * planes.stride[0];
  const int* places = &cell[(y & 1) * 2];
  for (int x = 0; x < width; ++x) {
    const uint16_t value = lines.slot[places[x & 1]][x];
    line[x * 2] = static_cast<uint8_t>(value);
    line[x * 2 + 1] = static_cast<uint8_t>(value >> 8);
  }
}

}  // namespace Corvane::Mox
