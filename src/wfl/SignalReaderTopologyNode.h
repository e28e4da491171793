#pragma once
// CSignalReaderTopologyNode: a live signal reader in a topology. Its outputs
// come with the signal components; until then it offers none.

#include "wfl/ReaderTopologyNode.h"

namespace Corvane::Mox::WFL {

class CSignalReaderTopologyNode : public CReaderTopologyNode {
 public:
  explicit CSignalReaderTopologyNode(CObject* signalReader) : CReaderTopologyNode(signalReader) {}
  ~CSignalReaderTopologyNode() override { End(); }

  CObject* GetSignalReader() const { return GetComponent(); }  // borrowed
  int GetOutputIndex(unsigned int, int index) override { return index; }
  // Signal readers deliver nothing in this build.
  CMediaSample* ReadSampleData(int) override { return nullptr; }
};

}  // namespace Corvane::Mox::WFL
