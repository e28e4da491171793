#pragma once
// CFormatTable: a constant forest of format codes (video, audio or subtitle)
// with the walks that answer every question about a code. Each row names a
// parent (0 for a root) and a name (null for an alias, which stands for the
// nearest named code above it). The rows are indexed once, on construction,
// by a sorted array of (code, first row), so a code listed twice keeps its
// first row and every lookup is a binary search.

#include <utility>
#include <vector>

namespace Corvane::Mox {

struct FormatEntry {
  unsigned int code;
  unsigned int parent;  // 0 for a root
  const char* name;     // null for an alias
  bool intra;           // intra-coded (video only)
};

class CFormatTable {
 public:
  CFormatTable(const FormatEntry* rows, int count);
  CFormatTable(const CFormatTable&) = delete;
  CFormatTable& operator=(const CFormatTable&) = delete;

  // The first row of code, or null.
  const FormatEntry* Find(unsigned int code) const;

  unsigned int GetParentFormat(unsigned int code) const;
  const char* GetName(unsigned int code) const;
  unsigned int GetEquivalentFormat(unsigned int code) const;
  unsigned int GetCanonicalFormat(unsigned int code) const;
  unsigned int GetCategoricalFormat(unsigned int code) const;
  bool IsFormat(unsigned int code, unsigned int other) const;
  bool IsIntraFormat(unsigned int code) const;

  // Rows as listed (duplicates included) and distinct codes.
  int GetRowCount() const { return count_; }
  int GetFormatCount() const { return distinct_; }
  // The row at index in table order, or null.
  const FormatEntry* GetRow(int index) const;
  // The first named row whose name equals name exactly; 0 when none.
  unsigned int FindFormat(const char* name) const;
  // The aliases of a named code: the codes whose equivalent format is code
  // (the code itself excluded), in table order.
  std::vector<unsigned int> GetAliases(unsigned int code) const;

 private:
  // The nearest named row on the path from code to its root, or null.
  const FormatEntry* FindNamed(unsigned int code) const;

  const FormatEntry* rows_;
  int count_;
  struct Slot {
    unsigned int code;
    int row;  // -1: empty
  };
  Slot* Probe(unsigned int code);
  const Slot* Probe(unsigned int code) const;

  std::vector<Slot> slots_;  // code -> first row of that code
  unsigned int mask_;
  int shift_;
  int distinct_;
};

}  // namespace Corvane::Mox
