#pragma once
// PackageType: display names of the package types.

namespace Corvane::Mox {

class PackageType {
 public:
  // The display name of the package type, or null for an unknown code.
  static const char* GetName(unsigned int code);
};

}  // namespace Corvane::Mox
