#include "System/Media/Signal/SignalWriter.h"

#include "System/Media/Inventory/ComponentInventory.h"

namespace Corvane::Mox {

CSignalWriter* CSignalWriter::Create(unsigned int signalType) {
  return CFamilyInventory<CSignalWriter>::CreateAvailable(signalType);
}

}  // namespace Corvane::Mox
