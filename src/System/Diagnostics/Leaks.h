#pragma once
// CLeaks: allocation diagnostics. Every object construction, destruction and
// class-level allocation is reported here. Counting is off until the first
// Mark; a mark with a non-zero mode also records each live object (and, with
// flag CaptureBacktraces, its creation stack) so leaks can be listed.

#include <cstddef>

namespace Corvane::Mox {

class CObject;

class CLeaks {
 public:
  enum MarkFlags : unsigned int { CaptureBacktraces = 0x1 };

  static void AddObject(const CObject* object);
  static void RemoveObject(const CObject* object);
  static void AddMemory(const void* p, std::size_t size);
  static void RemoveMemory(const void* p);
  static void AddMemory(const CObject* owner, const void* p, std::size_t size);
  static void RemoveMemory(const CObject* owner, const void* p);

  // Creates the tracker if needed, forgets everything recorded so far and
  // starts counting from zero with the given mode and flags.
  static void Mark(int mode, unsigned int flags);
  // Objects created since the mark and still alive (0 without a mark or with mode 0).
  static int ShowLeaksSinceMark();
  static void LogLeaksByEquivalentBacktrace();
  static void LogLeaksByEquivalentType();

  static long long GetObjectCount();
  static long long GetTotalObjectCount();
  static long long GetPeakObjectCount();
  static long long GetBytesAllocated();
  static long long GetTotalBytesAllocated();
  static long long GetPeakBytesAllocated();
};

}  // namespace Corvane::Mox
