#include "System/Media/Subtitle/SubtitleConfigurationTable.h"

#include "System/Media/ConfigurationTableImpl.h"

namespace Corvane::Mox {

template class CConfigurationTable<SubtitleConfiguration, CSubtitleConfiguration, CSubtitleProperties>;

}  // namespace Corvane::Mox
