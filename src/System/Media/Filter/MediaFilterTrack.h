#pragma once
// CMediaFilterTrack: one input or output of a filter: its own copy of the
// media description and a short queue of samples. A null entry in the queue
// is the end-of-stream marker; enqueuing it marks the track draining, and
// taking it out of a draining track marks the track at its end.

#include <deque>
#include <mutex>

#include "System/Object.h"

namespace Corvane::Mox {

class CMediaProperties;
class CMediaSample;

class CMediaFilterTrack : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("mftk");
  // A track holding more entries than this is full.
  static constexpr int QueueLimit = 3;
  // A queue that was full announces room again at this many entries.
  static constexpr int RefillLevel = QueueLimit / 2;

  // Keeps a clone of the description.
  explicit CMediaFilterTrack(const CMediaProperties* properties);
  ~CMediaFilterTrack() override;

  virtual void Flush();
  virtual bool IsMediaFull() const;
  virtual bool IsMediaEmpty() const;

  // Appends the sample (acquired) or, for null, the end marker.
  void Enqueue(CMediaSample* sample);
  // The oldest entry (acquired) or null: the end marker or an empty queue.
  // With `roomMade`, also says whether producers should now be woken: once
  // the queue has been full, room is announced when it has drained to
  // RefillLevel, so that a fast producer refills several entries per wake-up
  // instead of trading every single entry with its consumer.
  CMediaSample* Dequeue(bool* roomMade = nullptr);
  bool IsDraining() const;
  bool IsEndOfStream() const;
  void SetDraining();
  int GetPendingSampleCount() const;
  // The track's description (borrowed).
  CMediaProperties* GetProperties() const { return properties_; }

 private:
  mutable std::mutex lock_;
  bool draining_;
  bool endOfStream_;
  bool refillPending_ = false;  // full since room was last announced
  CMediaProperties* properties_;
  std::deque<CMediaSample*> queue_;
};

}  // namespace Corvane::Mox
