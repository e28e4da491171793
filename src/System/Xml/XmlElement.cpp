#include "System/Xml/XmlElement.h"

#include <cstring>
#include <string>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/IO/Base64Decoder.h"
#include "System/IO/Base64Encoder.h"
#include "System/Text.h"
#include "System/Xml/XmlAttribute.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlLibrary.h"
#include "System/Xml/XmlNamespace.h"
#include "System/Xml/XmlValue.h"

namespace Corvane::Mox {

namespace {

const char* AsChars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }
const xmlChar* AsXml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }
const xmlChar* OrNull(const std::string& text) { return text.empty() ? nullptr : AsXml(text.c_str()); }

bool IsDeclarationName(const char* name) {
  return std::strcmp(name, "xmlns") == 0 || std::strncmp(name, "xmlns:", 6) == 0;
}

// The prefix a declaration attribute declares (empty for "xmlns").
std::string DeclaredPrefix(const char* name) { return name[5] == ':' ? std::string(name + 6) : std::string(); }

xmlNsPtr FindDeclaration(xmlNodePtr node, const std::string& prefix) {
  for (xmlNsPtr ns = node->nsDef; ns; ns = ns->next) {
    bool unprefixed = !ns->prefix || !*ns->prefix;
    if (prefix.empty() ? unprefixed : (!unprefixed && prefix == AsChars(ns->prefix))) return ns;
  }
  return nullptr;
}

bool IsValidPrefix(const std::string& prefix) {
  return prefix.empty() || xmlValidateNCName(AsXml(prefix.c_str()), 0) == 0;
}

// A new element node in a fresh document of its own.
xmlNodePtr NewElementNode(CXmlDocument* document, const char* name) {
  if (!XmlLibrary::IsValidName(name)) throw ResultArgumentOutOfRange("invalid XML name '%s'", name ? name : "");
  xmlNodePtr node = xmlNewDocNode(document->GetXmlDocument(), nullptr, AsXml(name), nullptr);
  if (!node) throw ResultOutOfMemory();
  return node;
}

CString* NewString(const std::string& text) { return new CString(text.c_str(), static_cast<int>(text.size())); }

}  // namespace

CXmlElement::CXmlElement(const char* name) : CXmlNode(TypeCode, ElementNode, nullptr, nullptr) {
  RObject<CXmlDocument> document(CXmlDocument::Create());
  BindDetached(NewElementNode(document, name), document);
}

CXmlElement::CXmlElement(const char* name, const char* namespaceUri) : CXmlElement(name) {
  if (!namespaceUri || !*namespaceUri) return;
  std::string prefix = XmlLibrary::PrefixPart(name);
  xmlNsPtr ns = xmlNewNs(GetXmlNode(), AsXml(namespaceUri), OrNull(prefix));
  if (!ns) throw ResultError("failed to add new libxml namespace");
  xmlSetNs(GetXmlNode(), ns);
  xmlNodeSetName(GetXmlNode(), AsXml(XmlLibrary::LocalPart(name).c_str()));
}

CString* CXmlElement::GetName() const { return NewString(XmlLibrary::GetQualifiedName(GetXmlNode())); }

CString* CXmlElement::GetLocalName() const {
  return NewString(XmlLibrary::LocalPart(AsChars(GetXmlNode()->name)));
}

CString* CXmlElement::GetNamespaceUri() const {
  const xmlChar* uri = XmlLibrary::GetNamespaceUri(GetXmlNode());
  return uri ? new CString(AsChars(uri)) : nullptr;
}

CXmlNamespace* CXmlElement::GetNamespace() const {
  xmlNodePtr node = GetXmlNode();
  if (node->ns) return new CXmlNamespace(AsChars(node->ns->href), AsChars(node->ns->prefix));
  std::string prefix = XmlLibrary::PrefixPart(AsChars(node->name));
  const xmlChar* uri = XmlLibrary::ResolvePrefix(node, prefix.c_str());
  return uri ? new CXmlNamespace(AsChars(uri), prefix.c_str()) : nullptr;
}

CXmlNamespace* CXmlElement::GetNamespace(const char* prefix) const {
  return GetXmlNamespace(const_cast<CXmlElement*>(this), prefix);
}

