#include "System/Media/Audio/AudioConfigurationMap.h"

#include "System/Media/Audio/AudioConfigurationTable.h"
#include "System/Media/ConfigurationMapImpl.h"

namespace Corvane::Mox {

template class CConfigurationMap<AudioConfiguration, CAudioConfiguration, CAudioProperties, CAudioConfigurationTable>;

}  // namespace Corvane::Mox
