#include "System/Media/Filter/VideoConverters/ShuffleStage.h"

#include "System/Media/Filter/VideoConverters/StageMap.h"

namespace Corvane::Mox {

CShuffleStage::CShuffleStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CShuffleStage::GetStageMap() {
  static const std::vector<Row> map = MOX_STAGE_MAP(ShuffleStageMap)
#include "System/Media/Filter/VideoConverters/ShuffleStageMap.def"
  MOX_STAGE_MAP_END;
  return map;
}

}  // namespace Corvane::Mox
