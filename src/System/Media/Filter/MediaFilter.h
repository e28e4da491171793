#pragma once
// CMediaFilter: the base of every processing component (converters,
// decompressors, compressors, analyzers, metadata stages). A filter is a
// property bag whose type code is its four-character component code, so
// scripts and hosts configure it by name. The sample protocol that drives a
// filter is added to this class by the filter framework.

#include "System/Properties.h"

namespace Corvane::Mox {

class CMediaFilter : public CProperties {
 public:
  explicit CMediaFilter(unsigned int componentCode) : CProperties(componentCode, nullptr) {}

  unsigned int GetComponentCode() const { return GetType(); }
};

}  // namespace Corvane::Mox
