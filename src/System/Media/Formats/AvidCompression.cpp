#include "System/Media/Formats/AvidCompression.h"

#include "System/Types.h"

namespace Corvane::Mox::AvidCompression {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

struct Entry {
  int id;
  unsigned int format;
  unsigned int equivalent;
  const char* detail;
};

const Entry kEntries[] = {
#define MOX_AVID_COMPRESSION(id, format, equivalent, detail) {id, format, equivalent, detail},
#include "System/Media/Formats/AvidCompression.def"
#undef MOX_AVID_COMPRESSION
};

// The table is short and rarely consulted (once per track when a file is
// opened), so a linear search is all it needs.
const Entry* Find(int id) {
  for (const Entry& entry : kEntries) {
    if (entry.id == id) return &entry;
  }
  return nullptr;
}

}  // namespace

unsigned int GetFormat(int id) {
  const Entry* entry = Find(id);
  return entry ? entry->format : 0;
}

unsigned int GetEquivalentFormat(int id) {
  const Entry* entry = Find(id);
  return entry ? entry->equivalent : 0;
}

const char* GetDetail(int id) {
  const Entry* entry = Find(id);
  return entry ? entry->detail : nullptr;
}

int GetCount() { return static_cast<int>(sizeof(kEntries) / sizeof(kEntries[0])); }

}  // namespace Corvane::Mox::AvidCompression
