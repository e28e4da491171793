#include "wfl/TopologyNode.h"

#include "System/Collections/List.h"
#include "System/Media/MediaProperties.h"
#include "System/Text.h"

namespace Corvane::Mox::WFL {

namespace {

void Replace(CString*& slot, CString* value) {
  if (value) value->Acquire();
  if (slot) slot->Release();
  slot = value;
}

}  // namespace

CTopologyNode::CTopologyNode(unsigned int nodeType, CObject* component)
    : CProperties(nodeType, nullptr), component_(component), label_(nullptr), color_(nullptr) {
  if (component_) component_->Acquire();
}

CTopologyNode::~CTopologyNode() {
  if (component_) component_->Release();
  if (label_) label_->Release();
  if (color_) color_->Release();
}

void CTopologyNode::SetLabel(const char* label) {
  RObject<CString> text(label ? CString::WithString(label) : nullptr);
  Replace(label_, text);
}

void CTopologyNode::SetLabel(CString* label) { Replace(label_, label); }

void CTopologyNode::SetColor(const char* color) {
  RObject<CString> text(color ? CString::WithString(color) : nullptr);
  Replace(color_, text);
}

void CTopologyNode::SetColor(CString* color) { Replace(color_, color); }

Result CTopologyNode::Begin() { return Result(); }
Result CTopologyNode::End() { return Result(); }
bool CTopologyNode::IsEndOfStream() { return true; }
int CTopologyNode::GetInputMediaCount() { return 0; }
void CTopologyNode::AddInputMedia(const CMediaProperties*) { throw ResultNotSupported("node takes no input"); }
CMediaProperties* CTopologyNode::GetInputMedia(int) { return nullptr; }
bool CTopologyNode::IsInputMediaReady(int) { return false; }
bool CTopologyNode::WaitForInputMedia() { return false; }

bool CTopologyNode::WaitForInputMedia(int) { return WaitForInputMedia(); }

CList<CMediaProperties>* CTopologyNode::GetAvailableOutputMedia(int output) {
  auto* list = new CList<CMediaProperties>();
  RObject<CMediaProperties> media(GetOutputMedia(output));
  if (media) list->Add(media);
  return list;
}

int CTopologyNode::GetOutputMediaCount() { return 0; }
CMediaProperties* CTopologyNode::GetOutputMedia(int) { return nullptr; }
bool CTopologyNode::IsOutputMediaReady(int) { return false; }
bool CTopologyNode::WaitForOutputMedia() { return false; }

bool CTopologyNode::WaitForOutputMedia(int) { return WaitForOutputMedia(); }
void CTopologyNode::WriteSample(int, CMediaSample*) { throw ResultNotSupported("node takes no input"); }
CMediaSample* CTopologyNode::ReadSample(int) { return nullptr; }

}  // namespace Corvane::Mox::WFL