CList<CXmlNamespace>* CXmlElement::GetNamespaces() const {
  auto* list = new CList<CXmlNamespace>();
  for (xmlNsPtr ns = GetXmlNode()->nsDef; ns; ns = ns->next) {
    RObject<CXmlNamespace> item(new CXmlNamespace(AsChars(ns->href), AsChars(ns->prefix)));
    list->Add(item);
  }
  return list;
}

Result CXmlElement::AddNamespace(const char* uri) { return AddNamespace(nullptr, uri); }

Result CXmlElement::AddNamespace(const char* prefix, const char* uri) {
  if (!uri) return ResultArgumentNull("namespace URI must not be nullptr");
  std::string key(prefix ? prefix : "");
  xmlNsPtr existing = FindDeclaration(GetXmlNode(), key);
  if (existing && existing->href && std::strcmp(AsChars(existing->href), uri) == 0) return ResultOK();
  // A prefix cannot be bound to the empty URI.
  if (!IsValidPrefix(key) || (!key.empty() && !*uri)) return ResultError("failed to add new libxml namespace");
  if (!xmlNewNs(GetXmlNode(), AsXml(uri), OrNull(key))) return ResultError("failed to add new libxml namespace");
  return ResultOK();
}

Result CXmlElement::AddNamespace(CXmlNamespace* ns) {
  if (!ns) return ResultArgumentNull("namespace must not be nullptr");
  return AddNamespace(ns->GetPrefix(), ns->GetUri());
}

Result CXmlElement::SetNamespaceDeclaration(const char* name, const char* uri) {
  std::string prefix = DeclaredPrefix(name);
  xmlNsPtr existing = FindDeclaration(GetXmlNode(), prefix);
  if (!existing) return AddNamespace(prefix.empty() ? nullptr : prefix.c_str(), uri);
  if (!prefix.empty() && !*uri) return ResultError("failed to add new libxml namespace");
  // Nodes point at the declaration, so it is changed in place.
  if (existing->href) xmlFree(const_cast<xmlChar*>(existing->href));
  existing->href = xmlStrdup(AsXml(uri));
  return ResultOK();
}

_xmlAttr* CXmlElement::FindAttribute(const char* name) const {
  xmlNodePtr node = GetXmlNode();
  std::string prefix = XmlLibrary::PrefixPart(name);
  if (!prefix.empty()) {
    const xmlChar* uri = XmlLibrary::ResolvePrefix(node, prefix.c_str());
    if (uri) {
      xmlAttrPtr attribute = xmlHasNsProp(node, AsXml(XmlLibrary::LocalPart(name).c_str()), uri);
      if (attribute) return attribute;
    }
  }
  // Unprefixed attributes, and prefixed names whose prefix was never declared.
  return xmlHasNsProp(node, AsXml(name), nullptr);
}

CString* CXmlElement::GetAttribute(const char* name) const {
  if (!name) return nullptr;
  if (IsDeclarationName(name)) {
    xmlNsPtr ns = FindDeclaration(GetXmlNode(), DeclaredPrefix(name));
    return ns && ns->href ? new CString(AsChars(ns->href)) : nullptr;
  }
  xmlAttrPtr attribute = FindAttribute(name);
  return attribute ? NewString(XmlLibrary::GetContent(reinterpret_cast<xmlNodePtr>(attribute))) : nullptr;
}

CString* CXmlElement::GetAttribute(const char* name, const char* namespaceUri) const {
  if (!name) return nullptr;
  if (!namespaceUri || !*namespaceUri) return GetAttribute(name);
  std::string local = XmlLibrary::LocalPart(name);
  xmlAttrPtr attribute = xmlHasNsProp(GetXmlNode(), AsXml(local.c_str()), AsXml(namespaceUri));
  return attribute ? NewString(XmlLibrary::GetContent(reinterpret_cast<xmlNodePtr>(attribute))) : nullptr;
}

bool CXmlElement::HasAttribute(const char* name) const {
  RObject<CString> value(GetAttribute(name));
  return value.Get() != nullptr;
}

