#pragma once
// CContainerMediaWriter: a writer's track queue, for writers that interleave
// tracks on a thread of their own. Ready while it has room or no queue.

#include "System/Media/Container/ContainerMedia.h"

namespace Corvane::Mox {

class CContainerWriter;

class CContainerMediaWriter : public CContainerMedia {
 public:
  explicit CContainerMediaWriter(CContainerWriter* writer);
  bool IsReady() const override;
};

}  // namespace Corvane::Mox
