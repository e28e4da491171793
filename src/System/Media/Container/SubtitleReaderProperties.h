#pragma once
// CSubtitleReaderProperties: a subtitle track description that
// remembers, for each property a reader can learn from two places, the value
// each place gave (see CMediaReader and ReaderPropertySlots).

#include "System/Media/Container/MediaReader.h"
#include "System/Media/Subtitle/SubtitleProperties.h"

// The properties with a per-context record, besides the time scale.
#define MOX_SUBTITLE_READER_PROPERTIES(X) \
  X(Duration, long long) \
  X(Format, unsigned int) \
  X(BitRate, long long) \
  X(Language, unsigned short) \
  X(Region, unsigned short)

namespace Corvane::Mox {

class CSubtitleReaderProperties : public CSubtitleProperties {
 public:
  CSubtitleReaderProperties() = default;
  explicit CSubtitleReaderProperties(const CSubtitleProperties* source) : CSubtitleProperties(source) {}
  explicit CSubtitleReaderProperties(const CSubtitleReaderProperties* source);

  MOX_READER_TIME_SCALE(CSubtitleProperties)
#define MOX_SUBTITLE_READER_PROPERTY(Name, Type) MOX_READER_PROPERTY(CSubtitleProperties, Name, Type)
  MOX_SUBTITLE_READER_PROPERTIES(MOX_SUBTITLE_READER_PROPERTY)
#undef MOX_SUBTITLE_READER_PROPERTY
  MOX_READER_LETTER_FORMS()
};

}  // namespace Corvane::Mox
