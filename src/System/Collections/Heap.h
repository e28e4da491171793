#pragma once
// CHeap<T>: a binary heap of references ordered by a comparison function that
// returns a positive value when its first argument belongs above the second.
// Node i has the children 2i and 2i + 1, so the root (node 0) has itself and
// node 1 below it. Equal elements are never swapped: equal keys come out in no
// particular order.

#include <algorithm>
#include <utility>

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CHeap : public CObject {
 public:
  using Compare = int (*)(T*, T*);
  static constexpr int MaximumCapacity = 8388608;

  // Capacity is at least 1 so that doubling always makes room.
  CHeap(int capacity, Compare compare)
      : items_(nullptr), capacity_(std::clamp(capacity, 1, MaximumCapacity)), count_(0), compare_(compare) {
    items_ = new T*[capacity_];
  }
  ~CHeap() override {
    Clear();
    delete[] items_;
  }

  int GetCount() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }
  int GetCapacity() const { return capacity_; }

  Result Add(T* item) {
    if (count_ >= capacity_) {
      Result grown = Grow();
      if (grown.Failed()) return grown;
    }
    if (item) item->Acquire();
    int position = count_++;
    items_[position] = item;
    // Re-establish the order along the path from the new element to the root.
    for (int node = position / 2;; node /= 2) {
      SiftDown(node);
      if (node == 0) break;
    }
    return Result();
  }

  Result Grow() {
    if (capacity_ > MaximumCapacity - 1) return ResultArrayFull();
    int capacity = std::min(capacity_ * 2, MaximumCapacity);
    T** items = new T*[capacity];
    std::copy(items_, items_ + count_, items);
    delete[] items_;
    items_ = items;
    capacity_ = capacity;
    return Result();
  }

  // The top element, acquired; null when empty.
  T* Peek() const {
    if (count_ == 0) return nullptr;
    if (items_[0]) items_[0]->Acquire();
    return items_[0];
  }

  // Removes the top element and hands over the heap's reference; null when empty.
  T* RemoveTop() {
    if (count_ == 0) return nullptr;
    T* top = items_[0];
    items_[0] = items_[--count_];
    items_[count_] = nullptr;
    SiftDown(0);
    return top;
  }

  void Clear() {
    int n = count_;
    count_ = 0;
    for (int i = 0; i < n; ++i)
      if (items_[i]) items_[i]->Release();
  }

 private:
  // Moves node i down while one of its children belongs above it.
  void SiftDown(int i) {
    for (;;) {
      int largest = i;
      int left = 2 * i;
      int right = left + 1;
      if (left < count_ && compare_(items_[left], items_[largest]) > 0) largest = left;
      if (right < count_ && compare_(items_[right], items_[largest]) > 0) largest = right;
      if (largest == i) return;
      std::swap(items_[i], items_[largest]);
      i = largest;
    }
  }

  T** items_;
  int capacity_;
  int count_;
  Compare compare_;
};

}  // namespace Corvane::Mox
