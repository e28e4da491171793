#include "System/Media/Signal/SignalType.h"

#include "System/Types.h"

namespace Corvane::Mox {

namespace {

struct SignalTypeRow {
  unsigned int code;
  const char* name;
};

constexpr SignalTypeRow kSignalTypes[] = {
#define MOX_SIGNAL_TYPE(Code, Name) {FourCC(Code), Name},
#include "System/Media/Signal/SignalTypes.def"
#undef MOX_SIGNAL_TYPE
};

}  // namespace

const char* SignalType::GetName(unsigned int code) {
  for (const SignalTypeRow& row : kSignalTypes) {
    if (row.code == code) return row.name;
  }
  return nullptr;
}

}  // namespace Corvane::Mox
