#pragma once
// CWorkflowMonitor: the monitor a workflow shares with its nodes. Nodes
// notify it when an output reaches its end (which wakes WaitForCompletion),
// and the first node that fails aborts the run through it: the failure is
// kept, every waiter is woken and the readers are told to stop, so that no
// thread waits for samples or room that a failed node will never provide.

#include <atomic>
#include <vector>

#include "System/Threading/Monitor.h"

namespace Corvane::Mox::WFL {

class CReaderTopologyNode;

class CWorkflowMonitor : public CMonitor {
 public:
  CWorkflowMonitor() = default;
  ~CWorkflowMonitor() override;

  // Readers to stop when the run is aborted (acquired).
  void AddReader(CReaderTopologyNode* reader);

  // Keeps the first failure, wakes every waiter and stops the readers;
  // later calls only wake.
  void Abort(const Result& failure);
  bool IsAborted() const { return aborted_.load(std::memory_order_acquire); }
  // The failure that aborted the run; ResultOK when none did.
  Result GetFailure() const;

 private:
  std::atomic<bool> aborted_{false};
  Result failure_;  // guarded by the monitor
  std::vector<CReaderTopologyNode*> readers_;
};

}  // namespace Corvane::Mox::WFL
