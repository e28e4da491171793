#pragma once
// CPackageContainer: one output of a package (a rendition or a segment
// stream), fed by the topology like a container writer.

#include "System/Properties.h"

namespace Corvane::Mox {

class CPackage;

class CPackageContainer : public CProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("pcnt");

  // Keeps a reference to its package.
  CPackageContainer(CPackage* package, unsigned int containerType);
  ~CPackageContainer() override;

  CPackage* GetPackage() const { return package_; }
  unsigned int GetContainerType() const { return containerType_; }

 private:
  CPackage* package_;
  unsigned int containerType_;
};

}  // namespace Corvane::Mox
