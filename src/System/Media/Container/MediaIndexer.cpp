#include "System/Media/Container/MediaIndexer.h"

#include <chrono>

#include "System/Media/Audio/AudioSample.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

CMediaIndexer::CMediaIndexer(Kind kind, CMediaProperties* properties)
    : CObject(TypeCode), kind_(kind), properties_(properties), complete_(false), changes_(0) {
  if (properties_) properties_->Acquire();
}

CMediaIndexer::~CMediaIndexer() {
  if (properties_) properties_->Release();
}

CMediaProperties* CMediaIndexer::GetProperties() const {
  if (properties_) properties_->Acquire();
  return properties_;
}

void CMediaIndexer::Add(const CMediaSample* sample) {
  if (!sample) return;
  Entry entry{};
  entry.time = sample->GetTime();
  entry.duration = sample->GetDuration();
  entry.hint = sample->GetHint();
  // A reader's "read" reference first; a plain storage reference otherwise.
  RObject<CDataReference> reference(sample->GetDataReference(CContainerDataReference::TypeCode));
  entry.referenceTag = CContainerDataReference::TypeCode;
  if (!reference) {
    reference = sample->GetDataReference(CStorageDataReference::TypeCode);
    entry.referenceTag = CStorageDataReference::TypeCode;
  }
  if (reference) {
    auto* stored = static_cast<CStorageDataReference*>(reference.Get());
    entry.position = stored->GetPosition();
    entry.length = stored->GetLength();
  } else {
    entry.referenceTag = 0;
  }
  if (kind_ == Kind::Video) {
    auto* video = static_cast<const CVideoSample*>(sample);
    entry.frameNumber = video->GetFrameNumber();
    entry.compositionOffset = video->GetCompositionOffset();
    entry.pictureType = static_cast<short>(video->GetPictureType());
    entry.pictureStructure = static_cast<short>(video->GetPictureStructure());
  }
  {
    std::lock_guard<std::mutex> lock(mutex_);
    entries_.push_back(entry);
    ++changes_;
  }
  changed_.notify_all();
}

void CMediaIndexer::Complete(const Result& result) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    complete_ = true;
    result_ = result;
    ++changes_;
  }
  changed_.notify_all();
}

int CMediaIndexer::GetSampleCount() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return static_cast<int>(entries_.size());
}

bool CMediaIndexer::IsComplete() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return complete_;
}

Result CMediaIndexer::GetResult() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return result_;
}

CMediaSample* CMediaIndexer::GetSample(int index) const {
  Entry entry;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (index < 0 || index >= static_cast<int>(entries_.size())) return nullptr;
    entry = entries_[index];
  }
  RObject<CMediaSample> sample;
  if (kind_ == Kind::Video) {
    auto* video = new CVideoSample(entry.frameNumber, entry.duration, entry.pictureType);
    video->SetCompositionOffset(entry.compositionOffset);
    video->SetPictureStructure(entry.pictureStructure);
    sample = video;
  } else if (kind_ == Kind::Audio) {
    sample = new CAudioSample(entry.duration);
  } else {
    sample = new CSubtitleSample(entry.duration);
  }
  sample->SetTime(entry.time);
  sample->SetHint(entry.hint);
  if (entry.referenceTag == CContainerDataReference::TypeCode) {
    RObject<CContainerDataReference> reference(
        new CContainerDataReference(CContainerDataReference::TypeCode, entry.position, entry.length));
    sample->SetDataReference(reference);
  } else if (entry.referenceTag != 0) {
    RObject<CStorageDataReference> reference(new CStorageDataReference(entry.position, entry.length));
    sample->SetDataReference(reference);
  }
  return sample.Detach();
}

bool CMediaIndexer::WaitForSample(int milliseconds) const {
  std::unique_lock<std::mutex> lock(mutex_);
  if (complete_) return true;
  const unsigned long long seen = changes_;
  return changed_.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] { return changes_ != seen; });
}

bool CMediaIndexer::WaitForSample(int index, int milliseconds) const {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_for(lock, std::chrono::milliseconds(milliseconds),
                    [&] { return complete_ || index < static_cast<int>(entries_.size()); });
  return index >= 0 && index < static_cast<int>(entries_.size());
}

}  // namespace Corvane::Mox
