#include "System/MoxVersion.h"

#include "MoxBuildInfo.h"

namespace Corvane::Mox {

const char* MoxVersion::GetVersion() { return MOX_BUILD_VERSION; }
const char* MoxVersion::GetRevision() { return MOX_BUILD_REVISION; }
const char* MoxVersion::GetBuildNumber() { return MOX_BUILD_NUMBER; }
const char* MoxVersion::GetBranch() { return MOX_BUILD_BRANCH; }
const char* MoxVersion::GetDate() { return MOX_BUILD_DATE; }
const char* MoxVersion::GetTime() { return MOX_BUILD_TIME; }

}  // namespace Corvane::Mox

using Corvane::Mox::MoxVersion;
extern "C" {
const char* MoxVersionGetVersion() { return MoxVersion::GetVersion(); }
const char* MoxVersionGetRevision() { return MoxVersion::GetRevision(); }
const char* MoxVersionGetBuildNumber() { return MoxVersion::GetBuildNumber(); }
const char* MoxVersionGetBranch() { return MoxVersion::GetBranch(); }
const char* MoxVersionGetDate() { return MoxVersion::GetDate(); }
const char* MoxVersionGetTime() { return MoxVersion::GetTime(); }
}
