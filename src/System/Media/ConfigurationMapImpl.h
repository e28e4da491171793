#pragma once
// The member functions of CConfigurationMap. Included only by the source file
// of each media kind's map, which instantiates the template there.

#include <vector>

#include "System/Collections/ArrayList.h"
#include "System/Media/ConfigurationMap.h"

namespace Corvane::Mox {

// One input and its outputs, chained in first-added order.
template <class C, class O, class P, class T>
struct CConfigurationMap<C, O, P, T>::Entry {
  C input;
  std::vector<C> outputs;
  Entry* next = nullptr;
};

namespace ConfigurationMapDetail {

template <class C>
bool Holds(const std::vector<C>& list, const C& value) {
  for (const C& item : list) {
    if (item == value) return true;
  }
  return false;
}

template <class O, class C>
void Append(CArrayList<O>* list, const C& value) {
  RObject<O> item(new O(value));
  list->Add(item.Get());
}

}  // namespace ConfigurationMapDetail

template <class C, class O, class P, class T>
CConfigurationMap<C, O, P, T>::CConfigurationMap(unsigned int type)
    : CObject(type), first_(nullptr), last_(nullptr), count_(0) {}

template <class C, class O, class P, class T>
CConfigurationMap<C, O, P, T>::~CConfigurationMap() {
  Clear();
}

template <class C, class O, class P, class T>
void CConfigurationMap<C, O, P, T>::Clear() {
  while (first_) {
    Entry* next = first_->next;
    delete first_;
    first_ = next;
  }
  last_ = nullptr;
  count_ = 0;
}

template <class C, class O, class P, class T>
auto CConfigurationMap<C, O, P, T>::Find(const C& input) const -> Entry* {
  for (Entry* entry = first_; entry; entry = entry->next) {
    if (entry->input == input) return entry;
  }
  return nullptr;
}

template <class C, class O, class P, class T>
Result CConfigurationMap<C, O, P, T>::Add(const C& input, const C& output) {
  Entry* entry = Find(input);
  if (!entry) {
    entry = new Entry{input, {}, nullptr};
    (last_ ? last_->next : first_) = entry;
    last_ = entry;
    ++count_;
  }
  if (ConfigurationMapDetail::Holds(entry->outputs, output)) return ResultFalse();
  entry->outputs.push_back(output);
  return Result();
}

template <class C, class O, class P, class T>
Result CConfigurationMap<C, O, P, T>::AddTable(const T* table) {
  if (!table) return ResultArgumentNull();
  for (int i = 0; i < table->GetCount(); ++i) Add(table->GetRow(i)->input, table->GetRow(i)->output);
  return Result();
}

template <class C, class O, class P, class T>
bool CConfigurationMap<C, O, P, T>::Contains(const C& input, const C& output) const {
  const Entry* entry = Find(input);
  return entry && ConfigurationMapDetail::Holds(entry->outputs, output);
}

template <class C, class O, class P, class T>
int CConfigurationMap<C, O, P, T>::GetCount() const {
  return count_;
}

template <class C, class O, class P, class T>
CArrayList<O>* CConfigurationMap<C, O, P, T>::GetInputConfigurations() const {
  auto* list = new CArrayList<O>(count_);
  for (const Entry* entry = first_; entry; entry = entry->next) ConfigurationMapDetail::Append(list, entry->input);
  return list;
}

template <class C, class O, class P, class T>
CArrayList<O>* CConfigurationMap<C, O, P, T>::GetOutputConfigurations(const C& input) const {
  auto* list = new CArrayList<O>();
  if (const Entry* entry = Find(input)) {
    for (const C& output : entry->outputs) ConfigurationMapDetail::Append(list, output);
  }
  return list;
}

template <class C, class O, class P, class T>
CArrayList<O>* CConfigurationMap<C, O, P, T>::GetOutputConfigurations(const P* input) const {
  auto* list = new CArrayList<O>();
  if (!input) return list;
  C actual = C::Create(input);
  std::vector<C> seen;
  for (const Entry* entry = first_; entry; entry = entry->next) {
    if (!entry->input.Matches(actual)) continue;
    for (const C& output : entry->outputs) {
      if (ConfigurationMapDetail::Holds(seen, output)) continue;
      seen.push_back(output);
      ConfigurationMapDetail::Append(list, output);
    }
  }
  return list;
}

}  // namespace Corvane::Mox
