#include "System/Collections/Heap.h"
#include "System/Collections/PriorityQueue.h"

#include <algorithm>
#include <random>
#include <vector>

#include "System/Collections/Value.h"
#include "System/LeakCheckedTest.h"

using namespace Corvane::Mox;

namespace {

using Box = CValue<int>;
using HeapTest = LeakCheckedTest;
using PriorityQueueTest = LeakCheckedTest;

// Dequeues everything, returning the priorities in the order they came out.
template <class Queue>
std::vector<int> DrainPriorities(Queue* queue) {
  std::vector<int> order;
  while (!queue->IsEmpty()) {
    int priority = -1;
    RObject<CObject> item(queue->Dequeue(&priority));
    order.push_back(priority);
  }
  return order;
}

int LargerFirst(Box* a, Box* b) { return (a->GetValue() > b->GetValue()) - (a->GetValue() < b->GetValue()); }

TEST_F(HeapTest, RemovesLargestFirstAndGrowsFromOneSlot) {
  RObject<CHeap<Box>> heap(new CHeap<Box>(0, &LargerFirst));
  EXPECT_EQ(heap->GetCapacity(), 1);
  std::vector<int> values{4, 9, 1, 7, 7, 3, 8, 2, 6, 0};
  for (int v : values) {
    RObject<Box> box(new Box(v));
    ASSERT_EQ(heap->Add(box), ResultOK());
  }
  EXPECT_EQ(heap->GetCapacity(), 16);
  RObject<Box> top(heap->Peek());
  EXPECT_EQ(top->GetValue(), 9);
  EXPECT_EQ(top->GetReferences(), 2);
  std::vector<int> order;
  while (RObject<Box> box = heap->RemoveTop()) order.push_back(box->GetValue());
  std::sort(values.rbegin(), values.rend());
  EXPECT_EQ(order, values);
}

TEST_F(PriorityQueueTest, MinimumQueueReturnsLowestFirst) {
  RObject<CMinPriorityQueue<int, CObject>> queue(new CMinPriorityQueue<int, CObject>());
  RObject<CObject> item(new CObject());
  for (int p : {5, 1, 3}) queue->Enqueue(p, item);
  EXPECT_EQ(item->GetReferences(), 4);  // each wrapper holds the element once
  EXPECT_EQ(DrainPriorities(queue.Get()), (std::vector<int>{1, 3, 5}));
  EXPECT_EQ(item->GetReferences(), 1);
}

TEST_F(PriorityQueueTest, MaximumQueueReturnsHighestFirst) {
  RObject<CMaxPriorityQueue<int, CObject>> queue(new CMaxPriorityQueue<int, CObject>(1));
  RObject<CObject> item(new CObject());
  for (int p : {5, 1, 3, 9, -2}) queue->Enqueue(p, item);
  EXPECT_EQ(DrainPriorities(queue.Get()), (std::vector<int>{9, 5, 3, 1, -2}));
}

TEST_F(PriorityQueueTest, DequeueHandsOutTheElementAcquired) {
  RObject<CMinPriorityQueue<int, CObject>> queue(new CMinPriorityQueue<int, CObject>());
  int untouched = 42;
  EXPECT_EQ(queue->Dequeue(&untouched), nullptr);
  EXPECT_EQ(untouched, 42);
  RObject<CObject> a(new CObject()), b(new CObject());
  queue->Enqueue(2, a);
  queue->Enqueue(1, b);
  RObject<CObject> first(queue->Dequeue(nullptr));
  EXPECT_EQ(first.Get(), b.Get());
  EXPECT_EQ(b->GetReferences(), 2);
  queue.Clear();  // releases the remaining wrapper and its element
  EXPECT_EQ(a->GetReferences(), 1);
}

TEST_F(PriorityQueueTest, ManyRandomPrioritiesComeOutSorted) {
  RObject<CMinPriorityQueue<int, CObject>> queue(new CMinPriorityQueue<int, CObject>(2));
  std::mt19937 random(7);
  std::vector<int> priorities;
  for (int i = 0; i < 2000; ++i) priorities.push_back(static_cast<int>(random() % 500));
  for (int p : priorities) queue->Enqueue(p, nullptr);
  std::sort(priorities.begin(), priorities.end());
  EXPECT_EQ(DrainPriorities(queue.Get()), priorities);
}

TEST_F(PriorityQueueTest, ComparisonsOrderNullWrappers) {
  using Entry = CPriority<int, CObject>;
  RObject<Entry> low(new Entry(1, nullptr)), high(new Entry(2, nullptr));
  EXPECT_EQ(Entry::CompareMin(nullptr, nullptr), 0);
  EXPECT_EQ(Entry::CompareMin(nullptr, low), -1);
  EXPECT_EQ(Entry::CompareMin(low, nullptr), 1);
  EXPECT_EQ(Entry::CompareMin(low, high), 1);
  EXPECT_EQ(Entry::CompareMin(high, low), -1);
  EXPECT_EQ(Entry::CompareMin(low, low), 0);
  EXPECT_EQ(Entry::CompareMax(nullptr, nullptr), 0);
  EXPECT_EQ(Entry::CompareMax(nullptr, low), 1);
  EXPECT_EQ(Entry::CompareMax(low, nullptr), -1);
  EXPECT_EQ(Entry::CompareMax(high, low), 1);
  EXPECT_EQ(Entry::CompareMax(low, high), -1);
}

}  // namespace
