#pragma once
// The member functions of CConfigurationTable. Included only by the source
// file of each media kind's table, which instantiates the template there.

#include "System/Collections/ArrayList.h"
#include "System/Media/ConfigurationTable.h"

namespace Corvane::Mox {

template <class C, class O, class P>
CConfigurationTable<C, O, P>::CConfigurationTable(unsigned int type, const Row* rows)
    : CObject(type), rows_(rows), count_(0) {
  while (rows_ && rows_[count_].input.format != 0) ++count_;
}

template <class C, class O, class P>
auto CConfigurationTable<C, O, P>::GetRow(int index) const -> const Row* {
  return index >= 0 && index < count_ ? &rows_[index] : nullptr;
}

template <class C, class O, class P>
int CConfigurationTable<C, O, P>::GetInputFormats(unsigned int outputFormat, unsigned int* formats,
                                                  int capacity) const {
  int found = 0;
  for (int i = 0; i < count_; ++i) {
    if (outputFormat != 0 && static_cast<unsigned int>(rows_[i].output.format) != outputFormat) continue;
    // A repeat is judged against the rows that passed the same filter.
    bool repeat = false;
    for (int j = 0; j < i && !repeat; ++j) {
      repeat = rows_[j].input.format == rows_[i].input.format &&
               (outputFormat == 0 || static_cast<unsigned int>(rows_[j].output.format) == outputFormat);
    }
    if (repeat) continue;
    if (formats && found < capacity) formats[found] = static_cast<unsigned int>(rows_[i].input.format);
    ++found;
  }
  return found;
}

template <class C, class O, class P>
int CConfigurationTable<C, O, P>::GetOutputFormats(const P* input, unsigned int* formats, int capacity) const {
  if (!input) return 0;
  C actual = C::Create(input);
  int found = 0;
  for (int i = 0; i < count_; ++i) {
    if (!rows_[i].input.Matches(actual)) continue;
    bool repeat = false;
    for (int j = 0; j < i && !repeat; ++j) {
      repeat = rows_[j].output.format == rows_[i].output.format && rows_[j].input.Matches(actual);
    }
    if (repeat) continue;
    if (formats && found < capacity) formats[found] = static_cast<unsigned int>(rows_[i].output.format);
    ++found;
  }
  return found;
}

template <class C, class O, class P>
CArrayList<O>* CConfigurationTable<C, O, P>::GetInputConfigurations() const {
  auto* list = new CArrayList<O>(count_);
  for (int i = 0; i < count_; ++i) {
    RObject<O> item(new O(rows_[i].input));
    list->Add(item.Get());
  }
  return list;
}

template <class C, class O, class P>
CArrayList<O>* CConfigurationTable<C, O, P>::GetOutputConfigurations(const O* input) const {
  auto* list = new CArrayList<O>();
  if (!input) return list;
  for (int i = 0; i < count_; ++i) {
    if (!(rows_[i].input == input->GetConfiguration())) continue;
    RObject<O> item(new O(rows_[i].output));
    list->Add(item.Get());
  }
  return list;
}

template <class C, class O, class P>
auto CConfigurationTable<C, O, P>::Find(const P* input, unsigned int outputFormat) const -> const Row* {
  if (!input) return nullptr;
  C actual = C::Create(input);
  for (int i = 0; i < count_; ++i) {
    if (!rows_[i].input.Matches(actual)) continue;
    if (outputFormat == 0 || static_cast<unsigned int>(rows_[i].output.format) == outputFormat) return &rows_[i];
  }
  return nullptr;
}

}  // namespace Corvane::Mox
