#include "System/Media/Package/Package.h"

#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Package/PackageContainer.h"

namespace Corvane::Mox {

CPackage* CPackage::Create(CString* path, unsigned int packageType) {
  CPackage* package = CFamilyInventory<CPackage>::CreateAvailable(packageType);
  if (package && path) package->SetProperty("file", path);
  return package;
}

Result CPackage::CreateContainer(unsigned int containerType, CPackageContainer*& container) {
  container = new CPackageContainer(this, containerType);
  return ResultOK();
}

}  // namespace Corvane::Mox
