#pragma once
// AudioFormat: the vocabulary of audio format codes. Codes form a forest:
// each names its parent, aliases stand for the nearest named code above them.
// The table is indexed on first use (thread-safe), after which every lookup
// is a binary search.

#include <vector>

#include "System/Media/Formats/FormatTable.h"

namespace Corvane::Mox::AudioFormat {

// The row's parent; 0 for an unknown code or a root.
unsigned int GetParentFormat(unsigned int code);
// The name of the nearest named code on the path to the root; null when none.
const char* GetName(unsigned int code);
// The nearest named code on the path (an alias maps to what it stands for); 0 when unknown.
unsigned int GetEquivalentFormat(unsigned int code);
// The root of the code's tree; 0 when unknown.
unsigned int GetCanonicalFormat(unsigned int code);
// The parent of the equivalent format; 0 when that is a root or the code is unknown.
unsigned int GetCategoricalFormat(unsigned int code);
// True when other is code or any code above it.
bool IsFormat(unsigned int code, unsigned int other);

// The vocabulary itself: rows as listed, distinct codes, a row by position,
// the code of a name, the aliases of a code.
bool IsKnownFormat(unsigned int code);
int GetRowCount();
int GetFormatCount();
const FormatEntry* GetRow(int index);
unsigned int FindFormat(const char* name);
std::vector<unsigned int> GetAliases(unsigned int code);

}  // namespace Corvane::Mox::AudioFormat
