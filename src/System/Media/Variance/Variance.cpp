#include "System/Media/Variance/Variance.h"

#include <cstdarg>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

#include "System/Media/Variance/SyntaxVariance.h"
#include "System/Media/Variance/VarianceProperties.h"
#include "System/Properties.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// The per-thread lists. The store lives for the process; each thread only
// touches its own entry, under the store's lock.
class VarianceStore {
 public:
  static VarianceStore& Get() {
    static VarianceStore* store = new VarianceStore();  // never destroyed: threads may report at exit
    return *store;
  }

  void Append(CVariance* variance) {
    std::lock_guard<std::mutex> lock(mutex_);
    variance->Acquire();
    lists_[std::this_thread::get_id()].push_back(variance);
  }

  bool IsEmpty() {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = lists_.find(std::this_thread::get_id());
    return it == lists_.end() || it->second.empty();
  }

  // Hands the calling thread's list over (the caller releases the entries).
  std::vector<CVariance*> Take() {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = lists_.find(std::this_thread::get_id());
    if (it == lists_.end()) return {};
    std::vector<CVariance*> taken = std::move(it->second);
    lists_.erase(it);
    return taken;
  }

 private:
  std::mutex mutex_;
  std::unordered_map<std::thread::id, std::vector<CVariance*>> lists_;
};

CString* FormatMessage(const char* format, va_list args) {
  RObject<CString> text(CString::WithArgList(format, args));
  return text ? text->TrimRight() : nullptr;
}

}  // namespace

CVariance::CVariance(CString* message, Severity severity) : CVariance(TypeCode, message, severity) {}

CVariance::CVariance(unsigned int type, CString* message, Severity severity)
    : CObject(type), message_(message), severity_(severity) {
  if (message_) message_->Acquire();
}

CVariance::~CVariance() {
  if (message_) message_->Release();
}

const char* CVariance::GetSeverityName(int severity) {
  static const char* const kNames[] = {"trivial", "minor", "major", "fatal"};
  return severity >= 0 && severity <= 3 ? kNames[severity] : nullptr;
}

Result CVariance::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  if (message_) bag->SetProperty("message", message_).ThrowIfFailed();
  bag->SetProperty("severity", static_cast<int>(severity_)).ThrowIfFailed();
  if (const char* name = GetSeverityName(severity_)) bag->SetPropertyDescription("severity", name).ThrowIfFailed();
  return Result();
}

void CVariance::Record(CVariance* variance) {
  try {
    VarianceStore::Get().Append(variance);
  } catch (...) {
    // Recording never fails visibly: a variance that cannot be kept is lost.
  }
}

void CVariance::Report(Severity severity, const char* format, ...) {
  va_list args;
  va_start(args, format);
  RObject<CString> message(FormatMessage(format, args));
  va_end(args);
  RObject<CVariance> variance(new CVariance(message, severity));
  Record(variance);
}

void CVariance::Report(long long position, Severity severity, const char* format, ...) {
  va_list args;
  va_start(args, format);
  RObject<CString> message(FormatMessage(format, args));
  va_end(args);
  RObject<CVariance> variance(new CSyntaxVariance(message, severity, position));
  Record(variance);
}

bool CVariance::IsEmpty() { return VarianceStore::Get().IsEmpty(); }

void CVariance::Clear() {
  for (CVariance* variance : VarianceStore::Get().Take()) variance->Release();
}

void CVariance::Synchronize(CVarianceProperties* target) {
  for (CVariance* variance : VarianceStore::Get().Take()) {
    if (target) target->Add(variance);
    variance->Release();
  }
}

}  // namespace Corvane::Mox
