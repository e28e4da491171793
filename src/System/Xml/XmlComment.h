#pragma once
// CXmlComment: an XML comment.

#include "System/Xml/XmlNode.h"

namespace Corvane::Mox {

class CXmlComment : public CXmlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("<!--");

  // The node's text (acquired).
  CString* GetValue() const;
  // Replaces the text; null is refused with ResultArgumentNull.
  Result SetValue(CString* value);

 private:
  friend class CXmlNode;
  CXmlComment(_xmlNode* node, CXmlDocument* document) : CXmlNode(TypeCode, CommentNode, node, document) {}
};

}  // namespace Corvane::Mox
