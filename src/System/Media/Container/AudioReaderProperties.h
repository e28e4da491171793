#pragma once
// CAudioReaderProperties: an audio track description that
// remembers, for each property a reader can learn from two places, the value
// each place gave (see CMediaReader and ReaderPropertySlots).

#include "System/Media/Container/MediaReader.h"
#include "System/Media/Audio/AudioProperties.h"

// The properties with a per-context record, besides the time scale.
#define MOX_AUDIO_READER_PROPERTIES(X) \
  X(Duration, long long) \
  X(Format, unsigned int) \
  X(BitRate, long long) \
  X(Language, unsigned short) \
  X(Region, unsigned short) \
  X(SampleRate, long long) \
  X(Channels, int) \
  X(BitsPerSample, int) \
  X(BytesPerFrame, int) \
  X(FramesPerPacket, int) \
  X(BytesPerPacket, int)

namespace Corvane::Mox {

class CAudioReaderProperties : public CAudioProperties {
 public:
  CAudioReaderProperties() = default;
  explicit CAudioReaderProperties(const CAudioProperties* source) : CAudioProperties(source) {}
  explicit CAudioReaderProperties(const CAudioReaderProperties* source);

  MOX_READER_TIME_SCALE(CAudioProperties)
#define MOX_AUDIO_READER_PROPERTY(Name, Type) MOX_READER_PROPERTY(CAudioProperties, Name, Type)
  MOX_AUDIO_READER_PROPERTIES(MOX_AUDIO_READER_PROPERTY)
#undef MOX_AUDIO_READER_PROPERTY
};

}  // namespace Corvane::Mox
