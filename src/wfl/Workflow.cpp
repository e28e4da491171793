#include "wfl/Workflow.h"

#include <algorithm>

#include "System/Collections/List.h"
#include "wfl/Connection.h"
#include "wfl/ConnectionPoint.h"
#include "wfl/ReaderTopologyNode.h"
#include "wfl/Topology.h"
#include "wfl/TopologyEdgeInfo.h"
#include "wfl/WorkflowMonitor.h"
#include "wfl/WorkflowNode.h"

namespace Corvane::Mox::WFL {

CWorkflow::CWorkflow(CTopology* topology)
    : CObject(TypeCode), topology_(topology), monitor_(new CWorkflowMonitor()) {
  if (!topology_) return;
  topology_->Acquire();
  for (CTopologyNode* node : *topology_->GetNodes()) {
    if (node->GetNodeType() != CTopologyNode::ReaderNode) continue;
    if (auto* reader = dynamic_cast<CReaderTopologyNode*>(node)) monitor_->AddReader(reader);
    BuildTree(topology_, node);
  }
}

CWorkflow::~CWorkflow() {
  for (CWorkflowNode* node : nodes_) node->Release();
  monitor_->Release();
  if (topology_) topology_->Release();
}

CWorkflowNode* CWorkflow::Find(CTopologyNode* node) const {
  for (std::size_t i = 0; i < keys_.size(); ++i)
    if (keys_[i] == node) return nodes_[i];
  return nullptr;
}

CWorkflowNode* CWorkflow::BuildTree(CTopology* topology, CTopologyNode* node) {
  if (CWorkflowNode* existing = Find(node)) return existing;
  CWorkflowNode* created = CWorkflowNode::Create(node, monitor_);
  if (!created) return nullptr;
  keys_.push_back(node);
  nodes_.push_back(created);
  for (CGraphEdge<CTopologyNode>* edge : *topology->GetOutputEdges(node)) {
    auto* info = dynamic_cast<CTopologyEdgeInfo*>(edge->GetPayload());
    CWorkflowNode* target = BuildTree(topology, edge->GetDestination());
    if (!info || !target) continue;
    RObject<CConnection> connection(new CConnection(info->GetTargetTrack(), target));
    created->AddConnection(info->GetSourceTrack(), connection);
  }
  return created;
}

Result CWorkflow::Begin() {
  for (CWorkflowNode* node : nodes_) {
    Result result = node->Begin();
    if (result.Failed()) {
      monitor_->Abort(result);
      return result;
    }
  }
  for (CWorkflowNode* node : nodes_) {
    Result result = node->Start();
    if (result.Failed()) {
      monitor_->Abort(result);
      return result;
    }
  }
  return ResultOK();
}

void CWorkflow::Stop() {
  for (CWorkflowNode* node : nodes_) node->Stop();
}

Result CWorkflow::End() {
  Result first;
  for (CWorkflowNode* node : nodes_) {
    Result result;
    try {
      result = node->End();
    } catch (const Result& failure) {
      result = failure;
    }
    if (result.Failed() && first.Succeeded()) first = result;
  }
  return first;
}

float CWorkflow::GetProgress() const {
  double times = 0, durations = 0;
  for (const CWorkflowNode* node : nodes_) {
    const float time = node->GetTime(), duration = node->GetDuration();
    if (time == CConnectionPoint::Unknown || duration == CConnectionPoint::Unknown) continue;
    times += time;
    durations += duration;
  }
  return durations == 0 ? 0.0f : static_cast<float>(times / durations);
}

float CWorkflow::GetDuration() const {
  float duration = 0;
  for (const CWorkflowNode* node : nodes_) {
    const float d = node->GetDuration();
    if (d != CConnectionPoint::Unknown) duration = std::max(duration, d);
  }
  return duration;
}

float CWorkflow::GetTime() const { return GetProgress() * GetDuration(); }

float CWorkflow::GetHeartbeat() const {
  float heartbeat = CConnectionPoint::Unknown;
  for (const CWorkflowNode* node : nodes_) heartbeat = std::min(heartbeat, node->GetHeartbeat());
  return heartbeat;
}

bool CWorkflow::IsEndOfStream() const {
  return std::all_of(nodes_.begin(), nodes_.end(), [](const CWorkflowNode* node) { return node->IsEndOfStream(); });
}

bool CWorkflow::IsAborted() const { return monitor_->IsAborted(); }

bool CWorkflow::WaitForCompletion(int milliseconds) const {
  CAutoLock lock(monitor_);
  if (!IsEndOfStream() && !monitor_->IsAborted() && milliseconds > 0) monitor_->Wait(milliseconds);
  return IsEndOfStream();
}

Result CWorkflow::GetResult() const {
  // The failure that aborted the run is the cause; the others followed it.
  Result failure = monitor_->GetFailure();
  if (failure.Failed()) return failure;
  for (const CWorkflowNode* node : nodes_) {
    Result result = node->GetThreadResult();
    if (result.Failed()) return result;
  }
  return monitor_->GetFailure();
}

}  // namespace Corvane::Mox::WFL
