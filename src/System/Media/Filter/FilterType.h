#pragma once
// FilterType: display names of filter component codes.

namespace Corvane::Mox {

class FilterType {
 public:
  // The name of the first filter registered under the code, or null.
  static const char* GetName(unsigned int code);
};

}  // namespace Corvane::Mox
