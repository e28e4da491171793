#pragma once
// The named shapes: each media kind in each shape. CVideoTransformFilter has
// a class of its own (VideoTransformFilter.h) for compute selection.

#include "System/Media/Filter/AudioFilter.h"
#include "System/Media/Filter/FanInFilterT.h"
#include "System/Media/Filter/FanOutFilterT.h"
#include "System/Media/Filter/MetadataFilter.h"
#include "System/Media/Filter/SubtitleFilter.h"
#include "System/Media/Filter/TransformFilterT.h"
#include "System/Media/Filter/VideoTransformFilter.h"

namespace Corvane::Mox {

using CAudioTransformFilter = CTransformFilterT<CAudioFilter>;
using CSubtitleTransformFilter = CTransformFilterT<CSubtitleFilter>;
using CMetadataTransformFilter = CTransformFilterT<CMetadataFilter>;
using CVideoFanInFilter = CFanInFilterT<CVideoFilter>;
using CAudioFanInFilter = CFanInFilterT<CAudioFilter>;
using CSubtitleFanInFilter = CFanInFilterT<CSubtitleFilter>;
using CVideoFanOutFilter = CFanOutFilterT<CVideoFilter>;
using CAudioFanOutFilter = CFanOutFilterT<CAudioFilter>;
using CSubtitleFanOutFilter = CFanOutFilterT<CSubtitleFilter>;

}  // namespace Corvane::Mox
