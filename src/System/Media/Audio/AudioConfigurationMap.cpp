#include "System/Media/Audio/AudioConfigurationMap.h"

#include <vector>

#include "System/Collections/ArrayList.h"
#include "System/Media/Audio/AudioConfigurationTable.h"
#include "System/Media/Audio/AudioProperties.h"

namespace Corvane::Mox {

// One input and its outputs, chained in first-added order.
struct CAudioConfigurationMap::Entry {
  AudioConfiguration input;
  std::vector<AudioConfiguration> outputs;
  Entry* next = nullptr;
};

namespace {

bool Holds(const std::vector<AudioConfiguration>& list, const AudioConfiguration& value) {
  for (const AudioConfiguration& item : list) {
    if (item == value) return true;
  }
  return false;
}

void Append(CArrayList<CAudioConfiguration>* list, const AudioConfiguration& value) {
  RObject<CAudioConfiguration> item(new CAudioConfiguration(value));
  list->Add(item.Get());
}

}  // namespace

CAudioConfigurationMap::CAudioConfigurationMap() : CObject(TypeCode), first_(nullptr), last_(nullptr), count_(0) {}

CAudioConfigurationMap::~CAudioConfigurationMap() { Clear(); }

void CAudioConfigurationMap::Clear() {
  while (first_) {
    Entry* next = first_->next;
    delete first_;
    first_ = next;
  }
  last_ = nullptr;
  count_ = 0;
}

CAudioConfigurationMap::Entry* CAudioConfigurationMap::Find(const AudioConfiguration& input) const {
  for (Entry* entry = first_; entry; entry = entry->next) {
    if (entry->input == input) return entry;
  }
  return nullptr;
}

Result CAudioConfigurationMap::Add(const AudioConfiguration& input, const AudioConfiguration& output) {
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

Result CAudioConfigurationMap::AddTable(const CAudioConfigurationTable* table) {
  if (!table) return ResultArgumentNull();
  for (int i = 0; i < table->GetCount(); ++i) Add(table->GetRow(i)->input, table->GetRow(i)->output);
  return Result();
}

bool CAudioConfigurationMap::Contains(const AudioConfiguration& input, const AudioConfiguration& output) const {
  const Entry* entry = Find(input);
  return entry && Holds(entry->outputs, output);
}

int CAudioConfigurationMap::GetCount() const { return count_; }

CArrayList<CAudioConfiguration>* CAudioConfigurationMap::GetInputConfigurations() const {
  auto* list = new CArrayList<CAudioConfiguration>(count_);
  for (const Entry* entry = first_; entry; entry = entry->next) Append(list, entry->input);
  return list;
}

CArrayList<CAudioConfiguration>* CAudioConfigurationMap::GetOutputConfigurations(
    const AudioConfiguration& input) const {
  auto* list = new CArrayList<CAudioConfiguration>();
  if (const Entry* entry = Find(input)) {
    for (const AudioConfiguration& output : entry->outputs) Append(list, output);
  }
  return list;
}

CArrayList<CAudioConfiguration>* CAudioConfigurationMap::GetOutputConfigurations(
    const CAudioProperties* input) const {
  auto* list = new CArrayList<CAudioConfiguration>();
  if (!input) return list;
  AudioConfiguration actual = AudioConfiguration::Create(input);
  std::vector<AudioConfiguration> seen;
  for (const Entry* entry = first_; entry; entry = entry->next) {
    if (!entry->input.Matches(actual)) continue;
    for (const AudioConfiguration& output : entry->outputs) {
      if (Holds(seen, output)) continue;
      seen.push_back(output);
      Append(list, output);
    }
  }
  return list;
}

}  // namespace Corvane::Mox
