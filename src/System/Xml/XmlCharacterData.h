#pragma once
// CXmlCharacterData: a CDATA section, written without escaping.

#include "System/Xml/XmlNode.h"

namespace Corvane::Mox {

class CXmlCharacterData : public CXmlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("<![C");

  // The node's text (acquired).
  CString* GetValue() const;
  // Replaces the text; null is refused with ResultArgumentNull.
  Result SetValue(CString* value);

 private:
  friend class CXmlNode;
  CXmlCharacterData(_xmlNode* node, CXmlDocument* document) : CXmlNode(TypeCode, CharacterDataNode, node, document) {}
};

}  // namespace Corvane::Mox
