#include "System/Media/Container/MediaReader.h"

namespace Corvane::Mox {

const char* CMediaReader::GetPropertyContextName(int context) {
  static const char* const kNames[ContextCount] = {"unspecified", "container", "essence"};
  return context >= 0 && context < ContextCount ? kNames[context] : nullptr;
}

void CMediaReader::CheckContext(int context) {
  if (context < 0 || context >= ContextCount) throw ResultArgumentOutOfRange("property context %d", context);
}

}  // namespace Corvane::Mox
