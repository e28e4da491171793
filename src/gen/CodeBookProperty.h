#pragma once
// CodeBookProperty::<Component>::<Name>: the property names of filters, with
// generated documentation (IPropertiesDocumentation::GetDocumentationT).

#include "System/PropertiesDocumentation.h"
#include "System/PropertyName.h"

namespace Corvane::Mox::CodeBookProperty {
#define MOX_PROPERTY_TABLE "gen/CodeBookProperty.def"
#include "gen/PropertyNamespaceDeclare.inc"
#undef MOX_PROPERTY_TABLE
}  // namespace Corvane::Mox::CodeBookProperty
