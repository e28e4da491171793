#include "System/PropertyName.h"

#include <mutex>
#include <string>
#include <unordered_set>

namespace Corvane::Mox {

namespace {

// Interned names: node-based, so the text of an element never moves. The set
// is never destroyed, because names may be used by other static destructors.
struct NameTable {
  std::mutex mutex;
  std::unordered_set<std::string> names;
};

NameTable& Names() {
  static auto* table = new NameTable();
  return *table;
}

}  // namespace

PropertyName PropertyName::Create(const char* text) {
  NameTable& table = Names();
  std::lock_guard<std::mutex> lock(table.mutex);
  auto inserted = table.names.emplace(text ? text : "");
  return PropertyName(inserted.first->c_str());
}

PropertyName PropertyName::CreateIndexed(const char* base, int count, int index) {
  if (index < 0 || index >= count) return PropertyName();
  return Create((std::string(base ? base : "") + std::to_string(index)).c_str());
}

}  // namespace Corvane::Mox
