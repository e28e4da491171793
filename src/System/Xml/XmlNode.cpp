#include "System/Xml/XmlNode.h"

#include <cctype>
#include <string>

#include "System/Collections/List.h"
#include "System/Console.h"
#include "System/Text.h"
#include "System/Xml/XmlCharacterData.h"
#include "System/Xml/XmlComment.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"
#include "System/Xml/XmlLibrary.h"
#include "System/Xml/XmlNamespace.h"
#include "System/Xml/XmlProcessingInstruction.h"
#include "System/Xml/XmlText.h"

namespace Corvane::Mox {

namespace {

const char* AsChars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }
const xmlChar* AsXml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

}  // namespace

CXmlNode::CXmlNode(unsigned int typeCode, int nodeType, _xmlNode* node, CXmlDocument* document)
    : CObject(typeCode), nodeType_(nodeType), node_(node), document_(document) {
  if (document_) document_->Acquire();
}

CXmlNode::~CXmlNode() {
  if (document_) document_->Release();
}

CXmlDocument* CXmlNode::GetDocument() const {
  // The node may have moved into another document since this wrapper was
  // made; the libxml2 document names the current owner.
  if (node_ && node_->doc && node_->doc->_private) return CXmlDocument::FromXml(node_->doc);
  return document_;
}

void CXmlNode::Rebind(_xmlNode* node, CXmlDocument* document) {
  node_ = node;
  if (document == document_ || nodeType_ == DocumentNode) return;
  if (document) document->Acquire();
  if (document_) document_->Release();
  document_ = document;
}

void CXmlNode::BindDetached(_xmlNode* node, CXmlDocument* document) {
  document->KeepDetached(node);
  Rebind(node, document);
}

CXmlNode* CXmlNode::AdoptDetached(_xmlNode* node) {
  if (!node) return nullptr;
  CXmlDocument* document = GetDocument();
  document->KeepDetached(node);
  return Wrap(node, document);
}

CXmlNode* CXmlNode::Wrap(_xmlNode* node, CXmlDocument* document) {
  if (!node || !document) return nullptr;
  switch (node->type) {
    case XML_ELEMENT_NODE:
      return new CXmlElement(node, document);
    case XML_TEXT_NODE:
      return new CXmlText(node, document);
    case XML_CDATA_SECTION_NODE:
      return new CXmlCharacterData(node, document);
    case XML_COMMENT_NODE:
      return new CXmlComment(node, document);
    case XML_PI_NODE:
      return new CXmlProcessingInstruction(node, document);
    case XML_DOCUMENT_NODE:
      if (reinterpret_cast<_xmlDoc*>(node) != document->GetXmlDocument()) return nullptr;
      document->Acquire();
      return document;
    default:
      return nullptr;
  }
}

CXmlNode* CXmlNode::GetParent() const {
  if (!HasParent()) return nullptr;
  return Wrap(node_->parent, GetDocument());
}

bool CXmlNode::HasParent() const { return node_ && node_->parent; }

CString* CXmlNode::GetText() const { return new CString(XmlLibrary::GetContent(node_).c_str()); }

CList<CXmlNode>* CXmlNode::GetChildNodes() const {
  auto* list = new CList<CXmlNode>();
  list->SetType(ListTypeCode);
  CXmlDocument* document = GetDocument();
  for (xmlNodePtr child = node_->children; child; child = child->next) {
    RObject<CXmlNode> wrapper(Wrap(child, document));
    if (wrapper) {
      list->Add(wrapper);
    } else {
      MOX_LOG(Console::Error, "Unrecognized XML node type (%d).", static_cast<int>(child->type));
    }
  }
  return list;
}

bool CXmlNode::CanHoldChild(const _xmlNode* child) const {
  if (node_->type == XML_ELEMENT_NODE) return child->type != XML_DOCUMENT_NODE;
  if (node_->type != XML_DOCUMENT_NODE) return false;
  // A document holds one root element and, around it, comments and processing instructions.
  if (child->type == XML_COMMENT_NODE || child->type == XML_PI_NODE) return true;
  return child->type == XML_ELEMENT_NODE && !xmlDocGetRootElement(reinterpret_cast<xmlDocPtr>(node_));
}

