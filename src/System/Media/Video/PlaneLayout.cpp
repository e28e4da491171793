#include "System/Media/Video/PlaneLayout.h"

#include <algorithm>
#include <climits>
#include <utility>
#include <vector>

#include "System/Media/Formats/VideoFormat.h"
#include "System/Types.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

constexpr PlaneLayout::Packing Planar = PlaneLayout::Planar;
constexpr PlaneLayout::Packing BiPlanar = PlaneLayout::BiPlanar;
constexpr PlaneLayout::Packing Packed = PlaneLayout::Packed;

#define PLANE(components, blockWidth, blockBytes, divisor) {components, blockWidth, blockBytes, divisor}
#define NO_PLANE {nullptr, 0, 0, 0}
const PlaneLayout kLayouts[] = {
#define MOX_PLANE_LAYOUT(code, packing, depth, order, subsampling, count, p0, p1, p2, p3, alignment) \
  {code, packing, depth, static_cast<PlaneLayout::ByteOrder>(order), subsampling, count, {p0, p1, p2, p3}, alignment},
#include "System/Media/Video/PlaneLayout.def"
#undef MOX_PLANE_LAYOUT
};
#undef PLANE
#undef NO_PLANE

constexpr int kCount = static_cast<int>(sizeof(kLayouts) / sizeof(kLayouts[0]));

// Sorted (format, row) pairs, built once.
const std::vector<std::pair<unsigned int, int>>& Index() {
  static const std::vector<std::pair<unsigned int, int>> index = [] {
    std::vector<std::pair<unsigned int, int>> v;
    for (int i = 0; i < kCount; ++i) v.emplace_back(kLayouts[i].format, i);
    std::sort(v.begin(), v.end());
    return v;
  }();
  return index;
}

const PlaneLayout* Lookup(unsigned int format) {
  const auto& index = Index();
  auto it = std::lower_bound(index.begin(), index.end(), std::make_pair(format, -1));
  return it != index.end() && it->first == format ? &kLayouts[it->second] : nullptr;
}

}  // namespace

const PlaneLayout* PlaneLayout::Find(unsigned int format) {
  if (const PlaneLayout* layout = Lookup(format)) return layout;
  unsigned int equivalent = VideoFormat::GetEquivalentFormat(format);
  return equivalent && equivalent != format ? Lookup(equivalent) : nullptr;
}

int PlaneLayout::GetCount() { return kCount; }

const PlaneLayout* PlaneLayout::GetAt(int index) { return index >= 0 && index < kCount ? &kLayouts[index] : nullptr; }

int PlaneLayout::GetStride(int plane, int width) const {
  if (plane < 0 || plane >= planeCount || width <= 0) return 0;
  const Plane& p = planes[plane];
  long long blocks = (static_cast<long long>(width) + p.blockWidth - 1) / p.blockWidth;
  long long bytes = blocks * p.blockBytes;
  bytes = (bytes + lineAlignment - 1) / lineAlignment * lineAlignment;
  return bytes > 0x7FFFFFFF ? 0 : static_cast<int>(bytes);
}

int PlaneLayout::GetPlaneHeight(int plane, int height) const {
  if (plane < 0 || plane >= planeCount || height <= 0) return 0;
  long long divisor = planes[plane].verticalDivisor;
  return static_cast<int>((height + divisor - 1) / divisor);
}

long long PlaneLayout::GetPlaneSize(int plane, int width, int height, int stride) const {
  if (stride <= 0) stride = GetStride(plane, width);
  return static_cast<long long>(stride) * GetPlaneHeight(plane, height);
}

long long PlaneLayout::GetSampleLength(int width, int height) const {
  // Each plane is below 2^62 bytes; four of them could pass 2^63.
  long long total = 0;
  for (int plane = 0; plane < planeCount; ++plane) {
    long long size = GetPlaneSize(plane, width, height);
    if (size > LLONG_MAX - total) return LLONG_MAX;
    total += size;
  }
  return total;
}

}  // namespace Corvane::Mox
