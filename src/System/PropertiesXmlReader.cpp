// CProperties::FromXml: a "container" document, as ToXml writes it, back
// into a bag. libxml2 parses; errors come back as ResultFormatError.
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "System/ByteArray.h"
#include "System/FourString.h"
#include "System/IO/Base64Decoder.h"
#include "System/IO/Stream.h"
#include "System/PropertiesText.h"
#include "System/PropertiesXmlSupport.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

namespace Xml = PropertiesXml;

const xmlChar* X(const char* text) { return reinterpret_cast<const xmlChar*>(text); }
const char* C(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

struct Deleter {
  void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
  void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
  void operator()(xmlChar* text) const { xmlFree(text); }
};
using Document = std::unique_ptr<xmlDoc, Deleter>;
using Context = std::unique_ptr<xmlParserCtxt, Deleter>;
using XmlText = std::unique_ptr<xmlChar, Deleter>;

// An attribute's value; empty when it is absent.
std::string Attribute(xmlNodePtr element, const char* name, const char* namespaceUri) {
  XmlText value(namespaceUri ? xmlGetNsProp(element, X(name), X(namespaceUri)) : xmlGetNoNsProp(element, X(name)));
  return value ? C(value.get()) : std::string();
}

// The element's own text: its text and CDATA children, without expanding
// entity references (documents with a DTD are refused before we get here).
std::string Text(xmlNodePtr element) {
  std::string text;
  for (xmlNodePtr child = element->children; child; child = child->next)
    if ((child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) && child->content)
      text += C(child->content);
  return text;
}

std::string Trimmed(const std::string& text) {
  const char* space = " \t\r\n";
  std::size_t first = text.find_first_not_of(space);
  if (first == std::string::npos) return std::string();
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

[[noreturn]] void Refuse(const char* what, xmlNodePtr element, const std::string& text) {
  throw ResultFormatError("%s '%s' in <%s> at line %ld", what, text.c_str(), C(element->name), xmlGetLineNo(element));
}

// Integer text of the element within [low, high], in the given signedness.
template <class T>
T ParseInteger(xmlNodePtr element) {
  std::string text = Trimmed(Text(element));
  errno = 0;
  char* end = nullptr;
  if constexpr (std::is_signed_v<T>) {
    long long value = std::strtoll(text.c_str(), &end, 10);
    bool ok = !text.empty() && *end == 0 && errno == 0 && value >= std::numeric_limits<T>::min() &&
              value <= std::numeric_limits<T>::max();
    if (!ok) Refuse("invalid integer", element, text);
    return static_cast<T>(value);
  } else {
    unsigned long long value = std::strtoull(text.c_str(), &end, 10);
    bool ok = !text.empty() && text[0] != '-' && *end == 0 && errno == 0 && value <= std::numeric_limits<T>::max();
    if (!ok) Refuse("invalid integer", element, text);
    return static_cast<T>(value);
  }
}

double ParseReal(xmlNodePtr element) {
  std::string text = Trimmed(Text(element));
  char* end = nullptr;
  double value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != 0) Refuse("invalid number", element, text);
  return value;
}

bool ParseBoolean(xmlNodePtr element) {
  std::string text = Trimmed(Text(element));
  if (text == "true" || text == "1") return true;
  if (text == "false" || text == "0") return false;
  Refuse("invalid boolean", element, text);
}

class XmlReader {
 public:
  void ReadEntries(xmlNodePtr parent, CProperties* bag, int depth) {
    CheckDepth(depth);
    for (xmlNodePtr child = parent->children; child; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) continue;
      RObject<CString> key(new CString(KeyOf(child).c_str()));
      RObject<CVariant> value(ReadValue(child, depth));
      Result stored = bag->SetProperty(key.Get(), value.Get());
      if (stored.Failed()) throw stored;
    }
  }

 private:
  static void CheckDepth(int depth) {
    if (depth > PropertiesText::MaxReadDepth)
      throw ResultFormatError("XML nests deeper than %d levels", PropertiesText::MaxReadDepth);
  }

  static std::string KeyOf(xmlNodePtr element) {
    if (std::strcmp(C(element->name), Xml::PropertyName) == 0) {
      std::string name = Attribute(element, Xml::NameAttribute, nullptr);
      if (!name.empty()) return name;
    }
    return C(element->name);
  }

  CVariant* ReadValue(xmlNodePtr element, int depth) {
    std::string nil = Attribute(element, "nil", Xml::XsiUri);
    if (nil == "true" || nil == "1") return nullptr;
    RObject<CVariant> value(ReadTyped(element, Attribute(element, "type", Xml::XsiUri), depth));
    std::string annotation = Attribute(element, Xml::AnnotationAttribute, nullptr);
    if (!annotation.empty()) value->SetDescription(annotation.c_str());
    return value.Detach();
  }

  CVariant* ReadTyped(xmlNodePtr element, const std::string& type, int depth) {
    if (type == "object") {
      RObject<CProperties> bag(new CProperties());
      ReadEntries(element, bag.Get(), depth + 1);
      return new CVariant(bag.Get());
    }
    if (type == "array") {
      RObject<CVariantArray> array(ReadItems(element, depth + 1));
      return new CVariant(array.Get());
    }
    if (type.empty() || type == "xs:string") {
      RObject<CString> text(new CString(Text(element).c_str()));
      return new CVariant(text.Get());
    }
    if (type == "four") return new CVariant(FourString::ToFour(Text(element).c_str()), CVariant::Four);
    if (type == "xs:boolean") return new CVariant(ParseBoolean(element));
    if (type == "char") return new CVariant(Text(element).c_str()[0]);
    if (type == "xs:byte") return new CVariant(ParseInteger<signed char>(element));
    if (type == "xs:unsignedByte") return new CVariant(ParseInteger<unsigned char>(element));
    if (type == "xs:short") return new CVariant(ParseInteger<short>(element));
    if (type == "xs:unsignedShort") return new CVariant(ParseInteger<unsigned short>(element));
    if (type == "xs:int") return new CVariant(ParseInteger<int>(element));
    if (type == "xs:unsignedInt") return new CVariant(ParseInteger<unsigned int>(element));
    if (type == "xs:long") return new CVariant(ParseInteger<long long>(element));
    if (type == "xs:unsignedLong") return new CVariant(ParseInteger<unsigned long long>(element));
    if (type == "xs:float") return new CVariant(static_cast<float>(ParseReal(element)), CVariant::Float);
    if (type == "xs:double") return new CVariant(ParseReal(element));
    if (type == "xs:base64Binary") {
      RObject<CByteArray> bytes(CBase64Decoder::Decode(Text(element).c_str(), nullptr));
      if (!bytes) bytes = new CByteArray(nullptr, 0);
      return new CVariant(bytes.Get());
    }
    Refuse("unknown xsi:type", element, type);
  }

  CVariantArray* ReadItems(xmlNodePtr element, int depth) {
    CheckDepth(depth);
    int count = 0;
    for (xmlNodePtr child = element->children; child; child = child->next) count += child->type == XML_ELEMENT_NODE;
    RObject<CVariantArray> array(new CVariantArray(count));
    int index = 0;
    for (xmlNodePtr child = element->children; child; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) continue;
      RObject<CVariant> item(ReadValue(child, depth));
      array->Set(index++, item.Get());
    }
    return array.Detach();
  }
};

