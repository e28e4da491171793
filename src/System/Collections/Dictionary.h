#pragma once
// CDictionary<K,V>: an association list that keeps insertion order. Keys and
// values live in two lists kept in step (the i-th value belongs to the i-th
// key); lookups walk the keys and compare them with K's own Equals.

#include "System/Collections/List.h"

namespace Corvane::Mox {

template <class K, class V>
class CDictionary : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("dy<>");

  CDictionary() : CObject(TypeCode), keys_(new Column<K>()), values_(new Column<V>()) {}
  ~CDictionary() override {
    keys_->Release();
    values_->Release();
  }

  int GetCount() const { return keys_->GetCount(); }

  // Appends a pair, even when an equal key is already present.
  Result AddItem(K* key, V* value) {
    if (!key) return ResultArgumentNull();
    keys_->Add(key);
    values_->Add(value);
    return Result();
  }

  // Replaces the value of the first equal key (keeping its position), or appends.
  Result SetItem(K* key, V* value) {
    if (!key) return ResultArgumentNull();
    int index = IndexOfKey(key);
    return index < 0 ? AddItem(key, value) : values_->Set(index, value);
  }

  // The pair at index, both acquired.
  Result GetKeyAndValue(int index, K*& key, V*& value) const {
    value = nullptr;
    Result result = keys_->Get(index, key);
    if (result.Failed()) return result;
    return values_->Get(index, value);
  }

  // The value of the first equal key, acquired; ResultFalse (and null) when absent.
  Result Get(K* key, V*& value) const {
    value = nullptr;
    if (!key) return ResultArgumentNull();
    int index = IndexOfKey(key);
    return index < 0 ? Result(ResultFalse()) : values_->Get(index, value);
  }

  bool ContainsKey(K* key) const { return IndexOfKey(key) >= 0; }

  // Position of the first key equal to key, -1 when absent.
  int IndexOfKey(K* key) const {
    if (!key) return -1;
    int index = 0;
    for (auto* node = keys_->GetHead(); node; node = node->next, ++index)
      if (node->item == key || (node->item && node->item->Equals(key))) return index;
    return -1;
  }

  // Removes the pair of the first equal key; ResultFalse when absent.
  Result Remove(K* key) {
    if (!key) return ResultArgumentNull();
    int index = IndexOfKey(key);
    if (index < 0) return ResultFalse();
    keys_->Remove(index);
    return values_->Remove(index);
  }

  void Clear() {
    keys_->Clear();
    values_->Clear();
  }

 private:
  // A list whose chain the dictionary may walk directly.
  template <class T>
  class Column : public CList<T> {
   public:
    using CList<T>::GetHead;
  };

  Column<K>* keys_;
  Column<V>* values_;
};

}  // namespace Corvane::Mox
