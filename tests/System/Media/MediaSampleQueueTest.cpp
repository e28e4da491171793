// The sample queue's bound and its time and duration accounting.
#include <gtest/gtest.h>

#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/MediaSampleQueue.h"

using namespace Corvane::Mox;

namespace {

class MediaSampleQueueTest : public LeakCheckedTest {};

TEST_F(MediaSampleQueueTest, AFullQueueRefusesButCountsTheDuration) {
  RObject<CMediaSampleQueue> queue(new CMediaSampleQueue(2));
  RObject<CAudioSample> a(new CAudioSample(10LL)), b(new CAudioSample(20LL)), c(new CAudioSample(30LL));
  EXPECT_TRUE(queue->Enqueue(a.Get()).Succeeded());
  EXPECT_TRUE(queue->Enqueue(b.Get()).Succeeded());
  EXPECT_TRUE(queue->IsFull());
  EXPECT_EQ(queue->Enqueue(c.Get()).GetType(), ResultArrayFull().GetType());
  EXPECT_EQ(queue->GetCount(), 2);
  EXPECT_EQ(queue->GetCapacity(), 2);
  // The refused sample was still added to the duration.
  EXPECT_EQ(queue->GetDuration(), 60);
}

TEST_F(MediaSampleQueueTest, DequeueAdvancesTheTimeAndRequeueStepsBack) {
  RObject<CMediaSampleQueue> queue(new CMediaSampleQueue(4));
  queue->SetTime(100);
  RObject<CAudioSample> a(new CAudioSample(10LL)), b(new CAudioSample(20LL));
  queue->Enqueue(a.Get());
  queue->Enqueue(b.Get());
  RObject<CMediaSample> peeked(queue->Peek());
  EXPECT_EQ(peeked.Get(), a.Get());
  EXPECT_EQ(queue->GetCount(), 2);
  RObject<CAudioSample> front(queue->Dequeue<CAudioSample>());
  EXPECT_EQ(front.Get(), a.Get());
  EXPECT_EQ(queue->GetTime(), 110);
  EXPECT_EQ(queue->GetDuration(), 20);
  EXPECT_TRUE(queue->Requeue(front.Get()).Succeeded());
  EXPECT_EQ(queue->GetTime(), 100);
  EXPECT_EQ(queue->GetDuration(), 30);
  RObject<CMediaSample> again(queue->Dequeue());
  EXPECT_EQ(again.Get(), a.Get());
  queue->Clear();
  EXPECT_TRUE(queue->IsEmpty());
  EXPECT_EQ(queue->GetTime(), 0);
  EXPECT_EQ(queue->GetDuration(), 0);
  EXPECT_EQ(queue->Dequeue(), nullptr);
  EXPECT_EQ(queue->Peek(), nullptr);
}

}  // namespace
