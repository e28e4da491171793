#include "System/Media/Container/AudioReaderProperties.h"

namespace Corvane::Mox {

CAudioReaderProperties::CAudioReaderProperties(const CAudioReaderProperties* source) : CAudioProperties(source) {
  if (!source) return;
  TimeScaleSlots_ = source->TimeScaleSlots_;
#define MOX_COPY(Name) Name##Slots_ = source->Name##Slots_;
  MOX_COPY(Duration) MOX_COPY(Format) MOX_COPY(BitRate) MOX_COPY(Language) MOX_COPY(Region) MOX_COPY(SampleRate)
  MOX_COPY(Channels) MOX_COPY(BitsPerSample) MOX_COPY(BytesPerFrame) MOX_COPY(FramesPerPacket) MOX_COPY(BytesPerPacket)
#undef MOX_COPY
}

Result CAudioReaderProperties::SetTimeScale(int context, long long timeScale) {
  if (timeScale < 1 || timeScale > 2000000000) throw ResultArgumentOutOfRange("time scale %lld", timeScale);
  return TimeScaleSlots_.Assign(context, timeScale, [this](long long v) { return CMediaProperties::SetTimeScale(v); });
}

}  // namespace Corvane::Mox
