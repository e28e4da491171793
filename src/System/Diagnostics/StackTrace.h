#pragma once
// CStackTrace: raw return addresses captured when a failure is created;
// symbolicated only when printed, so capture stays cheap.

#include "System/Object.h"

namespace Corvane::Mox {

class CStackTrace : public CObject {
 public:
  static constexpr int MaximumFrames = 128;

  // Drops the innermost skip + 1 frames (this constructor and skip callers).
  explicit CStackTrace(int skip);
  ~CStackTrace() override;

  int GetFrameCount() const { return count_; }
  void* GetFrame(int index) const { return frames_[index]; }

  // One demangled function name per line; frames that do not demangle are left out.
  CString* Symbolicate();

 private:
  int count_;
  void** frames_;
};

}  // namespace Corvane::Mox
