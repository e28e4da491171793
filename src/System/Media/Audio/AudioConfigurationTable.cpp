#include "System/Media/Audio/AudioConfigurationTable.h"

#include "System/Collections/ArrayList.h"
#include "System/Media/Audio/AudioProperties.h"

namespace Corvane::Mox {

CAudioConfigurationTable::CAudioConfigurationTable(const AudioConfigurationRow* rows)
    : CObject(TypeCode), rows_(rows), count_(0) {
  while (rows_ && rows_[count_].input.format != 0) ++count_;
}

const AudioConfigurationRow* CAudioConfigurationTable::GetRow(int index) const {
  return index >= 0 && index < count_ ? &rows_[index] : nullptr;
}

int CAudioConfigurationTable::GetInputFormats(unsigned int outputFormat, unsigned int* formats, int capacity) const {
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

int CAudioConfigurationTable::GetOutputFormats(const CAudioProperties* input, unsigned int* formats,
                                               int capacity) const {
  if (!input) return 0;
  AudioConfiguration actual = AudioConfiguration::Create(input);
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

CArrayList<CAudioConfiguration>* CAudioConfigurationTable::GetInputConfigurations() const {
  auto* list = new CArrayList<CAudioConfiguration>(count_);
  for (int i = 0; i < count_; ++i) {
    RObject<CAudioConfiguration> item(new CAudioConfiguration(rows_[i].input));
    list->Add(item.Get());
  }
  return list;
}

CArrayList<CAudioConfiguration>* CAudioConfigurationTable::GetOutputConfigurations(
    const CAudioConfiguration* input) const {
  auto* list = new CArrayList<CAudioConfiguration>();
  if (!input) return list;
  for (int i = 0; i < count_; ++i) {
    if (!(rows_[i].input == input->GetConfiguration())) continue;
    RObject<CAudioConfiguration> item(new CAudioConfiguration(rows_[i].output));
    list->Add(item.Get());
  }
  return list;
}

const AudioConfigurationRow* CAudioConfigurationTable::Find(const CAudioProperties* input,
                                                            unsigned int outputFormat) const {
  if (!input) return nullptr;
  AudioConfiguration actual = AudioConfiguration::Create(input);
  for (int i = 0; i < count_; ++i) {
    if (!rows_[i].input.Matches(actual)) continue;
    if (outputFormat == 0 || static_cast<unsigned int>(rows_[i].output.format) == outputFormat) return &rows_[i];
  }
  return nullptr;
}

}  // namespace Corvane::Mox
