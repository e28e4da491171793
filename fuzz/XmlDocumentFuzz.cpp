// Arbitrary bytes as an XML document: parsing must either fail with a Result
// or give a document that can be walked, queried, edited, written and parsed
// again to a document that writes the same text. Nothing may be printed.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/Text.h"
#include "System/Xml/XmlAttribute.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"
#include "System/Xml/XmlNamespace.h"
#include "System/Xml/XmlText.h"

using namespace Corvane::Mox;

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

// Reads everything the typed accessors offer; a bounded number of elements.
void Visit(CXmlElement* element, int depth, int& budget) {
  if (depth > 64 || --budget < 0) return;
  RObject<CString> name(element->GetName());
  RObject<CString> uri(element->GetNamespaceUri());
  RObject<CXmlNamespace> ns(element->GetNamespace());
  RObject<CList<CXmlAttribute>> attributes(element->GetAttributes());
  for (CXmlAttribute* attribute : *attributes) {
    RObject<CString> value(element->GetAttribute(attribute->GetName(), attribute->GetNamespaceUri()));
    Check(attribute->IsNamespaceDeclaration() || value);
    element->GetAttributeAsInt64(attribute->GetName(), 0);
    element->GetAttributeAsDouble(attribute->GetName(), 0.0);
  }
  element->GetValueAsBoolean(false);
  element->GetValueAsUInt64(0);
  element->GetValueAsRational32(Rational<int>(0, 1), ":/");
  element->GetValueAsFour();
  RObject<CByteArray> bytes(element->GetValueAsBase64Binary());
  RObject<CList<CXmlNode>> nodes(element->GetChildNodes());
  RObject<CList<CXmlElement>> children(element->GetChildElements());
  for (CXmlElement* child : *children) {
    RObject<CString> childName(child->GetName());
    RObject<CXmlElement> found(element->GetChildElement(childName->GetChars()));
    Check(found);
    Visit(child, depth + 1, budget);
  }
}

void Edit(CXmlDocument* document, CXmlElement* root) {
  RObject<CXmlElement> added(new CXmlElement("fuzz:added", "urn:fuzz"));
  Check(root->AddChildElement(added).Succeeded());
  added->SetAttribute("n", 7);
  added->SetValue(Rational<int>(30000, 1001), ':');
  RObject<CXmlElement> found(root->GetChildElement("added", "urn:fuzz"));
  Check(found && found->Equals(added));
  Check(root->RemoveChildNode(added).Succeeded());
  RObject<CString> text(new CString("x<&>y"));
  RObject<CXmlText> node(document->CreateText(text));
  Check(node && root->AddChildNode(node).Succeeded());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 1 << 20) return 0;
  RObject<CByteArray> bytes(new CByteArray(data, static_cast<int>(size)));
  RObject<CXmlDocument> document;
  Result parsed = CXmlDocument::CreateWithBytes(bytes, document.Out());
  if (parsed.Failed()) {
    Check(!document && parsed.GetDetails());
    return 0;
  }
  RObject<CXmlElement> root(document->GetRootElement());
  if (!root) return 0;
  int budget = 256;
  Visit(root, 0, budget);
  Edit(document, root);
  RObject<CString> written(document->GetString(CXmlDocument::None));
  if (!written) return 0;
  RObject<CXmlDocument> again;
  if (CXmlDocument::CreateWithString(written, again.Out()).Failed()) return 0;
  RObject<CString> rewritten(again->GetString(CXmlDocument::None));
  Check(rewritten && rewritten->Equals(written.Get()));
  return 0;
}
