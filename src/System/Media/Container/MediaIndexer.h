#pragma once
// CMediaIndexer: the index of one reader track, filled by the indexer's
// drain thread as the reader delivers samples. Each entry keeps a sample's
// timing, flags and data reference (position and length, no essence) in 48
// bytes, so a two-hour 60 fps track indexes in about 20 MB. Consumers wait for
// entries and rebuild samples from them.

#include <condition_variable>
#include <deque>
#include <mutex>

#include "System/Object.h"

namespace Corvane::Mox {

class CMediaProperties;
class CMediaSample;

class CMediaIndexer : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("mdix");

  enum class Kind { Video, Audio, Subtitle };

  // Keeps a reference to the track's description.
  CMediaIndexer(Kind kind, CMediaProperties* properties);
  ~CMediaIndexer() override;

  Kind GetKind() const { return kind_; }
  CMediaProperties* GetProperties() const;  // acquired

  // Records a sample's entry (the sample itself is not kept).
  void Add(const CMediaSample* sample);
  // Marks the track complete with the outcome of its reading.
  void Complete(const Result& result);

  int GetSampleCount() const;
  // A new sample rebuilt from entry `index` (acquired), carrying its "read"
  // data reference; null outside the index.
  CMediaSample* GetSample(int index) const;
  bool IsComplete() const;
  // The failure that ended reading, or success.
  Result GetResult() const;

  // Waits at most `milliseconds` for a sample to be added or the track to
  // complete after the call began; true when one of them happened (or the
  // track was already complete).
  bool WaitForSample(int milliseconds) const;
  // Waits at most `milliseconds` until entry `index` exists; false when the
  // track completed without it or the time ran out.
  bool WaitForSample(int index, int milliseconds) const;

 private:
  struct Entry {
    long long time;
    long long duration;
    long long position;
    int length;
    int frameNumber;
    int compositionOffset;
    int hint;
    unsigned int referenceTag;
    short pictureType;
    short pictureStructure;
  };
  static_assert(sizeof(Entry) <= 64, "index entries stay small");

  Kind kind_;
  CMediaProperties* properties_;
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::deque<Entry> entries_;
  bool complete_;
  Result result_;
  unsigned long long changes_;
};

}  // namespace Corvane::Mox
