#include "wfl/ConnectionPoint.h"

#include <chrono>

#include "System/Console.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/MediaSample.h"
#include "wfl/Connection.h"
#include "wfl/TopologyNode.h"
#include "wfl/WorkflowMonitor.h"
#include "wfl/WorkflowNode.h"

namespace Corvane::Mox::WFL {

namespace {

// How long a producer waits for room before it looks at the run's state again.
constexpr int RoomPollMilliseconds = 100;

}  // namespace

CConnectionPoint::CConnectionPoint(CMediaProperties* media)
    : CObject(TypeCode), media_(media), lastDelivery_(NowNanoseconds()) {
  if (media_) media_->Acquire();
}

CConnectionPoint::~CConnectionPoint() {
  for (CConnection* connection : connections_) connection->Release();
  if (media_) media_->Release();
}

long long CConnectionPoint::NowNanoseconds() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

void CConnectionPoint::AddConnection(CConnection* connection) {
  if (!connection) throw ResultArgumentNull();
  connection->Acquire();
  connections_.push_back(connection);
}

void CConnectionPoint::DeliverSample(CMediaSample* sample, const CWorkflowMonitor* monitor) {
  lastDelivery_.store(NowNanoseconds(), std::memory_order_relaxed);
  for (CConnection* connection : connections_) {
    CTopologyNode* target = connection->GetTarget()->GetTopologyNode();
    const int input = connection->GetInput();
    MOX_LOG_DEBUG(Console::WorkflowRuntime, "[%p, %lld] ReceiveSample[%d]@%f\n", static_cast<void*>(target),
                  NowNanoseconds() / 1000000, input, static_cast<double>(GetTime()));
    bool room = target->IsInputMediaReady(input);
    while (!room && !(monitor && monitor->IsAborted())) {
      target->WaitForInputMedia(RoomPollMilliseconds);
      room = target->IsInputMediaReady(input);
    }
    if (room) target->WriteSample(input, sample);
  }
  if (!sample)
    end_.store(true, std::memory_order_release);
  else
    delivered_.fetch_add(sample->GetDuration(), std::memory_order_relaxed);
}

float CConnectionPoint::GetTime() const {
  const long long scale = media_ ? media_->GetTimeScale() : 0;
  if (scale <= 0) return Unknown;
  return static_cast<float>(static_cast<double>(delivered_.load(std::memory_order_relaxed)) / scale);
}

float CConnectionPoint::GetDuration() const {
  const long long scale = media_ ? media_->GetTimeScale() : 0;
  if (scale <= 0) return Unknown;
  return static_cast<float>(static_cast<double>(media_->GetDuration()) / scale);
}

float CConnectionPoint::GetHeartbeat() const {
  const long long elapsed = NowNanoseconds() - lastDelivery_.load(std::memory_order_relaxed);
  // Milliseconds, then seconds, as a stopwatch would report them.
  return static_cast<float>(elapsed / 1000000) / 1000.0f;
}

}  // namespace Corvane::Mox::WFL
