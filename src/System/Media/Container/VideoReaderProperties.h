#pragma once
// CVideoReaderProperties: a video track description that
// remembers, for each property a reader can learn from two places, the value
// each place gave (see CMediaReader and ReaderPropertySlots).

#include "System/Media/Container/MediaReader.h"
#include "System/Media/Video/VideoProperties.h"

// The properties with a per-context record, besides the time scale.
#define MOX_VIDEO_READER_PROPERTIES(X) \
  X(Duration, long long) \
  X(Format, unsigned int) \
  X(BitRate, long long) \
  X(Language, unsigned short) \
  X(Region, unsigned short) \
  X(FrameDuration, long long) \
  X(FrameRate, Rational<long long>) \
  X(AlphaChannel, int) \
  X(FieldOrder, int) \
  X(Width, int) \
  X(Height, int) \
  X(PixelAspectRatio, Rational<int>) \
  X(CleanAperture, Rectangle<int>) \
  X(Orientation, int) \
  X(Subsampling, int) \
  X(ChromaSiting, int) \
  X(BitDepth, int) \
  X(ColorPrimaries, unsigned char) \
  X(MatrixCoefficients, unsigned char) \
  X(TransferCharacteristics, unsigned char) \
  X(ColorSpace, ColorSpace) \
  X(VideoRange, int) \
  X(ReferenceBlackLevel, float) \
  X(ReferenceWhiteLevel, float) \
  X(ReferenceLevels, Range<float>)

namespace Corvane::Mox {

class CVideoReaderProperties : public CVideoProperties {
 public:
  CVideoReaderProperties() = default;
  explicit CVideoReaderProperties(const CVideoProperties* source) : CVideoProperties(source) {}
  explicit CVideoReaderProperties(const CVideoReaderProperties* source);
  using CVideoProperties::SetColorSpace;

  MOX_READER_TIME_SCALE(CVideoProperties)
#define MOX_VIDEO_READER_PROPERTY(Name, Type) MOX_READER_PROPERTY(CVideoProperties, Name, Type)
  MOX_VIDEO_READER_PROPERTIES(MOX_VIDEO_READER_PROPERTY)
#undef MOX_VIDEO_READER_PROPERTY
  MOX_READER_LETTER_FORMS()
};

}  // namespace Corvane::Mox
