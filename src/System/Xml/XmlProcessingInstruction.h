#pragma once
// CXmlProcessingInstruction: a processing instruction: a target and its content.

#include "System/Xml/XmlNode.h"

namespace Corvane::Mox {

class CXmlProcessingInstruction : public CXmlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("<?pi");

  // The node's text (acquired).
  CString* GetValue() const;
  // Replaces the text; null is refused with ResultArgumentNull.
  Result SetValue(CString* value);
  // The target (the name after "<?"), acquired.
  CString* GetTarget() const;

 private:
  friend class CXmlNode;
  CXmlProcessingInstruction(_xmlNode* node, CXmlDocument* document) : CXmlNode(TypeCode, ProcessingInstructionNode, node, document) {}
};

}  // namespace Corvane::Mox
