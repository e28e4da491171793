// IProperties::ToXml: a "container" document with one element per property,
// typed with xsi:type, built with libxml2 and written indented.
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <memory>

#include "System/ByteArray.h"
#include "System/IO/Base64Encoder.h"
#include "System/IO/Stream.h"
#include "System/PropertiesText.h"
#include "System/PropertiesXmlSupport.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

namespace Xml = PropertiesXml;

const xmlChar* X(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

struct DocumentDeleter {
  void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

class XmlWriter {
 public:
  XmlWriter() : document_(xmlNewDoc(X("1.0"))), namespace_(nullptr), xsi_(nullptr) {
    if (!document_) throw ResultOutOfMemory("cannot create an XML document");
    xmlNodePtr root = xmlNewDocNode(document_.get(), nullptr, X(Xml::RootName), nullptr);
    xmlDocSetRootElement(document_.get(), root);
    namespace_ = xmlNewNs(root, X(Xml::NamespaceUri), nullptr);
    xmlSetNs(root, namespace_);
    xsi_ = xmlNewNs(root, X(Xml::XsiUri), X("xsi"));
    xmlNewNs(root, X(Xml::XsUri), X("xs"));
  }

  void WriteBag(const IProperties* bag) { WriteEntries(xmlDocGetRootElement(document_.get()), bag, 0); }

  void Save(CStream* stream) {
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpFormatMemoryEnc(document_.get(), &text, &size, "UTF-8", 1);
    std::unique_ptr<xmlChar, decltype(&Free)> owned(text, &Free);
    if (!text) throw ResultOutOfMemory("cannot serialize the XML document");
    PropertiesText::Check(stream->Write(text, size));
  }

 private:
  static void Free(xmlChar* text) { xmlFree(text); }

  void WriteEntries(xmlNodePtr parent, const IProperties* bag, int depth) {
    PropertiesText::CheckWriteDepth(depth);
    PropertiesText::ForEachEntry(bag, [&](CString* key, CVariant* value, bool) {
      xmlNodePtr element = NewElement(parent, key->GetChars());
      WriteValue(element, value, depth);
    });
  }

  // A child named after the key, or <property name="key"> for keys that are
  // not XML names.
  xmlNodePtr NewElement(xmlNodePtr parent, const char* key) {
    bool isName = xmlValidateNCName(X(key), 0) == 0;
    xmlNodePtr element = xmlNewChild(parent, namespace_, X(isName ? key : Xml::PropertyName), nullptr);
    if (!isName) xmlNewProp(element, X(Xml::NameAttribute), X(key));
    return element;
  }

  void WriteValue(xmlNodePtr element, CVariant* value, int depth) {
    if (!value) {
      xmlNewNsProp(element, xsi_, X("nil"), X("true"));
      return;
    }
    if (const char* type = value->GetXsiType()) xmlNewNsProp(element, xsi_, X("type"), X(type));
    RObject<CString> description(value->GetDescription());
    if (description) xmlNewProp(element, X(Xml::AnnotationAttribute), X(description->GetChars()));
    switch (value->GetVariantType()) {
      case CVariant::Properties: {
        RObject<CProperties> bag(value->ToProperties());
        WriteEntries(element, bag.Get(), depth + 1);
        return;
      }
      case CVariant::VariantArray: {
        RObject<CVariantArray> array(value->ToVariantArray());
        WriteItems(element, array.Get(), depth + 1);
        return;
      }
      default:
        WriteText(element, value);
        return;
    }
  }

  void WriteItems(xmlNodePtr element, CVariantArray* array, int depth) {
    PropertiesText::CheckWriteDepth(depth);
    for (int i = 0; array && i < array->GetCount(); ++i) {
      RObject<CVariant> item;
      array->Get(i, item.Out());
      WriteValue(xmlNewChild(element, namespace_, X(Xml::ItemName), nullptr), item.Get(), depth);
    }
  }

  // Byte arrays as Base64 (their declared XML type), pointers and objects as
  // addresses, everything else as its own text; a null reference is nil.
  void WriteText(xmlNodePtr element, CVariant* value) {
    RObject<CString> text;
    switch (value->GetVariantType()) {
      case CVariant::Pointer:
      case CVariant::Object:
        text = CString::WithFormat("%p", value->ToPointer());
        break;
      case CVariant::ByteArray: {
        RObject<CByteArray> bytes(value->ToByteArray());
        if (bytes) text = bytes->GetLength() > 0 ? CBase64Encoder::Encode(bytes.Get(), false, nullptr) : new CString();
        break;
      }
      default:
        text = value->ToString();
        break;
    }
    if (!text) {
      xmlNewNsProp(element, xsi_, X("nil"), X("true"));
      return;
    }
    xmlNodeAddContent(element, X(text->GetChars()));
  }

  Document document_;
  xmlNsPtr namespace_;
  xmlNsPtr xsi_;
};

}  // namespace

Result IProperties::ToXml(CStream* stream) const {
  if (!stream) return ResultArgumentNull("the stream is null");
  PropertiesXml::ErrorCapture errors;
  XmlWriter writer;
  writer.WriteBag(this);
  writer.Save(stream);
  return ResultOK();
}

CString* IProperties::ToXml() const { return PropertiesText::WriteToString(this, &IProperties::ToXml); }

}  // namespace Corvane::Mox
