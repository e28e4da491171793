#include "System/Media/Filter/FilterType.h"

#include "System/Media/Inventory/ComponentNames.h"

namespace Corvane::Mox {

const char* FilterType::GetName(unsigned int code) { return FindComponentName(ComponentNameSpace::Filter, code); }

}  // namespace Corvane::Mox
