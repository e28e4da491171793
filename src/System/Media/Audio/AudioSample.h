#pragma once
// CAudioSample ("aud#"): a run of audio frames; its duration counts frames.

#include "System/Media/MediaSample.h"

namespace Corvane::Mox {

class CAudioProperties;

class CAudioSample : public CMediaSample {
 public:
  static constexpr unsigned int TypeCode = FourCC("aud#");

  explicit CAudioSample(long long duration);
  explicit CAudioSample(const CAudioSample* sample);

  // Duration ÷ the description's frames per packet; 0 when that is 0.
  long long GetPackets(CAudioProperties* properties) const;
};

}  // namespace Corvane::Mox
