#pragma once
// CContainerWriterTopologyNode ("cwtn"): a container writer in a topology.
// Each input becomes a writer track: its index within its kind is the
// writer's count of tracks of that kind before the track was added.

#include "wfl/SinkTopologyNode.h"

namespace Corvane::Mox {
class CContainerWriter;
}

namespace Corvane::Mox::WFL {

class CContainerWriterTopologyNode : public CSinkTopologyNode {
 public:
  explicit CContainerWriterTopologyNode(CContainerWriter* writer);

  CContainerWriter* GetContainerWriter() const;  // borrowed

  // The writer's own Begin and End, once each.
  Result Begin() override;
  Result End() override;

 protected:
  int CreateTrack(unsigned int kind, CMediaProperties* properties) override;
  void WriteTrack(const TrackEntry& entry, CMediaSample* sample) override;

 private:
  bool begun_;
};

}  // namespace Corvane::Mox::WFL
