#include "System/Media/Subtitle/SubtitleSample.h"

namespace Corvane::Mox {

CSubtitleSample::CSubtitleSample(long long duration) : CMediaSample(TypeCode, duration) {}

CSubtitleSample::CSubtitleSample(const CSubtitleSample* sample) : CMediaSample(TypeCode, sample) {}

Result CSubtitleSample::SplitSample(CSubtitleSample* sample, long long offset, long long gap, CSubtitleSample*& first,
                                    CSubtitleSample*& second) {
  first = second = nullptr;
  if (!sample) return ResultArgumentNull();
  if (offset <= 0) return ResultInvalidArgument("split offset must be positive");
  if (offset >= sample->GetDuration()) return ResultInvalidArgument("split offset must be less than the sample duration");
  if (gap < 0 || offset + gap >= sample->GetDuration()) return ResultInvalidArgument("split gap leaves no second part");
  RObject<CSubtitleSample> head(new CSubtitleSample(sample));
  RObject<CSubtitleSample> tail(new CSubtitleSample(sample));
  head->SetDuration(offset);
  tail->SetTime(sample->GetTime() + offset + gap);
  tail->SetDuration(sample->GetDuration() - offset - gap);
  // A trim belongs to the end it was cut from.
  head->SetTrim(sample->GetTrim().head, 0);
  tail->SetTrim(0, sample->GetTrim().tail);
  first = head.Detach();
  second = tail.Detach();
  return Result();
}

}  // namespace Corvane::Mox
