#pragma once
// CUnpackStage ("upck"): spreads packed and semi-planar pictures over
// planes (and RGB over the Y, U and V planes as G, B and R), without changing
// a value.

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

class CUnpackStage : public CStage {
 public:
  static constexpr unsigned int StageType = FourCC("upck");
  CUnpackStage();
  static const std::vector<Row>& GetStageMap();
};

}  // namespace Corvane::Mox
