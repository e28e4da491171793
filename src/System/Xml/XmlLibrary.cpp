#include "System/Xml/XmlLibrary.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlsave.h>

#include <cstring>
#include <memory>
#include <mutex>

namespace Corvane::Mox::XmlLibrary {

namespace {

// libxml2 messages end in a line feed; results carry them without it.
std::string TrimMessage(const char* message) {
  std::string text(message ? message : "unknown error");
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

void OnStructuredError(void* context, xmlErrorPtr error) {
  if (!context || !error || error->level < XML_ERR_ERROR) return;
  static_cast<CErrorCapture*>(context)->Add(error->message, error->line);
}

// Generic reports come as printf fragments; only the fact that one happened is kept.
void OnGenericError(void* context, const char* message, ...) {
  if (context) static_cast<CErrorCapture*>(context)->Add(message, 0);
}

// The parser context hands its own address to the handler; the capture
// travels in its _private slot.
void OnParserError(void* userData, xmlErrorPtr error) {
  auto* context = static_cast<xmlParserCtxtPtr>(userData);
  if (context) OnStructuredError(context->_private, error);
}

struct ParserContextDeleter {
  void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
};

struct SaveBuffer {
  xmlBufferPtr buffer = xmlBufferCreate();
  ~SaveBuffer() {
    if (buffer) xmlBufferFree(buffer);
  }
};

Result SaveWith(int options, std::string& out, int (*save)(xmlSaveCtxtPtr, void*), void* what) {
  EnsureInitialized();
  CErrorCapture capture;
  SaveBuffer buffer;
  if (!buffer.buffer) return ResultOutOfMemory();
  xmlSaveCtxtPtr context = xmlSaveToBuffer(buffer.buffer, "UTF-8", options);
  if (!context) return ResultError("cannot create a libxml save context");
  long written = save(context, what);
  xmlSaveClose(context);
  if (written < 0 || capture.HasError())
    return ResultError("cannot save XML: %s", capture.HasError() ? capture.GetMessage().c_str() : "save failed");
  out.assign(reinterpret_cast<const char*>(xmlBufferContent(buffer.buffer)),
             static_cast<std::size_t>(xmlBufferLength(buffer.buffer)));
  return ResultOK();
}

}  // namespace

void EnsureInitialized() {
  static std::once_flag once;
  std::call_once(once, [] { xmlInitParser(); });
}

CErrorCapture::CErrorCapture()
    : previousStructured_(xmlStructuredError),
      previousStructuredContext_(xmlStructuredErrorContext),
      previousGeneric_(xmlGenericError),
      previousGenericContext_(xmlGenericErrorContext) {
  xmlSetStructuredErrorFunc(this, OnStructuredError);
  xmlSetGenericErrorFunc(this, OnGenericError);
}

CErrorCapture::~CErrorCapture() {
  xmlSetStructuredErrorFunc(previousStructuredContext_, previousStructured_);
  xmlSetGenericErrorFunc(previousGenericContext_, previousGeneric_);
}

void CErrorCapture::Add(const char* message, int line) {
  if (hasError_) return;
  hasError_ = true;
  line_ = line;
  message_ = TrimMessage(message);
}

Result ParseMemory(const char* data, int size, xmlDocPtr& out) {
  out = nullptr;
  if (!data || size < 0) return ResultArgumentNull("XML text must not be nullptr");
  EnsureInitialized();
  CErrorCapture capture;
  std::unique_ptr<xmlParserCtxt, ParserContextDeleter> context(xmlNewParserCtxt());
  if (!context) return ResultOutOfMemory();
  context->_private = &capture;
  context->sax->serror = OnParserError;
  // An empty text has nothing to parse; libxml2 reports it as "Document is empty".
  out = xmlCtxtReadMemory(context.get(), size > 0 ? data : "", size, nullptr, "UTF-8", 0);
  if (out) return ResultOK();
  if (capture.HasError())
    return ResultFormatError("XML parse error at line %d: %s", capture.GetLine(), capture.GetMessage().c_str());
  return ResultFormatError("XML parse error: no document");
}

Result SaveDocument(xmlDocPtr document, int options, std::string& out) {
  return SaveWith(options, out, [](xmlSaveCtxtPtr context, void* what) {
    return static_cast<int>(xmlSaveDoc(context, static_cast<xmlDocPtr>(what)));
  }, document);
}

Result SaveNode(xmlNodePtr node, int options, std::string& out) {
  return SaveWith(options, out, [](xmlSaveCtxtPtr context, void* what) {
    return static_cast<int>(xmlSaveTree(context, static_cast<xmlNodePtr>(what)));
  }, node);
}

std::string GetQualifiedName(const xmlNode* node) {
  if (!node || !node->name) return std::string();
  std::string name(reinterpret_cast<const char*>(node->name));
  if (node->type == XML_ELEMENT_NODE && node->ns && node->ns->prefix)
    return std::string(reinterpret_cast<const char*>(node->ns->prefix)) + ":" + name;
  return name;
}

std::string LocalPart(const char* qualifiedName) {
  if (!qualifiedName) return std::string();
  // The prefix ends at the first colon; libxml2 keeps any further colon in
  // the local part of names that are not namespace-well-formed.
  const char* colon = std::strchr(qualifiedName, ':');
  return std::string(colon ? colon + 1 : qualifiedName);
}

std::string PrefixPart(const char* qualifiedName) {
  if (!qualifiedName) return std::string();
  const char* colon = std::strchr(qualifiedName, ':');
  return colon ? std::string(qualifiedName, colon) : std::string();
}

const xmlChar* ResolvePrefix(xmlNodePtr node, const char* prefix) {
  if (!node) return nullptr;
  const xmlChar* key = (prefix && *prefix) ? reinterpret_cast<const xmlChar*>(prefix) : nullptr;
  if (key && std::strcmp(prefix, "xml") == 0) return XML_XML_NAMESPACE;
  // xmlSearchNs walks the declarations of the node and its ancestors.
  xmlNsPtr ns = xmlSearchNs(node->doc, node, key);
  return ns ? ns->href : nullptr;
}

const xmlChar* GetNamespaceUri(xmlNodePtr node) {
  if (!node || node->type != XML_ELEMENT_NODE) return nullptr;
  if (node->ns) return node->ns->href;
  std::string prefix = PrefixPart(reinterpret_cast<const char*>(node->name));
  return ResolvePrefix(node, prefix.c_str());
}

bool MatchesName(xmlNodePtr node, const char* name, const char* namespaceUri, bool byNamespace) {
  if (!node || node->type != XML_ELEMENT_NODE || !name) return false;
  if (byNamespace) {
    if (LocalPart(reinterpret_cast<const char*>(node->name)) != LocalPart(name)) return false;
    const xmlChar* uri = GetNamespaceUri(node);
    if (!namespaceUri || !*namespaceUri) return uri == nullptr || *uri == 0;
    return uri && std::strcmp(reinterpret_cast<const char*>(uri), namespaceUri) == 0;
  }
  if (std::strchr(name, ':')) return GetQualifiedName(node) == name;
  return LocalPart(reinterpret_cast<const char*>(node->name)) == name;
}

bool IsValidName(const char* name) {
  return name && *name && xmlValidateQName(reinterpret_cast<const xmlChar*>(name), 0) == 0;
}

bool IsAncestorOrSelf(const xmlNode* candidate, const xmlNode* node) {
  for (const xmlNode* n = node; n; n = n->parent)
    if (n == candidate) return true;
  return false;
}

void LinkLastChild(xmlNodePtr parent, xmlNodePtr child) {
  if (child->doc != parent->doc) xmlSetTreeDoc(child, parent->doc);
  child->parent = parent;
  child->next = nullptr;
  child->prev = parent->last;
  if (parent->last) {
    parent->last->next = child;
  } else {
    parent->children = child;
  }
  parent->last = child;
}

std::string GetContent(const xmlNode* node) {
  if (!node) return std::string();
  xmlChar* content = xmlNodeGetContent(node);
  if (!content) return std::string();
  std::string text(reinterpret_cast<const char*>(content));
  xmlFree(content);
  return text;
}

}  // namespace Corvane::Mox::XmlLibrary
