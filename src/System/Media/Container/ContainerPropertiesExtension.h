#pragma once
// CContainerPropertiesExtension: the base of the typed objects a container
// carries beside its property bag (for example the variances its reader
// found). One per type code per container.

#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

class CContainerPropertiesExtension : public CPropertiesExtension {
 public:
  explicit CContainerPropertiesExtension(unsigned int tag) : CPropertiesExtension(tag) {}
};

}  // namespace Corvane::Mox