CList<CXmlAttribute>* CXmlElement::GetAttributes() const {
  auto* list = new CList<CXmlAttribute>();
  xmlNodePtr node = GetXmlNode();
  for (xmlNsPtr ns = node->nsDef; ns; ns = ns->next) {
    std::string name = ns->prefix ? std::string("xmlns:") + AsChars(ns->prefix) : std::string("xmlns");
    RObject<CXmlAttribute> item(new CXmlAttribute(CXmlAttribute::XmlnsNamespaceUri, name.c_str(), AsChars(ns->href)));
    list->Add(item);
  }
  for (xmlAttrPtr attribute = node->properties; attribute; attribute = attribute->next) {
    std::string name(AsChars(attribute->name));
    const char* uri = nullptr;
    if (attribute->ns) {
      uri = AsChars(attribute->ns->href);
      if (attribute->ns->prefix) name = std::string(AsChars(attribute->ns->prefix)) + ":" + name;
    }
    std::string value = XmlLibrary::GetContent(reinterpret_cast<xmlNodePtr>(attribute));
    RObject<CXmlAttribute> item(new CXmlAttribute(uri, name.c_str(), value.c_str()));
    list->Add(item);
  }
  return list;
}

Result CXmlElement::SetAttribute(const char* name, const char* value) {
  if (!name || !value) return ResultArgumentNull("attribute name and value must not be nullptr");
  if (IsDeclarationName(name)) return SetNamespaceDeclaration(name, value);
  if (!XmlLibrary::IsValidName(name)) return ResultError("failed to set libxml property");
  xmlNodePtr node = GetXmlNode();
  std::string prefix = XmlLibrary::PrefixPart(name);
  xmlNsPtr ns = nullptr;
  if (!prefix.empty()) ns = xmlSearchNs(node->doc, node, AsXml(prefix.c_str()));
  // An undeclared prefix stays part of the name.
  std::string local = ns ? XmlLibrary::LocalPart(name) : std::string(name);
  if (!xmlSetNsProp(node, ns, AsXml(local.c_str()), AsXml(value))) return ResultError("failed to set libxml property");
  return ResultOK();
}

Result CXmlElement::SetAttribute(const char* name, CString* value) {
  if (!value) return ResultArgumentNull("value must not be nullptr");
  return SetAttribute(name, value->GetChars());
}

Result CXmlElement::SetAttribute(const char* name, const char* namespaceUri, const char* value) {
  if (!namespaceUri || !*namespaceUri) return SetAttribute(name, value);
  if (!name || !value) return ResultArgumentNull("attribute name and value must not be nullptr");
  if (std::strcmp(namespaceUri, CXmlAttribute::XmlnsNamespaceUri) == 0 && IsDeclarationName(name))
    return SetNamespaceDeclaration(name, value);
  if (!XmlLibrary::IsValidName(name)) return ResultError("failed to set libxml property");
  xmlNodePtr node = GetXmlNode();
  std::string prefix = XmlLibrary::PrefixPart(name);
  xmlNsPtr ns = prefix.empty() ? nullptr : xmlSearchNs(node->doc, node, AsXml(prefix.c_str()));
  if (ns && (!ns->href || std::strcmp(AsChars(ns->href), namespaceUri) != 0)) ns = nullptr;
  if (!ns && prefix.empty()) {
    // Attributes need a prefix to be in a namespace: reuse one in scope or make one.
    ns = xmlSearchNsByHref(node->doc, node, AsXml(namespaceUri));
    if (ns && !ns->prefix) ns = nullptr;
    for (int i = 0; !ns && i < 1000; ++i) {
      std::string candidate = XmlValue::Format("ns%d", i);
      if (!xmlSearchNs(node->doc, node, AsXml(candidate.c_str()))) prefix = candidate;
      if (!prefix.empty()) break;
    }
  }
  if (!ns) {
    Result declared = AddNamespace(prefix.c_str(), namespaceUri);
    if (declared.Failed()) return declared;
    ns = FindDeclaration(node, prefix);
  }
  if (!ns || !xmlSetNsProp(node, ns, AsXml(XmlLibrary::LocalPart(name).c_str()), AsXml(value)))
    return ResultError("failed to set libxml property");
  return ResultOK();
}

Result CXmlElement::SetAttribute(CXmlAttribute* attribute) {
  if (!attribute) return ResultArgumentNull("attribute must not be nullptr");
  return SetAttribute(attribute->GetName(), attribute->GetNamespaceUri(), attribute->GetValue());
}

Result CXmlElement::SetAttribute(const char* name, int value) {
  return SetAttribute(name, XmlValue::Format("%d", value).c_str());
}

Result CXmlElement::SetAttribute(const char* name, long long value) {
  return SetAttribute(name, XmlValue::Format("%lld", value).c_str());
}

