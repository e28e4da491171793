// Registers every component of the library in its family's registry, in the
// order of ComponentRegistrations.def. Registration runs once: when the
// library is loaded, or earlier if another library's static initialiser
// consults a registry first.

#include <mutex>

#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/VideoContainerWriter.h"
#include "System/Media/Container/Wav64ContainerReader.h"
#include "System/Media/Container/WavContainerReader.h"
#include "System/Media/Container/WavContainerWriter.h"
#include "System/Media/Container/Y4mContainerReader.h"
#include "System/Media/Container/Y4mContainerWriter.h"
#include "System/Media/Filter/AudioConverters/AudioFormatConverter.h"
#include "System/Media/Filter/AudioConverters/AudioPropertiesConverter.h"
#include "System/Media/Filter/AudioConverters/DeinterleaveConverter.h"
#include "System/Media/Filter/AudioDecompressors/AdpcmDecompressor.h"
#include "System/Media/Filter/AudioDecompressors/AppleImaAdpcmDecompressor.h"
#include "System/Media/Filter/AudioDecompressors/G711Decompressor.h"
#include "System/Media/Filter/AudioDecompressors/G726Decompressor.h"
#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecompressor.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Filter/VideoConverters/VideoFormatConverter.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Signal/SignalReader.h"
#include "System/Media/Signal/SignalWriter.h"

namespace Corvane::Mox {

namespace {

template <class Family>
void RegisterUnavailable(unsigned int code) {
  RObject<CComponentFactory<Family>> factory(new CUnavailableFactory<Family>(code));
  CFamilyInventory<Family>::AppendFactory(factory).ThrowIfFailed();
}

template <class Family, class Component>
void RegisterComponent(unsigned int code) {
  RObject<CComponentFactory<Family>> factory(new CInstanceFactory<Family, Component>());
  (void)code;  // the class names its own code
  CFamilyInventory<Family>::AppendFactory(factory).ThrowIfFailed();
}

void RegisterLibraryComponents() {
  // Every registry exists from the start, also those of families without
  // components, so none is created later by a reader on another thread.
#define MOX_COMPONENT_FAMILY(Family, Category, NameTable) CFamilyInventory<Family>::GetSingleton();
#include "System/Media/Inventory/ComponentFamilies.def"
#undef MOX_COMPONENT_FAMILY
#define MOX_UNAVAILABLE(Family, Code, Class, Name) RegisterUnavailable<Family>(FourCC(Code));
#define MOX_COMPONENT(Family, Code, Class, Name) RegisterComponent<Family, Class>(FourCC(Code));
#include "System/Media/Inventory/ComponentRegistrations.def"
#undef MOX_COMPONENT
#undef MOX_UNAVAILABLE
}

struct LoadTimeRegistration {
  LoadTimeRegistration() { EnsureLibraryComponents(); }
} const g_loadTimeRegistration;

}  // namespace

void EnsureLibraryComponents() {
  static std::once_flag once;
  std::call_once(once, RegisterLibraryComponents);
}

}  // namespace Corvane::Mox
