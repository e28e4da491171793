#include "System/Media/MediaPropertyName.h"

#include <cstring>

namespace Corvane::Mox::MediaPropertyName {

namespace {

const Entry kEntries[] = {
#define MOX_MEDIA_PROPERTY(group, name) {name, group},
#include "System/Media/MediaPropertyName.def"
#undef MOX_MEDIA_PROPERTY
};

constexpr int kCount = static_cast<int>(sizeof(kEntries) / sizeof(kEntries[0]));

}  // namespace

int GetCount() { return kCount; }

const Entry* GetEntry(int index) { return index >= 0 && index < kCount ? &kEntries[index] : nullptr; }

const Entry* Find(const char* text) {
  if (!text) return nullptr;
  for (const Entry& entry : kEntries) {
    if (std::strcmp(entry.name.GetName(), text) == 0) return &entry;
  }
  return nullptr;
}

}  // namespace Corvane::Mox::MediaPropertyName
