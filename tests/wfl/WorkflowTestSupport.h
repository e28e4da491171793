#pragma once
// Components for workflow runs made by tests and benchmarks: readers that
// count out one-frame samples (or never end), pass-through and failing
// filters, and writers that record the times they receive.

#include <atomic>
#include <mutex>
#include <vector>

#include "System/Collections/List.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/Converters.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "wfl/ReaderTopologyNode.h"

namespace WorkflowTestSupport {

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

constexpr unsigned int I420 = FourCC("I420");
constexpr long long TimeScale = 25;

inline CVideoProperties* MakePicture(long long frames) {
  auto* properties = new CVideoProperties();
  properties->SetFormat(I420);
  properties->SetWidth(64);
  properties->SetHeight(48);
  properties->SetTimeScale(TimeScale);
  properties->SetDuration(frames);
  return properties;
}

// A reader node whose outputs each count out `samples` one-frame samples
// (or never end), recording how often each output was read.
class CCountingReaderNode : public CReaderTopologyNode {
 public:
  CCountingReaderNode(int outputs, int samples, bool endless = false)
      : CReaderTopologyNode(nullptr), samples_(samples), endless_(endless), reads_(outputs) {
    for (auto& reads : reads_) reads = 0;
  }
  ~CCountingReaderNode() override { End(); }
  int GetOutputMediaCount() override { return static_cast<int>(reads_.size()); }
  CMediaProperties* GetOutputMedia(int output) override {
    return output >= 0 && output < GetOutputMediaCount() ? MakePicture(samples_) : nullptr;
  }
  int GetOutputIndex(unsigned int, int index) override { return index; }
  CMediaSample* ReadSampleData(int output) override {
    const int n = reads_[output]++;
    if (n >= samples_ && !endless_) return nullptr;
    auto* sample = new CVideoSample(n, 1, 0);
    sample->SetTime(n);
    RObject<CBufferDataReference> bytes(new CBufferDataReference(16));
    sample->SetDataReference(bytes);
    return sample;
  }
  int GetReads(int output) const { return reads_[output].load(); }

 private:
  int samples_;
  bool endless_;
  std::vector<std::atomic<int>> reads_;
};

// A writer that records the times of the samples of each video track.
class CRecordingWriter : public CContainerWriter {
 public:
  CRecordingWriter() : CContainerWriter(FourCC("rcwr")) {}
  const char* GetDefaultExtension() const override { return "rec"; }
  int GetVideoMediaCount() const override { return static_cast<int>(tracks.size()); }
  Result AddVideoMedia(CVideoProperties*) override {
    tracks.emplace_back();
    return ResultOK();
  }
  Result WriteVideoSample(int track, CVideoSample* sample) override {
    if (sample) {
      std::lock_guard<std::mutex> guard(lock);
      tracks.at(track).push_back(sample->GetTime());
    }
    return ResultOK();
  }
  Result BeginIndex() override {
    ++begun;
    return ResultOK();
  }
  Result EndIndex() override {
    ++ended;
    return ResultOK();
  }
  std::vector<long long> Track(int track) {
    std::lock_guard<std::mutex> guard(lock);
    return tracks.at(track);
  }

  std::mutex lock;
  std::vector<std::vector<long long>> tracks;
  std::atomic<int> begun{0}, ended{0};
};

// Passes I420 pictures on; when failAt > 0, the failAt-th sample fails.
class CPassFilter : public CVideoConverter {
 public:
  explicit CPassFilter(int failAt = 0) : CVideoConverter(FourCC("pass")), failAt_(failAt) {}
  CFormatList* GetInputFormats() const override { return Formats(); }
  CFormatList* GetOutputFormats() const override { return Formats(); }
  Result Convert(CVideoSample* sample, CVideoSample*& converted) override {
    if (failAt_ > 0 && ++seen_ == failAt_) throw ResultIOError("sample %d could not be converted", failAt_);
    return CVideoConverter::Convert(sample, converted);
  }

 private:
  static CFormatList* Formats() {
    auto* formats = new CFormatList();
    formats->AddValue(I420);
    return formats;
  }
  int failAt_;
  int seen_ = 0;
};

}  // namespace WorkflowTestSupport
