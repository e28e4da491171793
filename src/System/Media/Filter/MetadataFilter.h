#pragma once
// CMetadataFilter: the base of metadata stages. Metadata travels with video,
// so these filters take and give video descriptions and samples.

#include "System/Media/Filter/VideoFilter.h"

namespace Corvane::Mox {

class CMetadataFilter : public CVideoFilter {
 public:
  explicit CMetadataFilter(unsigned int componentCode) : CVideoFilter(componentCode) {}
};

}  // namespace Corvane::Mox
