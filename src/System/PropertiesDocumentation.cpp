#include "System/PropertiesDocumentation.h"

#include <cstring>
#include <mutex>
#include <vector>

#include "System/Properties.h"

namespace Corvane::Mox {

namespace {

void SetText(CProperties* bag, const char* key, const char* text) {
  if (text) bag->SetProperty(key, text).ThrowIfFailed();
}

// Stores child in bag under key; the bag keeps its own reference.
void SetChild(CProperties* bag, const char* key, CProperties* child) {
  bag->SetProperty(PropertyName::Create(key), child).ThrowIfFailed();
}

struct Registry {
  std::mutex lock;
  std::vector<PropertiesDocumentationEntry> entries;
};

Registry& GetRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

CPropertiesDocumentationBuilder::CPropertiesDocumentationBuilder(const char* brief, const char* details)
    : root_(new CProperties()),
      properties_(new CProperties()),
      enumerations_(new CProperties()),
      enumeration_(nullptr),
      values_(nullptr),
      enumerationName_(nullptr) {
  SetText(root_, "brief", brief);
  SetText(root_, "details", details);
}

CPropertiesDocumentationBuilder::~CPropertiesDocumentationBuilder() {
  for (CProperties* bag : {root_, properties_, enumerations_, enumeration_, values_})
    if (bag) bag->Release();
}

void CPropertiesDocumentationBuilder::AddProperty(const char* name, const char* type, const char* brief,
                                                  const char* details, const char* note) {
  RObject<CProperties> entry(new CProperties());
  SetText(entry, "type", type);
  SetText(entry, "brief", brief);
  SetText(entry, "details", details);
  SetText(entry, "note", note);
  SetChild(properties_, name, entry);
}

void CPropertiesDocumentationBuilder::BeginEnumeration(const char* name, const char* brief) {
  EndEnumeration();
  enumeration_ = new CProperties();
  values_ = new CProperties();
  enumerationName_ = name;
  SetText(enumeration_, "brief", brief);
}

void CPropertiesDocumentationBuilder::AddValue(const char* name, int value, const char* brief) {
  if (!values_) throw ResultInvalidOperation("documentation value '%s' outside an enumeration", name);
  RObject<CProperties> entry(new CProperties());
  SetText(entry, "brief", brief);
  entry->SetProperty("value", value).ThrowIfFailed();
  SetChild(values_, name, entry);
}

void CPropertiesDocumentationBuilder::EndEnumeration() {
  if (!enumeration_) return;
  RObject<CProperties> comments(new CProperties());
  SetChild(enumeration_, "comments", comments);
  SetChild(enumeration_, "values", values_);
  SetChild(enumerations_, enumerationName_, enumeration_);
  enumeration_->Release();
  values_->Release();
  enumeration_ = values_ = nullptr;
  enumerationName_ = nullptr;
}

CProperties* CPropertiesDocumentationBuilder::Detach() {
  EndEnumeration();
  RObject<CProperties> comments(new CProperties());
  SetChild(root_, "comments", comments);
  SetChild(root_, "properties", properties_);
  SetChild(root_, "enumerations", enumerations_);
  CProperties* result = root_;
  root_ = new CProperties();
  properties_->Release();
  enumerations_->Release();
  properties_ = new CProperties();
  enumerations_ = new CProperties();
  return result;
}

void PropertiesDocumentation::Register(const PropertiesDocumentationEntry* entries, int count) {
  Registry& registry = GetRegistry();
  std::lock_guard<std::mutex> guard(registry.lock);
  registry.entries.insert(registry.entries.end(), entries, entries + count);
}

int PropertiesDocumentation::GetCount() {
  Registry& registry = GetRegistry();
  std::lock_guard<std::mutex> guard(registry.lock);
  return static_cast<int>(registry.entries.size());
}

const char* PropertiesDocumentation::GetName(int index) {
  Registry& registry = GetRegistry();
  std::lock_guard<std::mutex> guard(registry.lock);
  if (index < 0 || index >= static_cast<int>(registry.entries.size())) return nullptr;
  return registry.entries[index].name;
}

CProperties* PropertiesDocumentation::Create(const char* qualifiedName) {
  if (!qualifiedName) return nullptr;
  CProperties* (*create)() = nullptr;
  {
    Registry& registry = GetRegistry();
    std::lock_guard<std::mutex> guard(registry.lock);
    for (const PropertiesDocumentationEntry& entry : registry.entries)
      if (!std::strcmp(entry.name, qualifiedName)) {
        create = entry.create;
        break;
      }
  }
  return create ? create() : nullptr;
}

}  // namespace Corvane::Mox
