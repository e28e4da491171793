#include "System/Media/Filter/VideoConverters/PixelFormatDescriptor.h"

#include <cstring>

#include "System/Media/Video/PlaneLayout.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

namespace {

bool HasLetter(const PlaneLayout* layout, char letter) {
  for (int i = 0; i < layout->planeCount; ++i)
    if (std::strchr(layout->planes[i].components, letter)) return true;
  return false;
}

}  // namespace

unsigned int PixelFormatDescriptor::Canonical(unsigned int format) {
  const PlaneLayout* layout = PlaneLayout::Find(format);
  return layout ? layout->format : 0;
}

bool PixelFormatDescriptor::IsRgb(unsigned int format) {
  const PlaneLayout* layout = PlaneLayout::Find(format);
  return layout && HasLetter(layout, 'R') && HasLetter(layout, 'G');
}

bool PixelFormatDescriptor::HasAlpha(unsigned int format) {
  const PlaneLayout* layout = PlaneLayout::Find(format);
  return layout && HasLetter(layout, 'A');
}

int PixelFormatDescriptor::GetBitDepth(unsigned int format) {
  const PlaneLayout* layout = PlaneLayout::Find(format);
  // The 32-bit float formats are carried as 16-bit code values.
  if (layout && layout->bitDepth == 32) return 16;
  return layout ? layout->bitDepth : 0;
}

int PixelFormatDescriptor::GetSubsampling(unsigned int format) {
  const PlaneLayout* layout = PlaneLayout::Find(format);
  if (!layout) return 0;
  return layout->subsampling != 0 ? layout->subsampling : 0x11;
}

PixelFormatDescriptor PixelFormatDescriptor::Resolve(const CVideoProperties* properties) {
  PixelFormatDescriptor descriptor;
  if (!properties) return descriptor;
  descriptor.format = Canonical(properties->GetFormat());
  descriptor.matrix = IsRgb(descriptor.format) ? 0 : properties->GetMatrixCoefficients();
  return descriptor;
}

}  // namespace Corvane::Mox
