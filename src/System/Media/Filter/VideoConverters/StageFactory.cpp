// CStage::Create: the stage classes by type tag.

#include "System/Media/Filter/VideoConverters/ConvertStage.h"
#include "System/Media/Filter/VideoConverters/CopyStage.h"
#include "System/Media/Filter/VideoConverters/PackStage.h"
#include "System/Media/Filter/VideoConverters/ResampleStage.h"
#include "System/Media/Filter/VideoConverters/ShuffleStage.h"
#include "System/Media/Filter/VideoConverters/TwistStage.h"
#include "System/Media/Filter/VideoConverters/UnpackStage.h"

namespace Corvane::Mox {

namespace {

template <class T>
CStage* Make() {
  return new T();
}

struct StageKind {
  unsigned int type;
  CStage* (*create)();
};

constexpr StageKind kStageKinds[] = {
    {CUnpackStage::StageType, &Make<CUnpackStage>},   {CPackStage::StageType, &Make<CPackStage>},
    {CShuffleStage::StageType, &Make<CShuffleStage>}, {CCopyStage::StageType, &Make<CCopyStage>},
    {CConvertStage::StageType, &Make<CConvertStage>}, {CTwistStage::StageType, &Make<CTwistStage>},
    {CResampleStage::StageType, &Make<CResampleStage>},
};

}  // namespace

CStage* CStage::Create(unsigned int stageType) {
  for (const StageKind& kind : kStageKinds)
    if (kind.type == stageType) return kind.create();
  return nullptr;
}

}  // namespace Corvane::Mox