Result CXmlNode::Import(CXmlNode* child) {
  CXmlDocument* target = GetDocument();
  CXmlDocument* source = child->GetDocument();
  if (source == target) return ResultOK();
  // A parsed document interns its names in a dictionary of its own, which a
  // moved node would go on pointing into after the source is freed; and
  // moving would make two documents keep each other alive. Copy in both cases.
  const xmlDict* names = source->GetXmlDocument()->dict;
  if (target->KeepsAlive(source) || (names && names != target->GetXmlDocument()->dict)) {
    xmlNodePtr copy = xmlDocCopyNode(child->node_, target->GetXmlDocument(), 1);
    if (!copy) return ResultError("failed to add libxml child node");
    target->KeepDetached(copy);
    child->Rebind(copy, target);
    return ResultOK();
  }
  // Wrappers of nodes inside the moved subtree still hold the source document,
  // which from now on keeps the target alive.
  source->ForgetDetached(child->node_);
  source->KeepAlive(target);
  xmlSetTreeDoc(child->node_, target->GetXmlDocument());
  target->KeepDetached(child->node_);
  child->Rebind(child->node_, target);
  return ResultOK();
}

Result CXmlNode::Attach(CXmlNode* child, const char* nullMessage, const char* parentMessage) {
  if (!child) return ResultArgumentNull("%s", nullMessage);
  if (child->HasParent() || child->nodeType_ == DocumentNode) return ResultInvalidOperation("%s", parentMessage);
  if (!CanHoldChild(child->node_) || XmlLibrary::IsAncestorOrSelf(child->node_, node_))
    return ResultError("failed to add libxml child node");
  // Copying and namespace reconciliation may report through libxml2's printer.
  XmlLibrary::CErrorCapture capture;
  Result imported = Import(child);
  if (imported.Failed()) return imported;
  CXmlDocument* document = GetDocument();
  document->ForgetDetached(child->node_);
  XmlLibrary::LinkLastChild(node_, child->node_);
  // Namespace references of the added subtree must point at declarations
  // that are in scope at its new place.
  if (child->node_->type == XML_ELEMENT_NODE) xmlReconciliateNs(document->GetXmlDocument(), child->node_);
  return ResultOK();
}

Result CXmlNode::AddChildNode(CXmlNode* child) {
  return Attach(child, "child node must not be nullptr", "child node already has a parent");
}

Result CXmlNode::AddChildElement(CXmlElement* child) {
  return Attach(child, "child element must not be nullptr", "child element already has a parent");
}

Result CXmlNode::RemoveChildNode(CXmlNode* child) {
  if (!child) return ResultArgumentNull("child node must not be nullptr");
  if (child->node_->parent != node_) return ResultInvalidOperation("node is not a child of this node");
  xmlUnlinkNode(child->node_);
  GetDocument()->KeepDetached(child->node_);
  return ResultOK();
}

Result CXmlNode::SetParent(CXmlNode* parent) {
  if (parent) return parent->AddChildNode(this);
  if (!HasParent()) return ResultOK();
  xmlUnlinkNode(node_);
  GetDocument()->KeepDetached(node_);
  return ResultOK();
}

template <class T>
CList<T>* CXmlNode::CollectChildren(const char* name, const char* namespaceUri, bool byNamespace,
                                    bool elementsOnly) const {
  auto* list = new CList<T>();
  list->SetType(ListTypeCode);
  CXmlDocument* document = GetDocument();
  for (xmlNodePtr child = node_->children; child; child = child->next) {
    if (elementsOnly && child->type != XML_ELEMENT_NODE) continue;
    if (name && !XmlLibrary::MatchesName(child, name, namespaceUri, byNamespace)) continue;
    RObject<CXmlNode> wrapper(Wrap(child, document));
    if (wrapper) list->Add(static_cast<T*>(wrapper.Get()));
  }
  return list;
}

CXmlElement* CXmlNode::GetChildElement(const char* name) const {
  if (!name) return nullptr;
  for (xmlNodePtr child = node_->children; child; child = child->next)
    if (XmlLibrary::MatchesName(child, name, nullptr, false))
      return static_cast<CXmlElement*>(Wrap(child, GetDocument()));
  return nullptr;
}

CXmlElement* CXmlNode::GetChildElement(const unsigned char* name) const {
  return GetChildElement(AsChars(name));
}

CXmlElement* CXmlNode::GetChildElement(const char* name, const char* namespaceUri) const {
  if (!name) return nullptr;
  for (xmlNodePtr child = node_->children; child; child = child->next)
    if (XmlLibrary::MatchesName(child, name, namespaceUri, true))
      return static_cast<CXmlElement*>(Wrap(child, GetDocument()));
  return nullptr;
}

CXmlElement* CXmlNode::GetChildElement(const unsigned char* name, const unsigned char* namespaceUri) const {
  return GetChildElement(AsChars(name), AsChars(namespaceUri));
}

CList<CXmlElement>* CXmlNode::GetChildElements() const {
  return CollectChildren<CXmlElement>(nullptr, nullptr, false, true);
}

