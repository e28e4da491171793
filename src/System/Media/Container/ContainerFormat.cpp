#include "System/Media/Container/ContainerFormat.h"

#include "System/Media/Inventory/ComponentNames.h"

namespace Corvane::Mox {

const char* ContainerFormat::GetName(unsigned int code) {
  return FindComponentName(ComponentNameSpace::Container, code);
}

// No container kind lists its extensions yet; writer types come from the
// fixed extensions of GetContainerWriterType until the format table does.
const char* ContainerFormat::GetFileExtension(unsigned int, int) { return nullptr; }

}  // namespace Corvane::Mox
