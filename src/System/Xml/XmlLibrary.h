#pragma once
// Library-internal glue between the XML classes and libxml2: one-time
// initialisation, capture of libxml2's error reports (which would otherwise
// go to stderr) and the tree operations the node classes share. Only the
// XML sources include this header; the public headers stay free of libxml2.

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <string>

#include "System/Result.h"

namespace Corvane::Mox::XmlLibrary {

// Initialises the libxml2 parser once per process.
void EnsureInitialized();

// While alive, routes every libxml2 error report of the calling thread into
// this object instead of libxml2's default printer, and restores the
// previous handlers afterwards. The first error is kept.
class CErrorCapture {
 public:
  CErrorCapture();
  ~CErrorCapture();
  CErrorCapture(const CErrorCapture&) = delete;
  CErrorCapture& operator=(const CErrorCapture&) = delete;

  bool HasError() const { return hasError_; }
  int GetLine() const { return line_; }
  const std::string& GetMessage() const { return message_; }
  // Records one report; called by the handlers.
  void Add(const char* message, int line);

 private:
  xmlStructuredErrorFunc previousStructured_;
  void* previousStructuredContext_;
  xmlGenericErrorFunc previousGeneric_;
  void* previousGenericContext_;
  bool hasError_ = false;
  int line_ = 0;
  std::string message_;
};

// Parses size bytes of UTF-8 text without parser options. On failure the
// result is ResultFormatError naming the parser's message and line.
Result ParseMemory(const char* data, int size, xmlDocPtr& out);

// Saves a document (or one node of it) as UTF-8 with libxml2 save options.
Result SaveDocument(xmlDocPtr document, int options, std::string& out);
Result SaveNode(xmlNodePtr node, int options, std::string& out);

// Names. A node's name may carry a prefix of its own ("p:name") when it was
// created from a qualified name; parsed nodes keep the prefix in their ns.
std::string GetQualifiedName(const xmlNode* node);
// The text after the first ':' (the whole text without one).
std::string LocalPart(const char* qualifiedName);
// The text before the first ':' (empty without one).
std::string PrefixPart(const char* qualifiedName);
// The URI bound to prefix (empty or null for the default namespace) in the
// scope of node; "xml" always gives the XML namespace. Null when unbound.
const xmlChar* ResolvePrefix(xmlNodePtr node, const char* prefix);
// The namespace URI of an element: its ns, else its name's prefix resolved
// through the declarations in scope. Null when it has none.
const xmlChar* GetNamespaceUri(xmlNodePtr node);
// True when the element has local name and (when uri is not null) that URI;
// an unprefixed query name matches an element's local name, a prefixed one
// its qualified name.
bool MatchesName(xmlNodePtr node, const char* name, const char* namespaceUri, bool byNamespace);
// Checks a qualified XML name ("name" or "prefix:name").
bool IsValidName(const char* name);

// Tree shape.
bool IsAncestorOrSelf(const xmlNode* candidate, const xmlNode* node);
// Appends child as the last child of parent without libxml2's merging of
// adjacent text nodes, which would free the child under its wrapper.
void LinkLastChild(xmlNodePtr parent, xmlNodePtr child);
// The text of a node and its descendants.
std::string GetContent(const xmlNode* node);

}  // namespace Corvane::Mox::XmlLibrary
