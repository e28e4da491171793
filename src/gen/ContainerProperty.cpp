#include "gen/ContainerProperty.h"

#include "System/Properties.h"

namespace Corvane::Mox::ContainerProperty {
#define MOX_PROPERTY_TABLE "gen/ContainerProperty.def"
#define MOX_PROPERTY_PREFIX "ContainerProperty::"
#include "gen/PropertyNamespaceDefine.inc"
#undef MOX_PROPERTY_PREFIX
#undef MOX_PROPERTY_TABLE
}  // namespace Corvane::Mox::ContainerProperty
