#include "System/Yaml/YamlNode.h"

#include <charconv>
#include <cstring>

#include "System/Collections/List.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/Xml/XmlValue.h"
#include "System/Yaml/YamlAttribute.h"
#include "System/Yaml/YamlReader.h"

namespace Corvane::Mox {

namespace {

constexpr int SpacesPerLevel = 4;

const char* CharsOf(CString* text) { return text ? text->GetChars() : ""; }

}  // namespace

CYamlNode::CYamlNode(unsigned int type, CString* name)
    : CObject(type), attributes_(new CList<CYamlAttribute>()), children_(new CList<CYamlNode>()) {
  if (name) name->Acquire();
  name_ = name;
}

CYamlNode::CYamlNode(CString* name, CString* text) : CYamlNode(TypeCode, name) {
  if (!text) return;
  const char* chars = text->GetChars();
  CYamlReader::Read(this, CYamlReader::SplitLines(chars, std::strlen(chars)), 0);
}

CYamlNode::~CYamlNode() = default;

bool CYamlNode::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

CString* CYamlNode::GetString(int level, bool listItem) const {
  std::string text;
  AppendTo(text, level < 0 ? 0 : level, listItem);
  return new CString(text.c_str(), static_cast<int>(text.size()));
}

void CYamlNode::AppendTo(std::string& out, int level, bool listItem) const {
  std::size_t start = out.size();
  std::string indent(static_cast<std::size_t>(level * SpacesPerLevel), ' ');
  for (CYamlAttribute* attribute : *attributes_)
    out += indent + attribute->GetName()->GetChars() + ": " + attribute->GetValue()->GetChars() + "\r\n";
  for (CYamlNode* child : *children_) {
    out += indent + CharsOf(child->name_) + ":\r\n";
    child->AppendTo(out, level + 1, true);
  }
  // The dash takes the place of the character two places before the content.
  if (listItem && out.size() > start && indent.size() >= 2) out[start + indent.size() - 2] = '-';
}

bool CYamlNode::HasAttributes() const { return !attributes_->IsEmpty(); }

CYamlAttribute* CYamlNode::FindAttribute(const char* name) const {
  if (!name) return nullptr;
  for (CYamlAttribute* attribute : *attributes_)
    if (attribute->GetName()->Equals(name)) return attribute;
  return nullptr;
}

CString* CYamlNode::GetAttribute(const char* name) const {
  CYamlAttribute* attribute = FindAttribute(name);
  if (!attribute) return nullptr;
  attribute->GetValue()->Acquire();
  return attribute->GetValue();
}

CList<CYamlAttribute>* CYamlNode::GetAttributes() const {
  auto* list = new CList<CYamlAttribute>();
  list->AddRange(attributes_.Get());
  return list;
}

Result CYamlNode::SetAttribute(const char* name, CString* value) {
  if (!name) return ResultArgumentNull("attribute name must not be nullptr");
  if (CYamlAttribute* existing = FindAttribute(name)) {
    existing->SetValue(value);
    return ResultOK();
  }
  RObject<CString> key(new CString(name));
  RObject<CYamlAttribute> attribute(new CYamlAttribute(key, value));
  return attributes_->Add(attribute);
}

Result CYamlNode::SetAttribute(const char* name, const char* value) {
  RObject<CString> text(new CString(value ? value : ""));
  return SetAttribute(name, text);
}

Result CYamlNode::SetAttribute(CYamlAttribute* attribute) {
  if (!attribute) return ResultArgumentNull("attribute must not be nullptr");
  return SetAttribute(attribute->GetName()->GetChars(), attribute->GetValue());
}

Result CYamlNode::SetAttribute(const char* name, bool value) { return SetAttribute(name, value ? "true" : "false"); }

Result CYamlNode::SetAttribute(const char* name, int value) {
  return SetAttribute(name, XmlValue::Format("%d", value).c_str());
}

Result CYamlNode::SetAttribute(const char* name, long long value) {
  return SetAttribute(name, XmlValue::Format("%lld", value).c_str());
}

Result CYamlNode::SetAttribute(const char* name, double value) {
  // The shortest text that reads back as the same double.
  char buffer[64];
  auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
  *written.ptr = 0;
  return SetAttribute(name, buffer);
}

bool CYamlNode::GetAttributeAsBool(const char* name, bool fallback) const {
  CYamlAttribute* attribute = FindAttribute(name);
  return XmlValue::ToBoolean(attribute ? attribute->GetValue()->GetChars() : nullptr, fallback);
}

int CYamlNode::GetAttributeAsInt32(const char* name, int fallback) const {
  CYamlAttribute* attribute = FindAttribute(name);
  return XmlValue::ToInt32(attribute ? attribute->GetValue()->GetChars() : nullptr, fallback);
}

unsigned int CYamlNode::GetAttributeAsUInt32(const char* name, unsigned int fallback) const {
  CYamlAttribute* attribute = FindAttribute(name);
  return XmlValue::ToUInt32(attribute ? attribute->GetValue()->GetChars() : nullptr, fallback);
}

long long CYamlNode::GetAttributeAsInt64(const char* name, long long fallback) const {
  CYamlAttribute* attribute = FindAttribute(name);
  return XmlValue::ToInt64(attribute ? attribute->GetValue()->GetChars() : nullptr, fallback);
}

unsigned long long CYamlNode::GetAttributeAsUInt64(const char* name, unsigned long long fallback) const {
  CYamlAttribute* attribute = FindAttribute(name);
  return XmlValue::ToUInt64(attribute ? attribute->GetValue()->GetChars() : nullptr, fallback);
}

double CYamlNode::GetAttributeAsDouble(const char* name, double fallback) const {
  CYamlAttribute* attribute = FindAttribute(name);
  return XmlValue::ToDouble(attribute ? attribute->GetValue()->GetChars() : nullptr, fallback);
}

CVariant* CYamlNode::GetAttributeAsBoolVariant(const char* name) const {
  return FindAttribute(name) ? new CVariant(GetAttributeAsBool(name, false)) : nullptr;
}

CVariant* CYamlNode::GetAttributeAsInt32Variant(const char* name) const {
  return FindAttribute(name) ? new CVariant(GetAttributeAsInt32(name, 0)) : nullptr;
}

CVariant* CYamlNode::GetAttributeAsInt64Variant(const char* name) const {
  return FindAttribute(name) ? new CVariant(GetAttributeAsInt64(name, 0)) : nullptr;
}

CVariant* CYamlNode::GetAttributeAsDoubleVariant(const char* name) const {
  return FindAttribute(name) ? new CVariant(GetAttributeAsDouble(name, 0.0)) : nullptr;
}

CList<CYamlNode>* CYamlNode::GetChildNodes() const {
  auto* list = new CList<CYamlNode>();
  list->AddRange(children_.Get());
  return list;
}

CYamlNode* CYamlNode::GetChildNode(const char* name) const {
  if (!name) return nullptr;
  for (CYamlNode* child : *children_) {
    if (child->name_ && child->name_->Equals(name)) {
      child->Acquire();
      return child;
    }
  }
  return nullptr;
}

CList<CYamlNode>* CYamlNode::GetChildNodes(const char* name) const {
  auto* list = new CList<CYamlNode>();
  if (!name) return list;
  for (CYamlNode* child : *children_)
    if (child->name_ && child->name_->Equals(name)) list->Add(child);
  return list;
}

bool CYamlNode::Contains(const CYamlNode* node) const {
  if (node == this) return true;
  for (CYamlNode* child : *children_)
    if (child->Contains(node)) return true;
  return false;
}

Result CYamlNode::AddChildNode(CYamlNode* child) {
  if (!child) return ResultArgumentNull("child node must not be nullptr");
  if (child->Contains(this)) return ResultInvalidOperation("a node cannot become its own descendant");
  return children_->Add(child);
}

Result CYamlNode::RemoveChildNode(CYamlNode* child) {
  if (!child) return ResultArgumentNull("child node must not be nullptr");
  return children_->RemoveItem(child);
}

}  // namespace Corvane::Mox
