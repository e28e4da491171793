// The sample protocol of CMediaFilter: readiness, draining and end markers,
// queue limits, the Begin/End cycle and the scratch-buffer pools.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/Collections/Value.h"
#include "System/FourString.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/Filter/MediaFilterTrack.h"
#include "System/Threading/ThreadFunctor.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

using namespace Corvane::Mox;

namespace {

// Counts the hooks and gives itself one output per input when it begins.
class CProbeFilter : public CMediaFilter {
 public:
  CProbeFilter() : CMediaFilter(FourCC("prbf")) {}

  int drainedTrack = 0;
  int drainedAll = 0;
  int processed = 0;

  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("I420"));
    return formats;
  }

  using CMediaFilter::EnqueueInputSample;
  using CMediaFilter::EnqueueOutputSample;
  using CMediaFilter::DequeueInputSample;
  using CMediaFilter::DequeueOuputSample;

 protected:
  Result Initialize() override {
    for (int i = 0; i < GetInputMediaCount(); ++i) {
      RObject<CMediaProperties> input(GetInputMedia(i));
      AddOutputTrack(input);
    }
    return Result();
  }
  Result Drain(int) override {
    ++drainedTrack;
    return Result();
  }
  Result Drain(bool) override {
    ++drainedAll;
    return Result();
  }
  Result ProcessSample(int track, CMediaSample* sample) override {
    ++processed;
    EnqueueOutputSample(track, sample);
    return Result();
  }
};

CVideoProperties* Picture(const char* format) {
  auto* properties = new CVideoProperties();
  properties->SetFormat(FourString::ToFour(format));
  properties->SetWidth(16);
  properties->SetHeight(8);
  return properties;
}

std::string DetailsOf(const Result& result) { return result.GetDetails() ? result.GetDetails() : ""; }

template <class Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (const Result& result) {
    return DetailsOf(result);
  }
  return "(nothing thrown)";
}

class MediaFilterTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    filter_ = new CProbeFilter();
    media_ = Picture("I420");
  }
  void TearDown() override {
    filter_.Clear();
    media_.Clear();
    LeakCheckedTest::TearDown();
  }

  RObject<CProbeFilter> filter_;
  RObject<CVideoProperties> media_;
};

}  // namespace

TEST_F(MediaFilterTest, EvaluateScoresTheListedFormatsOnly) {
  EXPECT_EQ(filter_->Evaluate(media_), CMediaFilter::Acceptable);
  RObject<CVideoProperties> other(Picture("UYVY"));
  EXPECT_EQ(filter_->Evaluate(other), 0);
  EXPECT_EQ(filter_->Evaluate(nullptr), 0);
}

TEST_F(MediaFilterTest, SamplesAreRefusedBeforeBeginAndOnDrainingTracks) {
  ASSERT_TRUE(filter_->AddInputMedia(media_).Succeeded());
  RObject<CVideoSample> sample(new CVideoSample(0, 1001, 0));
  EXPECT_EQ(Thrown([&] { filter_->WriteSample(0, sample); }), "the filter is not ready. Begin has not been called");
  CMediaSample* read = nullptr;
  EXPECT_EQ(Thrown([&] { filter_->ReadSample(0, read); }), "the filter is not ready. Begin has not been called");
  ASSERT_TRUE(filter_->Begin().Succeeded());
  EXPECT_EQ(Thrown([&] { filter_->WriteSample(3, sample); }), "track index 3 out of range");
  filter_->WriteSample(0, nullptr);
  EXPECT_EQ(Thrown([&] { filter_->WriteSample(0, sample); }), "track 0 not accepting, currently draining");
  filter_->End();
}

TEST_F(MediaFilterTest, EndsOfInputsDrainOnceAndMarkEveryOutputAtTheLast) {
  filter_->AddInputMedia(media_);
  filter_->AddInputMedia(media_);
  ASSERT_TRUE(filter_->Begin().Succeeded());
  ASSERT_EQ(filter_->GetOutputMediaCount(), 2);

  filter_->WriteSample(0, nullptr);
  filter_->WriteSample(0, nullptr);
  EXPECT_EQ(filter_->drainedTrack, 1);
  EXPECT_EQ(filter_->drainedAll, 0);
  EXPECT_EQ(filter_->GetPendingOutputSampleCount(0), 0);
  EXPECT_FALSE(filter_->IsDraining());

  filter_->WriteSample(1, nullptr);
  EXPECT_EQ(filter_->drainedTrack, 2);
  EXPECT_EQ(filter_->drainedAll, 1);
  EXPECT_EQ(filter_->GetPendingOutputSampleCount(0), 1);
  EXPECT_EQ(filter_->GetPendingOutputSampleCount(1), 1);
  EXPECT_FALSE(filter_->IsEndOfStream());

  // The end markers read as nothing and end the outputs.
  for (int output = 0; output < 2; ++output) {
    CMediaSample* read = reinterpret_cast<CMediaSample*>(1);
    filter_->ReadSample(output, read);
    EXPECT_EQ(read, nullptr);
  }
  EXPECT_TRUE(filter_->IsEndOfStream());
  filter_->End();
}

