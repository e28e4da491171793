#pragma once
// AudioFormat: the vocabulary of audio format codes. Codes form a forest:
// each names its parent, aliases stand for the nearest named code above them.
// The table is indexed on first use (thread-safe), after which every lookup
// is a hash probe.

#include <vector>

#include "System/Media/Formats/FormatTable.h"

namespace Corvane::Mox::AudioFormat {

#include "System/Media/Formats/FormatLookups.h.inc"

}  // namespace Corvane::Mox::AudioFormat
