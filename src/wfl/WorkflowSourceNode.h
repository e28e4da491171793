#pragma once
// CWorkflowSourceNode: a reader at run time. Its worker thread starts one
// reading thread per output of the reader; each reads its output's samples
// (already read ahead by the reader node) and delivers them until the end.
// The worker waits for all of them and raises the first failure.

#include "wfl/WorkflowNode.h"

namespace Corvane::Mox::WFL {

class CWorkflowSourceNode : public CWorkflowNode {
 public:
  CWorkflowSourceNode(CTopologyNode* node, CWorkflowMonitor* monitor) : CWorkflowNode(node, monitor) {}

  // Stops the reader: each output hands out what it has read ahead, then ends.
  void Stop() override;
  void Render() override;
};

}  // namespace Corvane::Mox::WFL