// Parses without network access, entity substitution or error output.
Document Parse(const std::string& text) {
  PropertiesXml::ErrorCapture errors;
  Context context(xmlNewParserCtxt());
  if (!context) throw ResultOutOfMemory("cannot create an XML parser");
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw ResultFormatError("XML text too large");
  Document document(xmlCtxtReadMemory(context.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (!document)
    throw ResultFormatError("%s", errors.GetMessage().empty() ? "malformed XML" : errors.GetMessage().c_str());
  // A container document needs no DTD; refusing one keeps entity expansion
  // (and its amplification) out of reach.
  if (document->intSubset || document->extSubset)
    throw ResultFormatError("document type declarations are not accepted");
  return document;
}

}  // namespace

CProperties* CProperties::FromXml(CStream* stream) {
  if (!stream) throw ResultArgumentNull("the stream is null");
  Document document = Parse(PropertiesText::ReadAll(stream));
  xmlNodePtr root = xmlDocGetRootElement(document.get());
  if (!root || std::strcmp(C(root->name), Xml::RootName) != 0)
    throw ResultFormatError("the root element is not <%s>", Xml::RootName);
  RObject<CProperties> bag(new CProperties());
  XmlReader().ReadEntries(root, bag.Get(), 0);
  return bag.Detach();
}

}  // namespace Corvane::Mox
