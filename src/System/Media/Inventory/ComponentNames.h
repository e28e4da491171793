#pragma once
// Display names of component codes, looked up in the registration table.
// Families are grouped: the filter families share one name space, container
// readers and writers another, packages a third.

namespace Corvane::Mox {

enum class ComponentNameSpace { Filter, Container, Package };

// The name of the first row of the space with the code, or null.
const char* FindComponentName(ComponentNameSpace space, unsigned int code);
// The class name registered with the code ("CVideoFormatConverter"), or null.
// A component's property namespace is its class name without the "C".
const char* FindComponentClassName(ComponentNameSpace space, unsigned int code);

}  // namespace Corvane::Mox
