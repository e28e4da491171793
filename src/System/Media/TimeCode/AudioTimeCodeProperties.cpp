#include "System/Media/TimeCode/AudioTimeCodeProperties.h"

#include <cstdio>

#include "System/Properties.h"
#include "System/Text.h"

namespace Corvane::Mox {

CAudioTimeCodeProperties::CAudioTimeCodeProperties(const CTimeCode& timeCode, Rational<long long> timeCodeRate)
    : CMediaPropertiesExtension(TypeCode), timeCode_(timeCode), timeCodeRate_(timeCodeRate) {}

Result CAudioTimeCodeProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  RObject<CString> text(timeCode_.ToString(';'));
  if (text) bag->SetProperty("time_code", text.Get());
  char rate[48];
  std::snprintf(rate, sizeof(rate), "%lld/%lld", timeCodeRate_.numerator, timeCodeRate_.denominator);
  bag->SetProperty("time_code_rate", rate);
  return bag->SetProperty("drop_frame", timeCode_.IsDropFrame());
}

}  // namespace Corvane::Mox
