#pragma once
// Build identification of the library, fixed when it is built. Exported with
// C linkage too, so hosts in other languages can read them.

namespace Corvane::Mox {

class MoxVersion {
 public:
  static const char* GetVersion();      // "major.minor.patch"
  static const char* GetRevision();     // source revision (short commit id) or "unknown"
  static const char* GetBuildNumber();  // CI build number, or "0" for a local build
  static const char* GetBranch();       // source branch or "unknown"
  static const char* GetDate();         // build date, "YYYY-MM-DD"
  static const char* GetTime();         // build time, "HH:MM:SS" (UTC)
};

}  // namespace Corvane::Mox

extern "C" {
const char* MoxVersionGetVersion();
const char* MoxVersionGetRevision();
const char* MoxVersionGetBuildNumber();
const char* MoxVersionGetBranch();
const char* MoxVersionGetDate();
const char* MoxVersionGetTime();
}
