#pragma once
// CWorkflowNode: a topology node at run time. It owns one connection point
// per output and, for filters, the worker thread that pulls finished samples
// from the filter and delivers them downstream. Sources (readers) and sinks
// (writers, package containers) are its two subclasses.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {
class CMediaSample;
class CString;
class CThread;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CConnection;
class CConnectionPoint;
class CTopologyNode;
class CWorkflowMonitor;

class CWorkflowNode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("node");

  // The workflow node for a topology node by its type: readers give sources,
  // writers and package containers sinks, filters plain nodes; null for
  // other types. Both arguments are acquired.
  static CWorkflowNode* Create(CTopologyNode* node, CWorkflowMonitor* monitor);

  CWorkflowNode(CTopologyNode* node, CWorkflowMonitor* monitor);
  ~CWorkflowNode() override;

  // Begins the topology node and makes a connection point for every output.
  virtual Result Begin();
  // Joins the worker thread, then ends the topology node.
  virtual Result End();
  // Starts the worker thread.
  virtual Result Start();
  virtual void Stop() {}
  // The worker thread's work; failures are raised.
  virtual void Render();

  // Feeds output `output` to connection (the point is made on demand, with
  // the topology node's description of that output).
  void AddConnection(int output, CConnection* connection);
  // Hands a sample (null: the end) to the output's consumers; an output
  // without a connection point is ignored.
  void DeliverSample(int output, CMediaSample* sample);

  bool IsEndOfStream() const;
  float GetTime() const;
  float GetDuration() const;
  float GetHeartbeat() const;
  // The worker thread's result (ResultOK while it runs or when none ran).
  Result GetThreadResult() const;

  CTopologyNode* GetTopologyNode() const { return node_; }  // borrowed
  CString* GetLabel() const;                                 // borrowed, may be null
  int GetConnectionPointCount() const { return static_cast<int>(points_.size()); }

  static Result WorkerThread(void* node);

 protected:
  CWorkflowMonitor* GetMonitor() const { return monitor_; }
  // Milliseconds since the process's stopwatch epoch, for the debug lines.
  static long long Now();

 private:
  CConnectionPoint* EnsureConnectionPoint(int output);
  // Reads and delivers one sample of every output that has one.
  void DeliverReadySamples();
  bool AnyOutputReady() const;

  CTopologyNode* node_;
  CWorkflowMonitor* monitor_;
  std::vector<CConnectionPoint*> points_;
  CThread* thread_;
};

}  // namespace Corvane::Mox::WFL
