#include "wfl/MediaFilterTopologyNode.h"

#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/MediaSample.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox::WFL {

namespace {

constexpr PropertyName OutputFormat = CodeBookProperty::MediaFilter::OutputFormat;

// Begins the filter, takes what it produces on the output, and ends it again
// unless asked to stay begun.
void AddProduced(CMediaFilter* filter, int output, CList<CMediaProperties>* list, bool end) {
  Result begun = filter->Begin();
  begun.ThrowIfFailed();
  RObject<CMediaProperties> media(filter->GetOutputMedia(output));
  if (media) list->Add(media);
  if (end) filter->End().ThrowIfFailed();
}

}  // namespace

CMediaFilterTopologyNode::CMediaFilterTopologyNode(CMediaFilter* filter) : CTopologyNode(FilterNode, filter) {}

CMediaFilter* CMediaFilterTopologyNode::GetMediaFilter() const { return static_cast<CMediaFilter*>(GetComponent()); }

Result CMediaFilterTopologyNode::Begin() { return GetMediaFilter()->Begin(); }
Result CMediaFilterTopologyNode::End() { return GetMediaFilter()->End(); }
bool CMediaFilterTopologyNode::IsEndOfStream() { return GetMediaFilter()->IsEndOfStream(); }
int CMediaFilterTopologyNode::GetInputMediaCount() { return GetMediaFilter()->GetInputMediaCount(); }

void CMediaFilterTopologyNode::AddInputMedia(const CMediaProperties* properties) {
  GetMediaFilter()->AddInputMedia(properties).ThrowIfFailed();
}

CMediaProperties* CMediaFilterTopologyNode::GetInputMedia(int index) { return GetMediaFilter()->GetInputMedia(index); }
bool CMediaFilterTopologyNode::IsInputMediaReady(int index) { return GetMediaFilter()->IsInputMediaReady(index); }
bool CMediaFilterTopologyNode::WaitForInputMedia() { return GetMediaFilter()->WaitForInputMedia(); }

bool CMediaFilterTopologyNode::WaitForInputMedia(int milliseconds) {
  return GetMediaFilter()->WaitForInputMedia(milliseconds);
}

CList<CMediaProperties>* CMediaFilterTopologyNode::GetAvailableOutputMedia(int output) {
  CMediaFilter* filter = GetMediaFilter();
  RObject<CList<CMediaProperties>> list(new CList<CMediaProperties>());
  if (filter->IsReady()) {
    RObject<CMediaProperties> media(filter->GetOutputMedia(output));
    if (media) list->Add(media);
    return list.Detach();
  }
  if (filter->ContainsProperty(OutputFormat)) {
    AddProduced(filter, output, list, true);
  } else {
    RObject<CFormatList> formats(filter->GetOutputFormats());
    const bool several = formats->GetCount() > 1;
    for (CValue<unsigned int>* format : *formats) {
      filter->SetFourProperty(OutputFormat, format->GetValue()).ThrowIfFailed();
      AddProduced(filter, output, list, several);
    }
  }
  filter->RemoveProperty(OutputFormat);
  return list.Detach();
}

int CMediaFilterTopologyNode::GetOutputMediaCount() { return GetMediaFilter()->GetOutputMediaCount(); }
CMediaProperties* CMediaFilterTopologyNode::GetOutputMedia(int index) { return GetMediaFilter()->GetOutputMedia(index); }
bool CMediaFilterTopologyNode::IsOutputMediaReady(int index) { return GetMediaFilter()->IsOutputMediaReady(index); }
bool CMediaFilterTopologyNode::WaitForOutputMedia() { return GetMediaFilter()->WaitForOutputMedia(); }

bool CMediaFilterTopologyNode::WaitForOutputMedia(int milliseconds) {
  return GetMediaFilter()->WaitForOutputMedia(milliseconds);
}

void CMediaFilterTopologyNode::WriteSample(int input, CMediaSample* sample) {
  GetMediaFilter()->WriteSample(input, sample).ThrowIfFailed();
}

CMediaSample* CMediaFilterTopologyNode::ReadSample(int output) {
  CMediaSample* sample = nullptr;
  GetMediaFilter()->ReadSample(output, sample).ThrowIfFailed();
  return sample;
}

}  // namespace Corvane::Mox::WFL
