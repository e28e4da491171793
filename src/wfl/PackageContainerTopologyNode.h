#pragma once
// CPackageContainerTopologyNode ("pctn"): a package container in a topology.
// It records one track entry per input; the package media entries come with
// the package components.

#include "wfl/SinkTopologyNode.h"

namespace Corvane::Mox::WFL {

class CPackageContainerTopologyNode : public CSinkTopologyNode {
 public:
  explicit CPackageContainerTopologyNode(CObject* container) : CSinkTopologyNode(PackageContainerNode, container) {}

  CObject* GetPackageContainer() const { return GetComponent(); }  // borrowed
};

}  // namespace Corvane::Mox::WFL
