#include "System/Collections/Queue.h"
#include "System/Collections/Stack.h"

#include <deque>
#include <vector>

#include "System/LeakCheckedTest.h"

using namespace Corvane::Mox;

namespace {

class QueueTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    for (int i = 0; i < 10; ++i) items.emplace_back(new CObject());
  }
  void TearDown() override {
    items.clear();
    LeakCheckedTest::TearDown();
  }
  // Indexes of the dequeued elements (-1 for null) until the queue is empty.
  std::vector<int> Drain(CQueue<CObject>* queue, int steps) {
    std::vector<int> order;
    for (int i = 0; i < steps; ++i) {
      RObject<CObject> item(queue->Dequeue());
      int index = -1;
      for (int j = 0; j < static_cast<int>(items.size()); ++j)
        if (items[j].Get() == item.Get()) index = j;
      order.push_back(index);
    }
    return order;
  }

  std::vector<RObject<CObject>> items;
};

using StackTest = QueueTest;

TEST_F(QueueTest, GrowsToTheMaximumThenRefusesKeepingOrder) {
  RObject<CQueue<CObject>> queue(new CQueue<CObject>(2, 8));
  EXPECT_TRUE(queue->IsType(FourCC("qu<>")));
  std::vector<int> capacities;
  for (int i = 0; i < 8; ++i) {
    ASSERT_EQ(queue->Enqueue(items[i]), ResultOK());
    if (capacities.empty() || capacities.back() != queue->GetCapacity()) capacities.push_back(queue->GetCapacity());
  }
  EXPECT_EQ(capacities, (std::vector<int>{2, 4, 8}));
  EXPECT_TRUE(queue->IsFull());
  EXPECT_EQ(queue->Enqueue(items[8]), ResultArrayFull());
  EXPECT_EQ(items[8]->GetReferences(), 1);
  EXPECT_EQ(queue->GetCount(), 8);
  EXPECT_EQ(Drain(queue, 9), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, -1}));
  EXPECT_TRUE(queue->IsEmpty());
}

TEST_F(QueueTest, GrowingAWrappedRingKeepsQueueOrder) {
  RObject<CQueue<CObject>> queue(new CQueue<CObject>(3, 6));
  for (int i = 0; i < 3; ++i) queue->Enqueue(items[i]);
  EXPECT_EQ(Drain(queue, 2), (std::vector<int>{0, 1}));
  for (int i = 3; i < 7; ++i) queue->Enqueue(items[i]);  // wraps, then grows
  EXPECT_EQ(queue->GetCapacity(), 6);
  RObject<CObject> second(queue->Get(1));
  EXPECT_EQ(second.Get(), items[3].Get());
  EXPECT_EQ(queue->Get(5), nullptr);
  std::vector<CObject*> seen;
  for (CObject* item : *queue) seen.push_back(item);
  EXPECT_EQ(seen, (std::vector<CObject*>{items[2], items[3], items[4], items[5], items[6]}));
  second.Clear();
  EXPECT_EQ(Drain(queue, 5), (std::vector<int>{2, 3, 4, 5, 6}));
}

TEST_F(QueueTest, RequeueOfAJustDequeuedElementPutsItBackInFront) {
  RObject<CQueue<CObject>> queue(new CQueue<CObject>(4, 4));
  for (int i = 0; i < 3; ++i) queue->Enqueue(items[i]);
  RObject<CObject> front(queue->Dequeue());
  EXPECT_EQ(queue->Requeue(front), ResultOK());
  front.Clear();
  EXPECT_EQ(items[0]->GetReferences(), 2);
  queue->Enqueue(items[3]);
  EXPECT_EQ(queue->Requeue(items[4]), ResultArrayFull());
  EXPECT_EQ(Drain(queue, 4), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(QueueTest, RequeueBeforeAnyDequeueUsesSlotOne) {
  // The out-counter goes to -1, whose slot is |-1 % 4| = 1, not 3: the two
  // enqueues that follow write slots 0 and 1, the second over the requeued
  // element. The overwritten reference is released, not leaked.
  RObject<CQueue<CObject>> queue(new CQueue<CObject>(4, 4));
  EXPECT_EQ(queue->Requeue(items[0]), ResultOK());
  queue->Enqueue(items[1]);
  queue->Enqueue(items[2]);
  EXPECT_EQ(items[0]->GetReferences(), 1);
  EXPECT_EQ(queue->GetCount(), 3);
  EXPECT_EQ(Drain(queue, 3), (std::vector<int>{2, 1, -1}));
}

TEST_F(QueueTest, LongRunsKeepOrderAndClearReleases) {
  // Thousands of wraps of a small ring, with requeues mixed in, checked
  // against a model of the expected order.
  RObject<CQueue<CObject>> queue(new CQueue<CObject>(3, 3));
  std::deque<int> model;
  int mismatches = 0;
  for (int round = 0; round < 5000; ++round) {
    ASSERT_EQ(queue->Enqueue(items[round % 10]), ResultOK());
    model.push_back(round % 10);
    if (model.size() < 3) continue;
    RObject<CObject> item(queue->Dequeue());
    if (round % 7 == 0) {
      ASSERT_EQ(queue->Requeue(item), ResultOK());
      item = queue->Dequeue();
    }
    if (item.Get() != items[model.front()].Get()) ++mismatches;
    model.pop_front();
  }
  EXPECT_EQ(mismatches, 0);
  EXPECT_EQ(queue->GetCount(), static_cast<int>(model.size()));
  queue->Clear();
  EXPECT_TRUE(queue->IsEmpty());
  for (auto& item : items) EXPECT_EQ(item->GetReferences(), 1);
}

TEST_F(StackTest, LastInFirstOutWithGrowth) {
  RObject<CStack<CObject>> stack(new CStack<CObject>());
  EXPECT_TRUE(stack->IsType(FourCC("st<>")));
  EXPECT_EQ(stack->GetCapacity(), 30);
  EXPECT_EQ(stack->Pop(), nullptr);
  EXPECT_EQ(stack->Peek(), nullptr);
  for (int i = 0; i < 31; ++i) stack->Push(items[i % 10]);
  EXPECT_EQ(stack->GetCapacity(), 61);
  EXPECT_EQ(stack->GetCount(), 31);
  RObject<CObject> top(stack->Peek());
  EXPECT_EQ(top.Get(), items[0].Get());
  EXPECT_EQ(stack->GetCount(), 31);
  RObject<CObject> popped(stack->Pop()), next(stack->Pop());
  EXPECT_EQ(popped.Get(), items[0].Get());
  EXPECT_EQ(next.Get(), items[9].Get());
  EXPECT_EQ(items[0]->GetReferences(), 1 + 2 + 3);  // holder, top and popped, three still stacked
  stack.Clear();
  top.Clear();
  popped.Clear();
  EXPECT_EQ(items[0]->GetReferences(), 1);
}

}  // namespace
