#include "System/Media/GraphicsContextProperties.h"

#include "System/Media/MemoryContext.h"

namespace Corvane::Mox {

CGraphicsContextProperties::CGraphicsContextProperties(CMemoryContext* context)
    : CMediaPropertiesExtension(TypeCode), context_(context) {
  if (context_) context_->Acquire();
}

CGraphicsContextProperties::~CGraphicsContextProperties() {
  if (context_) context_->Release();
}

}  // namespace Corvane::Mox
