#pragma once
// CList<T>: a singly linked list of references, and CListEnumerator<T>.
// Indexing walks the chain; code that visits every element uses an
// enumerator (or range-for) instead of Get in a loop.

#include "System/Collections/Array.h"
#include "System/Collections/Enumerator.h"

namespace Corvane::Mox {

template <class T>
class CListEnumerator;

template <class T>
class CList : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("li<>");

  CList() : CObject(TypeCode), count_(0), head_(nullptr), tail_(nullptr), enumerator_(nullptr) {}
  ~CList() override;

  int GetCount() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }

  Result Add(T* item) {
    Link(NewNode(item), tail_);
    return Result();
  }
  // 0 <= index <= count; index == count appends.
  Result Insert(int index, T* item);
  // The element at index, acquired.
  Result Get(int index, T*& item) const;
  Result Set(int index, T* item);
  Result Remove(int index);
  // Removes the first occurrence of item (by identity); ResultFalse when absent.
  Result RemoveItem(T* item);
  // Removes the first element and hands over its reference; null when empty.
  T* Dequeue();
  // Removes the last element and hands over its reference; null when empty.
  T* Pop();
  // Appends every element of other (a list may be appended to itself).
  Result AddRange(CList<T>* other);
  bool Contains(T* item) const { return IndexOf(item) >= 0; }
  // Position of the first occurrence of item (by identity), -1 when absent.
  int IndexOf(T* item) const;
  void Clear();
  // A new array holding the elements in order.
  CArray<T>* ToArray() const;

  // The list's own enumerator, borrowed: it lives as long as the list.
  CListEnumerator<T>* GetEnumerator();
  Iterator<T> GetIterator() const { return Iterator<T>(new CListEnumerator<T>(this, true)); }
  Iterator<T> begin() const { return GetIterator(); }
  Iterator<T> end() const { return Iterator<T>(); }

 protected:
  struct Node {
    T* item;
    Node* next;
  };

  Node* GetHead() const { return head_; }
  static Node* NewNode(T* item) {
    auto* node = new Node{item, nullptr};
    if (item) item->Acquire();
    return node;
  }
  static void DeleteNode(Node* node) {
    if (node->item) node->item->Release();
    delete node;
  }
  // Links node after previous (at the head when previous is null).
  void Link(Node* node, Node* previous);
  // Unlinks the node after previous (the head when previous is null) and returns it.
  Node* Unlink(Node* previous);
  // The node before index (null for index 0); index must be in 1..count.
  Node* NodeBefore(int index) const;

 private:
  friend class CListEnumerator<T>;

  int count_;
  Node* head_;
  Node* tail_;
  CListEnumerator<T>* enumerator_;
};

// Walks a list. "next" is the node the enumerator stands on, "previous" the
// one before it; both clear means "before the first element".
template <class T>
class CListEnumerator : public CEnumerator<T> {
 public:
  // A list's own enumerator must not hold its list (that would be a cycle),
  // so holding the reference is optional.
  CListEnumerator(const CList<T>* list, bool holdList) : list_(list), next_(nullptr), previous_(nullptr), holds_(holdList) {
    if (holds_) list_->Acquire();
  }
  ~CListEnumerator() override {
    if (holds_) list_->Release();
  }

  using CEnumerator<T>::GetCurrent;
  void Reset() override {
    next_ = nullptr;
    previous_ = nullptr;
  }
  bool MoveNext() override {
    if (next_) {
      previous_ = next_;
      next_ = next_->next;
      return next_ != nullptr;
    }
    if (previous_) return false;
    next_ = list_->head_;
    return next_ != nullptr;
  }
  T* GetCurrent() override {
    if (!next_) return nullptr;
    if (next_->item) next_->item->Acquire();
    return next_->item;
  }
  // The current element, borrowed; null when there is none.
  T* PeekCurrent() const { return next_ ? next_->item : nullptr; }

 private:
  using Node = typename CList<T>::Node;

  const CList<T>* list_;
  const Node* next_;
  const Node* previous_;
  bool holds_;
};

template <class T>
CList<T>::~CList() {
  Clear();
  if (enumerator_) enumerator_->Release();
}

