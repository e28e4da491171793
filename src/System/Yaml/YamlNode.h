#pragma once
// CYamlNode: one node of the library's indentation-based YAML subset: a name,
// attributes ("name: value" lines, in order) and child nodes (in order).
//
// Reading (see CYamlReader): lines are split at CR and LF, empty lines are
// dropped, "name: value" with exactly one colon is an attribute (a line with
// more colons is ignored, so values cannot contain ':'), "name:" opens a child
// that owns the deeper-indented lines after it, and a "- " list item at the
// level of a child's first item starts another child of the same name.
//
// Writing: 4 spaces of indentation per level, lines end in "\r\n", a child is
// "name:" followed by its own text one level deeper as a list item (the dash
// two places before the content of its first line).

#include <string>

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CList;
class CVariant;
class CYamlAttribute;

class CYamlNode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("ymln");
  // Deepest nesting of child nodes the reader accepts.
  static constexpr int MaxDepth = 128;

  // A node named name (acquired, may be null) holding what text says; a text
  // nested deeper than MaxDepth throws ResultFormatError.
  CYamlNode(CString* name, CString* text);
  ~CYamlNode() override;

  bool IsType(unsigned int type) const override;

  // Borrowed; null for an unnamed node.
  CString* GetName() const { return name_.Get(); }
  // The node's text at an indentation level (acquired).
  CString* GetString(int level, bool listItem) const;

  // Attributes. Values come back acquired, null when absent.
  bool HasAttributes() const;
  CString* GetAttribute(const char* name) const;
  CList<CYamlAttribute>* GetAttributes() const;
  // Replaces the value of an existing name in place, else appends.
  Result SetAttribute(const char* name, CString* value);
  Result SetAttribute(const char* name, const char* value);
  Result SetAttribute(CYamlAttribute* attribute);
  Result SetAttribute(const char* name, bool value);
  Result SetAttribute(const char* name, int value);
  Result SetAttribute(const char* name, long long value);
  Result SetAttribute(const char* name, double value);
  bool GetAttributeAsBool(const char* name, bool fallback) const;
  int GetAttributeAsInt32(const char* name, int fallback) const;
  unsigned int GetAttributeAsUInt32(const char* name, unsigned int fallback) const;
  long long GetAttributeAsInt64(const char* name, long long fallback) const;
  unsigned long long GetAttributeAsUInt64(const char* name, unsigned long long fallback) const;
  double GetAttributeAsDouble(const char* name, double fallback) const;
  // Variants (acquired) of the typed values, null when the attribute is absent.
  CVariant* GetAttributeAsBoolVariant(const char* name) const;
  CVariant* GetAttributeAsInt32Variant(const char* name) const;
  CVariant* GetAttributeAsInt64Variant(const char* name) const;
  CVariant* GetAttributeAsDoubleVariant(const char* name) const;

  // Children. Lists are new (acquired); nodes in them are shared.
  CList<CYamlNode>* GetChildNodes() const;
  CYamlNode* GetChildNode(const char* name) const;
  CList<CYamlNode>* GetChildNodes(const char* name) const;
  // A node cannot become its own descendant (ResultInvalidOperation).
  Result AddChildNode(CYamlNode* child);
  // ResultFalse when child is not a child of this node.
  Result RemoveChildNode(CYamlNode* child);

 protected:
  // An empty node with its own type code (documents).
  CYamlNode(unsigned int type, CString* name);

 private:
  friend class CYamlReader;

  CYamlAttribute* FindAttribute(const char* name) const;
  bool Contains(const CYamlNode* node) const;
  void AppendTo(std::string& out, int level, bool listItem) const;

  // Holders, so that a constructor that throws while reading frees them.
  RObject<CString> name_;
  RObject<CList<CYamlAttribute>> attributes_;
  RObject<CList<CYamlNode>> children_;
};

}  // namespace Corvane::Mox
