#include "System/Media/Container/VideoReaderProperties.h"

namespace Corvane::Mox {

CVideoReaderProperties::CVideoReaderProperties(const CVideoReaderProperties* source) : CVideoProperties(source) {
  if (!source) return;
  // The per-context record travels with the copy.
  TimeScaleSlots_ = source->TimeScaleSlots_;
  MOX_VIDEO_READER_PROPERTIES(MOX_READER_PROPERTY_COPY)
}

}  // namespace Corvane::Mox
