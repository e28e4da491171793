#include "System/Media/Filter/VideoConverters/CopyStage.h"

#include "System/Media/Filter/VideoConverters/StageMap.h"

namespace Corvane::Mox {

CCopyStage::CCopyStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CCopyStage::GetStageMap() {
  static const std::vector<Row> map = MOX_STAGE_MAP(CopyStageMap)
#include "System/Media/Filter/VideoConverters/CopyStageMap.def"
  MOX_STAGE_MAP_END;
  return map;
}

}  // namespace Corvane::Mox
