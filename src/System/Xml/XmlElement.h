#pragma once
// CXmlElement: an element with its namespace declarations, attributes and
// typed value accessors. Element and attribute names may be qualified
// ("prefix:name"); prefixes resolve through the declarations in scope.

#include "System/Rational.h"
#include "System/Xml/XmlNode.h"

struct _xmlAttr;

namespace Corvane::Mox {

class CByteArray;
class CXmlAttribute;

class CXmlElement : public CXmlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("<n/>");

  // A new element, not yet part of a document tree; add it with
  // AddChildElement. An invalid XML name throws ResultArgumentOutOfRange.
  explicit CXmlElement(const char* name);
  // The same, declaring namespaceUri for the name's prefix (or as the
  // default namespace for an unprefixed name).
  CXmlElement(const char* name, const char* namespaceUri);

  // The name as written, with its prefix (acquired).
  CString* GetName() const;
  CString* GetLocalName() const;
  // The resolved namespace URI (acquired), or null.
  CString* GetNamespaceUri() const;
  // The element's own namespace (acquired), or null.
  CXmlNamespace* GetNamespace() const;
  // The namespace bound to prefix in scope (null prefix: the default).
  CXmlNamespace* GetNamespace(const char* prefix) const;
  // The declarations made on this element.
  CList<CXmlNamespace>* GetNamespaces() const;
  // Declares the default namespace, or a prefix. Redeclaring a prefix on the
  // same element with another URI fails with "failed to add new libxml namespace".
  Result AddNamespace(const char* uri);
  Result AddNamespace(const char* prefix, const char* uri);
  Result AddNamespace(CXmlNamespace* ns);

  // Attributes. Names "xmlns" and "xmlns:prefix" are namespace declarations.
  // Values come back acquired, null when absent.
  CString* GetAttribute(const char* name) const;
  CString* GetAttribute(const char* name, const char* namespaceUri) const;
  bool HasAttribute(const char* name) const;
  CList<CXmlAttribute>* GetAttributes() const;
  Result SetAttribute(const char* name, CString* value);
  Result SetAttribute(const char* name, const char* value);
  Result SetAttribute(const char* name, const char* namespaceUri, const char* value);
  Result SetAttribute(CXmlAttribute* attribute);
  Result SetAttribute(const char* name, int value);
  Result SetAttribute(const char* name, long long value);
  Result SetAttribute(const char* name, double value, const char* format);
  // ResultFalse when there is no such attribute.
  Result RemoveAttribute(const char* name);
  Result RemoveAttribute(const char* name, const char* namespaceUri);
  bool GetAttributeAsBool(const char* name, bool fallback) const;
  int GetAttributeAsInt32(const char* name, int fallback) const;
  unsigned int GetAttributeAsUInt32(const char* name, unsigned int fallback) const;
  long long GetAttributeAsInt64(const char* name, long long fallback) const;
  unsigned long long GetAttributeAsUInt64(const char* name, unsigned long long fallback) const;
  double GetAttributeAsDouble(const char* name, double fallback) const;

  // The text content (acquired).
  CString* GetValue() const;
  // The element written as XML (acquired), and the same as UTF-8 bytes.
  CString* GetString() const;
  CByteArray* GetBytes() const;
  // Replace the content with one text node.
  Result SetValue(CString* value);
  Result SetValue(const char* value);
  // "true"/"false", or "1"/"0" when numeric.
  Result SetValue(bool value, bool numeric);
  Result SetValue(short value);
  Result SetValue(unsigned short value);
  Result SetValue(int value);
  Result SetValue(unsigned int value);
  Result SetValue(long value);
  Result SetValue(unsigned long value);
  Result SetValue(long long value);
  Result SetValue(unsigned long long value);
  Result SetValue(double value, const char* format);
  // numerator, separator, denominator ("30000:1001").
  Result SetValue(Rational<int> value, char separator);
  Result SetValue(Rational<long long> value, char separator);
  // The bytes as standard Base64 text.
  Result SetValue(CByteArray* bytes);

  bool GetValueAsBoolean(bool fallback) const;
  int GetValueAsInt32(int fallback) const;
  unsigned int GetValueAsUInt32(unsigned int fallback) const;
  long long GetValueAsInt64(long long fallback) const;
  unsigned long long GetValueAsUInt64(unsigned long long fallback) const;
  double GetValueAsDouble(double fallback) const;
  // Split at the first of the separator characters; a text without one is
  // a whole number over 1; an empty text or a missing number gives fallback.
  Rational<int> GetValueAsRational32(Rational<int> fallback, const char* separators) const;
  // A four-character code ("%XX" escapes allowed).
  unsigned int GetValueAsFour() const;
  // The decoded bytes (acquired); null when the element is empty.
  CByteArray* GetValueAsBase64Binary() const;

 private:
  friend class CXmlNode;
  CXmlElement(_xmlNode* node, CXmlDocument* document) : CXmlNode(TypeCode, ElementNode, node, document) {}

  Result SetText(const char* text);
  Result SetNamespaceDeclaration(const char* name, const char* uri);
  // The attribute node for a (possibly qualified) name, or null.
  _xmlAttr* FindAttribute(const char* name) const;
};

}  // namespace Corvane::Mox
