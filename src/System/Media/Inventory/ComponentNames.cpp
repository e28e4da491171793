#include "System/Media/Inventory/ComponentNames.h"

#include "System/Types.h"

namespace Corvane::Mox {

namespace {

// Which name space each family's rows belong to.
template <class Family>
struct FamilySpace {
  static constexpr ComponentNameSpace value = ComponentNameSpace::Filter;
};

#define MOX_SPACE(Family, Space)                                   \
  class Family;                                                    \
  template <>                                                      \
  struct FamilySpace<Family> {                                     \
    static constexpr ComponentNameSpace value = ComponentNameSpace::Space; \
  };
MOX_SPACE(CContainerReader, Container)
MOX_SPACE(CContainerWriter, Container)
MOX_SPACE(CPackage, Package)
#undef MOX_SPACE

#define MOX_FAMILY_DECLARATION(Family, Code, Class, Name) class Family;
#define MOX_UNAVAILABLE MOX_FAMILY_DECLARATION
#define MOX_COMPONENT MOX_FAMILY_DECLARATION
#include "System/Media/Inventory/ComponentRegistrations.def"
#undef MOX_COMPONENT
#undef MOX_UNAVAILABLE
#undef MOX_FAMILY_DECLARATION

struct Row {
  ComponentNameSpace space;
  unsigned int code;
  const char* name;
  const char* className;
};

constexpr Row kRows[] = {
#define MOX_ROW(Family, Code, Class, Name) {FamilySpace<Family>::value, FourCC(Code), Name, #Class},
#define MOX_UNAVAILABLE MOX_ROW
#define MOX_COMPONENT MOX_ROW
#include "System/Media/Inventory/ComponentRegistrations.def"
#undef MOX_COMPONENT
#undef MOX_UNAVAILABLE
#undef MOX_ROW
};

// Table order: the first row of a code wins.
const Row* FindRow(ComponentNameSpace space, unsigned int code) {
  for (const Row& row : kRows) {
    if (row.space == space && row.code == code) return &row;
  }
  return nullptr;
}

}  // namespace

const char* FindComponentName(ComponentNameSpace space, unsigned int code) {
  const Row* row = FindRow(space, code);
  return row ? row->name : nullptr;
}

const char* FindComponentClassName(ComponentNameSpace space, unsigned int code) {
  const Row* row = FindRow(space, code);
  return row ? row->className : nullptr;
}

}  // namespace Corvane::Mox