TEST_F(MediaFilterTest, SamplesFlowFromInputToOutputInOrder) {
  filter_->AddInputMedia(media_);
  filter_->Begin();
  RObject<CVideoSample> first(new CVideoSample(1, 1001, 0));
  RObject<CVideoSample> second(new CVideoSample(2, 1001, 0));
  filter_->WriteSample(0, first);
  filter_->WriteSample(0, second);
  EXPECT_TRUE(filter_->IsOutputMediaReady(0));
  CMediaSample* read = nullptr;
  filter_->ReadSample(0, read);
  RObject<CMediaSample> a(read);
  filter_->ReadSample(0, read);
  RObject<CMediaSample> b(read);
  EXPECT_EQ(a.Get(), first.Get());
  EXPECT_EQ(b.Get(), second.Get());
  EXPECT_FALSE(filter_->IsOutputMediaReady(0));
  filter_->End();
}

TEST_F(MediaFilterTest, ATrackIsFullAboveThreeEntriesAndBlocksTheInputs) {
  RObject<CMediaFilterTrack> track(new CMediaFilterTrack(media_));
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  EXPECT_TRUE(track->IsMediaEmpty());
  for (int i = 0; i < 3; ++i) track->Enqueue(sample);
  EXPECT_FALSE(track->IsMediaFull());
  track->Enqueue(sample);
  EXPECT_TRUE(track->IsMediaFull());
  // A null entry marks the end: it counts, sets draining, and taking it out
  // of a draining track ends the track.
  track->Enqueue(nullptr);
  EXPECT_TRUE(track->IsDraining());
  EXPECT_EQ(track->GetPendingSampleCount(), 5);
  for (int i = 0; i < 4; ++i) RObject<CMediaSample> taken(track->Dequeue());
  EXPECT_FALSE(track->IsEndOfStream());
  EXPECT_EQ(track->Dequeue(), nullptr);
  EXPECT_TRUE(track->IsEndOfStream());
  track->Flush();
  EXPECT_FALSE(track->IsDraining());
  EXPECT_FALSE(track->IsEndOfStream());

  // Room is announced once per fill: when a queue that was full has drained
  // to the refill level, not at every entry taken.
  for (int i = 0; i < 5; ++i) track->Enqueue(sample);
  std::vector<bool> announced;
  for (int i = 0; i < 5; ++i) {
    bool roomMade = true;
    RObject<CMediaSample> taken(track->Dequeue(&roomMade));
    announced.push_back(roomMade);
  }
  EXPECT_EQ(announced, (std::vector<bool>{false, false, false, true, false}));
  track->Enqueue(sample);
  bool roomMade = true;
  RObject<CMediaSample> unfilled(track->Dequeue(&roomMade));
  EXPECT_FALSE(roomMade) << "a queue that never filled has nobody waiting for room";

  // A full output holds back every input.
  filter_->AddInputMedia(media_);
  filter_->Begin();
  EXPECT_TRUE(filter_->IsInputMediaReady(0));
  for (int i = 0; i < 4; ++i) filter_->WriteSample(0, sample);
  EXPECT_FALSE(filter_->IsInputMediaReady(0));
  EXPECT_FALSE(filter_->IsInputMediaReady(7));
  filter_->End();
}

TEST_F(MediaFilterTest, EndKeepsTheInputsAndDropsTheOutputs) {
  filter_->AddInputMedia(media_);
  EXPECT_TRUE(filter_->Begin().Succeeded());
  EXPECT_EQ(filter_->Begin(), ResultFalse());
  EXPECT_EQ(filter_->GetOutputMediaCount(), 1);
  EXPECT_TRUE(filter_->End().Succeeded());
  EXPECT_EQ(filter_->End(), ResultFalse());
  EXPECT_EQ(filter_->GetInputMediaCount(), 1);
  EXPECT_EQ(filter_->GetOutputMediaCount(), 0);
  // Begin again starts over with the same inputs.
  EXPECT_TRUE(filter_->Begin().Succeeded());
  EXPECT_EQ(filter_->GetOutputMediaCount(), 1);
  filter_->End();
}

TEST_F(MediaFilterTest, BadIndexesAnswerNothingWhileQueuePrimitivesThrow) {
  filter_->AddInputMedia(media_);
  EXPECT_EQ(filter_->GetInputMedia(-1), nullptr);
  EXPECT_EQ(filter_->GetOutputMedia(0), nullptr);
  EXPECT_EQ(filter_->GetInputFormat(2), 0u);
  EXPECT_EQ(filter_->GetInputFormat(0), FourCC("I420"));
  EXPECT_EQ(filter_->GetPendingInputSampleCount(9), 0);
  EXPECT_FALSE(filter_->IsOutputMediaReady(0));
  // The two messages differ in case and stop, and both are kept.
  EXPECT_EQ(Thrown([&] { filter_->EnqueueInputSample(4, nullptr); }), "track index 4 out of range");
  EXPECT_EQ(Thrown([&] { filter_->DequeueInputSample(4); }), "Track index 4 out of range.");
  EXPECT_EQ(Thrown([&] { filter_->DequeueOuputSample(0); }), "Track index 0 out of range.");
}

