#pragma once
// CContainerMediaReader: a reader's track queue. A consumer may read when the
// queue holds something, when there is no queue, or when the reader stopped
// (it then gets null rather than blocking on a reader that will not fill).

#include "System/Media/Container/ContainerMedia.h"

namespace Corvane::Mox {

class CContainerReader;

class CContainerMediaReader : public CContainerMedia {
 public:
  explicit CContainerMediaReader(CContainerReader* reader);
  bool IsReady() const override;
};

}  // namespace Corvane::Mox
