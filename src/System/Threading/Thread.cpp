#include "System/Threading/Thread.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <thread>

namespace Corvane::Mox {

namespace {

// The platform refuses thread names longer than this many bytes.
constexpr std::size_t MaxNameBytes = 15;

// Milliseconds left until deadline, rounded up so a wait never ends early.
long long MillisecondsUntil(std::chrono::steady_clock::time_point deadline) {
  auto left = deadline - std::chrono::steady_clock::now();
  return std::chrono::ceil<std::chrono::milliseconds>(left).count();
}

}  // namespace

CThread::CThread(EntryFunction entry)
    : CObject(TypeCode), entry_(entry), argument_(nullptr), handle_(), hasHandle_(false), finished_(false) {}

CThread::~CThread() {
  if (!hasHandle_) return;
  // The last reference went away without a Join. When the body itself drops
  // it, the thread cannot join itself and is detached instead; anywhere else
  // the body has already let go of the object and is about to return.
  if (pthread_equal(handle_, pthread_self()))
    pthread_detach(handle_);
  else
    pthread_join(handle_, nullptr);
}

Result CThread::Start(void* argument, int stackSize) {
  CAutoLock lock(this);
  if (!entry_) return ResultNullPointer();
  if (hasHandle_) return ResultInvalidOperation("CThread::Start: the previous thread has not been joined");
  argument_ = argument;
  finished_ = false;
  result_ = ResultOK();
  // The running thread owns a reference until its body ends.
  Acquire();
  Result created = CreatePlatformThread(stackSize);
  // The caller still holds its own reference, so this cannot destroy the object.
  if (!hasHandle_) Release();
  return created;
}

Result CThread::CreatePlatformThread(int stackSize) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return ResultError("CThread::Start: Cannot initialize thread attributes.");
  Result result;
  if (stackSize != 0 && pthread_attr_setstacksize(&attributes, static_cast<std::size_t>(stackSize)) != 0)
    result = ResultError("CThread::Start: Cannot set stack size.");
  else if (pthread_create(&handle_, &attributes, &CThread::Execute, this) != 0)
    result = ResultError("CThread::Start: Cannot create process.");
  else
    hasHandle_ = true;
  if (pthread_attr_destroy(&attributes) != 0 && result.Succeeded())
    result = ResultError("CThread::Start: Cannot destroy thread attributes.");
  return result;
}

void* CThread::Execute(void* thread) {
  auto* self = static_cast<CThread*>(thread);
  std::srand(static_cast<unsigned int>(std::time(nullptr)) + static_cast<unsigned int>(syscall(SYS_gettid)));
  Result result = self->RunEntry();
  void* code = ConvertResultToThreadResult(result);
  self->Finish(result);
  self->Release();
  return code;
}

Result CThread::RunEntry() {
  // A failure thrown by the body is its result, like one it returns.
  try {
    return entry_(argument_);
  } catch (const Result& failure) {
    return failure;
  }
}

void CThread::Finish(const Result& result) {
  CAutoLock lock(this);
  result_ = result;
  finished_ = true;
  NotifyAll();
}

Result CThread::Join() {
  CAutoLock lock(this);
  if (!hasHandle_) return ResultOK();
  if (pthread_equal(handle_, pthread_self())) return ResultInvalidOperation("CThread::Join: a thread cannot join itself");
  // Another joiner may join the thread while this one waits: only one of
  // them may reach the platform join.
  while (hasHandle_ && !finished_) {
    if (!Wait()) return ResultError("CThread::Join: waiting for the thread failed");
  }
  return JoinFinished();
}

Result CThread::Join(int milliseconds) {
  CAutoLock lock(this);
  if (!hasHandle_) return ResultOK();
  if (pthread_equal(handle_, pthread_self())) return ResultInvalidOperation("CThread::Join: a thread cannot join itself");
  auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  // Loop because a wake-up may be spurious or meant for another joiner.
  while (hasHandle_ && !finished_) {
    long long left = MillisecondsUntil(deadline);
    if (left <= 0) return ResultError("CThread::Join: the thread is still running after %d ms", milliseconds);
    Wait(static_cast<int>(left));
  }
  return JoinFinished();
}

Result CThread::JoinFinished() {
  if (!hasHandle_) return ResultOK();  // joined by another joiner meanwhile
  int rc = pthread_join(handle_, nullptr);
  hasHandle_ = false;
  if (rc != 0) return ResultError("CThread::Join: pthread_join returned %d", rc);
  return ResultOK();
}

Result CThread::GetResult() const {
  CAutoLock lock(this);
  return result_;
}

bool CThread::IsFinished() const {
  CAutoLock lock(this);
  return finished_;
}

Result CThread::GetPriority(Policy* policy, int* priority) const {
  if (!policy || !priority) return ResultArgumentNull();
  CAutoLock lock(this);
  if (!hasHandle_) return ResultError("CThread::GetPriority: the thread is not running");
  int platformPolicy = 0;
  sched_param parameters{};
  int rc = pthread_getschedparam(handle_, &platformPolicy, &parameters);
  if (rc != 0) return ResultError("CThread::GetPriority: pthread_getschedparam returned %d", rc);
  *policy = static_cast<Policy>(platformPolicy);
  *priority = parameters.sched_priority;
  return ResultOK();
}

Result CThread::SetPriority(Policy policy, int priority) {
  CAutoLock lock(this);
  if (!hasHandle_) return ResultError("CThread::SetPriority: the thread is not running");
  sched_param parameters{};
  parameters.sched_priority = priority;
  int rc = pthread_setschedparam(handle_, policy, &parameters);
  if (rc != 0) return ResultError("CThread::SetPriority: pthread_setschedparam returned %d", rc);
  return ResultOK();
}

void CThread::Sleep(int milliseconds) {
  if (milliseconds > 0) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

Result CThread::SetName(const char* name) {
  if (!name) return ResultArgumentNull();
  char shortName[MaxNameBytes + 1] = {};
  std::strncpy(shortName, name, MaxNameBytes);
  int rc = pthread_setname_np(pthread_self(), shortName);
  if (rc != 0) return ResultError("CThread::SetName: pthread_setname_np returned %d", rc);
  return ResultOK();
}

pthread_t CThread::GetCurrentThread() { return pthread_self(); }

int CThread::GetHardwareConcurrency() {
  unsigned int count = std::thread::hardware_concurrency();
  if (count == 0) count = static_cast<unsigned int>(sysconf(_SC_NPROCESSORS_ONLN));
  return count > 0 ? static_cast<int>(count) : 1;
}

int CThread::GetMinimumPriority(Policy policy) { return sched_get_priority_min(policy); }

int CThread::GetMaximumPriority(Policy policy) { return sched_get_priority_max(policy); }

Result CThread::SetProcessPriority(int priority) {
  if (setpriority(PRIO_PROCESS, 0, priority) != 0)
    return ResultError("CThread::SetProcessPriority: setpriority failed, %d", errno);
  return ResultOK();
}

void* CThread::ConvertResultToThreadResult(const Result& result) {
  return reinterpret_cast<void*>(static_cast<std::intptr_t>(result.GetResultCode()));
}

}  // namespace Corvane::Mox
