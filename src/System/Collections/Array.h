#pragma once
// CArray<T>: a fixed-length array of references. Slots start null; Set
// acquires the new element and releases the one it replaces.

#include "System/Collections/Enumerator.h"

namespace Corvane::Mox {

template <class T>
class CArrayEnumerator;

template <class T>
class CArray : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("ar<>");

  explicit CArray(int count) : CObject(TypeCode), count_(count > 0 ? count : 0), items_(new T*[count_]()) {}
  ~CArray() override {
    for (int i = 0; i < count_; ++i)
      if (items_[i]) items_[i]->Release();
    delete[] items_;
  }

  int GetCount() const { return count_; }

  // The element at index, acquired (null slots come back null).
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

  Iterator<T> GetIterator() const { return Iterator<T>(new CArrayEnumerator<T>(this)); }
  Iterator<T> begin() const { return GetIterator(); }
  Iterator<T> end() const { return Iterator<T>(); }

 private:
  friend class CSlotEnumerator<T, CArray<T>>;

  int count_;
  T** items_;
};

// Walks a CArray from index 0; holds one reference to the array.
template <class T>
class CArrayEnumerator : public CSlotEnumerator<T, CArray<T>> {
 public:
  using CSlotEnumerator<T, CArray<T>>::CSlotEnumerator;
};

}  // namespace Corvane::Mox
