#pragma once
// CPerformanceCounterInventory: the registry of performance-counter
// factories, keyed by four-character code. Device components register their
// factory at load time; CPerformanceCounter::Create asks here.
//
// This is the narrow interface the counters need from the component
// inventory of the filter framework (factories by code, create by code).
// When that inventory exists, the registration can move into it without
// changing callers of Create.

#include "System/Object.h"

namespace Corvane::Mox {

class CPerformanceCounter;

class CPerformanceCounterInventory {
 public:
  // Makes a new counter (one reference owned by the caller).
  using Factory = CPerformanceCounter* (*)();

  // Registers factory under code, replacing an earlier one; a null factory
  // removes the registration.
  static void SetFactory(unsigned int code, Factory factory);
  // A new counter from the factory registered under code, or null.
  static CPerformanceCounter* Create(unsigned int code);
};

}  // namespace Corvane::Mox
