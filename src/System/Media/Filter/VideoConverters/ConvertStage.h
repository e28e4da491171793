#pragma once
// CConvertStage ("cvrt"): changes the bit depth and the video range of a
// picture without changing its subsampling or matrix. Each component goes
// through a table built at Begin from the two depths, ranges and the
// rounding mode, so a line costs a lookup per sample. With equal ranges a
// lower depth drops the low bits (RM_DOWN) or rounds them (RM_NEAREST); a
// higher depth shifts them in.

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CConvertStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("cvrt");
  CConvertStage();
  static const std::vector<Row>& GetStageMap();
  void ProcessLine(ComponentLines& lines, ComponentLines& spare, int y) const override;

 protected:
  bool Offers(const Row& row, const CVideoProperties* input) const override;
  void ApplyTarget(CVideoProperties* output) const override;
  Result Prepare() override;
  void TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const override;

 private:
  std::vector<uint16_t> table_[4];
  int shift_[4] = {};  // the shift each table amounts to, when it is one
};

}  // namespace Corvane::Mox
