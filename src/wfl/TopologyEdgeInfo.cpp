#include "wfl/TopologyEdgeInfo.h"

#include "System/Text.h"

namespace Corvane::Mox::WFL {

CTopologyEdgeInfo::CTopologyEdgeInfo(int sourceTrack, int targetTrack)
    : CProperties(TypeCode, nullptr), sourceTrack_(sourceTrack), targetTrack_(targetTrack), label_(nullptr),
      properties_(nullptr) {}

CTopologyEdgeInfo::~CTopologyEdgeInfo() {
  if (label_) label_->Release();
  if (properties_) properties_->Release();
}

void CTopologyEdgeInfo::SetLabel(CString* label) {
  if (label) label->Acquire();
  if (label_) label_->Release();
  label_ = label;
}

void CTopologyEdgeInfo::SetProperties(CProperties* properties) {
  if (properties) properties->Acquire();
  if (properties_) properties_->Release();
  properties_ = properties;
}

}  // namespace Corvane::Mox::WFL
