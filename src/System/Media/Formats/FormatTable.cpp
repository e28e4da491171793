#include "System/Media/Formats/FormatTable.h"

#include <algorithm>
#include <cstring>

namespace Corvane::Mox {

CFormatTable::CFormatTable(const FormatEntry* rows, int count) : rows_(rows), count_(count) {
  index_.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) index_.emplace_back(rows[i].code, i);
  // A stable sort keeps equal codes in table order, so the first row of a
  // code survives the de-duplication below.
  std::stable_sort(index_.begin(), index_.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  index_.erase(std::unique(index_.begin(), index_.end(),
                           [](const auto& a, const auto& b) { return a.first == b.first; }),
               index_.end());
}

const FormatEntry* CFormatTable::Find(unsigned int code) const {
  auto it = std::lower_bound(index_.begin(), index_.end(), code,
                             [](const auto& entry, unsigned int c) { return entry.first < c; });
  return it != index_.end() && it->first == code ? &rows_[it->second] : nullptr;
}

const FormatEntry* CFormatTable::FindNamed(unsigned int code) const {
  for (const FormatEntry* entry = Find(code); entry; entry = entry->parent ? Find(entry->parent) : nullptr) {
    if (entry->name) return entry;
  }
  return nullptr;
}

unsigned int CFormatTable::GetParentFormat(unsigned int code) const {
  const FormatEntry* entry = Find(code);
  return entry ? entry->parent : 0;
}

const char* CFormatTable::GetName(unsigned int code) const {
  const FormatEntry* entry = FindNamed(code);
  return entry ? entry->name : nullptr;
}

unsigned int CFormatTable::GetEquivalentFormat(unsigned int code) const {
  const FormatEntry* entry = FindNamed(code);
  return entry ? entry->code : 0;
}

unsigned int CFormatTable::GetCanonicalFormat(unsigned int code) const {
  for (const FormatEntry* entry = Find(code); entry; entry = Find(entry->parent)) {
    if (entry->parent == 0) return entry->code;
  }
  return 0;  // unknown, or a parent on the way is unknown
}

unsigned int CFormatTable::GetCategoricalFormat(unsigned int code) const {
  const FormatEntry* entry = FindNamed(code);
  return entry ? entry->parent : 0;
}

bool CFormatTable::IsFormat(unsigned int code, unsigned int other) const {
  if (code == other) return true;
  for (const FormatEntry* entry = Find(code); entry && entry->parent; entry = Find(entry->parent)) {
    if (entry->parent == other) return true;
  }
  return false;
}

bool CFormatTable::IsIntraFormat(unsigned int code) const {
  // The intra flag of every named row on the path counts: an alias stands for
  // the named code above it and has no say of its own.
  for (const FormatEntry* entry = FindNamed(code); entry; entry = entry->parent ? FindNamed(entry->parent) : nullptr) {
    if (entry->intra) return true;
  }
  return false;
}

const FormatEntry* CFormatTable::GetRow(int index) const {
  return index >= 0 && index < count_ ? &rows_[index] : nullptr;
}

unsigned int CFormatTable::FindFormat(const char* name) const {
  if (!name) return 0;
  for (int i = 0; i < count_; ++i) {
    if (rows_[i].name && std::strcmp(rows_[i].name, name) == 0) return rows_[i].code;
  }
  return 0;
}

std::vector<unsigned int> CFormatTable::GetAliases(unsigned int code) const {
  std::vector<unsigned int> aliases;
  for (int i = 0; i < count_; ++i) {
    const FormatEntry& row = rows_[i];
    if (row.code == code || Find(row.code) != &row) continue;  // skip the code and repeated rows
    if (!row.name && GetEquivalentFormat(row.code) == code) aliases.push_back(row.code);
  }
  return aliases;
}

}  // namespace Corvane::Mox
