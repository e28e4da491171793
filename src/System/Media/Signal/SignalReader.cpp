#include "System/Media/Signal/SignalReader.h"

#include "System/Media/Inventory/ComponentInventory.h"

namespace Corvane::Mox {

CSignalReader* CSignalReader::Create(unsigned int signalType) {
  return CFamilyInventory<CSignalReader>::CreateAvailable(signalType);
}

}  // namespace Corvane::Mox
