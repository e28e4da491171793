#include "wfl/TopologyNode.h"

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

}  // namespace Corvane::Mox::WFL
