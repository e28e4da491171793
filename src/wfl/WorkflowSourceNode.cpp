#include "wfl/WorkflowSourceNode.h"

#include <atomic>
#include <functional>
#include <vector>

#include "System/Media/MediaSample.h"
#include "System/Threading/Monitor.h"
#include "System/Threading/ThreadFunctor.h"
#include "wfl/ReaderTopologyNode.h"
#include "wfl/WorkflowMonitor.h"

namespace Corvane::Mox::WFL {

namespace {

// The supervising thread looks at its reading threads at least this often.
constexpr int SupervisePollMilliseconds = 100;

// What the reading threads of one source share with their supervisor.
struct ReadingState {
  RObject<CMonitor> monitor{new CMonitor()};
  std::atomic<int> completed{0};
  std::atomic<int> failed{0};
  Result firstFailure;  // guarded by monitor
};

}  // namespace

void CWorkflowSourceNode::Stop() {
  if (auto* reader = dynamic_cast<CReaderTopologyNode*>(GetTopologyNode())) reader->Stop();
}

void CWorkflowSourceNode::Render() {
  CTopologyNode* node = GetTopologyNode();
  const int outputs = node->GetOutputMediaCount();
  ReadingState state;
  auto read = [this, node, &state](int output) {
    try {
      while (state.failed.load() == 0 && !(GetMonitor() && GetMonitor()->IsAborted())) {
        RObject<CMediaSample> sample(node->ReadSample(output));
        DeliverSample(output, sample);
        if (!sample) break;
      }
      ++state.completed;
    } catch (const Result& failure) {
      CObject::CAutoLock lock(state.monitor);
      if (state.failed.fetch_add(1) == 0) state.firstFailure = failure;
    }
    CObject::CAutoLock lock(state.monitor);
    state.monitor->NotifyAll();
  };

  using ReadingThread = CThreadFunctor<std::function<void()>>;
  std::vector<RObject<ReadingThread>> threads;
  for (int output = 0; output < outputs; ++output) {
    threads.emplace_back(new ReadingThread([read, output] { read(output); }));
    threads.back()->Start().ThrowIfFailed();
  }
  {
    CObject::CAutoLock lock(state.monitor);
    while (state.completed.load() + state.failed.load() < outputs) state.monitor->Wait(SupervisePollMilliseconds);
  }
  for (RObject<ReadingThread>& thread : threads) thread->Join();
  if (state.failed.load() > 0) {
    CObject::CAutoLock lock(state.monitor);
    throw state.firstFailure;
  }
}

}  // namespace Corvane::Mox::WFL
