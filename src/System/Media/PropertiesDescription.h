#pragma once
// IPropertiesDescription: a mixin for objects that can describe themselves
// as a property bag, for logs and for a host's inspection.

namespace Corvane::Mox {

class CProperties;

class IPropertiesDescription {
 public:
  virtual ~IPropertiesDescription() = default;
  // A new bag (acquired) describing the object.
  virtual CProperties* GetDescriptiveRepresentation() const = 0;
};

}  // namespace Corvane::Mox
