#pragma once
// CSubtitleReaderProperties: a subtitle track description that remembers, per
// property, the value each place a reader learns it from gave (see
// CMediaReader and ReaderPropertySlots).

#include "System/Media/Container/MediaReader.h"
#include "System/Media/Subtitle/SubtitleProperties.h"

namespace Corvane::Mox {

class CSubtitleReaderProperties : public CSubtitleProperties {
 public:
  CSubtitleReaderProperties() = default;
  explicit CSubtitleReaderProperties(const CSubtitleProperties* source) : CSubtitleProperties(source) {}
  explicit CSubtitleReaderProperties(const CSubtitleReaderProperties* source);

  // Outside 1..2,000,000,000 throws ResultArgumentOutOfRange.
  Result SetTimeScale(long long timeScale) { return SetTimeScale(CMediaReader::Unspecified, timeScale); }
  Result SetTimeScale(int context, long long timeScale);
  long long GetTimeScale(int context) const { return TimeScaleSlots_.Get(context); }
  using CSubtitleProperties::GetTimeScale;

#define MOX_SUBTITLE_READER_PROPERTY(Name, Type) MOX_READER_PROPERTY(CSubtitleProperties, Name, Type)
  MOX_SUBTITLE_READER_PROPERTY(Duration, long long)
  MOX_SUBTITLE_READER_PROPERTY(Format, unsigned int)
  MOX_SUBTITLE_READER_PROPERTY(BitRate, long long)
  MOX_SUBTITLE_READER_PROPERTY(Language, unsigned short)
  MOX_SUBTITLE_READER_PROPERTY(Region, unsigned short)
#undef MOX_SUBTITLE_READER_PROPERTY

 private:
  ReaderPropertySlots<long long> TimeScaleSlots_;
};

}  // namespace Corvane::Mox
