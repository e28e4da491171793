#pragma once
// CReaderTopologyNode ("crtn"): the base of reader nodes, whose outputs are
// the reader's tracks. The reading itself (one read-ahead thread per output)
// belongs to the workflow runtime.

#include "wfl/TopologyNode.h"

namespace Corvane::Mox::WFL {

class CReaderTopologyNode : public CTopologyNode {
 public:
  explicit CReaderTopologyNode(CObject* reader) : CTopologyNode(ReaderNode, reader) {}

  // Stops reading ahead; outputs hand out what they have read and end.
  virtual void Stop() {}
  // The output that carries track index of a kind ("vid ", "aud ", "sub ");
  // -1 when there is no such track.
  virtual int GetOutputIndex(unsigned int kind, int index) = 0;
};

}  // namespace Corvane::Mox::WFL
