#include "System/Media/Filter/SubtitleFilter.h"

#include "System/Media/Filter/MediaKindFilterImpl.h"

namespace Corvane::Mox {

template class CMediaKindFilterT<CSubtitleSample, CSubtitleProperties, SubtitleConfiguration, CSubtitleConfiguration>;

}  // namespace Corvane::Mox
