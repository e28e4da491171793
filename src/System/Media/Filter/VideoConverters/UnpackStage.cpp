#include "System/Media/Filter/VideoConverters/UnpackStage.h"

#include "System/Media/Filter/VideoConverters/StageMap.h"

namespace Corvane::Mox {

CUnpackStage::CUnpackStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CUnpackStage::GetStageMap() {
  static const std::vector<Row> map = MOX_STAGE_MAP(UnpackStageMap)
#include "System/Media/Filter/VideoConverters/UnpackStageMap.def"
  MOX_STAGE_MAP_END;
  return map;
}

}  // namespace Corvane::Mox
