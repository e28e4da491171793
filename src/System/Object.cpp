#include "System/Object.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <new>

#include "System/Diagnostics/Leaks.h"
#include "System/Text.h"
#include "System/Threading/Lock.h"

namespace Corvane::Mox {

namespace {

bool g_initialized = false;
CLock* g_creationLock = nullptr;

// One-time process initialisation, run when the library is loaded.
void InitializeProcess() {
  std::srand(static_cast<unsigned int>(std::time(nullptr)) + static_cast<unsigned int>(syscall(SYS_gettid)));
  // Defaults for the pixel-kernel and OpenMP runtimes; a host may override them
  // before loading the library (setenv without overwrite keeps its choice).
  setenv("HL_NUM_THREADS", "16", 0);
  setenv("KMP_BLOCKTIME", "0", 0);
  setenv("KMP_LIBRARY", "throughput", 0);
  setenv("KMP_AFFINITY", "respect", 0);
  setenv("OMP_MAX_ACTIVE_LEVELS", "1", 0);
  setenv("OMP_THREAD_LIMIT", "16", 0);
  // Failed allocations raise std::bad_alloc.
  std::set_new_handler(nullptr);
  CLock::Initialize();
  g_creationLock = new CLock();
  g_initialized = true;
}

struct ProcessInitializer {
  ProcessInitializer() { InitializeProcess(); }
} const g_processInitializer;

CLock& CreationLock() {
  // Objects constructed by other libraries' static initialisers may ask for a
  // monitor before ours has run.
  static CLock* lock = g_creationLock ? g_creationLock : new CLock();
  return *lock;
}

}  // namespace

bool IsLibraryInitialized() { return g_initialized; }

CObject::CObject() : type_(0), references_(1), lock_(nullptr), reclaim_(nullptr) { CLeaks::AddObject(this); }

CObject::CObject(unsigned int type, ReclaimHook reclaim)
    : type_(type), references_(1), lock_(nullptr), reclaim_(reclaim) {
  CLeaks::AddObject(this);
}

CObject::~CObject() {
  delete lock_.exchange(nullptr, std::memory_order_acq_rel);
  CLeaks::RemoveObject(this);
}

void* CObject::operator new(std::size_t size) {
  void* p = std::malloc(size);
  if (!p) throw std::bad_alloc();
  // GCC 12 mistakes passing fresh malloc memory as const void* for a read of it.
MOX_SUPPRESS_MAYBE_UNINITIALIZED_BEGIN
  CLeaks::AddMemory(p, size);
MOX_SUPPRESS_MAYBE_UNINITIALIZED_END
  return p;
}

void CObject::operator delete(void* p) noexcept {
  if (!p) return;
  CLeaks::RemoveMemory(p);
  std::free(p);
}

void CObject::Release() const {
  // acq_rel rather than release plus an acquire fence: the same cost on x86,
  // and visible to the thread sanitizer, which does not model fences.
  if (references_.fetch_sub(1, std::memory_order_acq_rel) > 1) return;
  if (reclaim_) {
    // Keep the object alive while the hook runs; a hook that stores it (a pool)
    // leaves an extra reference behind.
    references_.fetch_add(1, std::memory_order_relaxed);
    reclaim_(const_cast<CObject*>(this));
    if (references_.fetch_sub(1, std::memory_order_acq_rel) > 1) return;
  }
  delete this;
}

bool CObject::IsType(unsigned int type) const { return type == type_; }

bool CObject::Equals(const CObject* other) const { return other == this; }

int CObject::GetHashCode() const {
  auto address = reinterpret_cast<std::uintptr_t>(this);
  return static_cast<int>(static_cast<std::uint32_t>(address) + static_cast<std::uint32_t>(address >> 32));
}

CString* CObject::ToString() const {
  char code[5];
  FourCCToChars(type_, code);
  return CString::WithFormat("CObject[%p].type = '%s'", static_cast<const void*>(this), code);
}

void CObject::Synchronize() const {
  CLock& creation = CreationLock();
  creation.Enter();
  if (!lock_.load(std::memory_order_relaxed)) lock_.store(new CLock(), std::memory_order_release);
  creation.Exit();
}

Result CObject::Enter() const { return GetLock()->Enter(); }
bool CObject::TryEnter() const { return GetLock()->TryEnter(); }
bool CObject::Wait() const { return GetLock()->Wait(); }
bool CObject::Wait(int milliseconds) const { return GetLock()->Wait(milliseconds); }
Result CObject::Notify() const { return GetLock()->Notify(); }
Result CObject::NotifyAll() const { return GetLock()->NotifyAll(); }
Result CObject::Exit() const { return GetLock()->Exit(); }

}  // namespace Corvane::Mox
