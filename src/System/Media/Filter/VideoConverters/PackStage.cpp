#include "System/Media/Filter/VideoConverters/PackStage.h"

#include "System/Media/Filter/VideoConverters/StageMap.h"

namespace Corvane::Mox {

CPackStage::CPackStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CPackStage::GetStageMap() {
  static const std::vector<Row> map = MOX_STAGE_MAP(PackStageMap)
#include "System/Media/Filter/VideoConverters/PackStageMap.def"
  MOX_STAGE_MAP_END;
  return map;
}

}  // namespace Corvane::Mox
