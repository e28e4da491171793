// mox info: the library's build identification, as text or JSON.
#include <cstdio>

#include <Mox.h>

#include "Commands.h"

using namespace Corvane::Mox;

namespace MoxTool {

int RunInfo(const InfoOptions& options) {
  const bool json = options.json;
  // The build fields are plain identifiers and dates: nothing needs escaping.
  if (json) {
    std::printf(
        "{\"version\": \"%s\", \"revision\": \"%s\", \"buildNumber\": \"%s\", \"branch\": \"%s\", "
        "\"date\": \"%s\", \"time\": \"%s\"}\n",
        MoxVersion::GetVersion(), MoxVersion::GetRevision(), MoxVersion::GetBuildNumber(),
        MoxVersion::GetBranch(), MoxVersion::GetDate(), MoxVersion::GetTime());
  } else {
    std::printf("version:  %s\nrevision: %s\nbuild:    %s\nbranch:   %s\ndate:     %s %s\n",
                MoxVersion::GetVersion(), MoxVersion::GetRevision(), MoxVersion::GetBuildNumber(),
                MoxVersion::GetBranch(), MoxVersion::GetDate(), MoxVersion::GetTime());
  }
  return ExitSuccess;
}

}  // namespace MoxTool
