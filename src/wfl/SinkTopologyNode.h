#pragma once
// CSinkTopologyNode: what writer and package nodes share. Each input becomes
// a track of the sink, recorded as a track entry (media kind "vid ", "aud "
// or "sub ", and the track's index within its kind), one per input in the
// order inputs were added. Sinks have no outputs.

#include <map>
#include <vector>

#include "System/Media/MediaProperties.h"
#include "wfl/TopologyNode.h"

namespace Corvane::Mox::WFL {

struct TrackEntry {
  unsigned int kind;
  int index;
};

class CSinkTopologyNode : public CTopologyNode {
 public:
  CSinkTopologyNode(unsigned int nodeType, CObject* sink) : CTopologyNode(nodeType, sink) {}

  // Creates the sink's track for the description and records its entry.
  void AddInputMedia(const CMediaProperties* properties) override;
  int GetInputMediaCount() override { return static_cast<int>(entries_.size()); }
  CMediaProperties* GetInputMedia(int index) override;
  bool IsInputMediaReady(int index) override { return index >= 0 && index < GetInputMediaCount(); }
  bool WaitForInputMedia() override { return true; }
  bool WaitForInputMedia(int) override { return true; }
  bool IsEndOfStream() override { return true; }
  // Routes the sample to the input's track; ResultIndexOutOfRange for an
  // unknown input.
  void WriteSample(int input, CMediaSample* sample) override;

  const std::vector<TrackEntry>& GetTrackEntries() const { return entries_; }

 protected:
  // Adds the sink's track for a description of a kind and answers its index
  // within the kind; failures are raised. Here: only counts the tracks.
  virtual int CreateTrack(unsigned int kind, CMediaProperties* properties);
  // Here: nothing is written.
  virtual void WriteTrack(const TrackEntry&, CMediaSample*) {}

 private:
  std::map<unsigned int, int> counts_;
  std::vector<TrackEntry> entries_;
  std::vector<RObject<CMediaProperties>> media_;
};

}  // namespace Corvane::Mox::WFL
