#include "System/Media/Inventory/ComponentInventory.h"

#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Signal/SignalReader.h"
#include "System/Media/Signal/SignalWriter.h"

namespace Corvane::Mox {

template <class F>
CComponentInventory<F>* CComponentInventory<F>::GetSingleton() {
  // Created once under the compiler's thread-safe static initialisation and
  // kept for the life of the process.
  static CComponentInventory* const instance = new CComponentInventory();
  return instance;
}

template <class F>
CList<F>* CComponentInventory<F>::GetFactories() {
  EnsureLibraryComponents();
  return GetSingleton()->factories_;
}

template <class F>
Result CComponentInventory<F>::AddFactory(F* factory) {
  EnsureLibraryComponents();
  return AppendFactory(factory);
}

template <class F>
Result CComponentInventory<F>::AppendFactory(F* factory) {
  if (!factory) return ResultArgumentNull();
  return GetSingleton()->factories_->Add(factory);
}

template <class F>
F* CComponentInventory<F>::GetFactory(unsigned int code) {
  if (code == 0) return nullptr;
  for (F* factory : *GetFactories()) {
    if (factory->GetType() == code) return factory;
  }
  return nullptr;
}

template <class F>
typename CComponentInventory<F>::Component* CComponentInventory<F>::CreateAvailable(unsigned int code) {
  F* factory = GetFactory(code);
  return factory && factory->IsAvailable() ? factory->CreateInstance() : nullptr;
}

#define MOX_COMPONENT_FAMILY(Family, Category, NameTable) \
  template class CComponentInventory<CComponentFactory<Family>>;
#include "System/Media/Inventory/ComponentFamilies.def"
#undef MOX_COMPONENT_FAMILY

}  // namespace Corvane::Mox
