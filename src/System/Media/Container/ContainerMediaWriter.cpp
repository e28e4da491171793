#include "System/Media/Container/ContainerMediaWriter.h"

#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/MediaSampleQueue.h"

namespace Corvane::Mox {

CContainerMediaWriter::CContainerMediaWriter(CContainerWriter* writer) : CContainerMedia(writer) {}

bool CContainerMediaWriter::IsReady() const {
  CObject::CAutoLock lock(GetOwner());
  CMediaSampleQueue* queue = GetQueue();
  return !queue || !queue->IsFull();
}

}  // namespace Corvane::Mox
