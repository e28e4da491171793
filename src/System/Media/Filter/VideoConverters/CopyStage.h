#pragma once
// CCopyStage ("copy"): moves components between layouts that differ only in
// an alpha plane or their byte order, without changing a value.

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CCopyStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("copy");
  CCopyStage();
  static const std::vector<Row>& GetStageMap();
};

}  // namespace Corvane::Mox
