#pragma once
// CSubtitleConfigurationMap ("scmp"): the subtitle conversions a filter
// instance works out at run time (a converter's output frame rates, say); see
// CConfigurationMap for the order and the look-ups.

#include "System/Media/ConfigurationMap.h"
#include "System/Media/Subtitle/SubtitleConfiguration.h"

namespace Corvane::Mox {

class CSubtitleConfigurationTable;

extern template class CConfigurationMap<SubtitleConfiguration, CSubtitleConfiguration, CSubtitleProperties,
                                        CSubtitleConfigurationTable>;

class CSubtitleConfigurationMap : public CConfigurationMap<SubtitleConfiguration, CSubtitleConfiguration,
                                                           CSubtitleProperties, CSubtitleConfigurationTable> {
 public:
  static constexpr unsigned int TypeCode = FourCC("scmp");

  CSubtitleConfigurationMap() : CConfigurationMap(TypeCode) {}
};

}  // namespace Corvane::Mox
