#pragma once
// CAudioTimeCodeProperties ("atc "): the time code at the start of an audio
// stream and the rate it counts at, for audio that carries time code (a
// Broadcast Wave file's iXML time stamp, say).

#include "System/Media/PropertiesExtension.h"
#include "System/Media/TimeCode/TimeCode.h"
#include "System/Rational.h"

namespace Corvane::Mox {

class CAudioTimeCodeProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("atc ");

  CAudioTimeCodeProperties(const CTimeCode& timeCode, Rational<long long> timeCodeRate);

  const CTimeCode& GetTimeCode() const { return timeCode_; }
  Rational<long long> GetTimeCodeRate() const { return timeCodeRate_; }
  // "time_code" (with ";" before the frames when drop-frame),
  // "time_code_rate" ("n/d") and "drop_frame".
  Result GetProperties(CProperties* bag) const override;

 private:
  CTimeCode timeCode_;
  Rational<long long> timeCodeRate_;
};

}  // namespace Corvane::Mox