Result CXmlElement::SetAttribute(const char* name, double value, const char* format) {
  return SetAttribute(name, XmlValue::FormatDouble(value, format).c_str());
}

Result CXmlElement::RemoveAttribute(const char* name) {
  if (!name) return ResultArgumentNull("attribute name must not be nullptr");
  // Nodes of the subtree may refer to a declaration, so declarations stay.
  if (IsDeclarationName(name)) return ResultNotSupported("namespace declarations cannot be removed");
  xmlAttrPtr attribute = FindAttribute(name);
  if (!attribute) return ResultFalse();
  xmlRemoveProp(attribute);
  return ResultOK();
}

Result CXmlElement::RemoveAttribute(const char* name, const char* namespaceUri) {
  if (!namespaceUri || !*namespaceUri) return RemoveAttribute(name);
  if (!name) return ResultArgumentNull("attribute name must not be nullptr");
  std::string local = XmlLibrary::LocalPart(name);
  xmlAttrPtr attribute = xmlHasNsProp(GetXmlNode(), AsXml(local.c_str()), AsXml(namespaceUri));
  if (!attribute) return ResultFalse();
  xmlRemoveProp(attribute);
  return ResultOK();
}

bool CXmlElement::GetAttributeAsBool(const char* name, bool fallback) const {
  RObject<CString> value(GetAttribute(name));
  return XmlValue::ToBoolean(value ? value->GetChars() : nullptr, fallback);
}

int CXmlElement::GetAttributeAsInt32(const char* name, int fallback) const {
  RObject<CString> value(GetAttribute(name));
  return XmlValue::ToInt32(value ? value->GetChars() : nullptr, fallback);
}

unsigned int CXmlElement::GetAttributeAsUInt32(const char* name, unsigned int fallback) const {
  RObject<CString> value(GetAttribute(name));
  return XmlValue::ToUInt32(value ? value->GetChars() : nullptr, fallback);
}

long long CXmlElement::GetAttributeAsInt64(const char* name, long long fallback) const {
  RObject<CString> value(GetAttribute(name));
  return XmlValue::ToInt64(value ? value->GetChars() : nullptr, fallback);
}

unsigned long long CXmlElement::GetAttributeAsUInt64(const char* name, unsigned long long fallback) const {
  RObject<CString> value(GetAttribute(name));
  return XmlValue::ToUInt64(value ? value->GetChars() : nullptr, fallback);
}

double CXmlElement::GetAttributeAsDouble(const char* name, double fallback) const {
  RObject<CString> value(GetAttribute(name));
  return XmlValue::ToDouble(value ? value->GetChars() : nullptr, fallback);
}

CString* CXmlElement::GetValue() const { return NewString(XmlLibrary::GetContent(GetXmlNode())); }

CString* CXmlElement::GetString() const {
  std::string text;
  if (XmlLibrary::SaveNode(GetXmlNode(), 0, text).Failed()) return nullptr;
  return NewString(text);
}

