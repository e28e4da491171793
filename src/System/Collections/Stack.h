#pragma once
// CStack<T>: a last-in-first-out array of references. A push onto a full stack
// grows it to capacity * 2 + 1 slots.

#include <algorithm>

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CPool;

template <class T>
class CStack : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("st<>");
  static constexpr int MaximumCapacity = 8388608;

  explicit CStack(int capacity = 30)
      : CObject(TypeCode), capacity_(std::clamp(capacity, 0, MaximumCapacity)), top_(-1), items_(nullptr) {
    if (capacity_ > 0) items_ = new T*[capacity_];
  }
  ~CStack() override {
    Clear();
    delete[] items_;
  }

  int GetCount() const { return top_ + 1; }
  bool IsEmpty() const { return top_ < 0; }
  int GetCapacity() const { return capacity_; }

  Result Push(T* item) {
    if (!PushItem(item)) return ResultArrayFull();
    return Result();
  }

  // Removes the top element and hands over the stack's reference; null when empty.
  T* Pop() {
    if (top_ < 0) return nullptr;
    T* item = items_[top_];
    items_[top_--] = nullptr;
    return item;
  }

  // The top element, acquired; null when empty.
  T* Peek() const {
    if (top_ < 0) return nullptr;
    T* item = items_[top_];
    if (item) item->Acquire();
    return item;
  }

  void Clear() {
    while (top_ >= 0) {
      T* item = Pop();
      if (item) item->Release();
    }
  }

  Result Grow() {
    if (capacity_ > MaximumCapacity - 1) return ResultArrayFull();
    int capacity = std::min(capacity_ * 2 + 1, MaximumCapacity);
    T** items = new T*[capacity];
    std::copy(items_, items_ + GetCount(), items);
    delete[] items_;
    items_ = items;
    capacity_ = capacity;
    return Result();
  }

 private:
  template <class>
  friend class CPool;

  // Push without building a Result, for the pool's hot path; false when full.
  bool PushItem(T* item) {
    if (top_ + 1 >= capacity_ && Grow().Failed()) return false;
    if (item) item->Acquire();
    items_[++top_] = item;
    return true;
  }

  int capacity_;
  int top_;
  T** items_;
};

}  // namespace Corvane::Mox
