#pragma once
// CFidelity: the measures the converter search ranks by. GetFidelityLoss is
// how much information a step from one description to another loses (bits
// per pixel for video, scaled bits per second for audio); GetHashCode
// identifies descriptions that are the same for the search.

namespace Corvane::Mox {
class CMediaProperties;
}

namespace Corvane::Mox::WFL {

class CFidelity {
 public:
  // 0 when either is missing or they are not both video or both audio.
  static float GetFidelityLoss(const CMediaProperties* from, const CMediaProperties* to);
  // A one-at-a-time hash over the fields that matter to the search; 0 for
  // null; ResultUnexpected for a description that is not video, audio or
  // subtitles.
  static unsigned int GetHashCode(const CMediaProperties* properties);
};

}  // namespace Corvane::Mox::WFL
