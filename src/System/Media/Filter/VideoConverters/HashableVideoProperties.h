#pragma once
// CHashableVideoProperties: a picture description as a node of the planner's
// graph. Two descriptions are the same node when their format, dimensions
// and colour fields (depth, subsampling, siting, matrix, primaries, transfer,
// range) agree; the time fields do not matter to a pixel conversion.

#include <cstddef>

#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

class CHashableVideoProperties : public CVideoProperties {
 public:
  explicit CHashableVideoProperties(const CVideoProperties* source) : CVideoProperties(source) {}

  size_t GetNodeHash() const;
  bool SameNode(const CVideoProperties* other) const;
};

}  // namespace Corvane::Mox
