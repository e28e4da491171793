#include "System/Media/Container/Indexer.h"

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/MediaIndexer.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

namespace {

// Reads a track to its end (or the reader's stop) into its indexer.
template <class Sample, class Read>
void Drain(CMediaIndexer* indexer, Read read) {
  for (;;) {
    RObject<Sample> sample;
    Result result = read(sample.Out());
    if (result.Failed() || !sample) {
      indexer->Complete(result);
      return;
    }
    indexer->Add(sample);
  }
}

CMediaIndexer* At(const std::vector<CMediaIndexer*>& indexers, int track) {
  return track >= 0 && track < static_cast<int>(indexers.size()) ? indexers[track] : nullptr;
}

}  // namespace

CIndexer::CIndexer(CContainerReader* reader) : CObject(TypeCode), reader_(reader), started_(false) {
  if (reader_) reader_->Acquire();
}

CIndexer::~CIndexer() {
  End();
  ReleaseMediaIndexers();
  if (reader_) reader_->Release();
}

void CIndexer::CreateMediaIndexers() {
  for (int i = 0; i < reader_->GetVideoMediaCount(); ++i) {
    RObject<CVideoProperties> properties(reader_->GetVideoProperties(i));
    video_.push_back(new CMediaIndexer(CMediaIndexer::Kind::Video, properties));
  }
  for (int i = 0; i < reader_->GetAudioMediaCount(); ++i) {
    RObject<CAudioProperties> properties(reader_->GetAudioProperties(i));
    audio_.push_back(new CMediaIndexer(CMediaIndexer::Kind::Audio, properties));
  }
  for (int i = 0; i < reader_->GetSubtitleMediaCount(); ++i) {
    RObject<CSubtitleProperties> properties(reader_->GetSubtitleProperties(i));
    subtitle_.push_back(new CMediaIndexer(CMediaIndexer::Kind::Subtitle, properties));
  }
}

void CIndexer::StartDrains() {
  CContainerReader* reader = reader_;
  for (size_t i = 0; i < video_.size(); ++i) {
    drains_.emplace_back([reader, indexer = video_[i], track = static_cast<int>(i)] {
      Drain<CVideoSample>(indexer, [&](CVideoSample*& s) { return reader->ReadVideoSample(track, s); });
    });
  }
  for (size_t i = 0; i < audio_.size(); ++i) {
    drains_.emplace_back([reader, indexer = audio_[i], track = static_cast<int>(i)] {
      Drain<CAudioSample>(indexer, [&](CAudioSample*& s) { return reader->ReadAudioSample(track, s); });
    });
  }
  for (size_t i = 0; i < subtitle_.size(); ++i) {
    drains_.emplace_back([reader, indexer = subtitle_[i], track = static_cast<int>(i)] {
      Drain<CSubtitleSample>(indexer, [&](CSubtitleSample*& s) { return reader->ReadSubtitleSample(track, s); });
    });
  }
}

void CIndexer::JoinDrains() {
  for (std::thread& drain : drains_)
    if (drain.joinable()) drain.join();
  drains_.clear();
}

void CIndexer::ReleaseMediaIndexers() {
  for (auto* list : {&video_, &audio_, &subtitle_}) {
    for (CMediaIndexer* indexer : *list) indexer->Release();
    list->clear();
  }
}

Result CIndexer::Begin(bool threaded) {
  if (started_) return ResultFalse();
  if (!reader_) return ResultNullPointer();
  Result result = reader_->BeginIndex();
  if (result.Failed()) return result;
  started_ = true;
  CreateMediaIndexers();
  StartDrains();
  if (!threaded) JoinDrains();
  return Result();
}

Result CIndexer::End() {
  if (!started_) return ResultFalse();
  started_ = false;
  reader_->SetReady(false);
  JoinDrains();
  return reader_->EndIndex();
}

CMediaIndexer* CIndexer::GetVideoMediaIndexer(int track) const { return At(video_, track); }
CMediaIndexer* CIndexer::GetAudioMediaIndexer(int track) const { return At(audio_, track); }
CMediaIndexer* CIndexer::GetSubtitleMediaIndexer(int track) const { return At(subtitle_, track); }

bool CIndexer::IsComplete() const {
  for (const auto* list : {&video_, &audio_, &subtitle_})
    for (const CMediaIndexer* indexer : *list)
      if (!indexer->IsComplete()) return false;
  return true;
}

}  // namespace Corvane::Mox
