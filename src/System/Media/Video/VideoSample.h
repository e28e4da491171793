#pragma once
// CVideoSample ("vid#"): a frame or field, with its frame number, picture
// type (0 I, 1 P, 2 B), picture structure (0 frame, 1 upper field, 2 lower
// field) and the offset from decode to composition time.

#include "System/Media/MediaSample.h"

namespace Corvane::Mox {

class CVideoProperties;

class CVideoSample : public CMediaSample {
 public:
  static constexpr unsigned int TypeCode = FourCC("vid#");

  CVideoSample(int frameNumber, long long duration, int pictureType);
  // A copy of sample (see CMediaSample) with its four video fields.
  explicit CVideoSample(const CVideoSample* sample);

  long long GetCompositionTime() const override;

  int GetFrameNumber() const { return frameNumber_; }
  Result SetFrameNumber(int frameNumber);
  int GetPictureType() const { return pictureType_ & 3; }
  // 0..2, else ResultNotSupported and no change.
  Result SetPictureType(int pictureType);
  int GetPictureStructure() const { return pictureStructure_ & 3; }
  Result SetPictureStructure(int pictureStructure);
  int GetCompositionOffset() const { return compositionOffset_; }
  Result SetCompositionOffset(int offset);
  // Moves the decode time by delta and keeps the composition time.
  Result AdjustTime(int delta);

  // Two field samples of a JPEG 2000 frame (canonical format "mjp2"; any
  // other gives ResultNotSupported).
  static Result SplitIntoFields(CVideoProperties* properties, CVideoSample* frame, CVideoSample*& first,
                                CVideoSample*& second);
  // One frame of the two fields' summed duration; when both fields hold
  // memory, the frame's buffer holds the first field's bytes, then the
  // second's.
  static Result MergeFields(CVideoProperties* properties, CVideoSample* first, CVideoSample* second,
                            CVideoSample*& frame);

 protected:
  int GetExtraSize() const override { return 16; }
  Result WriteExtra(CBinaryWriter* writer) const override;
  Result ReadExtra(CBinaryReader* reader) override;
  void DescribeExtra(CProperties* bag) const override;

 private:
  int frameNumber_;
  int pictureType_;
  int pictureStructure_;
  int compositionOffset_;
};

}  // namespace Corvane::Mox
