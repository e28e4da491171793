#include "System/Media/Formats/VideoFormat.h"

#include "System/Types.h"

namespace Corvane::Mox::VideoFormat {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

const FormatEntry kRows[] = {
#define MOX_VIDEO_FORMAT(code, parent, name, intra) {code, parent, name, intra},
#include "System/Media/Formats/VideoFormat.def"
#undef MOX_VIDEO_FORMAT
};

const CFormatTable& Table() {
  static const CFormatTable table(kRows, static_cast<int>(sizeof(kRows) / sizeof(kRows[0])));
  return table;
}

}  // namespace

#include "System/Media/Formats/FormatLookups.inc"
bool IsIntraFormat(unsigned int code) { return Table().IsIntraFormat(code); }

}  // namespace Corvane::Mox::VideoFormat
