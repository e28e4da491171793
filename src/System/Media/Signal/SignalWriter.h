#pragma once
// CSignalWriter: the base of live-signal outputs. A property bag whose type
// code is its signal type.

#include "System/Properties.h"

namespace Corvane::Mox {

class CSignalWriter : public CProperties {
 public:
  explicit CSignalWriter(unsigned int signalType) : CProperties(signalType, nullptr) {}

  unsigned int GetSignalType() const { return GetType(); }

  // A new writer of the signal type, or null when none is available.
  static CSignalWriter* Create(unsigned int signalType);
};

}  // namespace Corvane::Mox
