#include "System/Media/Formats/SubtitleFormat.h"

#include "System/Types.h"

namespace Corvane::Mox::SubtitleFormat {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

const FormatEntry kRows[] = {
#define MOX_SUBTITLE_FORMAT(code, parent, name) {code, parent, name, false},
#include "System/Media/Formats/SubtitleFormat.def"
#undef MOX_SUBTITLE_FORMAT
};

const CFormatTable& Table() {
  static const CFormatTable table(kRows, static_cast<int>(sizeof(kRows) / sizeof(kRows[0])));
  return table;
}

}  // namespace

#include "System/Media/Formats/FormatLookups.inc"

}  // namespace Corvane::Mox::SubtitleFormat
