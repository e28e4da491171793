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

#include "System/Media/Formats/FormatLookups.inc"

}  // namespace Corvane::Mox::AudioFormat
