#include "System/Media/Wav/BwfProperties.h"

#include "System/Media/Wav/BwfDocument.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"

namespace Corvane::Mox {

CBwfProperties::CBwfProperties(CWaveBroadcastExtension* extension)
    : CMediaPropertiesExtension(TypeCode), extension_(extension), document_(nullptr) {
  if (extension_) extension_->Acquire();
}

CBwfProperties::~CBwfProperties() {
  if (document_) document_->Release();
  if (extension_) extension_->Release();
}

CWaveBroadcastExtension* CBwfProperties::GetBroadcastExtension() const {
  if (extension_) extension_->Acquire();
  return extension_;
}

CBwfDocument* CBwfProperties::GetDocument() const {
  if (document_) document_->Acquire();
  return document_;
}

void CBwfProperties::SetDocument(CBwfDocument* document) {
  if (document) document->Acquire();
  if (document_) document_->Release();
  document_ = document;
}

Result CBwfProperties::GetProperties(CProperties* bag) const {
  return extension_ ? extension_->GetProperties(bag) : Result();
}

}  // namespace Corvane::Mox
