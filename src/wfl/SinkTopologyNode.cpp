#include "wfl/SinkTopologyNode.h"

namespace Corvane::Mox::WFL {

namespace {

unsigned int KindOf(const CMediaProperties* properties) {
  for (unsigned int kind : {FourCC("vid "), FourCC("aud "), FourCC("sub ")})
    if (properties->IsType(kind)) return kind;
  throw ResultTypeMismatch("media of type '%08x' cannot be written", properties->GetType());
}

}  // namespace

void CSinkTopologyNode::AddInputMedia(const CMediaProperties* properties) {
  if (!properties) throw ResultArgumentNull();
  RObject<CMediaProperties> copy(CMediaProperties::Clone(properties));
  const unsigned int kind = KindOf(copy);
  const int index = CreateTrack(kind, copy);
  entries_.push_back(TrackEntry{kind, index});
  media_.push_back(copy);
}

CMediaProperties* CSinkTopologyNode::GetInputMedia(int index) {
  if (index < 0 || index >= GetInputMediaCount()) return nullptr;
  CMediaProperties* media = media_[static_cast<size_t>(index)];
  media->Acquire();
  return media;
}

int CSinkTopologyNode::CreateTrack(unsigned int kind, CMediaProperties*) { return counts_[kind]++; }

void CSinkTopologyNode::WriteSample(int input, CMediaSample* sample) {
  if (input < 0 || input >= GetInputMediaCount()) throw ResultIndexOutOfRange("input %d out of range", input);
  WriteTrack(entries_[static_cast<size_t>(input)], sample);
}

}  // namespace Corvane::Mox::WFL
