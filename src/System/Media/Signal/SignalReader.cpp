#include "System/Media/Signal/SignalReader.h"

#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Signal/SignalWriter.h"

namespace Corvane::Mox {

namespace {

template <class T>
T* CreateAvailable(unsigned int signalType) {
  CComponentFactory<T>* factory = CFamilyInventory<T>::GetFactory(signalType);
  return factory && factory->IsAvailable() ? factory->CreateInstance() : nullptr;
}

}  // namespace

CSignalReader* CSignalReader::Create(unsigned int signalType) { return CreateAvailable<CSignalReader>(signalType); }

CSignalWriter* CSignalWriter::Create(unsigned int signalType) { return CreateAvailable<CSignalWriter>(signalType); }

}  // namespace Corvane::Mox
