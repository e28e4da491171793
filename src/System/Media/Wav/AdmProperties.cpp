#include "System/Media/Wav/AdmProperties.h"

#include "System/ByteArray.h"
#include "System/Media/Wav/AdmChannelAllocation.h"
#include "System/Media/Wav/AdmDocument.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"

namespace Corvane::Mox {

CAdmProperties::CAdmProperties(CAdmDocument* document, CAdmChannelAllocation* allocation)
    : CMediaPropertiesExtension(TypeCode), document_(document), allocation_(allocation) {
  if (document_) document_->Acquire();
  if (allocation_) allocation_->Acquire();
}

CAdmProperties::~CAdmProperties() {
  if (allocation_) allocation_->Release();
  if (document_) document_->Release();
}

CAdmDocument* CAdmProperties::GetDocument() const {
  if (document_) document_->Acquire();
  return document_;
}

CAdmChannelAllocation* CAdmProperties::GetChannelAllocation() const {
  if (allocation_) allocation_->Acquire();
  return allocation_;
}

Result CAdmProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  if (allocation_) bag->SetProperty("channel_allocation_bytes", static_cast<int>(allocation_->GetSize()));
  RObject<CXmlDocument> xml(document_ ? document_->GetXmlDocument() : nullptr);
  RObject<CXmlElement> root(xml ? xml->GetRootElement() : nullptr);
  RObject<CString> name(root ? root->GetName() : nullptr);
  if (name) bag->SetProperty("document_root", name.Get());
  return Result();
}

}  // namespace Corvane::Mox
