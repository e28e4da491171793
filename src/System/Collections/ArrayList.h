#pragma once
// CArrayList<T>: a growable array of references. Capacity grows to
// capacity * 2 + 1 (so an empty list grows 1, 3, 7, 15, ...) up to a fixed
// ceiling that keeps allocation sizes in range.

#include <algorithm>

#include "System/Collections/Enumerator.h"

namespace Corvane::Mox {

template <class T>
class CArrayListEnumerator;

template <class T>
class CArrayList : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("al<>");
  static constexpr int MaximumCapacity = 8388608;

  explicit CArrayList(int capacity = 16)
      : CObject(TypeCode), items_(nullptr), capacity_(std::clamp(capacity, 0, MaximumCapacity)), count_(0) {
    if (capacity_ > 0) items_ = new T*[capacity_];
  }
  ~CArrayList() override {
    Clear();
    delete[] items_;
  }

  int GetCount() const { return count_; }
  int GetCapacity() const { return capacity_; }

  Result Add(T* item) {
    if (count_ >= capacity_) {
      Result grown = Grow();
      if (grown.Failed()) return grown;
    }
    if (item) item->Acquire();
    items_[count_++] = item;
    return Result();
  }

  // The element at index, acquired.
  Result Get(int index, T*& item) const {
    item = nullptr;
    if (index < 0 || index >= count_) return ResultArgumentOutOfRange();
    item = items_[index];
    if (item) item->Acquire();
    return Result();
  }

  Result Set(int index, T* item) {
    if (index < 0 || index >= count_) return ResultArgumentOutOfRange();
    if (item) item->Acquire();
    T* old = items_[index];
    items_[index] = item;
    if (old) old->Release();
    return Result();
  }

  bool Contains(T* item) const { return std::find(items_, items_ + count_, item) != items_ + count_; }

  void Clear() {
    // Empty the list before releasing: a release may run arbitrary code.
    int n = count_;
    count_ = 0;
    for (int i = 0; i < n; ++i)
      if (items_[i]) items_[i]->Release();
  }

  Result Grow() {
    if (capacity_ > MaximumCapacity - 1) return ResultArrayFull();
    int capacity = std::min(capacity_ * 2 + 1, MaximumCapacity);
    T** items = new T*[capacity];
    std::copy(items_, items_ + count_, items);
    delete[] items_;
    items_ = items;
    capacity_ = capacity;
    return Result();
  }

  Iterator<T> GetIterator() const { return Iterator<T>(new CArrayListEnumerator<T>(this)); }
  Iterator<T> begin() const { return GetIterator(); }
  Iterator<T> end() const { return Iterator<T>(); }

 private:
  friend class CSlotEnumerator<T, CArrayList<T>>;

  T** items_;
  int capacity_;
  int count_;
};

// Walks a CArrayList from index 0; holds one reference to the list.
template <class T>
class CArrayListEnumerator : public CSlotEnumerator<T, CArrayList<T>> {
 public:
  using CSlotEnumerator<T, CArrayList<T>>::CSlotEnumerator;
};

}  // namespace Corvane::Mox
