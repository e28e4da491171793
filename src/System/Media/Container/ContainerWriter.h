#pragma once
// CContainerWriter: the base of the writers that store tracks in a media
// file. A writer is a property bag; its type code is its component code.

#include "System/Properties.h"

namespace Corvane::Mox {

class CString;

class CContainerWriter : public CProperties {
 public:
  explicit CContainerWriter(unsigned int componentCode) : CProperties(componentCode, nullptr) {}

  unsigned int GetComponentCode() const { return GetType(); }

  // A writer of the type for the file (kept as the "file" property), or null
  // when no available writer of that type exists.
  static CContainerWriter* Create(CString* path, unsigned int type);
};

// The writer type for a path, from its extension (case-insensitive): "ts"
// gives "m2ts", "mov" "mov ", "mp4" "mp4 "; 0 when the extension says nothing.
unsigned int GetContainerWriterType(CString* path);

}  // namespace Corvane::Mox