TEST_F(MediaFilterTest, IntermediateBuffersComeFromPowerOfTwoPools) {
  EXPECT_EQ(CMediaFilter::GetIntermediateCapacity(1), 256);
  EXPECT_EQ(CMediaFilter::GetIntermediateCapacity(255), 256);
  EXPECT_EQ(CMediaFilter::GetIntermediateCapacity(256), 512);
  EXPECT_EQ(CMediaFilter::GetIntermediateCapacity(1000), 1024);
  RObject<CByteArray> buffer(filter_->CreateIntermediateBuffer(256));
  ASSERT_TRUE(buffer);
  EXPECT_EQ(buffer->GetCapacity(), 512);
  CByteArray* none = nullptr;
  EXPECT_TRUE(filter_->CreateIntermediateBuffer(0, none).Failed());
  EXPECT_EQ(none, nullptr);
  EXPECT_NE(Thrown([&] { RObject<CByteArray> bad(filter_->CreateIntermediateBuffer(-5)); }), "(nothing thrown)");
}

// Both sides wait without polling: every wait must end by an announcement,
// so a lost wake-up shows as a wait that runs out its five seconds.
TEST_F(MediaFilterTest, WaitsForRoomAndForSamplesAreEndedByAnnouncementsNotTimeouts) {
  filter_->AddInputMedia(media_);
  ASSERT_TRUE(filter_->Begin().Succeeded());
  constexpr int kSamples = 500;
  constexpr int kPatience = 5000;
  std::atomic<int> producerTimeouts{0};
  RObject<CThreadFunctor<std::function<Result()>>> producer(new CThreadFunctor<std::function<Result()>>([&] {
    for (int i = 0; i < kSamples && producerTimeouts.load() == 0; ++i) {
      while (!filter_->IsInputMediaReady(0)) {
        if (filter_->WaitForInputMedia(kPatience)) continue;
        ++producerTimeouts;  // writes anyway, then ends: a stuck consumer must not hang the test
        break;
      }
      RObject<CVideoSample> sample(new CVideoSample(i, 1001, 0));
      filter_->WriteSample(0, sample);
    }
    filter_->WriteSample(0, nullptr);
    return Result();
  }));
  ASSERT_TRUE(producer->Start().Succeeded());
  int consumerTimeouts = 0, taken = 0;
  while (!filter_->IsEndOfStream() && consumerTimeouts == 0) {
    if (!filter_->WaitForOutputMedia(kPatience)) {
      ++consumerTimeouts;
      continue;
    }
    CMediaSample* read = nullptr;
    filter_->ReadSample(0, read);
    RObject<CMediaSample> sample(read);
    if (sample) ++taken;
  }
  ASSERT_TRUE(producer->Join().Succeeded());
  EXPECT_EQ(producerTimeouts.load(), 0);
  EXPECT_EQ(consumerTimeouts, 0);
  EXPECT_EQ(taken, kSamples);
  filter_->End();
}

TEST_F(MediaFilterTest, AProducerAndAConsumerOnTwoThreadsMeetThroughTheQueues) {
  filter_->AddInputMedia(media_);
  ASSERT_TRUE(filter_->Begin().Succeeded());
  constexpr int kSamples = 64;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  auto late = [&] { return std::chrono::steady_clock::now() > deadline; };
  // The producer waits while the short queues are full, as a workflow does.
  RObject<CThreadFunctor<std::function<Result()>>> producer(new CThreadFunctor<std::function<Result()>>([&] {
    for (int i = 0; i < kSamples && !late(); ++i) {
      while (!filter_->IsInputMediaReady(0) && !late()) filter_->WaitForInputMedia(50);
      RObject<CVideoSample> sample(new CVideoSample(i, 1001, 0));
      filter_->WriteSample(0, sample);
    }
    filter_->WriteSample(0, nullptr);
    return Result();
  }));
  ASSERT_TRUE(producer->Start().Succeeded());
  std::vector<int> frames;
  while (!filter_->IsEndOfStream() && !late()) {
    if (!filter_->WaitForOutputMedia(50)) continue;
    CMediaSample* read = nullptr;
    filter_->ReadSample(0, read);
    RObject<CMediaSample> sample(read);
    if (sample) frames.push_back(static_cast<CVideoSample*>(sample.Get())->GetFrameNumber());
  }
  ASSERT_TRUE(producer->Join().Succeeded());
  EXPECT_FALSE(late()) << "the exchange did not finish in time";
  ASSERT_EQ(frames.size(), static_cast<size_t>(kSamples));
  for (int i = 0; i < kSamples; ++i) EXPECT_EQ(frames[static_cast<size_t>(i)], i);
  filter_->End();
}
