#pragma once
// CAudioProperties ("aud "): the description of a sound stream. The time
// scale is the sample rate, so times and durations count audio frames. Per
// channel it keeps a speaker label, a program, a content type and the
// channel's own coding (for coded data carried in a PCM channel). For the
// uncompressed formats the sample layout is derived from the format and the
// channel count and wins over the stored values.

#include "System/Media/MediaProperties.h"

namespace Corvane::Mox {

class CAudioProperties : public CMediaProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("aud ");
  static constexpr int MaximumChannels = 128;
  static constexpr int MaximumLayoutChannels = 16;

  // One channel of a standard layout.
  struct ChannelAssignment {
    int label;
    int program;
    int content;
  };
  // A channel-assignment layout of a standard ("r48 ", "r123", "2035").
  struct ChannelLayout {
    unsigned int standard;
    unsigned int layout;
    int channels;
    ChannelAssignment assignments[MaximumLayoutChannels];
  };

  CAudioProperties();
  explicit CAudioProperties(const CAudioProperties* source);

  bool IsType(unsigned int type) const override;

  long long GetSampleRate() const { return GetTimeScale(); }
  // Refuses a negative rate; sets the time scale.
  Result SetSampleRate(long long rate);
  int GetChannels() const { return channels_; }
  // Refuses more than 128 (and negative counts).
  Result SetChannels(int channels);

  // Per channel: an index ≥ 128 (or negative) is refused with
  // ResultArgumentOutOfRange; the plain getters answer 0 for it.
  int GetChannelLabel(int channel) const;
  Result GetChannelLabel(int channel, int& label) const;
  Result SetChannelLabel(int channel, int label);
  int GetChannelProgram(int channel) const;
  Result GetChannelProgram(int channel, int& program) const;
  Result SetChannelProgram(int channel, int program);
  int GetChannelContent(int channel) const;
  Result GetChannelContent(int channel, int& content) const;
  Result SetChannelContent(int channel, int content);
  unsigned int GetChannelCoding(int channel) const;
  Result GetChannelCoding(int channel, unsigned int& coding) const;
  Result SetChannelCoding(int channel, unsigned int coding);
  // Assigns labels, programs and contents from a standard layout; the channel
  // count becomes the layout's.
  Result SetChannelLayout(const ChannelLayout* layout);

  int GetBitsPerSample() const;
  // Refuses more than 64 (and negative values).
  Result SetBitsPerSample(int bits);
  int GetBytesPerSample() const { return GetBytesPerSample(GetFormat()); }
  // 0 for any format whose samples are not whole bytes of PCM.
  static int GetBytesPerSample(unsigned int format);
  int GetBytesPerFrame() const;
  Result SetBytesPerFrame(int bytes);
  int GetBytesPerPacket() const;
  Result SetBytesPerPacket(int bytes);
  int GetFramesPerPacket() const;
  Result SetFramesPerPacket(int frames);
  // Priming frames a decoder drops ("PrimingSamples"); 0 when not given.
  int GetDecodeDelay() const;

  // "L", "R", "C", ...; "1".."24" for the discrete labels 65536..65559; ""
  // for any other label.
  static const char* GetSpeakerIdentifier(int label);
  // The label of a short name in either spelling ("L" or "FL"); 0 when none.
  static int ParseSpeakerIdentifier(const char* name);
  // "commentary" .. "visually_impaired" for 1..10; "" otherwise.
  static const char* GetContentType(int content);
  // The first layout of standard and layout tags; null when none.
  static const ChannelLayout* GetChannelLayout(unsigned int standard, unsigned int layout);
  static int GetChannelLayoutCount();
  // The row at index in table order, or null.
  static const ChannelLayout* GetChannelLayoutAt(int index);

  int GetSize() const override { return 40 + 4 + 16 * channels_ + 16; }

 protected:
  Result WriteFields(CBinaryWriter* writer) const override;
  Result ReadFields(CBinaryReader* reader, int size) override;
  void Describe(CProperties* bag) const override;
  void HashFields(unsigned int& hash) const override;
  bool SameFields(const CMediaProperties* other) const override;

 private:
  // The row of the derived-layout table for the format, or null.
  struct Derived;
  static const Derived* FindDerived(unsigned int format);

  int channels_;
  int labels_[MaximumChannels];
  int programs_[MaximumChannels];
  int contents_[MaximumChannels];
  unsigned int codings_[MaximumChannels];
  int bitsPerSample_;
  int bytesPerFrame_;
  int bytesPerPacket_;
  int framesPerPacket_;
};

}  // namespace Corvane::Mox
