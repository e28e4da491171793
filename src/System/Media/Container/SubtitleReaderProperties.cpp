#include "System/Media/Container/SubtitleReaderProperties.h"

namespace Corvane::Mox {

CSubtitleReaderProperties::CSubtitleReaderProperties(const CSubtitleReaderProperties* source) : CSubtitleProperties(source) {
  if (!source) return;
  // The per-context record travels with the copy.
  TimeScaleSlots_ = source->TimeScaleSlots_;
  MOX_SUBTITLE_READER_PROPERTIES(MOX_READER_PROPERTY_COPY)
}

}  // namespace Corvane::Mox
