#pragma once
// CAdmProperties ("adm "): a track's Audio Definition Model: the ADM document
// and the "chna" channel allocation that ties the file's tracks to it.

#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

class CAdmChannelAllocation;
class CAdmDocument;

class CAdmProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("adm ");

  // Acquires both.
  CAdmProperties(CAdmDocument* document, CAdmChannelAllocation* allocation);
  ~CAdmProperties() override;

  // Acquired.
  CAdmDocument* GetDocument() const;
  CAdmChannelAllocation* GetChannelAllocation() const;
  // "channel_allocation_bytes" and "document_root".
  Result GetProperties(CProperties* bag) const override;

 private:
  CAdmDocument* document_;
  CAdmChannelAllocation* allocation_;
};

}  // namespace Corvane::Mox
