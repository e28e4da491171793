#pragma once
// CSubtitleProperties ("sub "): the description of a subtitle stream. Its
// frame duration is the sample duration and its frame rate the media sample
// rate; it adds no fields of its own.

#include "System/Media/MediaProperties.h"

namespace Corvane::Mox {

class CSubtitleProperties : public CMediaProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("sub ");

  CSubtitleProperties();
  explicit CSubtitleProperties(const CSubtitleProperties* source);

  bool IsType(unsigned int type) const override;

  Rational<long long> GetFrameRate() const { return GetMediaSampleRate(); }
  Result SetFrameRate(Rational<long long> rate) { return SetMediaSampleRate(rate); }
  long long GetFrameDuration() const { return GetSampleDuration(); }
  Result SetFrameDuration(long long duration) { return SetSampleDuration(duration); }

 protected:
  void HashFields(unsigned int& hash) const override;
};

}  // namespace Corvane::Mox
