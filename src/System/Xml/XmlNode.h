#pragma once
// CXmlNode: the base of the object layer over a libxml2 tree. A node wraps
// one libxml2 node and holds a reference to the CXmlDocument that owns it,
// so a wrapper never outlives the tree it points into. Wrappers are made on
// demand: two lookups of the same libxml2 node give two wrappers that are
// Equals to each other.
//
// Ownership of the libxml2 nodes stays with the documents: a node that is
// removed from its tree (or created and not yet added) is kept by its
// document until the document is freed.

#include "System/Object.h"

struct _xmlNode;

namespace Corvane::Mox {

template <class T>
class CList;
class CXmlDocument;
class CXmlElement;
class CXmlNamespace;
class CXmlText;
class CXmlCharacterData;
class CXmlComment;
class CXmlProcessingInstruction;

class CXmlNode : public CObject {
 public:
  // The node kinds, numbered as libxml2 numbers them.
  enum NodeType : int {
    ElementNode = 1,
    TextNode = 3,
    CharacterDataNode = 4,
    ProcessingInstructionNode = 7,
    CommentNode = 8,
    DocumentNode = 9,
  };
  // Type code of the node lists returned by GetChildNodes and GetChildElements.
  static constexpr unsigned int ListTypeCode = FourCC("<n/>");

  ~CXmlNode() override;

  int GetNodeType() const { return nodeType_; }
  // The owning document, borrowed.
  CXmlDocument* GetDocument() const;
  // The underlying libxml2 node, for library code that talks to libxml2.
  _xmlNode* GetXmlNode() const { return node_; }
  // A wrapper of the parent node (acquired), or null when detached.
  CXmlNode* GetParent() const;
  bool HasParent() const;
  // The text of this node and all its descendants.
  CString* GetText() const;

  // Children. Lists are new (acquired) and hold new wrappers.
  CList<CXmlNode>* GetChildNodes() const;
  Result AddChildNode(CXmlNode* child);
  Result RemoveChildNode(CXmlNode* child);
  // null parent detaches this node from its parent.
  Result SetParent(CXmlNode* parent);

  // The first child element with that name (acquired), or null. An
  // unprefixed name matches the local name, a prefixed one the name as written.
  CXmlElement* GetChildElement(const char* name) const;
  CXmlElement* GetChildElement(const unsigned char* name) const;
  // Matches the local name and the resolved namespace URI.
  CXmlElement* GetChildElement(const char* name, const char* namespaceUri) const;
  CXmlElement* GetChildElement(const unsigned char* name, const unsigned char* namespaceUri) const;
  CList<CXmlElement>* GetChildElements() const;
  CList<CXmlElement>* GetChildElements(const char* name) const;
  CList<CXmlElement>* GetChildElements(const unsigned char* name) const;
  CList<CXmlElement>* GetChildElements(const char* name, const char* namespaceUri) const;
  CList<CXmlElement>* GetChildElements(const unsigned char* name, const unsigned char* namespaceUri) const;
  Result AddChildElement(CXmlElement* child);

  // New detached nodes of this node's document (acquired); add them with
  // AddChildNode. A processing instruction's text is its target, then
  // white space and its content.
  CXmlProcessingInstruction* CreateProcessingInstruction(const char* text);
  CXmlComment* CreateComment(const char* text);
  CXmlText* CreateText(CString* text);
  CXmlCharacterData* CreateCharacterData(CString* text);

  // Name helpers. The local part of a qualified name.
  static CString* GetBaseName(const char* qualifiedName);
  // The namespace bound to prefix (null or empty: the default namespace) in
  // the scope of node; "xml" is always bound. Null when unbound.
  static CXmlNamespace* GetXmlNamespace(CXmlNode* node, const char* prefix);
  // The URI that the prefix of qualifiedName is bound to in the scope of node.
  static CString* GetNamespaceUri(CXmlNode* node, const char* qualifiedName);
  // name with the prefix bound to namespaceUri in the scope of node; the bare
  // name for the default namespace; null when the URI is not in scope.
  static CString* GetQualifiedName(CXmlNode* node, const char* name, const char* namespaceUri);

  // Wrappers of the same libxml2 node are equal.
  using CObject::Equals;
  bool Equals(const CObject* other) const override;
  int GetHashCode() const override;

  // A wrapper of the right class for a libxml2 node of document (acquired),
  // or null for a kind that has no class.
  static CXmlNode* Wrap(_xmlNode* node, CXmlDocument* document);

 protected:
  // document may be null only for a CXmlDocument, which is its own owner.
  CXmlNode(unsigned int typeCode, int nodeType, _xmlNode* node, CXmlDocument* document);

  // Points this wrapper at another node (of another document after a copy).
  void Rebind(_xmlNode* node, CXmlDocument* document);
  // Makes node a detached node kept by this node's document (acquired wrapper).
  CXmlNode* AdoptDetached(_xmlNode* node);
  // Points this wrapper at a new detached node that document keeps.
  void BindDetached(_xmlNode* node, CXmlDocument* document);

 private:
  friend class CXmlDocument;

  // Checks and performs the insertion of child as the last child.
  Result Attach(CXmlNode* child, const char* nullMessage, const char* parentMessage);
  bool CanHoldChild(const _xmlNode* child) const;
  // Brings a node of another document into this one, by move or by copy.
  Result Import(CXmlNode* child);
  template <class T>
  CList<T>* CollectChildren(const char* name, const char* namespaceUri, bool byNamespace, bool elementsOnly) const;

  int nodeType_;
  _xmlNode* node_;
  CXmlDocument* document_;  // one reference, except for a document itself
};

}  // namespace Corvane::Mox
