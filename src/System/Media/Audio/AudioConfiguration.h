#pragma once
// Partial audio descriptions {Format, SampleRate, Channels, BitsPerSample}:
// 0 is "unspecified", a negative value v "anything except ~v".

#include "System/Object.h"

namespace Corvane::Mox {

class CAudioProperties;

struct AudioConfiguration {
  int format = 0;
  int sampleRate = 0;
  int channels = 0;
  int bitsPerSample = 0;

  bool IsFormatSpecified() const { return format != 0; }
  bool IsSampleRateSpecified() const { return sampleRate != 0; }
  bool IsChannelsSpecified() const { return channels != 0; }
  bool IsBitsPerSampleSpecified() const { return bitsPerSample != 0; }

  bool Matches(const AudioConfiguration& other) const;
  AudioConfiguration Qualify(const AudioConfiguration& other) const;
  bool IsQualified() const;
  static AudioConfiguration Create(const CAudioProperties* properties);
  void Apply(CAudioProperties* properties) const;

  friend bool operator==(const AudioConfiguration& a, const AudioConfiguration& b) {
    return a.format == b.format && a.sampleRate == b.sampleRate && a.channels == b.channels &&
           a.bitsPerSample == b.bitsPerSample;
  }
};

class CAudioConfiguration : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("acfg");

  CAudioConfiguration() : CObject(TypeCode) {}
  explicit CAudioConfiguration(const AudioConfiguration& configuration) : CObject(TypeCode), configuration_(configuration) {}

  const AudioConfiguration& GetConfiguration() const { return configuration_; }
  AudioConfiguration& GetConfiguration() { return configuration_; }
  bool Matches(const CAudioProperties* properties) const;
  bool Equals(const CObject* other) const override;
  int GetHashCode() const override;

 private:
  AudioConfiguration configuration_;
};

}  // namespace Corvane::Mox
