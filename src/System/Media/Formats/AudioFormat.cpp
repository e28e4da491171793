#include "System/Media/Formats/AudioFormat.h"

#include "System/Types.h"

namespace Corvane::Mox::AudioFormat {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

const FormatEntry kRows[] = {
#define MOX_AUDIO_FORMAT(code, parent, name) {code, parent, name, false},
#include "System/Media/Formats/AudioFormat.def"
#undef MOX_AUDIO_FORMAT
};

const CFormatTable& Table() {
  static const CFormatTable table(kRows, static_cast<int>(sizeof(kRows) / sizeof(kRows[0])));
  return table;
}

}  // namespace

unsigned int GetParentFormat(unsigned int code) { return Table().GetParentFormat(code); }
const char* GetName(unsigned int code) { return Table().GetName(code); }
unsigned int GetEquivalentFormat(unsigned int code) { return Table().GetEquivalentFormat(code); }
unsigned int GetCanonicalFormat(unsigned int code) { return Table().GetCanonicalFormat(code); }
unsigned int GetCategoricalFormat(unsigned int code) { return Table().GetCategoricalFormat(code); }
bool IsFormat(unsigned int code, unsigned int other) { return Table().IsFormat(code, other); }
bool IsKnownFormat(unsigned int code) { return Table().Find(code) != nullptr; }
int GetRowCount() { return Table().GetRowCount(); }
int GetFormatCount() { return Table().GetFormatCount(); }
const FormatEntry* GetRow(int index) { return Table().GetRow(index); }
unsigned int FindFormat(const char* name) { return Table().FindFormat(name); }
std::vector<unsigned int> GetAliases(unsigned int code) { return Table().GetAliases(code); }

}  // namespace Corvane::Mox::AudioFormat