CList<CXmlElement>* CXmlNode::GetChildElements(const char* name) const {
  if (!name) return GetChildElements();
  return CollectChildren<CXmlElement>(name, nullptr, false, true);
}

CList<CXmlElement>* CXmlNode::GetChildElements(const unsigned char* name) const {
  return GetChildElements(AsChars(name));
}

CList<CXmlElement>* CXmlNode::GetChildElements(const char* name, const char* namespaceUri) const {
  if (!name) return GetChildElements();
  return CollectChildren<CXmlElement>(name, namespaceUri, true, true);
}

CList<CXmlElement>* CXmlNode::GetChildElements(const unsigned char* name, const unsigned char* namespaceUri) const {
  return GetChildElements(AsChars(name), AsChars(namespaceUri));
}

CXmlProcessingInstruction* CXmlNode::CreateProcessingInstruction(const char* text) {
  if (!text) return nullptr;
  std::string all(text);
  std::size_t end = 0;
  while (end < all.size() && !std::isspace(static_cast<unsigned char>(all[end]))) ++end;
  std::string target = all.substr(0, end);
  if (!XmlLibrary::IsValidName(target.c_str())) return nullptr;
  std::size_t start = end;
  while (start < all.size() && std::isspace(static_cast<unsigned char>(all[start]))) ++start;
  std::string content = all.substr(start);
  xmlNodePtr node = xmlNewDocPI(GetDocument()->GetXmlDocument(), AsXml(target.c_str()),
                                content.empty() ? nullptr : AsXml(content.c_str()));
  return static_cast<CXmlProcessingInstruction*>(AdoptDetached(node));
}

CXmlComment* CXmlNode::CreateComment(const char* text) {
  if (!text) return nullptr;
  return static_cast<CXmlComment*>(AdoptDetached(xmlNewDocComment(GetDocument()->GetXmlDocument(), AsXml(text))));
}

CXmlText* CXmlNode::CreateText(CString* text) {
  if (!text) return nullptr;
  xmlNodePtr node = xmlNewDocText(GetDocument()->GetXmlDocument(), AsXml(text->GetChars()));
  return static_cast<CXmlText*>(AdoptDetached(node));
}

CXmlCharacterData* CXmlNode::CreateCharacterData(CString* text) {
  if (!text) return nullptr;
  const char* chars = text->GetChars();
  xmlNodePtr node = xmlNewCDataBlock(GetDocument()->GetXmlDocument(), AsXml(chars),
                                     static_cast<int>(std::char_traits<char>::length(chars)));
  return static_cast<CXmlCharacterData*>(AdoptDetached(node));
}

CString* CXmlNode::GetBaseName(const char* qualifiedName) {
  if (!qualifiedName) return nullptr;
  return new CString(XmlLibrary::LocalPart(qualifiedName).c_str());
}

CXmlNamespace* CXmlNode::GetXmlNamespace(CXmlNode* node, const char* prefix) {
  if (!node) return nullptr;
  const xmlChar* uri = XmlLibrary::ResolvePrefix(node->node_, prefix);
  if (!uri) return nullptr;
  return new CXmlNamespace(AsChars(uri), prefix);
}

CString* CXmlNode::GetNamespaceUri(CXmlNode* node, const char* qualifiedName) {
  if (!node || !qualifiedName) return nullptr;
  std::string prefix = XmlLibrary::PrefixPart(qualifiedName);
  const xmlChar* uri = XmlLibrary::ResolvePrefix(node->node_, prefix.c_str());
  return uri ? new CString(AsChars(uri)) : nullptr;
}

CString* CXmlNode::GetQualifiedName(CXmlNode* node, const char* name, const char* namespaceUri) {
  if (!node || !name) return nullptr;
  if (!namespaceUri || !*namespaceUri) return new CString(name);
  if (std::string(namespaceUri) == AsChars(XML_XML_NAMESPACE)) return CString::WithFormat("xml:%s", name);
  xmlNsPtr ns = xmlSearchNsByHref(node->node_->doc, node->node_, AsXml(namespaceUri));
  if (!ns) return nullptr;
  if (!ns->prefix) return new CString(name);
  return CString::WithFormat("%s:%s", AsChars(ns->prefix), name);
}

bool CXmlNode::Equals(const CObject* other) const {
  if (other == this) return true;
  if (!other) return false;
  const auto* node = dynamic_cast<const CXmlNode*>(other);
  return node && node->node_ == node_;
}

int CXmlNode::GetHashCode() const {
  auto address = reinterpret_cast<std::uintptr_t>(node_);
  return static_cast<int>(static_cast<std::uint32_t>(address) ^ static_cast<std::uint32_t>(address >> 32));
}

}  // namespace Corvane::Mox
