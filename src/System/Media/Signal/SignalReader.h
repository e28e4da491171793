#pragma once
// CSignalReader: the base of live-signal sources (capture cards, network
// sources, generators). A signal reader is a property bag whose type code is
// its signal type.

#include "System/Properties.h"

namespace Corvane::Mox {

class CSignalReader : public CProperties {
 public:
  explicit CSignalReader(unsigned int signalType) : CProperties(signalType, nullptr) {}

  unsigned int GetSignalType() const { return GetType(); }

  // A new reader of the signal type, or null when none is available.
  static CSignalReader* Create(unsigned int signalType);
};

}  // namespace Corvane::Mox
