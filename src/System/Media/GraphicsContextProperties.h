#pragma once
// CGraphicsContextProperties ("gce "): a description extension naming the
// graphics memory context whose buffers carry a stream's pictures, so that a
// consumer on the same device can use them where they are.

#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

class CMemoryContext;

class CGraphicsContextProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("gce ");

  // The context is acquired.
  explicit CGraphicsContextProperties(CMemoryContext* context);
  ~CGraphicsContextProperties() override;

  CMemoryContext* GetMemoryContext() const { return context_; }  // borrowed

 private:
  CMemoryContext* context_;
};

}  // namespace Corvane::Mox
