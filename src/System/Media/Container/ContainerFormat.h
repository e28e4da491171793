#pragma once
// ContainerFormat: what the library knows about each container kind by its
// four-character code: display name and file extensions.

namespace Corvane::Mox {

class ContainerFormat {
 public:
  // The display name of the container kind, or null for an unknown code.
  static const char* GetName(unsigned int code);
  // The n-th file extension (without dot) of the kind, or null.
  static const char* GetFileExtension(unsigned int code, int n);
};

}  // namespace Corvane::Mox
