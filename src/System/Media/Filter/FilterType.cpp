#include "System/Media/Filter/FilterType.h"

#include "System/Types.h"

namespace Corvane::Mox {

namespace {

struct Row {
  unsigned int type;
  unsigned int parent;
  const char* name;
};

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

constexpr Row kRows[] = {
#define MOX_FILTER_TYPE(type, parent, name) {type, parent, name},
#include "System/Media/Filter/FilterType.def"
#undef MOX_FILTER_TYPE
};

constexpr int kCount = static_cast<int>(sizeof kRows / sizeof kRows[0]);

const Row* Find(unsigned int type) {
  for (const Row& row : kRows)
    if (row.type == type) return &row;
  return nullptr;
}

}  // namespace

int FilterType::GetCount() { return kCount; }

unsigned int FilterType::GetType(int index) { return index >= 0 && index < kCount ? kRows[index].type : 0; }

const char* FilterType::GetName(unsigned int type) {
  const Row* row = Find(type);
  return row ? row->name : nullptr;
}

unsigned int FilterType::GetParentType(unsigned int type) {
  const Row* row = Find(type);
  return row ? row->parent : 0;
}

unsigned int FilterType::GetCanonicalType(unsigned int type) {
  const Row* row = Find(type);
  // Parents are roots in this table, but follow the links whatever the depth.
  for (int guard = 0; row && row->parent != 0 && guard < kCount; ++guard) row = Find(row->parent);
  return row ? row->type : 0;
}

}  // namespace Corvane::Mox
