#pragma once
// CComponentInventory<F>: the process-wide registry of one component family,
// a list of factories in registration order. The library's own components
// are registered in one place, in a fixed order (ComponentRegistrations.def),
// the first time any registry is consulted; hosts may add factories after
// them. Registries are read without locks once filled.

#include "System/Collections/List.h"
#include "System/Media/Inventory/ComponentFactory.h"

namespace Corvane::Mox {

// Registers the library's components in every family, once per process.
void EnsureLibraryComponents();

template <class F>
class CComponentInventory : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("cinv");
  using Component = typename F::Component;

  static CComponentInventory* GetSingleton();
  // The factories in registration order (borrowed).
  static CList<F>* GetFactories();
  // Appends a factory; the list takes a reference.
  static Result AddFactory(F* factory);
  // The first factory registered under the code (borrowed), or null.
  static F* GetFactory(unsigned int code);
  // A new component from that factory (the caller owns it); null when the
  // code is unknown or its factory is unavailable.
  static Component* CreateAvailable(unsigned int code);

  // Registers component class T with a new factory of its code; raises the
  // Result of a failing insertion.
  template <class T>
  static bool AddComponent() {
    RObject<F> factory(new CInstanceFactory<Component, T>());
    AddFactory(factory).ThrowIfFailed();
    return true;
  }

  // Registration without the library's own components first; used while
  // those are being registered.
  static Result AppendFactory(F* factory);

 private:
  CComponentInventory() : CObject(TypeCode), factories_(new CList<F>()) {}

  RObject<CList<F>> factories_;
};

// The registry of family T.
template <class T>
using CFamilyInventory = CComponentInventory<CComponentFactory<T>>;

// Each family's registry is instantiated once, inside the library.
#define MOX_COMPONENT_FAMILY(Family, Category, NameTable) \
  class Family;                                           \
  extern template class CComponentInventory<CComponentFactory<Family>>;
#include "System/Media/Inventory/ComponentFamilies.def"
#undef MOX_COMPONENT_FAMILY

}  // namespace Corvane::Mox
