#pragma once
// CPackStage ("pack"): gathers planar pictures into packed and semi-planar
// layouts, without changing a value.

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CPackStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("pack");
  CPackStage();
  static const std::vector<Row>& GetStageMap();
};

}  // namespace Corvane::Mox
