#include "System/Media/Container/SubtitleReaderProperties.h"

namespace Corvane::Mox {

CSubtitleReaderProperties::CSubtitleReaderProperties(const CSubtitleReaderProperties* source)
    : CSubtitleProperties(source) {
  if (!source) return;
  TimeScaleSlots_ = source->TimeScaleSlots_;
#define MOX_COPY(Name) Name##Slots_ = source->Name##Slots_;
  MOX_COPY(Duration) MOX_COPY(Format) MOX_COPY(BitRate) MOX_COPY(Language) MOX_COPY(Region)
#undef MOX_COPY
}

Result CSubtitleReaderProperties::SetTimeScale(int context, long long timeScale) {
  if (timeScale < 1 || timeScale > 2000000000) throw ResultArgumentOutOfRange("time scale %lld", timeScale);
  return TimeScaleSlots_.Assign(context, timeScale, [this](long long v) { return CMediaProperties::SetTimeScale(v); });
}

}  // namespace Corvane::Mox
