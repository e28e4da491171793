#pragma once
// CAudioReaderProperties: an audio track description that remembers, per
// property, the value each place a reader learns it from gave (see
// CMediaReader and ReaderPropertySlots).

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Container/MediaReader.h"

namespace Corvane::Mox {

class CAudioReaderProperties : public CAudioProperties {
 public:
  CAudioReaderProperties() = default;
  explicit CAudioReaderProperties(const CAudioProperties* source) : CAudioProperties(source) {}
  explicit CAudioReaderProperties(const CAudioReaderProperties* source);

  // Outside 1..2,000,000,000 throws ResultArgumentOutOfRange.
  Result SetTimeScale(long long timeScale) { return SetTimeScale(CMediaReader::Unspecified, timeScale); }
  Result SetTimeScale(int context, long long timeScale);
  long long GetTimeScale(int context) const { return TimeScaleSlots_.Get(context); }
  using CAudioProperties::GetTimeScale;

#define MOX_AUDIO_READER_PROPERTY(Name, Type) MOX_READER_PROPERTY(CAudioProperties, Name, Type)
  MOX_AUDIO_READER_PROPERTY(Duration, long long)
  MOX_AUDIO_READER_PROPERTY(Format, unsigned int)
  MOX_AUDIO_READER_PROPERTY(BitRate, long long)
  MOX_AUDIO_READER_PROPERTY(Language, unsigned short)
  MOX_AUDIO_READER_PROPERTY(Region, unsigned short)
  MOX_AUDIO_READER_PROPERTY(SampleRate, long long)
  MOX_AUDIO_READER_PROPERTY(Channels, int)
  MOX_AUDIO_READER_PROPERTY(BitsPerSample, int)
  MOX_AUDIO_READER_PROPERTY(BytesPerFrame, int)
  MOX_AUDIO_READER_PROPERTY(FramesPerPacket, int)
  MOX_AUDIO_READER_PROPERTY(BytesPerPacket, int)
#undef MOX_AUDIO_READER_PROPERTY

 private:
  ReaderPropertySlots<long long> TimeScaleSlots_;
};

}  // namespace Corvane::Mox
