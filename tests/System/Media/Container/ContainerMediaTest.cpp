// Track queues between an index thread and a consumer: order, the end
// marker, and that stopping the container (SetReady(false)) or ending the
// index releases whoever is blocked. Waits are bounded by deadlines.
#include <gtest/gtest.h>

#include <chrono>
#include <future>

#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerMediaReader.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Video/VideoSample.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace std::chrono_literals;

namespace {

// A reader with one video track served from a queue the test fills.
class CQueueReader : public CContainerReader {
 public:
  CQueueReader() : CContainerReader(FourCC("tstq")), media_(new CContainerMediaReader(this)) {}
  ~CQueueReader() override { media_->Release(); }
  CContainerMediaReader* GetMedia() const { return media_; }
  int GetVideoMediaCount() const override { return 1; }
  bool IsVideoReady(int track) const override { return track == 0 && media_->IsReady(); }

 private:
  CContainerMediaReader* media_;
};

class ContainerMediaTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    reader_ = new CQueueReader();
  }
  void TearDown() override {
    reader_.Clear();
    LeakCheckedTest::TearDown();
  }
  CContainerMediaReader* Media() const { return reader_->GetMedia(); }
  static CVideoSample* Frame(int number) { return new CVideoSample(number, 1, 0); }

  RObject<CQueueReader> reader_;
};

TEST_F(ContainerMediaTest, SamplesComeOutInOrderAndTheEndMarkerDropsTheQueue) {
  Media()->BeginIndex();
  for (int i = 0; i < 3; ++i) {
    RObject<CVideoSample> frame(Frame(i));
    ASSERT_TRUE(Media()->EnqueueSample(frame).Succeeded());
  }
  ASSERT_TRUE(Media()->EnqueueSample(nullptr).Succeeded());
  for (int i = 0; i < 3; ++i) {
    RObject<CMediaSample> sample;
    ASSERT_TRUE(Media()->DequeueSample(sample.Out()).Succeeded());
    ASSERT_TRUE(sample);
    EXPECT_EQ(static_cast<CVideoSample*>(sample.Get())->GetFrameNumber(), i);
  }
  RObject<CMediaSample> end;
  EXPECT_TRUE(Media()->DequeueSample(end.Out()).Succeeded());
  EXPECT_FALSE(end);
  EXPECT_FALSE(Media()->HasQueue());
  // After the end every dequeue is null, and a late sample is refused.
  EXPECT_TRUE(Media()->DequeueSample(end.Out()).Succeeded());
  EXPECT_FALSE(end);
  RObject<CVideoSample> late(Frame(9));
  const Result refused = Media()->EnqueueSample(late);
  EXPECT_EQ(refused.GetResultCode(), ResultError().GetResultCode());
  EXPECT_STREQ(refused.GetDetails(), "end of stream");
  EXPECT_TRUE(Media()->EnqueueSample(nullptr).Succeeded());
}

TEST_F(ContainerMediaTest, ReadinessSaysWhetherAConsumerWouldBlock) {
  EXPECT_TRUE(Media()->IsReady());  // no queue: nothing to wait for
  Media()->BeginIndex();
  EXPECT_FALSE(Media()->IsReady());
  EXPECT_FALSE(reader_->WaitForMedia(0));
  RObject<CVideoSample> frame(Frame(0));
  Media()->EnqueueSample(frame);
  EXPECT_TRUE(Media()->IsReady());
  EXPECT_TRUE(reader_->WaitForMedia(0));
  RObject<CMediaSample> taken;
  Media()->DequeueSample(taken.Out());
  EXPECT_FALSE(Media()->IsReady());
  reader_->SetReady(false);
  EXPECT_TRUE(Media()->IsReady());  // a stopped reader never makes a consumer wait
}

TEST_F(ContainerMediaTest, StoppingReleasesAProducerBlockedOnAFullQueue) {
  reader_->SetProperty(ContainerProperty::Container::QueueSize, 1);
  Media()->BeginIndex();
  RObject<CVideoSample> first(Frame(0));
  ASSERT_TRUE(Media()->EnqueueSample(first).Succeeded());
  auto producer = std::async(std::launch::async, [this] {
    RObject<CVideoSample> second(Frame(1));
    return Media()->EnqueueSample(second).Succeeded();
  });
  EXPECT_EQ(producer.wait_for(50ms), std::future_status::timeout) << "a full queue must hold the producer";
  reader_->SetReady(false);
  ASSERT_EQ(producer.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(producer.get());
}

TEST_F(ContainerMediaTest, EndingTheIndexReleasesABlockedConsumer) {
  Media()->BeginIndex();
  auto consumer = std::async(std::launch::async, [this] {
    RObject<CMediaSample> sample;
    Result result = Media()->DequeueSample(sample.Out());
    return result.Succeeded() && !sample;
  });
  EXPECT_EQ(consumer.wait_for(50ms), std::future_status::timeout) << "an empty queue must hold the consumer";
  Media()->EndIndex();
  ASSERT_EQ(consumer.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(consumer.get());
}

TEST_F(ContainerMediaTest, AProducerAndAConsumerHandOverEverySample) {
  reader_->SetProperty(ContainerProperty::Container::QueueSize, 4);
  Media()->BeginIndex();
  constexpr int kCount = 2000;
  auto producer = std::async(std::launch::async, [this] {
    for (int i = 0; i < kCount; ++i) {
      RObject<CVideoSample> frame(Frame(i));
      if (Media()->EnqueueSample(frame).Failed()) return false;
    }
    return Media()->EnqueueSample(nullptr).Succeeded();
  });
  int expected = 0;
  for (;;) {
    ASSERT_TRUE(reader_->WaitForMedia(10000));
    RObject<CMediaSample> sample;
    ASSERT_TRUE(Media()->DequeueSample(sample.Out()).Succeeded());
    if (!sample) break;
    ASSERT_EQ(static_cast<CVideoSample*>(sample.Get())->GetFrameNumber(), expected++);
  }
  EXPECT_EQ(expected, kCount);
  ASSERT_EQ(producer.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(producer.get());
}

}  // namespace
