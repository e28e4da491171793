#include "System/Media/Inventory/InventoryCatalog.h"

#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Filter/FilterType.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Package/PackageType.h"
#include "System/Media/Signal/SignalReader.h"
#include "System/Media/Signal/SignalType.h"
#include "System/Media/Signal/SignalWriter.h"

namespace Corvane::Mox {

CInventoryCatalogEntry::CInventoryCatalogEntry(unsigned int code, const char* name, bool available)
    : CObject(code), name_(CString::WithString(name ? name : "(null)")), available_(available) {}

CInventoryCatalogEntry::~CInventoryCatalogEntry() { name_->Release(); }

namespace {

// The entries of one family, in registration order, named by its table.
template <class Family, class NameTable>
CList<CInventoryCatalogEntry>* ListFamily() {
  RObject<CList<CInventoryCatalogEntry>> list(new CList<CInventoryCatalogEntry>());
  for (CComponentFactory<Family>* factory : *CFamilyInventory<Family>::GetFactories()) {
    const unsigned int code = factory->GetCode();
    RObject<CInventoryCatalogEntry> entry(
        new CInventoryCatalogEntry(code, NameTable::GetName(code), factory->IsAvailable()));
    list->Add(entry).ThrowIfFailed();
  }
  return list.Detach();
}

template <class Family, class NameTable>
void AddCategory(CInventoryCatalog* catalog, const char* category) {
  RObject<CString> key(CString::WithString(category));
  RObject<CList<CInventoryCatalogEntry>> list(ListFamily<Family, NameTable>());
  catalog->AddItem(key, list).ThrowIfFailed();
}

}  // namespace

}  // namespace Corvane::Mox

using namespace Corvane::Mox;

extern "C" CInventoryCatalog* GetInventoryCatalog() {
  RObject<CInventoryCatalog> catalog(new CInventoryCatalog());
#define MOX_COMPONENT_FAMILY(Family, Category, NameTable) AddCategory<Family, NameTable>(catalog, Category);
#include "System/Media/Inventory/ComponentFamilies.def"
#undef MOX_COMPONENT_FAMILY
  return catalog.Detach();
}
