#pragma once
// CEnumerator<T>: the walking protocol shared by every collection, and
// Iterator<T>, the small value that lets a range-for loop drive an enumerator:
//
//   for (CString* s : *list) { ... }   // s is borrowed for one step of the loop
//
// The iterator keeps the enumerator (which keeps the container alive) and one
// acquired reference to the current element; both are released as the loop
// advances or ends, so the loop variable never needs a Release.
//
// The collections return success as Result(), the OK result built in place:
// ResultOK() would convert a temporary and cost a second out-of-line
// destructor call on paths that run millions of times.

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CEnumerator : public CObject {
 public:
  CEnumerator() = default;

  // Back to before the first element.
  virtual void Reset() = 0;
  // Steps to the next element; false when there is none.
  virtual bool MoveNext() = 0;
  // The current element, acquired (null when there is none).
  virtual T* GetCurrent() = 0;
  // ResultOK with the acquired current element; ResultFalse (and null) when
  // there is no element to hand out.
  virtual Result GetCurrent(T*& current) {
    current = GetCurrent();
    if (current) return Result();
    return ResultFalse();
  }
};

// Forward iterator over an enumerator, for range-for. Move-only: two copies
// sharing one enumerator would step each other.
template <class T>
class Iterator {
 public:
  Iterator() noexcept = default;
  // Takes over one reference to a fresh enumerator and moves to the first element.
  explicit Iterator(CEnumerator<T>* enumerator) : enumerator_(enumerator) {
    if (!enumerator_) return;
    enumerator_->Reset();
    Advance();
  }
  Iterator(Iterator&&) noexcept = default;
  Iterator& operator=(Iterator&&) noexcept = default;
  Iterator(const Iterator&) = delete;
  Iterator& operator=(const Iterator&) = delete;

  T* operator*() const noexcept { return current_.Get(); }
  T* operator->() const noexcept { return current_.Get(); }
  Iterator& operator++() {
    Advance();
    return *this;
  }
  // Only "at end or not" is meaningful: the end iterator has no enumerator.
  bool operator==(const Iterator& other) const noexcept { return enumerator_.Get() == other.enumerator_.Get(); }
  bool operator!=(const Iterator& other) const noexcept { return !(*this == other); }

 private:
  void Advance() {
    if (enumerator_->MoveNext()) {
      current_ = enumerator_->GetCurrent();
    } else {
      current_.Clear();
      enumerator_.Clear();
    }
  }

  RObject<CEnumerator<T>> enumerator_;
  RObject<T> current_;
};

// Walks a container whose elements sit in a slot array (count_, items_) from
// index 0, holding one reference to the container. The container befriends it.
template <class T, class TContainer>
class CSlotEnumerator : public CEnumerator<T> {
 public:
  explicit CSlotEnumerator(const TContainer* container) : container_(container), index_(-1) {
    container_->Acquire();
  }
  ~CSlotEnumerator() override { container_->Release(); }

  using CEnumerator<T>::GetCurrent;
  void Reset() override { index_ = -1; }
  bool MoveNext() override {
    if (index_ < container_->count_) ++index_;
    return index_ < container_->count_;
  }
  T* GetCurrent() override {
    if (index_ < 0 || index_ >= container_->count_) return nullptr;
    T* item = container_->items_[index_];
    if (item) item->Acquire();
    return item;
  }

 private:
  const TContainer* container_;
  int index_;
};

}  // namespace Corvane::Mox
