#pragma once
// CContainerReaderTopologyNode: a container reader in a topology, read
// through its indexer. Outputs are numbered video tracks first, then audio,
// then subtitle tracks, each in the reader's order.

#include <vector>

#include "wfl/ReaderTopologyNode.h"

namespace Corvane::Mox {
class CContainerReader;
class CIndexer;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CContainerReaderTopologyNode : public CReaderTopologyNode {
 public:
  // indexerStarted tells whether the indexer has been begun already (the
  // script's reader values begin theirs when they are created).
  CContainerReaderTopologyNode(CIndexer* indexer, bool indexerStarted);
  // Ends the read-ahead tracks, which read through this node.
  ~CContainerReaderTopologyNode() override;

  CIndexer* GetIndexer() const;  // borrowed
  CContainerReader* GetContainerReader() const;  // borrowed

  // Begins the indexer unless it has been begun; only once.
  Result Begin() override;
  int GetOutputMediaCount() override;
  CMediaProperties* GetOutputMedia(int index) override;
  // The track's description once the indexer has begun; nothing before.
  CList<CMediaProperties>* GetAvailableOutputMedia(int output) override;
  int GetOutputIndex(unsigned int kind, int index) override;
  // The (kind, index within kind) of an output; false outside the outputs.
  bool GetTrack(int output, unsigned int& kind, int& index);
  // The next sample of the output from the indexer, its bytes read by the
  // container reader; null once the indexer is complete and every sample was
  // handed out. Waits for the indexer in steps of 100 ms.
  CMediaSample* ReadSampleData(int output) override;

 private:
  bool IsIndexerStarted() const;

  bool started_;
  std::vector<int> positions_;  // read position per output
  bool indexerStarted_;
};

}  // namespace Corvane::Mox::WFL
