#pragma once
// CSubtitleSample ("sub#"): one subtitle event.

#include "System/Media/MediaSample.h"

namespace Corvane::Mox {

class CSubtitleSample : public CMediaSample {
 public:
  static constexpr unsigned int TypeCode = FourCC("sub#");

  explicit CSubtitleSample(long long duration);
  explicit CSubtitleSample(const CSubtitleSample* sample);

  // Cuts an event in two at offset (from its start): the first piece covers
  // [0, offset), the second starts at offset + gap and runs to the end. Both
  // share the event's payload. offset must be positive and less than the
  // duration; gap must leave the second piece some duration.
  static Result SplitSample(CSubtitleSample* sample, long long offset, long long gap, CSubtitleSample*& first,
                            CSubtitleSample*& second);
};

}  // namespace Corvane::Mox
