#include "wfl/WorkflowNode.h"

#include <algorithm>

#include "System/Console.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/MediaSample.h"
#include "System/Text.h"
#include "System/Threading/Stopwatch.h"
#include "System/Threading/Thread.h"
#include "wfl/ConnectionPoint.h"
#include "wfl/TopologyNode.h"
#include "wfl/WorkflowMonitor.h"
#include "wfl/WorkflowSinkNode.h"
#include "wfl/WorkflowSourceNode.h"

namespace Corvane::Mox::WFL {

namespace {

// How long a filter's worker waits for output before it looks at the run's state again.
constexpr int OutputPollMilliseconds = 100;

const char* LabelText(const CWorkflowNode* node) {
  CString* label = node->GetLabel();
  return label ? label->GetChars() : "(null)";
}

}  // namespace

CWorkflowNode* CWorkflowNode::Create(CTopologyNode* node, CWorkflowMonitor* monitor) {
  if (!node) return nullptr;
  switch (node->GetNodeType()) {
    case CTopologyNode::ReaderNode:
      return new CWorkflowSourceNode(node, monitor);
    case CTopologyNode::WriterNode:
    case CTopologyNode::PackageContainerNode:
      return new CWorkflowSinkNode(node, monitor);
    case CTopologyNode::FilterNode:
      return new CWorkflowNode(node, monitor);
    default:
      return nullptr;
  }
}

CWorkflowNode::CWorkflowNode(CTopologyNode* node, CWorkflowMonitor* monitor)
    : CObject(TypeCode), node_(node), monitor_(monitor), thread_(nullptr) {
  if (node_) node_->Acquire();
  if (monitor_) monitor_->Acquire();
}

CWorkflowNode::~CWorkflowNode() {
  if (thread_) {
    thread_->Join();
    thread_->Release();
  }
  for (CConnectionPoint* point : points_) point->Release();
  if (monitor_) monitor_->Release();
  if (node_) node_->Release();
}

long long CWorkflowNode::Now() { return CStopwatch::Now(); }

CString* CWorkflowNode::GetLabel() const { return node_ ? node_->GetLabel() : nullptr; }

CConnectionPoint* CWorkflowNode::EnsureConnectionPoint(int output) {
  if (output < 0) throw ResultArgumentOutOfRange("output %d out of range", output);
  while (static_cast<int>(points_.size()) <= output) {
    RObject<CMediaProperties> media(node_->GetOutputMedia(static_cast<int>(points_.size())));
    points_.push_back(new CConnectionPoint(media));
  }
  return points_[output];
}

void CWorkflowNode::AddConnection(int output, CConnection* connection) {
  EnsureConnectionPoint(output)->AddConnection(connection);
}

Result CWorkflowNode::Begin() {
  MOX_LOG_DEBUG(Console::WorkflowRuntime, "[%p, %lld] Beginning '%s'...\n", static_cast<void*>(this), Now(),
                LabelText(this));
  Result result = node_->Begin();
  if (result.Failed()) return result;
  const int outputs = node_->GetOutputMediaCount();
  if (outputs > 0) EnsureConnectionPoint(outputs - 1);
  return ResultOK();
}

Result CWorkflowNode::Start() {
  if (thread_) return ResultFalse();
  thread_ = new CThread(&CWorkflowNode::WorkerThread);
  return thread_->Start(this, 0);
}

Result CWorkflowNode::End() {
  MOX_LOG_DEBUG(Console::WorkflowRuntime, "[%p, %lld] Ending '%s'...\n", static_cast<void*>(this), Now(),
                LabelText(this));
  Result joined = thread_ ? thread_->Join() : ResultOK();
  Result ended = node_->End();
  return joined.Failed() ? joined : ended;
}

Result CWorkflowNode::GetThreadResult() const { return thread_ ? thread_->GetResult() : ResultOK(); }

Result CWorkflowNode::WorkerThread(void* argument) {
  auto* self = static_cast<CWorkflowNode*>(argument);
  Result result;
  try {
    self->Render();
  } catch (const Result& failure) {
    result = failure;
  } catch (const std::exception& failure) {
    result = ResultError("%s", failure.what());
  }
  if (result.Failed() && self->monitor_) self->monitor_->Abort(result);
  return result;
}

void CWorkflowNode::DeliverReadySamples() {
  const int outputs = node_->GetOutputMediaCount();
  for (int output = 0; output < outputs; ++output) {
    if (!node_->IsOutputMediaReady(output)) continue;
    RObject<CMediaSample> sample(node_->ReadSample(output));
    DeliverSample(output, sample);
  }
}

void CWorkflowNode::Render() {
  while (!node_->IsEndOfStream()) {
    if (monitor_ && monitor_->IsAborted()) {
      // Another node failed: nothing more will arrive, but what the filter
      // has finished still goes on (writers keep every sample made before
      // the failure).
      while (!node_->IsEndOfStream() && AnyOutputReady()) DeliverReadySamples();
      return;
    }
    node_->WaitForOutputMedia(OutputPollMilliseconds);
    DeliverReadySamples();
  }
}

bool CWorkflowNode::AnyOutputReady() const {
  const int outputs = node_->GetOutputMediaCount();
  for (int output = 0; output < outputs; ++output)
    if (node_->IsOutputMediaReady(output)) return true;
  return false;
}

void CWorkflowNode::DeliverSample(int output, CMediaSample* sample) {
  if (output < 0 || output >= static_cast<int>(points_.size())) return;
  CConnectionPoint* point = points_[output];
  MOX_LOG_DEBUG(Console::WorkflowRuntime, "[%p, %lld] DeliverSample[%d]@%f\n", static_cast<void*>(this), Now(),
                output, static_cast<double>(point->GetTime()));
  point->DeliverSample(sample, monitor_);
  if (point->IsEndOfStream() && monitor_) {
    CAutoLock lock(monitor_);
    monitor_->NotifyAll();
  }
}

bool CWorkflowNode::IsEndOfStream() const {
  return std::all_of(points_.begin(), points_.end(), [](const CConnectionPoint* p) { return p->IsEndOfStream(); });
}

float CWorkflowNode::GetTime() const {
  float time = CConnectionPoint::Unknown;
  for (const CConnectionPoint* point : points_) time = std::min(time, point->GetTime());
  return time;
}

float CWorkflowNode::GetDuration() const {
  float duration = CConnectionPoint::Unknown;
  for (const CConnectionPoint* point : points_) duration = std::min(duration, point->GetDuration());
  return duration;
}

float CWorkflowNode::GetHeartbeat() const {
  float heartbeat = 0;
  for (const CConnectionPoint* point : points_) heartbeat = std::max(heartbeat, point->GetHeartbeat());
  return heartbeat;
}

}  // namespace Corvane::Mox::WFL
