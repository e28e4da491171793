#pragma once
// FilterType: the table of filter type codes, each with its parent (the
// family type: "vcnv" for video converters, "adec" for audio decompressors,
// ...) and its display name.

namespace Corvane::Mox {

class FilterType {
 public:
  // Rows in the table.
  static int GetCount();
  // The code of row i; 0 outside the table.
  static unsigned int GetType(int index);
  // The name of the row of a code, or null.
  static const char* GetName(unsigned int type);
  // The parent of a code; 0 for a root or an unknown code.
  static unsigned int GetParentType(unsigned int type);
  // The root reached through the parents; 0 for an unknown code.
  static unsigned int GetCanonicalType(unsigned int type);
};

}  // namespace Corvane::Mox
