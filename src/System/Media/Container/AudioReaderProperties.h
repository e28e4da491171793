#pragma once
// CAudioReaderProperties: an audio track description that
// remembers, for each property a reader can learn from two places, the value
// each place gave (see CMediaReader and ReaderPropertySlots). The channel
// label, program, content and coding are kept so per channel index.

#include <cstddef>
#include <vector>

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Container/MediaReader.h"

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

// The per-channel properties with a per-context record.
#define MOX_AUDIO_READER_CHANNEL_PROPERTIES(X) \
  X(ChannelLabel, int) \
  X(ChannelProgram, int) \
  X(ChannelContent, int) \
  X(ChannelCoding, unsigned int)

namespace Corvane::Mox {

// One per-channel property's record: a ReaderPropertySlots per channel
// index, grown to the highest channel recorded (most tracks have a few
// channels of the 128 a description can hold).
template <class T>
struct ReaderChannelSlots {
  std::vector<ReaderPropertySlots<T>> channels;

  static bool IsValidChannel(int channel) { return channel >= 0 && channel < CAudioProperties::MaximumChannels; }

  // As ReaderPropertySlots::Assign; a channel outside the description's
  // range fails with ResultArgumentOutOfRange (after the context check).
  template <class Apply>
  Result Assign(int context, int channel, T value, Apply apply) {
    CMediaReader::CheckContext(context);
    if (!IsValidChannel(channel)) return ResultArgumentOutOfRange("channel %d", channel);
    const auto index = static_cast<std::size_t>(channel);
    if (channels.size() <= index) channels.resize(index + 1);
    return channels[index].Assign(context, value, apply);
  }
  // The value the context gave the channel; zero when it gave none.
  T Get(int context, int channel) const {
    CMediaReader::CheckContext(context);
    const auto index = static_cast<std::size_t>(channel);
    return IsValidChannel(channel) && index < channels.size() ? channels[index].Get(context) : T();
  }
  bool IsSet(int context, int channel) const {
    CMediaReader::CheckContext(context);
    const auto index = static_cast<std::size_t>(channel);
    return IsValidChannel(channel) && index < channels.size() && channels[index].IsSet(context);
  }
};

}  // namespace Corvane::Mox

// Declares Set<Name>(channel, value), Set<Name>(context, channel, value),
// Get<Name>(context, channel) and Is<Name>Set(context, channel) over Base's
// own per-channel Set<Name>. The context is typed as a PropertyContext: with
// a plain int, Get<Name>(context, channel) would collide with the
// description's Get<Name>(channel, int& value).
#define MOX_READER_CHANNEL_PROPERTY(Base, Name, Type)                                                           \
 public:                                                                                                        \
  Result Set##Name(int channel, Type value) { return Set##Name(CMediaReader::Unspecified, channel, value); }   \
  Result Set##Name(CMediaReader::PropertyContext context, int channel, Type value) {                            \
    return Name##Slots_.Assign(context, channel, value,                                                         \
                               [this, channel](Type v) { return Base::Set##Name(channel, v); });                \
  }                                                                                                             \
  Type Get##Name(CMediaReader::PropertyContext context, int channel) const {                                    \
    return Name##Slots_.Get(context, channel);                                                                  \
  }                                                                                                             \
  using Base::Get##Name;                                                                                        \
  bool Is##Name##Set(CMediaReader::PropertyContext context, int channel) const {                                \
    return Name##Slots_.IsSet(context, channel);                                                                \
  }                                                                                                             \
                                                                                                                \
 private:                                                                                                       \
  ReaderChannelSlots<Type> Name##Slots_;

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
  MOX_READER_LETTER_FORMS()
#define MOX_AUDIO_READER_CHANNEL_PROPERTY(Name, Type) MOX_READER_CHANNEL_PROPERTY(CAudioProperties, Name, Type)
  MOX_AUDIO_READER_CHANNEL_PROPERTIES(MOX_AUDIO_READER_CHANNEL_PROPERTY)
#undef MOX_AUDIO_READER_CHANNEL_PROPERTY
};

}  // namespace Corvane::Mox
