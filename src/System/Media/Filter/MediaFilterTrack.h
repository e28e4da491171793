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

  // Keeps a clone of the description.
  explicit CMediaFilterTrack(const CMediaProperties* properties);
  ~CMediaFilterTrack() override;

  virtual void Flush();
  virtual bool IsMediaFull() const;
  virtual bool IsMediaEmpty() const;

  // Appends the sample (acquired) or, for null, the end marker.
  void Enqueue(CMediaSample* sample);
  // The oldest entry (acquired) or null: the end marker or an empty queue.
  CMediaSample* Dequeue();
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
  CMediaProperties* properties_;
  std::deque<CMediaSample*> queue_;
};

}  // namespace Corvane::Mox
