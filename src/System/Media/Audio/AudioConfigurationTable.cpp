#include "System/Media/Audio/AudioConfigurationTable.h"

#include "System/Media/ConfigurationTableImpl.h"

namespace Corvane::Mox {

template class CConfigurationTable<AudioConfiguration, CAudioConfiguration, CAudioProperties>;

}  // namespace Corvane::Mox
