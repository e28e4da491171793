#include "System/Media/Container/ContainerReader.h"

#include "System/Media/Inventory/ComponentInventory.h"

namespace Corvane::Mox {

CContainerReader* CContainerReaderInventory::Create(unsigned int type) {
  CComponentFactory<CContainerReader>* factory = CFamilyInventory<CContainerReader>::GetFactory(type);
  if (!factory || !factory->IsAvailable()) return nullptr;
  return factory->CreateInstance();
}

CContainerReader* CContainerReader::Create(CString* path) {
  // Detection needs readers that can judge a file's content; a build without
  // any available reader recognises nothing.
  if (!path) return nullptr;
  for (CComponentFactory<CContainerReader>* factory : *CFamilyInventory<CContainerReader>::GetFactories()) {
    if (factory->IsAvailable()) return Create(path, factory->GetCode());
  }
  return nullptr;
}

CContainerReader* CContainerReader::Create(CString* path, unsigned int type) {
  CContainerReader* reader = CContainerReaderInventory::Create(type);
  if (reader && path) reader->SetProperty("file", path);
  return reader;
}

}  // namespace Corvane::Mox
