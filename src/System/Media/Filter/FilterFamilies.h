#pragma once
// The filter families. Each has its own component registry, and scripts name
// them by keyword (VideoConverter, AudioDecompressor, ...). Fan-in filters
// take several inputs, fan-out filters produce several outputs.

#include "System/Media/Filter/MediaFilter.h"

namespace Corvane::Mox {

#define MOX_FILTER_FAMILY(Family)                                                 \
  class Family : public CMediaFilter {                                            \
   public:                                                                        \
    explicit Family(unsigned int componentCode) : CMediaFilter(componentCode) {} \
  };

MOX_FILTER_FAMILY(CVideoAnalyzer)
MOX_FILTER_FAMILY(CVideoCompressor)
MOX_FILTER_FAMILY(CVideoConverter)
MOX_FILTER_FAMILY(CVideoDecompressor)
MOX_FILTER_FAMILY(CVideoFanInAnalyzer)
MOX_FILTER_FAMILY(CVideoFanInConverter)
MOX_FILTER_FAMILY(CVideoFanOutCompressor)
MOX_FILTER_FAMILY(CAudioAnalyzer)
MOX_FILTER_FAMILY(CAudioCompressor)
MOX_FILTER_FAMILY(CAudioConverter)
MOX_FILTER_FAMILY(CAudioDecompressor)
MOX_FILTER_FAMILY(CAudioFanInAnalyzer)
MOX_FILTER_FAMILY(CAudioFanInConverter)
MOX_FILTER_FAMILY(CAudioFanOutConverter)
MOX_FILTER_FAMILY(CSubtitleConverter)
MOX_FILTER_FAMILY(CSubtitleFanInConverter)
MOX_FILTER_FAMILY(CMetadataAnalyzer)
MOX_FILTER_FAMILY(CMetadataConverter)

#undef MOX_FILTER_FAMILY

}  // namespace Corvane::Mox
