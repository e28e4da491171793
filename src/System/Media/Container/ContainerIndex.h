#pragma once
// CContainerIndex: a sidecar index written while a writer runs. Writers hand
// it a copy of every sample with the storage reference where its bytes went;
// a writer thread serialises them to the index file, one pending sample per
// track slot per pass, so the writer's own thread never waits on the disk.

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "System/Object.h"

namespace Corvane::Mox {

class CAudioSample;
class CMediaSample;
class CStorageDataReference;
class CStream;
class CString;
class CSubtitleSample;
class CVideoSample;

class CContainerIndex : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("cidx");
  static constexpr int SlotCount = 32;

  CContainerIndex();
  ~CContainerIndex() override;

  // Opens the file for writing and starts the writer thread.
  Result Save(CString* path);
  Result WriteVideoSample(int track, CVideoSample* sample, CStorageDataReference* reference);
  Result WriteAudioSample(int track, CAudioSample* sample, CStorageDataReference* reference);
  Result WriteSubtitleSample(int track, CSubtitleSample* sample, CStorageDataReference* reference);
  Result Flush();
  // Writes what is pending, closes the file and joins the thread.
  Result End();
  long long GetVideoDuration(int track) const;
  long long GetAudioDuration(int track) const;

 private:
  struct Slot {
    std::deque<CMediaSample*> pending;
    long long duration = 0;
  };
  enum Kind { Video = 0, Audio = 1, Subtitle = 2 };

  Result Append(Kind kind, int track, CMediaSample* sample, CStorageDataReference* reference);
  void WriterLoop();
  // Writes at most one pending sample of every slot; true when any was.
  bool WritePass();

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  Slot slots_[3][SlotCount];
  CStream* file_;
  bool open_;
  std::thread writer_;
};

}  // namespace Corvane::Mox
