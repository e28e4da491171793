#include "System/TimeZone.h"

#include <ctime>

namespace Corvane::Mox {

int TimeZone::GetUtcOffset() {
  // Re-read the zone so a TZ change made by the host takes effect; the C
  // library only reloads its data when the setting actually changed.
  tzset();
  std::time_t now = std::time(nullptr);
  std::tm local{};
  if (!localtime_r(&now, &local)) return 0;
  return static_cast<int>(local.tm_gmtoff);
}

}  // namespace Corvane::Mox
