#include "System/Media/Container/MediaReader.h"

namespace Corvane::Mox {

const char* CMediaReader::GetPropertyContextName(int context) {
  static const char* const kNames[ContextCount] = {"unspecified", "container", "essence"};
  return context >= 0 && context < ContextCount ? kNames[context] : nullptr;
}

void CMediaReader::ThrowBadContext(int context) { throw ResultArgumentOutOfRange("property context %d", context); }

void CMediaReader::CheckTimeScale(long long timeScale) {
  if (timeScale < 1 || timeScale > 2000000000) throw ResultArgumentOutOfRange("time scale %lld", timeScale);
}

}  // namespace Corvane::Mox
