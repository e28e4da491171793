#pragma once
// CSubtitleFilter: the base of subtitle filters.

#include "System/Media/Filter/MediaKindFilterT.h"
#include "System/Media/Subtitle/SubtitleConfiguration.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Subtitle/SubtitleSample.h"

namespace Corvane::Mox {

using CSubtitleKindFilter =
    CMediaKindFilterT<CSubtitleSample, CSubtitleProperties, SubtitleConfiguration, CSubtitleConfiguration>;
extern template class CMediaKindFilterT<CSubtitleSample, CSubtitleProperties, SubtitleConfiguration,
                                        CSubtitleConfiguration>;

class CSubtitleFilter : public CSubtitleKindFilter {
 public:
  explicit CSubtitleFilter(unsigned int componentCode) : CSubtitleKindFilter(componentCode) {}
};

}  // namespace Corvane::Mox
