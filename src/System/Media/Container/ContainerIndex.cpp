#include "System/Media/Container/ContainerIndex.h"

#include "System/IO/BinaryWriter.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/MediaSample.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Media/StorageDataReference.h"

namespace Corvane::Mox {

CContainerIndex::CContainerIndex() : CObject(TypeCode), file_(nullptr), open_(false) {}

CContainerIndex::~CContainerIndex() {
  End();
  for (auto& kind : slots_)
    for (Slot& slot : kind)
      for (CMediaSample* sample : slot.pending) sample->Release();
}

Result CContainerIndex::Save(CString* path) {
  if (!path) return ResultArgumentNull();
  std::lock_guard<std::mutex> lock(mutex_);
  if (open_) return ResultInvalidOperation("the index is already saving");
  Result result = CFileDescriptorStream::Open(path, FileMode::Write, file_);
  if (result.Failed()) return result;
  open_ = true;
  writer_ = std::thread([this] { WriterLoop(); });
  return Result();
}

Result CContainerIndex::Append(Kind kind, int track, CMediaSample* sample, CStorageDataReference* reference) {
  if (!sample) return ResultArgumentNull();
  if (track < 0 || track >= SlotCount) return ResultIndexOutOfRange();
  RObject<CMediaSample> copy(CMediaSample::Clone(sample));
  if (!copy) return ResultNotSupported("sample cannot be copied");
  Result result = copy->SetDataReference(reference);
  if (result.Failed()) return result;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    Slot& slot = slots_[kind][track];
    slot.pending.push_back(copy.Detach());
    slot.duration += sample->GetDuration();
  }
  wake_.notify_all();
  return Result();
}

Result CContainerIndex::WriteVideoSample(int track, CVideoSample* sample, CStorageDataReference* reference) {
  return Append(Video, track, sample, reference);
}
Result CContainerIndex::WriteAudioSample(int track, CAudioSample* sample, CStorageDataReference* reference) {
  return Append(Audio, track, sample, reference);
}
Result CContainerIndex::WriteSubtitleSample(int track, CSubtitleSample* sample, CStorageDataReference* reference) {
  return Append(Subtitle, track, sample, reference);
}

bool CContainerIndex::WritePass() {
  RObject<CBinaryWriter> writer(new CBinaryWriter(file_, CBinary::LittleEndian));
  bool wrote = false;
  for (auto& kind : slots_) {
    for (int i = 0; i < SlotCount; ++i) {
      Slot& slot = kind[i];
      if (slot.pending.empty()) continue;
      RObject<CMediaSample> sample(slot.pending.front());
      slot.pending.pop_front();
      writer->WriteInt32(i);
      sample->Write(writer, 0);
      wrote = true;
    }
  }
  return wrote;
}

void CContainerIndex::WriterLoop() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (open_) {
    if (!WritePass()) wake_.wait(lock);
  }
  while (WritePass()) {
  }
}

Result CContainerIndex::Flush() {
  std::lock_guard<std::mutex> lock(mutex_);
  return file_ ? file_->Flush() : ResultFalse();
}

Result CContainerIndex::End() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!open_) return ResultFalse();
    open_ = false;
  }
  wake_.notify_all();
  if (writer_.joinable()) writer_.join();
  std::lock_guard<std::mutex> lock(mutex_);
  Result result = file_->Flush();
  file_->Close();
  file_->Release();
  file_ = nullptr;
  return result;
}

long long CContainerIndex::GetVideoDuration(int track) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return track >= 0 && track < SlotCount ? slots_[Video][track].duration : 0;
}

long long CContainerIndex::GetAudioDuration(int track) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return track >= 0 && track < SlotCount ? slots_[Audio][track].duration : 0;
}

}  // namespace Corvane::Mox
