#pragma once
// CXmlText: a run of character data in an element.

#include "System/Xml/XmlNode.h"

namespace Corvane::Mox {

class CXmlText : public CXmlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("#txt");

  // The node's text (acquired).
  CString* GetValue() const;
  // Replaces the text; null is refused with ResultArgumentNull.
  Result SetValue(CString* value);

 private:
  friend class CXmlNode;
  CXmlText(_xmlNode* node, CXmlDocument* document) : CXmlNode(TypeCode, TextNode, node, document) {}
};

}  // namespace Corvane::Mox
