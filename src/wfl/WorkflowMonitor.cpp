#include "wfl/WorkflowMonitor.h"

#include "wfl/ReaderTopologyNode.h"

namespace Corvane::Mox::WFL {

CWorkflowMonitor::~CWorkflowMonitor() {
  for (CReaderTopologyNode* reader : readers_) reader->Release();
}

void CWorkflowMonitor::AddReader(CReaderTopologyNode* reader) {
  if (!reader) return;
  reader->Acquire();
  readers_.push_back(reader);
}

void CWorkflowMonitor::Abort(const Result& failure) {
  bool first = false;
  {
    CAutoLock lock(this);
    if (!aborted_.load(std::memory_order_relaxed)) {
      failure_ = failure;
      aborted_.store(true, std::memory_order_release);
      first = true;
    }
    NotifyAll();
  }
  // Readers are stopped outside the monitor: stopping takes their own locks.
  if (first)
    for (CReaderTopologyNode* reader : readers_) reader->Stop();
}

Result CWorkflowMonitor::GetFailure() const {
  CAutoLock lock(this);
  return failure_;
}

}  // namespace Corvane::Mox::WFL
