#pragma once
// VideoFormat: the vocabulary of video format codes. Codes form a forest:
// each names its parent, aliases stand for the nearest named code above them.
// The table is indexed on first use (thread-safe), after which every lookup
// is a hash probe.

#include <vector>

#include "System/Media/Formats/FormatTable.h"

namespace Corvane::Mox::VideoFormat {

#include "System/Media/Formats/FormatLookups.h.inc"

// True when the code or any named code above it is intra-coded.
bool IsIntraFormat(unsigned int code);

}  // namespace Corvane::Mox::VideoFormat
