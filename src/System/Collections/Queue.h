#pragma once
// CQueue<T>: a bounded ring buffer of references that doubles its slot count
// on demand up to a maximum. Two counters drive it: "in" counts enqueues and
// "out" counts dequeues, so the element count is in - out and a counter c
// lives in slot |c % capacity| (truncating remainder, made non-negative by
// negation). Requeue steps "out" back; on a queue that has not dequeued yet
// that is slot 1, not the last slot. Callers requeue only an element they have
// just dequeued, where the arithmetic lands on the slot it came from.

#include <algorithm>

#include "System/Collections/Enumerator.h"

namespace Corvane::Mox {

template <class T>
class CQueueEnumerator;

template <class T>
class CQueue : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("qu<>");

  CQueue(int capacity, int maximumCapacity)
      : CObject(TypeCode),
        capacity_(std::max(capacity, 1)),
        maximumCapacity_(std::max(maximumCapacity, capacity_)),
        items_(new T*[capacity_]()),
        in_(0),
        out_(0) {}
  ~CQueue() override {
    Clear();
    delete[] items_;
  }

  int GetCount() const { return in_ - out_; }
  bool IsEmpty() const { return in_ == out_; }
  // Full at the current slot count (Enqueue may still grow).
  bool IsFull() const { return GetCount() == capacity_; }
  int GetCapacity() const { return capacity_; }
  int GetMaximumCapacity() const { return maximumCapacity_; }

  // Appends at the back; ResultArrayFull when the maximum capacity is in use.
  Result Enqueue(T* item) {
    GrowIfFull();
    if (GetCount() >= capacity_) return ResultArrayFull();
    Store(in_, item);
    ++in_;
    return Result();
  }

  // Puts an element back at the front.
  Result Requeue(T* item) {
    GrowIfFull();
    if (GetCount() >= capacity_) return ResultArrayFull();
    --out_;
    Store(out_, item);
    return Result();
  }

  // Removes the front element and hands over the queue's reference; null when empty.
  T* Dequeue() {
    if (IsEmpty()) return nullptr;
    T*& slot = items_[Slot(out_)];
    T* item = slot;
    slot = nullptr;
    ++out_;
    Rebase();
    return item;
  }

  // The element at position index from the front, acquired; null when out of range.
  T* Get(int index) const {
    if (index < 0 || index >= GetCount()) return nullptr;
    T* item = items_[Slot(out_ + index)];
    if (item) item->Acquire();
    return item;
  }
  T* Peek() const { return Get(0); }

  // Releases every element.
  void Clear() {
    while (!IsEmpty()) {
      T* item = Dequeue();
      if (item) item->Release();
    }
  }

  // Doubles the slot count (up to the maximum) when every slot is in use.
  Result Grow() {
    GrowIfFull();
    return Result();
  }

  Iterator<T> GetIterator() const { return Iterator<T>(new CQueueEnumerator<T>(this)); }
  Iterator<T> begin() const { return GetIterator(); }
  Iterator<T> end() const { return Iterator<T>(); }

 private:
  void GrowIfFull() {
    int count = GetCount();
    if (count < capacity_ || capacity_ >= maximumCapacity_) return;
    int capacity = static_cast<int>(std::min(static_cast<long long>(capacity_) * 2, static_cast<long long>(maximumCapacity_)));
    T** items = new T*[capacity]();
    // Copied in queue order to the front of the new ring.
    for (int i = 0; i < count; ++i) items[i] = items_[Slot(out_ + i)];
    delete[] items_;
    items_ = items;
    capacity_ = capacity;
    out_ = 0;
    in_ = count;
  }

  int Slot(int counter) const {
    int slot = counter % capacity_;
    return slot < 0 ? -slot : slot;
  }

  // Stores an acquired reference; an element the slot rule lands on is released
  // rather than leaked.
  void Store(int counter, T* item) {
    if (item) item->Acquire();
    T*& slot = items_[Slot(counter)];
    T* old = slot;
    slot = item;
    if (old) old->Release();
  }

  // Keeps the counters far from overflow. Shifting both by the capacity maps
  // every non-negative counter to the same slot; "out" stays at least 1 so
  // that a Requeue right after it still lands on the slot just dequeued.
  void Rebase() {
    if (out_ > capacity_) {
      out_ -= capacity_;
      in_ -= capacity_;
    }
  }

  int capacity_;
  int maximumCapacity_;
  T** items_;
  int in_;
  int out_;
};

// Walks a queue from front to back; holds one reference to the queue.
template <class T>
class CQueueEnumerator : public CEnumerator<T> {
 public:
  explicit CQueueEnumerator(const CQueue<T>* queue) : queue_(queue), index_(-1) { queue_->Acquire(); }
  ~CQueueEnumerator() override { queue_->Release(); }

  using CEnumerator<T>::GetCurrent;
  void Reset() override { index_ = -1; }
  bool MoveNext() override {
    if (index_ < queue_->GetCount()) ++index_;
    return index_ < queue_->GetCount();
  }
  T* GetCurrent() override { return queue_->Get(index_); }

 private:
  const CQueue<T>* queue_;
  int index_;
};

}  // namespace Corvane::Mox
