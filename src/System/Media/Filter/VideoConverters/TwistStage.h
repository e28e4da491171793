#pragma once
// CTwistStage ("twst"): converts 4:4:4 pictures between RGB and YUV and
// between YUV matrices by one 4x4 matrix per pixel, composed at Begin from
// both descriptions' matrix coefficients, ranges and bit depths, so range
// scaling, offsets and the matrix change happen in one pass. Results are
// rounded to the nearest code value and clamped.

#include "System/Media/Filter/VideoConverters/ColorMatrix.h"
#include "System/Media/Filter/VideoConverters/PackedMix.h"
#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CTwistStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("twst");
  CTwistStage();
  static const std::vector<Row>& GetStageMap();
  void ProcessLine(ComponentLines& lines, ComponentLines& spare, int y) const override;
  void FinishLine(ComponentLines& lines, ComponentLines& spare, int y, SamplePlanes& output) const override;

  // The matrix of the current run (after Begin).
  const ColorMatrix4& GetMatrix() const { return matrix_; }
  // Unspecified matrix coefficients (2) stand for those the height implies.
  static int ResolveMatrix(const CVideoProperties* properties);

 protected:
  bool Offers(const Row& row, const CVideoProperties* input) const override;
  void ApplyTarget(CVideoProperties* output) const override;
  Result Prepare() override;
  void TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const override;

 private:
  ColorMatrix4 matrix_;
  PackedMix packedMix_;  // 8-bit packed RGB output in one pass
};

}  // namespace Corvane::Mox
