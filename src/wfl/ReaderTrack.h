#pragma once
// CReaderTrack: one output of a reader node at run time. A read-ahead
// thread keeps up to three samples of the output queued, so that reading
// overlaps with the processing downstream while memory per output stays
// bounded; ReadSample hands them out in order and answers null at the end.
// Stop ends the output after what was already read ahead.

#include <deque>

#include "System/Object.h"

namespace Corvane::Mox {
class CMediaSample;
class CThread;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CReaderTopologyNode;

class CReaderTrack : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("rtrk");
  static constexpr int Capacity = 3;

  // The node is not acquired: it owns its tracks.
  CReaderTrack(CReaderTopologyNode* node, int output);
  ~CReaderTrack() override;

  // Starts the read-ahead thread.
  Result Begin();
  // The next sample (acquired), or null at the end. Waits while nothing is
  // queued and the track runs; raises the read-ahead thread's failure.
  CMediaSample* ReadSample();
  // No more reading ahead; a consumer waiting for a sample wakes.
  void Stop();
  // Stops, joins the read-ahead thread and raises its failure.
  void End();
  bool IsEndOfStream() const;

 private:
  static Result ReadData(void* track);
  Result ReadAhead();
  // Whether ReadSample would return without waiting.
  bool CanRead() const;

  CReaderTopologyNode* node_;
  int output_;
  std::deque<CMediaSample*> queue_;  // guarded by the object's monitor; null marks the end
  bool running_;
  bool end_;
  bool readerDone_;  // the read-ahead thread has queued the end or failed
  bool refillPending_ = false;  // the queue was full; the read-ahead thread may wait
  Result failure_;
  CThread* thread_;
};

}  // namespace Corvane::Mox::WFL
