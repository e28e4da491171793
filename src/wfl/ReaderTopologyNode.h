#pragma once
// CReaderTopologyNode ("crtn"): the base of reader nodes, whose outputs are
// the reader's tracks. At run time each output is read ahead by a
// CReaderTrack on a thread of its own; the kinds of reader say how the next
// sample of an output is produced (ReadSampleData).

#include <atomic>
#include <vector>

#include "wfl/TopologyNode.h"

namespace Corvane::Mox::WFL {

class CReaderTrack;

class CReaderTopologyNode : public CTopologyNode {
 public:
  // Read-ahead tracks beyond this many outputs are refused.
  static constexpr int MaxOutputs = 8388608;

  explicit CReaderTopologyNode(CObject* reader) : CTopologyNode(ReaderNode, reader) {}
  ~CReaderTopologyNode() override;

  // Makes one read-ahead track per output and starts it.
  Result Begin() override;
  // Stops and joins every track; raises the first reading failure.
  Result End() override;
  // True when every track has handed out its end (true with no tracks).
  bool IsEndOfStream() override;
  // The next sample of an output as the track read it ahead (acquired), or
  // null at the end; waits while the track has nothing yet.
  CMediaSample* ReadSample(int output) override;

  // Stops reading ahead; outputs hand out what they have read and end.
  virtual void Stop();
  // The output that carries track index of a kind ("vid ", "aud ", "sub ");
  // -1 when there is no such track.
  virtual int GetOutputIndex(unsigned int kind, int index) = 0;
  // Produces the next sample of an output (acquired), or null at its end;
  // called on the output's read-ahead thread. Failures are raised.
  // Because the read-ahead threads call it, a subclass that implements it
  // ends the tracks in its own destructor (End), before its part is gone.
  virtual CMediaSample* ReadSampleData(int output) = 0;

 protected:
  // True once Stop was called: a ReadSampleData that waits gives up.
  bool IsStopping() const { return stopping_.load(std::memory_order_acquire); }

 private:
  std::vector<CReaderTrack*> tracks_;
  std::atomic<bool> stopping_{false};
};

}  // namespace Corvane::Mox::WFL
