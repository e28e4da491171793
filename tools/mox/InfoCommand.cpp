// mox info: the library's build identification, as text or JSON.
#include <cstdio>
#include <cstring>

#include <Mox.h>

#include "Commands.h"

using namespace Corvane::Mox;

namespace MoxTool {

int RunInfo(int argc, char** argv) {
  bool json = false;
  for (int i = 1; i < argc; ++i) {
    if (!std::strcmp(argv[i], "--json")) {
      json = true;
    } else {
      PrintError("info: unknown argument '%s' (usage: mox info [--json])", argv[i]);
      return ExitUsage;
    }
  }
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
