#include "System/Media/Container/VideoReaderProperties.h"

namespace Corvane::Mox {

CVideoReaderProperties::CVideoReaderProperties(const CVideoReaderProperties* source) : CVideoProperties(source) {
  if (!source) return;
  // The per-context record travels with the copy.
  TimeScaleSlots_ = source->TimeScaleSlots_;
#define MOX_COPY(Name) Name##Slots_ = source->Name##Slots_;
  MOX_COPY(Duration) MOX_COPY(Format) MOX_COPY(BitRate) MOX_COPY(Language) MOX_COPY(Region) MOX_COPY(FrameDuration)
  MOX_COPY(FrameRate) MOX_COPY(AlphaChannel) MOX_COPY(FieldOrder) MOX_COPY(Width) MOX_COPY(Height)
  MOX_COPY(PixelAspectRatio) MOX_COPY(CleanAperture) MOX_COPY(Orientation) MOX_COPY(Subsampling)
  MOX_COPY(ChromaSiting) MOX_COPY(BitDepth) MOX_COPY(ColorPrimaries) MOX_COPY(MatrixCoefficients)
  MOX_COPY(TransferCharacteristics) MOX_COPY(ColorSpace) MOX_COPY(VideoRange) MOX_COPY(ReferenceBlackLevel)
  MOX_COPY(ReferenceWhiteLevel) MOX_COPY(ReferenceLevels)
#undef MOX_COPY
}

Result CVideoReaderProperties::SetTimeScale(int context, long long timeScale) {
  if (timeScale < 1 || timeScale > 2000000000) throw ResultArgumentOutOfRange("time scale %lld", timeScale);
  return TimeScaleSlots_.Assign(context, timeScale, [this](long long v) { return CMediaProperties::SetTimeScale(v); });
}

}  // namespace Corvane::Mox
