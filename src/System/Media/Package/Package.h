#pragma once
// CPackage: the base of adaptive-streaming and delivery packages (HLS, DASH,
// CMAF, Smooth Streaming). A package writes one or more package containers
// under a path. A property bag whose type code is its package type.

#include "System/Properties.h"

namespace Corvane::Mox {

class CPackageContainer;
class CString;

class CPackage : public CProperties {
 public:
  explicit CPackage(unsigned int packageType) : CProperties(packageType, nullptr) {}

  unsigned int GetPackageType() const { return GetType(); }

  // A new package of the type rooted at path (kept as the "file" property),
  // or null when no package of that type is available.
  static CPackage* Create(CString* path, unsigned int packageType);

  // A new container of the package (type 0: the package's default kind).
  virtual Result CreateContainer(unsigned int containerType, CPackageContainer*& container);
};

}  // namespace Corvane::Mox
