#include "System/Media/Container/ContainerMediaReader.h"

#include "System/Media/Container/ContainerReader.h"
#include "System/Media/MediaSampleQueue.h"

namespace Corvane::Mox {

CContainerMediaReader::CContainerMediaReader(CContainerReader* reader) : CContainerMedia(reader) {}

bool CContainerMediaReader::IsReady() const {
  CObject::CAutoLock lock(GetOwner());
  CMediaSampleQueue* queue = GetQueue();
  if (!queue || !queue->IsEmpty()) return true;
  return !GetOwner()->IsReady();
}

}  // namespace Corvane::Mox
