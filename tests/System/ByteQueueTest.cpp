#include "System/ByteQueue.h"

#include <cstring>
#include <string>

#include "System/LeakCheckedTest.h"

using namespace Corvane::Mox;

namespace {

class ByteQueueTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    queue = new CByteQueue();
    first = new CByteArray(reinterpret_cast<const unsigned char*>("abc"), 3);
    second = new CByteArray(reinterpret_cast<const unsigned char*>("defg"), 4);
  }
  void TearDown() override {
    queue.Clear();
    first.Clear();
    second.Clear();
    LeakCheckedTest::TearDown();
  }
  static std::string Text(CByteArray* array) {
    return std::string(reinterpret_cast<const char*>(array->GetData()), static_cast<std::size_t>(array->GetLength()));
  }
  // The details text of the Result thrown by Dequeue(count), or "" when none.
  std::string FailureOf(int count) {
    try {
      RObject<CByteArray> bytes(queue->Dequeue(count));
    } catch (const Result& result) {
      return result.GetDetails() ? result.GetDetails() : "?";
    }
    return "";
  }

  RObject<CByteQueue> queue;
  RObject<CByteArray> first;
  RObject<CByteArray> second;
};

TEST_F(ByteQueueTest, ViewsWithinABufferCopiesAcrossThenRefuses) {
  queue->Enqueue(first);
  queue->Enqueue(second);
  EXPECT_EQ(queue->GetLength(), 7);
  RObject<CByteArray> view(queue->Dequeue(2));
  EXPECT_EQ(view->GetData(), first->GetData());  // no copy
  EXPECT_EQ(Text(view), "ab");
  RObject<CByteArray> across(queue->Dequeue(3));
  EXPECT_EQ(Text(across), "cde");
  EXPECT_NE(across->GetData(), second->GetData());
  EXPECT_EQ(queue->GetLength(), 2);
  EXPECT_EQ(FailureOf(3), "not enough bytes in queue");
  EXPECT_EQ(queue->GetLength(), 2);
  RObject<CByteArray> rest(queue->Dequeue(2));
  EXPECT_EQ(rest->GetData(), second->GetData() + 2);
  EXPECT_EQ(Text(rest), "fg");
  EXPECT_TRUE(queue->IsEmpty());
}

TEST_F(ByteQueueTest, ViewsKeepTheirBufferAlive) {
  queue->Enqueue(first);
  CByteArray* raw = first.Detach();
  raw->Release();  // the queue holds the only reference
  RObject<CByteArray> view(queue->Dequeue(3));
  queue->Clear();
  EXPECT_EQ(raw->GetReferences(), 1);  // held by the view alone
  EXPECT_EQ(Text(view), "abc");
}

TEST_F(ByteQueueTest, AUsedUpBufferGivesWayToTheNextOne) {
  queue->Enqueue(first);
  queue->Enqueue(second);
  RObject<CByteArray> whole(queue->Dequeue(3));
  RObject<CByteArray> next(queue->Dequeue(4));
  EXPECT_EQ(next->GetData(), second->GetData());
}

TEST_F(ByteQueueTest, EmptyQueueFailures) {
  EXPECT_EQ(FailureOf(1), "no more data in queue");
  CByteArray* out = first;
  Result result = queue->Dequeue(1, out);
  EXPECT_TRUE(result.Failed());
  EXPECT_EQ(result, ResultError());
  EXPECT_EQ(out, nullptr);
  queue->Enqueue(first);
  RObject<CByteArray> all(queue->Dequeue(3));
  EXPECT_EQ(FailureOf(1), "not enough bytes in queue");
  EXPECT_EQ(queue->Dequeue(0, out), ResultOK());
  EXPECT_EQ(out->GetLength(), 0);
  out->Release();
}

TEST_F(ByteQueueTest, EnqueueFormsAndTheirRefusals) {
  EXPECT_THROW(queue->Enqueue(static_cast<CByteArray*>(nullptr)), ResultArgumentNull);
  EXPECT_THROW(queue->Enqueue(static_cast<CByteArray*>(nullptr), 1), ResultArgumentNull);
  EXPECT_THROW(queue->Enqueue(static_cast<unsigned char*>(nullptr), 1), ResultArgumentNull);
  EXPECT_THROW(queue->Enqueue(first, 4), ResultBufferTooSmall);
  queue->Enqueue(first, 2);  // a view of "ab"
  EXPECT_EQ(first->GetReferences(), 2);
  unsigned char bytes[] = {'x', 'y'};
  queue->Enqueue(bytes, 2);  // a copy
  bytes[0] = 'z';
  EXPECT_EQ(queue->GetLength(), 4);
  CByteArray* everything = nullptr;
  EXPECT_EQ(queue->Dequeue(everything), ResultOK());
  EXPECT_EQ(Text(everything), "abxy");
  everything->Release();
  EXPECT_TRUE(queue->IsEmpty());
  EXPECT_EQ(first->GetReferences(), 1);
}

TEST_F(ByteQueueTest, DequeueAllStartsWithTheUnconsumedHead) {
  queue->Enqueue(first);
  queue->Enqueue(second);
  RObject<CByteArray> one(queue->Dequeue(1));
  RObject<CByteArray> rest(queue->Dequeue());
  EXPECT_EQ(Text(rest), "bcdefg");
  EXPECT_EQ(queue->GetLength(), 0);
  EXPECT_EQ(second->GetReferences(), 1);
  EXPECT_EQ(FailureOf(1), "no more data in queue");
}

TEST_F(ByteQueueTest, ClearReleasesEverything) {
  queue->Enqueue(first);
  queue->Enqueue(second);
  RObject<CByteArray> part(queue->Dequeue(1));
  queue->Clear();
  EXPECT_EQ(queue->GetLength(), 0);
  EXPECT_EQ(second->GetReferences(), 1);
  EXPECT_EQ(first->GetReferences(), 2);  // ours and the view's
}

}  // namespace
