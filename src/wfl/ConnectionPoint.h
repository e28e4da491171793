#pragma once
// CConnectionPoint: one output of a workflow node. It hands every sample of
// the output, on the producing thread, to each connected input in the order
// the connections were made, waiting until that input has room
// (back-pressure), and keeps what the measurements need: the media time
// delivered, whether the end has passed, and when the last delivery was.

#include <atomic>
#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {
class CMediaProperties;
class CMediaSample;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CConnection;
class CWorkflowMonitor;

class CConnectionPoint : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("cnpt");
  // Seconds that stand for "unknown" in the measurements: the largest float.
  static constexpr float Unknown = 3.4028235e+38f;

  // The description is acquired (may be null).
  explicit CConnectionPoint(CMediaProperties* media);
  ~CConnectionPoint() override;

  // Connections are added before the workflow runs; the point acquires them.
  void AddConnection(CConnection* connection);
  int GetConnectionCount() const { return static_cast<int>(connections_.size()); }
  CMediaProperties* GetMedia() const { return media_; }  // borrowed

  // Writes the sample (null: the end of the output) into every connected
  // input. When the run has been aborted, an input that has no room is
  // skipped instead of waited for. Failures of the targets are raised.
  void DeliverSample(CMediaSample* sample, const CWorkflowMonitor* monitor);

  bool IsEndOfStream() const { return end_.load(std::memory_order_acquire); }
  // Media seconds delivered; Unknown without a time scale.
  float GetTime() const;
  // Media seconds of the output; Unknown without a time scale.
  float GetDuration() const;
  // Seconds since the last delivery (or since the point was made).
  float GetHeartbeat() const;

 private:
  static long long NowNanoseconds();

  CMediaProperties* media_;
  std::vector<CConnection*> connections_;
  std::atomic<long long> delivered_{0};
  std::atomic<bool> end_{false};
  std::atomic<long long> lastDelivery_;
};

}  // namespace Corvane::Mox::WFL
