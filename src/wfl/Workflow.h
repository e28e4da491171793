#pragma once
// CWorkflow: runs a topology. Every node reachable from a reader becomes a
// workflow node linked to its consumers through connection points; Begin
// starts a thread per reader output and per filter, samples are pushed from
// the readers through the filters into the writers, and the host polls the
// measurements or waits for completion, then calls End and reads the
// result. A failure anywhere aborts the run: every thread ends, End returns,
// and GetResult answers the failure.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox::WFL {

class CTopology;
class CTopologyNode;
class CWorkflowMonitor;
class CWorkflowNode;

class CWorkflow : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("wkfl");

  // Builds the workflow nodes of every reader's tree (the topology is acquired).
  explicit CWorkflow(CTopology* topology);
  ~CWorkflow() override;

  // Begins every node, then starts their threads. Failures are returned
  // (and abort what was started).
  Result Begin();
  // Asks the readers to stop: outputs end after what was read ahead.
  void Stop();
  // Joins every thread and ends every node (writers finish their files).
  // Answers the first failure of ending.
  Result End();

  float GetProgress() const;
  float GetTime() const;
  float GetDuration() const;
  float GetHeartbeat() const;
  bool IsEndOfStream() const;
  // True once a node has failed and the run was aborted.
  bool IsAborted() const;
  // Waits until every output has ended or the run was aborted, for at most
  // `milliseconds`; answers IsEndOfStream().
  bool WaitForCompletion(int milliseconds) const;
  // The first failure of a node's thread, or of the run; ResultOK otherwise.
  Result GetResult() const;

  int GetNodeCount() const { return static_cast<int>(nodes_.size()); }
  CWorkflowNode* GetNode(int index) const { return nodes_[index]; }  // borrowed
  // The workflow node of a topology node (borrowed), made with its
  // consumers when new; null for nodes that take no part in a run.
  CWorkflowNode* BuildTree(CTopology* topology, CTopologyNode* node);

 private:
  CWorkflowNode* Find(CTopologyNode* node) const;

  CTopology* topology_;
  CWorkflowMonitor* monitor_;
  std::vector<CTopologyNode*> keys_;  // parallel to nodes_
  std::vector<CWorkflowNode*> nodes_;
};

}  // namespace Corvane::Mox::WFL
