#include "wfl/TopologyEdgeInfo.h"

#include "System/Media/MediaProperties.h"
#include "System/Text.h"

namespace Corvane::Mox::WFL {

namespace {

template <class T>
void Replace(T*& slot, T* value) {
  if (value) value->Acquire();
  if (slot) slot->Release();
  slot = value;
}

}  // namespace

CTopologyEdgeInfo::CTopologyEdgeInfo(int sourceTrack, int targetTrack)
    : CProperties(TypeCode, nullptr),
      media_(nullptr),
      sourceTrack_(sourceTrack),
      targetTrack_(targetTrack),
      label_(nullptr),
      properties_(nullptr) {}

CTopologyEdgeInfo::~CTopologyEdgeInfo() {
  if (media_) media_->Release();
  if (label_) label_->Release();
  if (properties_) properties_->Release();
}

CTopologyEdgeInfo* CTopologyEdgeInfo::Create(const CMediaProperties* media, int sourceTrack, int targetTrack) {
  auto* info = new CTopologyEdgeInfo(sourceTrack, targetTrack);
  info->media_ = CMediaProperties::Clone(media);
  return info;
}

void CTopologyEdgeInfo::SetLabel(CString* label) { Replace(label_, label); }

void CTopologyEdgeInfo::SetProperties(CProperties* properties) { Replace(properties_, properties); }

}  // namespace Corvane::Mox::WFL
