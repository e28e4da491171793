#pragma once
// CSignalWriterTopologyNode ("cwtn"): a live signal writer in a topology. It
// records one track entry per input; sending belongs to the signal
// components.

#include "wfl/SinkTopologyNode.h"

namespace Corvane::Mox::WFL {

class CSignalWriterTopologyNode : public CSinkTopologyNode {
 public:
  explicit CSignalWriterTopologyNode(CObject* signalWriter) : CSinkTopologyNode(WriterNode, signalWriter) {}

  CObject* GetSignalWriter() const { return GetComponent(); }  // borrowed
};

}  // namespace Corvane::Mox::WFL
