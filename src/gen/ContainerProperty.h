#pragma once
// ContainerProperty::<Component>::<Name>: the property names of container readers and writers, with
// generated documentation (IPropertiesDocumentation::GetDocumentationT).

#include "System/PropertiesDocumentation.h"
#include "System/PropertyName.h"

namespace Corvane::Mox::ContainerProperty {
#define MOX_PROPERTY_TABLE "gen/ContainerProperty.def"
#include "gen/PropertyNamespaceDeclare.inc"
#undef MOX_PROPERTY_TABLE
}  // namespace Corvane::Mox::ContainerProperty
