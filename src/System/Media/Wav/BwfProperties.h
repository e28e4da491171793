#pragma once
// CBwfProperties ("bwf "): a track's Broadcast Wave description: the "bext"
// chunk and, when the file has one, its iXML document.

#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

class CBwfDocument;
class CWaveBroadcastExtension;

class CBwfProperties : public CMediaPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("bwf ");

  // Acquires extension.
  explicit CBwfProperties(CWaveBroadcastExtension* extension);
  ~CBwfProperties() override;

  // Acquired.
  CWaveBroadcastExtension* GetBroadcastExtension() const;
  // Acquired; null when none.
  CBwfDocument* GetDocument() const;
  // Acquires document (null removes it).
  void SetDocument(CBwfDocument* document);
  // The "bext" fields.
  Result GetProperties(CProperties* bag) const override;

 private:
  CWaveBroadcastExtension* extension_;
  CBwfDocument* document_;
};

}  // namespace Corvane::Mox
