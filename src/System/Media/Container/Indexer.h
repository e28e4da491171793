#pragma once
// CIndexer: the index front of a container reader. Scripts and topologies
// hold readers through it. Begin starts the reader's indexing, so that its
// tracks are known when Begin returns, and drains every track's samples into
// a media indexer per track (timing, flags and data references, no
// essence); End stops the reader and joins.

#include <atomic>
#include <thread>
#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

class CContainerReader;
class CMediaIndexer;

class CIndexer : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("indx");

  // Keeps a reference to the reader.
  explicit CIndexer(CContainerReader* reader);
  ~CIndexer() override;

  CContainerReader* GetContainerReader() const { return reader_; }

  // Starts indexing once (ResultFalse when already started). Every track is
  // drained on a thread of its own, so that a reader whose tracks share one
  // producer never stalls on a full queue; without `threaded` Begin waits
  // until every track is complete.
  Result Begin(bool threaded);
  // Stops the reader (SetReady(false) releases every blocked call), joins
  // the drains and ends the reader's index; ResultFalse when not started.
  Result End();
  bool IsStarted() const { return started_; }

  int GetVideoMediaIndexerCount() const { return static_cast<int>(video_.size()); }
  int GetAudioMediaIndexerCount() const { return static_cast<int>(audio_.size()); }
  int GetSubtitleMediaIndexerCount() const { return static_cast<int>(subtitle_.size()); }
  // The track's indexer (not acquired), or null.
  CMediaIndexer* GetVideoMediaIndexer(int track) const;
  CMediaIndexer* GetAudioMediaIndexer(int track) const;
  CMediaIndexer* GetSubtitleMediaIndexer(int track) const;
  // True when every track's indexer is complete.
  bool IsComplete() const;

 private:
  void CreateMediaIndexers();
  void StartDrains();
  void JoinDrains();
  void ReleaseMediaIndexers();

  CContainerReader* reader_;
  std::atomic<bool> started_;
  std::vector<CMediaIndexer*> video_;
  std::vector<CMediaIndexer*> audio_;
  std::vector<CMediaIndexer*> subtitle_;
  std::vector<std::thread> drains_;
};

}  // namespace Corvane::Mox
