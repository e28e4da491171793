#include "System/Media/Package/PackageType.h"

#include "System/Media/Inventory/ComponentNames.h"
#include "System/Types.h"

namespace Corvane::Mox {

const char* PackageType::GetName(unsigned int code) {
  // One type is named without a package class of its own.
  if (code == FourCC("hlop")) return "HLS Optimized Package";
  return FindComponentName(ComponentNameSpace::Package, code);
}

}  // namespace Corvane::Mox
