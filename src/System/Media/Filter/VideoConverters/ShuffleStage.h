#pragma once
// CShuffleStage ("shfl"): reorders the components of a layout (U and V
// planes, packed byte orders, alpha positions), without changing a value.

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CShuffleStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("shfl");
  CShuffleStage();
  static const std::vector<Row>& GetStageMap();
};

}  // namespace Corvane::Mox
