#include "System/Media/Subtitle/SubtitleConfigurationMap.h"

#include <vector>

#include "System/Collections/ArrayList.h"
#include "System/Media/Subtitle/SubtitleConfigurationTable.h"
#include "System/Media/Subtitle/SubtitleProperties.h"

namespace Corvane::Mox {

// One input and its outputs, chained in first-added order.
struct CSubtitleConfigurationMap::Entry {
  SubtitleConfiguration input;
  std::vector<SubtitleConfiguration> outputs;
  Entry* next = nullptr;
};

namespace {

bool Holds(const std::vector<SubtitleConfiguration>& list, const SubtitleConfiguration& value) {
  for (const SubtitleConfiguration& item : list) {
    if (item == value) return true;
  }
  return false;
}

void Append(CArrayList<CSubtitleConfiguration>* list, const SubtitleConfiguration& value) {
  RObject<CSubtitleConfiguration> item(new CSubtitleConfiguration(value));
  list->Add(item.Get());
}

}  // namespace

CSubtitleConfigurationMap::CSubtitleConfigurationMap() : CObject(TypeCode), first_(nullptr), last_(nullptr), count_(0) {}

CSubtitleConfigurationMap::~CSubtitleConfigurationMap() { Clear(); }

void CSubtitleConfigurationMap::Clear() {
  while (first_) {
    Entry* next = first_->next;
    delete first_;
    first_ = next;
  }
  last_ = nullptr;
  count_ = 0;
}

CSubtitleConfigurationMap::Entry* CSubtitleConfigurationMap::Find(const SubtitleConfiguration& input) const {
  for (Entry* entry = first_; entry; entry = entry->next) {
    if (entry->input == input) return entry;
  }
  return nullptr;
}

Result CSubtitleConfigurationMap::Add(const SubtitleConfiguration& input, const SubtitleConfiguration& output) {
  Entry* entry = Find(input);
  if (!entry) {
    entry = new Entry{input, {}, nullptr};
    (last_ ? last_->next : first_) = entry;
    last_ = entry;
    ++count_;
  }
  if (Holds(entry->outputs, output)) return ResultFalse();
  entry->outputs.push_back(output);
  return Result();
}

Result CSubtitleConfigurationMap::AddTable(const CSubtitleConfigurationTable* table) {
  if (!table) return ResultArgumentNull();
  for (int i = 0; i < table->GetCount(); ++i) Add(table->GetRow(i)->input, table->GetRow(i)->output);
  return Result();
}

bool CSubtitleConfigurationMap::Contains(const SubtitleConfiguration& input, const SubtitleConfiguration& output) const {
  const Entry* entry = Find(input);
  return entry && Holds(entry->outputs, output);
}

int CSubtitleConfigurationMap::GetCount() const { return count_; }

CArrayList<CSubtitleConfiguration>* CSubtitleConfigurationMap::GetInputConfigurations() const {
  auto* list = new CArrayList<CSubtitleConfiguration>(count_);
  for (const Entry* entry = first_; entry; entry = entry->next) Append(list, entry->input);
  return list;
}

CArrayList<CSubtitleConfiguration>* CSubtitleConfigurationMap::GetOutputConfigurations(
    const SubtitleConfiguration& input) const {
  auto* list = new CArrayList<CSubtitleConfiguration>();
  if (const Entry* entry = Find(input)) {
    for (const SubtitleConfiguration& output : entry->outputs) Append(list, output);
  }
  return list;
}

CArrayList<CSubtitleConfiguration>* CSubtitleConfigurationMap::GetOutputConfigurations(
    const CSubtitleProperties* input) const {
  auto* list = new CArrayList<CSubtitleConfiguration>();
  if (!input) return list;
  SubtitleConfiguration actual = SubtitleConfiguration::Create(input);
  std::vector<SubtitleConfiguration> seen;
  for (const Entry* entry = first_; entry; entry = entry->next) {
    if (!entry->input.Matches(actual)) continue;
    for (const SubtitleConfiguration& output : entry->outputs) {
      if (Holds(seen, output)) continue;
      seen.push_back(output);
      Append(list, output);
    }
  }
  return list;
}

}  // namespace Corvane::Mox