CByteArray* CXmlElement::GetBytes() const {
  std::string text;
  if (XmlLibrary::SaveNode(GetXmlNode(), 0, text).Failed()) return nullptr;
  return new CByteArray(reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
}

Result CXmlElement::SetText(const char* text) {
  xmlNodePtr node = GetXmlNode();
  xmlNodePtr only = node->children;
  if (only && !only->next && only->type == XML_TEXT_NODE) {
    // The common case keeps the one text node (and any wrapper of it).
    xmlNodeSetContent(only, AsXml(text));
    return ResultOK();
  }
  // Old children may still have wrappers: they move to the document's detached nodes.
  while (xmlNodePtr child = node->children) {
    if (CXmlNode* removed = Wrap(child, GetDocument())) {
      RemoveChildNode(removed);
      removed->Release();
    } else {
      xmlUnlinkNode(child);
      xmlFreeNode(child);
    }
  }
  if (!*text) return ResultOK();
  xmlNodePtr textNode = xmlNewDocText(node->doc, AsXml(text));
  if (!textNode) return ResultError("failed to add libxml child node");
  XmlLibrary::LinkLastChild(node, textNode);
  return ResultOK();
}

Result CXmlElement::SetValue(CString* value) {
  if (!value) return ResultArgumentNull("value must not be nullptr");
  return SetText(value->GetChars());
}

Result CXmlElement::SetValue(const char* value) {
  if (!value) return ResultArgumentNull("value must not be nullptr");
  return SetText(value);
}

Result CXmlElement::SetValue(bool value, bool numeric) {
  if (numeric) return SetText(value ? "1" : "0");
  return SetText(value ? "true" : "false");
}

Result CXmlElement::SetValue(short value) { return SetText(XmlValue::Format("%hd", value).c_str()); }
Result CXmlElement::SetValue(unsigned short value) { return SetText(XmlValue::Format("%hu", value).c_str()); }
Result CXmlElement::SetValue(int value) { return SetText(XmlValue::Format("%d", value).c_str()); }
Result CXmlElement::SetValue(unsigned int value) { return SetText(XmlValue::Format("%u", value).c_str()); }
Result CXmlElement::SetValue(long value) { return SetText(XmlValue::Format("%ld", value).c_str()); }
Result CXmlElement::SetValue(unsigned long value) { return SetText(XmlValue::Format("%lu", value).c_str()); }
Result CXmlElement::SetValue(long long value) { return SetText(XmlValue::Format("%lld", value).c_str()); }
Result CXmlElement::SetValue(unsigned long long value) { return SetText(XmlValue::Format("%llu", value).c_str()); }

Result CXmlElement::SetValue(double value, const char* format) {
  return SetText(XmlValue::FormatDouble(value, format).c_str());
}

Result CXmlElement::SetValue(Rational<int> value, char separator) {
  return SetText(XmlValue::Format("%d%c%d", value.numerator, separator, value.denominator).c_str());
}

Result CXmlElement::SetValue(Rational<long long> value, char separator) {
  return SetText(XmlValue::Format("%lld%c%lld", value.numerator, separator, value.denominator).c_str());
}

Result CXmlElement::SetValue(CByteArray* bytes) {
  if (!bytes) return ResultArgumentNull("value must not be nullptr");
  RObject<CString> text(CBase64Encoder::Encode(bytes, false, CBase64Encoder::Standard));
  if (!text) return ResultError("cannot encode the bytes as Base64");
  return SetText(text->GetChars());
}

bool CXmlElement::GetValueAsBoolean(bool fallback) const {
  return XmlValue::ToBoolean(XmlLibrary::GetContent(GetXmlNode()).c_str(), fallback);
}

int CXmlElement::GetValueAsInt32(int fallback) const {
  return XmlValue::ToInt32(XmlLibrary::GetContent(GetXmlNode()).c_str(), fallback);
}

unsigned int CXmlElement::GetValueAsUInt32(unsigned int fallback) const {
  return XmlValue::ToUInt32(XmlLibrary::GetContent(GetXmlNode()).c_str(), fallback);
}

long long CXmlElement::GetValueAsInt64(long long fallback) const {
  return XmlValue::ToInt64(XmlLibrary::GetContent(GetXmlNode()).c_str(), fallback);
}

unsigned long long CXmlElement::GetValueAsUInt64(unsigned long long fallback) const {
  return XmlValue::ToUInt64(XmlLibrary::GetContent(GetXmlNode()).c_str(), fallback);
}

double CXmlElement::GetValueAsDouble(double fallback) const {
  return XmlValue::ToDouble(XmlLibrary::GetContent(GetXmlNode()).c_str(), fallback);
}

Rational<int> CXmlElement::GetValueAsRational32(Rational<int> fallback, const char* separators) const {
  std::string text = XmlLibrary::GetContent(GetXmlNode());
  std::size_t split = separators ? text.find_first_of(separators) : std::string::npos;
  Rational<int> value(0, 1);
  if (split == std::string::npos) return XmlValue::TryToInt32(text.c_str(), value.numerator) ? value : fallback;
  std::string numerator = text.substr(0, split);
  std::string denominator = text.substr(split + 1);
  if (!XmlValue::TryToInt32(numerator.c_str(), value.numerator) ||
      !XmlValue::TryToInt32(denominator.c_str(), value.denominator))
    return fallback;
  return value;
}

unsigned int CXmlElement::GetValueAsFour() const {
  RObject<CString> text(GetValue());
  return text->ToFour();
}

CByteArray* CXmlElement::GetValueAsBase64Binary() const {
  RObject<CString> text(GetValue());
  if (text->IsEmpty()) return nullptr;
  return CBase64Decoder::Decode(text, CBase64Encoder::Standard);
}

}  // namespace Corvane::Mox
