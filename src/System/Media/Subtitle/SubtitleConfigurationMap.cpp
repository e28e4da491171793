#include "System/Media/Subtitle/SubtitleConfigurationMap.h"

#include "System/Media/ConfigurationMapImpl.h"
#include "System/Media/Subtitle/SubtitleConfigurationTable.h"

namespace Corvane::Mox {

template class CConfigurationMap<SubtitleConfiguration, CSubtitleConfiguration, CSubtitleProperties,
                                 CSubtitleConfigurationTable>;

}  // namespace Corvane::Mox
