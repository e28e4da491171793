#include "System/Media/Formats/FormatTable.h"

#include <cstring>

namespace Corvane::Mox {

CFormatTable::CFormatTable(const FormatEntry* rows, int count) : rows_(rows), count_(count), distinct_(0) {
  // Open addressing with linear probing at a load of at most one half: a
  // lookup is one multiply and, almost always, one or two probes.
  size_t capacity = 16;
  while (capacity < static_cast<size_t>(count) * 2) capacity <<= 1;
  slots_.assign(capacity, Slot{0, -1});
  mask_ = static_cast<unsigned int>(capacity - 1);
  shift_ = 32;
  for (size_t c = capacity; c > 1; c >>= 1) --shift_;
  for (int i = 0; i < count; ++i) {
    Slot* slot = Probe(rows[i].code);
    if (slot->row >= 0) continue;  // the first row of a code wins
    *slot = Slot{rows[i].code, i};
    ++distinct_;
  }
}

CFormatTable::Slot* CFormatTable::Probe(unsigned int code) {
  return const_cast<Slot*>(static_cast<const CFormatTable*>(this)->Probe(code));
}

const CFormatTable::Slot* CFormatTable::Probe(unsigned int code) const {
  // Fibonacci hashing: the high bits of the product mix all four characters.
  unsigned int at = (code * 0x9E3779B1u) >> shift_;
  while (slots_[at].row >= 0 && slots_[at].code != code) at = (at + 1) & mask_;
  return &slots_[at];
}

const FormatEntry* CFormatTable::Find(unsigned int code) const {
  const Slot* slot = Probe(code);
  return slot->row >= 0 ? &rows_[slot->row] : nullptr;
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
