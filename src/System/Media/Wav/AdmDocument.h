#pragma once
// CAdmDocument: an Audio Definition Model document ("axml"), kept as the
// parsed XML so that it can be handed on or written back unchanged.

#include "System/Xml/XmlSerialization.h"

namespace Corvane::Mox {

class CXmlDocument;

class CAdmDocument : public CXmlSerialization {
 public:
  static constexpr unsigned int TypeCode = FourCC("admx");

  CAdmDocument();
  ~CAdmDocument() override;

  // Keeps the root's document; fails when the root is not "ebuCoreMain" or
  // "audioFormatExtended" (the two forms an ADM document takes).
  Result Parse(CXmlElement* root) override;
  // Copies the kept document's root into document.
  Result Write(CXmlDocument* document) override;
  // Acquired; null before Parse.
  CXmlDocument* GetXmlDocument() const;

 private:
  CXmlDocument* document_;
};

}  // namespace Corvane::Mox
