#include "System/Media/Wav/DolbyAudioProperties.h"

#include "System/ByteArray.h"
#include "System/Media/Wav/DolbyAudioMetadata.h"
#include "System/Properties.h"

namespace Corvane::Mox {

CDolbyAudioProperties::CDolbyAudioProperties(CDolbyAudioMetadata* metadata)
    : CMediaPropertiesExtension(TypeCode), metadata_(metadata) {
  if (metadata_) metadata_->Acquire();
}

CDolbyAudioProperties::~CDolbyAudioProperties() {
  if (metadata_) metadata_->Release();
}

CDolbyAudioMetadata* CDolbyAudioProperties::GetMetadata() const {
  if (metadata_) metadata_->Acquire();
  return metadata_;
}

CByteArray* CDolbyAudioProperties::GetBytes() const { return metadata_ ? metadata_->GetDocument() : nullptr; }

Result CDolbyAudioProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  return bag->SetProperty("size", metadata_ ? static_cast<int>(metadata_->GetSize()) : 0);
}

}  // namespace Corvane::Mox
