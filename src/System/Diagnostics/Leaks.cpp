#include "System/Diagnostics/Leaks.h"

#include <cxxabi.h>
#include <execinfo.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "System/Console.h"
#include "System/Object.h"

namespace Corvane::Mox {

namespace {

struct LiveObject {
  unsigned int type = 0;
  std::vector<void*> backtrace;
};

// The tracker exists only after the first Mark; until then every report is a
// single atomic load. It is never destroyed, so objects released during static
// destruction can still report.
struct Tracker {
  std::mutex mutex;
  int mode = 0;
  unsigned int flags = 0;
  std::unordered_map<const CObject*, LiveObject> objects;
  std::unordered_map<const void*, std::size_t> allocations;
  long long objectCount = 0, totalObjects = 0, peakObjects = 0;
  long long bytes = 0, totalBytes = 0, peakBytes = 0;

  void ResetLocked(int newMode, unsigned int newFlags) {
    mode = newMode;
    flags = newFlags;
    objects.clear();
    allocations.clear();
    objectCount = totalObjects = peakObjects = 0;
    bytes = totalBytes = peakBytes = 0;
  }
};

std::atomic<Tracker*> g_tracker{nullptr};

Tracker* Current() { return g_tracker.load(std::memory_order_acquire); }

std::vector<void*> CaptureBacktrace() {
  void* frames[64];
  int count = backtrace(frames, 64);
  // Drop this function and the CLeaks entry point.
  int skip = std::min(count, 2);
  return std::vector<void*>(frames + skip, frames + count);
}

std::string Demangle(const char* line) {
  // glibc symbol lines look like "module(mangled+0x1f) [0xaddr]".
  std::string text(line);
  auto open = text.find('(');
  auto plus = text.find('+', open == std::string::npos ? 0 : open);
  if (open == std::string::npos || plus == std::string::npos || plus == open + 1) return text;
  std::string mangled = text.substr(open + 1, plus - open - 1);
  int status = 0;
  char* demangled = abi::__cxa_demangle(mangled.c_str(), nullptr, nullptr, &status);
  if (status != 0 || !demangled) return mangled;
  std::string result(demangled);
  std::free(demangled);
  return result;
}

std::string Symbolicate(const std::vector<void*>& frames) {
  std::string text;
  if (frames.empty()) return text;
  char** lines = backtrace_symbols(frames.data(), static_cast<int>(frames.size()));
  if (!lines) return text;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    text += Demangle(lines[i]);
    text += '\n';
  }
  std::free(lines);
  return text;
}

}  // namespace

void CLeaks::AddObject(const CObject* object) {
  Tracker* t = Current();
  if (!t) return;
  std::lock_guard<std::mutex> guard(t->mutex);
  LiveObject& live = t->objects[object];
  live.type = object->GetType();
  if (t->mode != 0 && (t->flags & CaptureBacktraces)) live.backtrace = CaptureBacktrace();
  t->objectCount++;
  t->totalObjects++;
  t->peakObjects = std::max(t->peakObjects, t->objectCount);
}

void CLeaks::RemoveObject(const CObject* object) {
  Tracker* t = Current();
  if (!t) return;
  std::lock_guard<std::mutex> guard(t->mutex);
  // Objects made before the mark are not in the table and not counted.
  if (t->objects.erase(object) != 0) t->objectCount--;
}

void CLeaks::AddMemory(const void* p, std::size_t size) {
  Tracker* t = Current();
  if (!t || !p) return;
  std::lock_guard<std::mutex> guard(t->mutex);
  t->allocations[p] = size;
  t->bytes += static_cast<long long>(size);
  t->totalBytes += static_cast<long long>(size);
  t->peakBytes = std::max(t->peakBytes, t->bytes);
}

void CLeaks::RemoveMemory(const void* p) {
  Tracker* t = Current();
  if (!t || !p) return;
  std::lock_guard<std::mutex> guard(t->mutex);
  auto it = t->allocations.find(p);
  if (it == t->allocations.end()) return;
  t->bytes -= static_cast<long long>(it->second);
  t->allocations.erase(it);
}

void CLeaks::AddMemory(const CObject*, const void* p, std::size_t size) { AddMemory(p, size); }
void CLeaks::RemoveMemory(const CObject*, const void* p) { RemoveMemory(p); }

void CLeaks::Mark(int mode, unsigned int flags) {
  Tracker* t = Current();
  if (!t) {
    auto* fresh = new Tracker();
    Tracker* expected = nullptr;
    if (g_tracker.compare_exchange_strong(expected, fresh, std::memory_order_acq_rel)) {
      t = fresh;
    } else {
      delete fresh;
      t = expected;
    }
  }
  std::lock_guard<std::mutex> guard(t->mutex);
  // The table's own objects and stored state are not CObjects, so clearing
  // under the lock cannot re-enter the tracker.
  t->ResetLocked(mode, flags);
}

int CLeaks::ShowLeaksSinceMark() {
  Tracker* t = Current();
  if (!t) return 0;
  std::lock_guard<std::mutex> guard(t->mutex);
  if (t->mode == 0) return 0;
  return static_cast<int>(t->objects.size());
}

void CLeaks::LogLeaksByEquivalentBacktrace() {
  Tracker* t = Current();
  if (!t) return;
  std::map<std::vector<void*>, int> groups;
  {
    std::lock_guard<std::mutex> guard(t->mutex);
    for (const auto& [object, live] : t->objects) groups[live.backtrace]++;
  }
  // Logging creates strings (objects): the tracker lock must not be held here.
  for (const auto& [frames, count] : groups) {
    std::string text = Symbolicate(frames);
    MOX_LOG(Console::Information, "%d live objects created at:\n%s", count, text.c_str());
  }
}

void CLeaks::LogLeaksByEquivalentType() {
  Tracker* t = Current();
  if (!t) return;
  std::map<unsigned int, int> groups;
  {
    std::lock_guard<std::mutex> guard(t->mutex);
    for (const auto& [object, live] : t->objects) groups[live.type]++;
  }
  for (const auto& [type, count] : groups) {
    char code[5];
    FourCCToChars(type, code);
    MOX_LOG(Console::Information, "%d live objects of type '%s'", count, code);
  }
}

#define MOX_LEAKS_COUNTER(Function, field)                \
  long long CLeaks::Function() {                          \
    Tracker* t = Current();                               \
    if (!t) return 0;                                     \
    std::lock_guard<std::mutex> guard(t->mutex);          \
    return t->field;                                      \
  }
MOX_LEAKS_COUNTER(GetObjectCount, objectCount)
MOX_LEAKS_COUNTER(GetTotalObjectCount, totalObjects)
MOX_LEAKS_COUNTER(GetPeakObjectCount, peakObjects)
MOX_LEAKS_COUNTER(GetBytesAllocated, bytes)
MOX_LEAKS_COUNTER(GetTotalBytesAllocated, totalBytes)
MOX_LEAKS_COUNTER(GetPeakBytesAllocated, peakBytes)
#undef MOX_LEAKS_COUNTER

}  // namespace Corvane::Mox
