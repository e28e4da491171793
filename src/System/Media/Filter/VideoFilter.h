#pragma once
// CVideoFilter: the base of video filters. Adds picture samples from the
// filter's memory context and black pictures for gaps.

#include "System/Media/Filter/MediaKindFilterT.h"
#include "System/Media/Video/VideoConfiguration.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

class CMemoryContext;

using CVideoKindFilter = CMediaKindFilterT<CVideoSample, CVideoProperties, VideoConfiguration, CVideoConfiguration>;
extern template class CMediaKindFilterT<CVideoSample, CVideoProperties, VideoConfiguration, CVideoConfiguration>;

class CVideoFilter : public CVideoKindFilter {
 public:
  explicit CVideoFilter(unsigned int componentCode) : CVideoKindFilter(componentCode) {}

  // A sample over a linear buffer of length bytes, or over a picture buffer
  // laid out for the description; fails with "memory context is null"
  // before Begin (or without a context).
  virtual Result CreateSample(int length, CVideoSample*& sample);
  virtual Result CreateSample(const CVideoProperties* properties, CVideoSample*& sample);
  CVideoSample* CreateSample(int length);
  CVideoSample* CreateSample(const CVideoProperties* properties);

  // A black picture of the description from context (the filter's own when
  // null).
  Result CreateBlackSample(const CVideoProperties* properties, CMemoryContext* context, CVideoSample*& sample);
  static Result CreateBlackSample(const CVideoProperties* properties, CMemoryContext* context, bool unused,
                                  CVideoSample*& sample);

  Result CopySampleMetadata(CVideoSample* to, const CVideoSample* from) override;

  // The sample standing for a gap (a sample without data): a black picture of
  // the description carrying the gap's metadata and duration.
  Result CreateGapSample(const CVideoProperties* properties, const CVideoSample* gap, CVideoSample*& sample);
};

}  // namespace Corvane::Mox
