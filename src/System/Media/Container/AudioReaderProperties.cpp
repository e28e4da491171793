#include "System/Media/Container/AudioReaderProperties.h"

namespace Corvane::Mox {

CAudioReaderProperties::CAudioReaderProperties(const CAudioReaderProperties* source) : CAudioProperties(source) {
  if (!source) return;
  // The per-context record travels with the copy.
  TimeScaleSlots_ = source->TimeScaleSlots_;
  MOX_AUDIO_READER_PROPERTIES(MOX_READER_PROPERTY_COPY)
  MOX_AUDIO_READER_CHANNEL_PROPERTIES(MOX_READER_PROPERTY_COPY)
}

}  // namespace Corvane::Mox
