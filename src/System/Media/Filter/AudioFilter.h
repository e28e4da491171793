#pragma once
// CAudioFilter: the base of audio filters. Adds linear sample buffers from
// the filter's memory context and silence for gaps.

#include "System/Media/Audio/AudioConfiguration.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Filter/MediaKindFilterT.h"

namespace Corvane::Mox {

using CAudioKindFilter = CMediaKindFilterT<CAudioSample, CAudioProperties, AudioConfiguration, CAudioConfiguration>;
extern template class CMediaKindFilterT<CAudioSample, CAudioProperties, AudioConfiguration, CAudioConfiguration>;

class CAudioFilter : public CAudioKindFilter {
 public:
  explicit CAudioFilter(unsigned int componentCode) : CAudioKindFilter(componentCode) {}

  // A sample over a linear buffer of length bytes; "memory context is null"
  // without a context.
  virtual Result CreateSample(int length, CAudioSample*& sample);
  CAudioSample* CreateSample(int length);

  // duration frames of silence of channels channels in format; unsigned
  // formats sit at their midpoint, G.711 at its code for zero.
  Result CreateSilentSample(long long duration, int channels, unsigned int format, CAudioSample*& sample);
  CAudioSample* CreateSilentSample(long long duration, int channels, unsigned int format);

  // The sample standing for a gap (a sample without data): silence of the
  // gap's duration in the description's channels and format, carrying the
  // gap's metadata.
  Result CreateGapSample(const CAudioProperties* properties, const CAudioSample* gap, CAudioSample*& sample);
};

}  // namespace Corvane::Mox
