#pragma once
// CAudioConfigurationMap ("acmp"): the audio conversions a filter instance
// works out at run time (a channel mapper's routings, say); see
// CConfigurationMap for the order and the look-ups.

#include "System/Media/Audio/AudioConfiguration.h"
#include "System/Media/ConfigurationMap.h"

namespace Corvane::Mox {

class CAudioConfigurationTable;

extern template class CConfigurationMap<AudioConfiguration, CAudioConfiguration, CAudioProperties,
                                        CAudioConfigurationTable>;

class CAudioConfigurationMap
    : public CConfigurationMap<AudioConfiguration, CAudioConfiguration, CAudioProperties, CAudioConfigurationTable> {
 public:
  static constexpr unsigned int TypeCode = FourCC("acmp");

  CAudioConfigurationMap() : CConfigurationMap(TypeCode) {}
};

}  // namespace Corvane::Mox
