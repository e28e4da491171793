#pragma once
// CWorkflowSinkNode: a writer or package container at run time. It has no
// thread of its own: the threads that feed it write into it.

#include "wfl/WorkflowNode.h"

namespace Corvane::Mox::WFL {

class CWorkflowSinkNode : public CWorkflowNode {
 public:
  CWorkflowSinkNode(CTopologyNode* node, CWorkflowMonitor* monitor) : CWorkflowNode(node, monitor) {}

  Result Start() override { return ResultOK(); }
  void Stop() override {}
};

}  // namespace Corvane::Mox::WFL
