#include "gen/CodeBookProperty.h"

#include "System/Properties.h"

namespace Corvane::Mox::CodeBookProperty {
#define MOX_PROPERTY_TABLE "gen/CodeBookProperty.def"
#define MOX_PROPERTY_PREFIX "CodeBookProperty::"
#include "gen/PropertyNamespaceDefine.inc"
#undef MOX_PROPERTY_PREFIX
#undef MOX_PROPERTY_TABLE
}  // namespace Corvane::Mox::CodeBookProperty
