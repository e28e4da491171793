#include "System/Media/Package/PackageContainer.h"

#include "System/Media/Package/Package.h"

namespace Corvane::Mox {

CPackageContainer::CPackageContainer(CPackage* package, unsigned int containerType)
    : CProperties(TypeCode, nullptr), package_(package), containerType_(containerType) {
  if (package_) package_->Acquire();
}

CPackageContainer::~CPackageContainer() {
  if (package_) package_->Release();
}

}  // namespace Corvane::Mox