template <class T>
void CList<T>::Link(Node* node, Node* previous) {
  if (previous) {
    node->next = previous->next;
    previous->next = node;
  } else {
    node->next = head_;
    head_ = node;
  }
  if (previous == tail_) tail_ = node;
  ++count_;
}

template <class T>
typename CList<T>::Node* CList<T>::Unlink(Node* previous) {
  Node* node = previous ? previous->next : head_;
  if (previous) {
    previous->next = node->next;
  } else {
    head_ = node->next;
  }
  if (node == tail_) tail_ = previous;
  --count_;
  return node;
}

template <class T>
typename CList<T>::Node* CList<T>::NodeBefore(int index) const {
  Node* node = head_;
  for (int i = 1; i < index && node; ++i) node = node->next;
  return node;
}

template <class T>
Result CList<T>::Insert(int index, T* item) {
  if (index < 0 || index > count_) return ResultArgumentOutOfRange();
  if (index == count_) return Add(item);
  Link(NewNode(item), index == 0 ? nullptr : NodeBefore(index));
  return Result();
}

template <class T>
Result CList<T>::Get(int index, T*& item) const {
  item = nullptr;
  if (index < 0 || index >= count_) return ResultArgumentOutOfRange();
  const Node* node = head_;
  for (int i = 0; i < index && node; ++i) node = node->next;
  if (!node) return ResultNullPointer();
  item = node->item;
  if (item) item->Acquire();
  return Result();
}

template <class T>
Result CList<T>::Set(int index, T* item) {
  if (index < 0 || index >= count_) return ResultArgumentOutOfRange();
  Node* node = head_;
  for (int i = 0; i < index && node; ++i) node = node->next;
  if (!node) return ResultNullPointer();
  if (item) item->Acquire();
  T* old = node->item;
  node->item = item;
  if (old) old->Release();
  return Result();
}

template <class T>
Result CList<T>::Remove(int index) {
  if (index < 0 || index >= count_) return ResultArgumentOutOfRange();
  Node* previous = index == 0 ? nullptr : NodeBefore(index);
  if (index > 0 && (!previous || !previous->next)) return ResultNullPointer();
  DeleteNode(Unlink(previous));
  return Result();
}

template <class T>
Result CList<T>::RemoveItem(T* item) {
  Node* previous = nullptr;
  for (Node* node = head_; node; previous = node, node = node->next) {
    if (node->item == item) {
      DeleteNode(Unlink(previous));
      return Result();
    }
  }
  return ResultFalse();
}

template <class T>
T* CList<T>::Dequeue() {
  if (!head_) return nullptr;
  Node* node = Unlink(nullptr);
  T* item = node->item;  // the list's reference passes to the caller
  delete node;
  return item;
}

template <class T>
T* CList<T>::Pop() {
  if (!head_) return nullptr;
  Node* node = Unlink(count_ == 1 ? nullptr : NodeBefore(count_ - 1));
  T* item = node->item;
  delete node;
  return item;
}

template <class T>
Result CList<T>::AddRange(CList<T>* other) {
  if (!other) return ResultArgumentNull();
  // Count first: appending a list to itself must stop at its original end.
  int n = other->count_;
  const Node* node = other->head_;
  for (int i = 0; i < n; ++i, node = node->next) Add(node->item);
  return Result();
}

template <class T>
int CList<T>::IndexOf(T* item) const {
  int index = 0;
  for (const Node* node = head_; node; node = node->next, ++index)
    if (node->item == item) return index;
  return -1;
}

template <class T>
void CList<T>::Clear() {
  // Detach the chain first: releasing an element may run arbitrary code.
  Node* node = head_;
  head_ = tail_ = nullptr;
  count_ = 0;
  while (node) {
    Node* next = node->next;
    DeleteNode(node);
    node = next;
  }
  if (enumerator_) enumerator_->Reset();
}

template <class T>
CArray<T>* CList<T>::ToArray() const {
  auto* array = new CArray<T>(count_);
  int index = 0;
  for (const Node* node = head_; node; node = node->next) array->Set(index++, node->item);
  return array;
}

template <class T>
CListEnumerator<T>* CList<T>::GetEnumerator() {
  if (!enumerator_) enumerator_ = new CListEnumerator<T>(this, false);
  return enumerator_;
}

}  // namespace Corvane::Mox
