#pragma once
// CVideoReaderProperties: a video track description that remembers, for each
// property a reader can learn from two places, the value each place gave
// (see CMediaReader and ReaderPropertySlots).

#include "System/Media/Container/MediaReader.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

class CVideoReaderProperties : public CVideoProperties {
 public:
  CVideoReaderProperties() = default;
  explicit CVideoReaderProperties(const CVideoProperties* source) : CVideoProperties(source) {}
  explicit CVideoReaderProperties(const CVideoReaderProperties* source);

  using CVideoProperties::SetColorSpace;
  // Outside 1..2,000,000,000 throws ResultArgumentOutOfRange.
  Result SetTimeScale(long long timeScale) { return SetTimeScale(CMediaReader::Unspecified, timeScale); }
  Result SetTimeScale(int context, long long timeScale);
  long long GetTimeScale(int context) const { return TimeScaleSlots_.Get(context); }
  using CVideoProperties::GetTimeScale;

#define MOX_VIDEO_READER_PROPERTY(Name, Type) MOX_READER_PROPERTY(CVideoProperties, Name, Type)
  MOX_VIDEO_READER_PROPERTY(Duration, long long)
  MOX_VIDEO_READER_PROPERTY(Format, unsigned int)
  MOX_VIDEO_READER_PROPERTY(BitRate, long long)
  MOX_VIDEO_READER_PROPERTY(Language, unsigned short)
  MOX_VIDEO_READER_PROPERTY(Region, unsigned short)
  MOX_VIDEO_READER_PROPERTY(FrameDuration, long long)
  MOX_VIDEO_READER_PROPERTY(FrameRate, Rational<long long>)
  MOX_VIDEO_READER_PROPERTY(AlphaChannel, int)
  MOX_VIDEO_READER_PROPERTY(FieldOrder, int)
  MOX_VIDEO_READER_PROPERTY(Width, int)
  MOX_VIDEO_READER_PROPERTY(Height, int)
  MOX_VIDEO_READER_PROPERTY(PixelAspectRatio, Rational<int>)
  MOX_VIDEO_READER_PROPERTY(CleanAperture, Rectangle<int>)
  MOX_VIDEO_READER_PROPERTY(Orientation, int)
  MOX_VIDEO_READER_PROPERTY(Subsampling, int)
  MOX_VIDEO_READER_PROPERTY(ChromaSiting, int)
  MOX_VIDEO_READER_PROPERTY(BitDepth, int)
  MOX_VIDEO_READER_PROPERTY(ColorPrimaries, unsigned char)
  MOX_VIDEO_READER_PROPERTY(MatrixCoefficients, unsigned char)
  MOX_VIDEO_READER_PROPERTY(TransferCharacteristics, unsigned char)
  MOX_VIDEO_READER_PROPERTY(ColorSpace, ColorSpace)
  MOX_VIDEO_READER_PROPERTY(VideoRange, int)
  MOX_VIDEO_READER_PROPERTY(ReferenceBlackLevel, float)
  MOX_VIDEO_READER_PROPERTY(ReferenceWhiteLevel, float)
  MOX_VIDEO_READER_PROPERTY(ReferenceLevels, Range<float>)
#undef MOX_VIDEO_READER_PROPERTY

 private:
  ReaderPropertySlots<long long> TimeScaleSlots_;
};

}  // namespace Corvane::Mox
