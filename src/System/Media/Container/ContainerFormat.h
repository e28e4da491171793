#pragma once
// ContainerFormat: what the library knows about each container kind by its
// four-character code: parent kind, display name, MIME types and file
// extensions (the container format table).

namespace Corvane::Mox {

class ContainerFormat {
 public:
  static int GetFormatCount();
  // The code of row `index`, 0 outside the table.
  static unsigned int GetFormat(int index);
  // The display name of the container kind, or null for an unknown code.
  static const char* GetName(unsigned int code);
  // n = 0: the first MIME type; n = 1..8: the n-th; null otherwise.
  static const char* GetMimeType(unsigned int code, int n);
  // As GetMimeType, but a kind without extensions takes its parent's.
  static const char* GetFileExtension(unsigned int code, int n);
  // The root of the kind's parent chain (the code itself without a parent);
  // 0 for an unknown code.
  static unsigned int GetCanonicalFormat(unsigned int code);
};

}  // namespace Corvane::Mox
