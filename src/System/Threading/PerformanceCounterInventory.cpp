#include "System/Threading/PerformanceCounterInventory.h"

#include <map>
#include <mutex>

#include "System/Threading/PerformanceCounter.h"

namespace Corvane::Mox {

namespace {

// Registrations normally happen before other threads exist; the lock keeps
// late registrations (and tests) safe as well.
struct Registry {
  std::mutex lock;
  std::map<unsigned int, CPerformanceCounterInventory::Factory> factories;
};

Registry& GetRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

void CPerformanceCounterInventory::SetFactory(unsigned int code, Factory factory) {
  Registry& registry = GetRegistry();
  std::lock_guard<std::mutex> guard(registry.lock);
  if (factory)
    registry.factories[code] = factory;
  else
    registry.factories.erase(code);
}

CPerformanceCounter* CPerformanceCounterInventory::Create(unsigned int code) {
  Factory factory = nullptr;
  {
    Registry& registry = GetRegistry();
    std::lock_guard<std::mutex> guard(registry.lock);
    auto found = registry.factories.find(code);
    if (found != registry.factories.end()) factory = found->second;
  }
  return factory ? factory() : nullptr;
}

}  // namespace Corvane::Mox
