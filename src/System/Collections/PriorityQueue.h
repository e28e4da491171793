#pragma once
// CPriorityQueue<P,T>: a heap of (priority, element) pairs. CMinPriorityQueue
// hands out the lowest priority first, CMaxPriorityQueue the highest. Equal
// priorities come out in no particular order.

#include "System/Collections/Heap.h"

namespace Corvane::Mox {

// One queued element with its priority; holds one reference to the element.
template <class P, class T>
class CPriority : public CObject {
 public:
  CPriority(P priority, T* item) : priority_(priority), item_(item) {
    if (item_) item_->Acquire();
  }
  ~CPriority() override {
    if (item_) item_->Release();
  }

  P GetPriority() const { return priority_; }
  // The element, acquired.
  T* GetItem() const {
    if (item_) item_->Acquire();
    return item_;
  }

  // Lowest priority on top; a null wrapper sinks below any real one.
  static int CompareMin(CPriority* a, CPriority* b) {
    if (!a || !b) return a == b ? 0 : (a ? 1 : -1);
    if (a->priority_ < b->priority_) return 1;
    if (b->priority_ < a->priority_) return -1;
    return 0;
  }
  // Highest priority on top; a null wrapper rises above any real one.
  static int CompareMax(CPriority* a, CPriority* b) {
    if (!a || !b) return a == b ? 0 : (a ? -1 : 1);
    if (a->priority_ > b->priority_) return 1;
    if (b->priority_ > a->priority_) return -1;
    return 0;
  }

 private:
  template <class, class>
  friend class CPriorityQueue;

  P priority_;
  T* item_;
};

template <class P, class T>
class CPriorityQueue : public CHeap<CPriority<P, T>> {
 public:
  using Entry = CPriority<P, T>;

  CPriorityQueue(int capacity, typename CHeap<Entry>::Compare compare) : CHeap<Entry>(capacity, compare) {}

  Result Enqueue(P priority, T* item) {
    RObject<Entry> entry(new Entry(priority, item));
    return this->Add(entry);
  }

  // Removes the top element and returns it acquired, its priority through
  // priority when that is not null; null when empty.
  T* Dequeue(P* priority) {
    RObject<Entry> entry(this->RemoveTop());
    if (!entry) return nullptr;
    if (priority) *priority = entry->priority_;
    T* item = entry->item_;
    if (item) item->Acquire();
    return item;
  }
};

template <class P, class T>
class CMinPriorityQueue : public CPriorityQueue<P, T> {
 public:
  explicit CMinPriorityQueue(int capacity = 16) : CPriorityQueue<P, T>(capacity, &CPriority<P, T>::CompareMin) {}
};

template <class P, class T>
class CMaxPriorityQueue : public CPriorityQueue<P, T> {
 public:
  explicit CMaxPriorityQueue(int capacity = 16) : CPriorityQueue<P, T>(capacity, &CPriority<P, T>::CompareMax) {}
};

}  // namespace Corvane::Mox
