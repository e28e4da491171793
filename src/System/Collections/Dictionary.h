#pragma once
// CDictionary<K,V>: an association list that keeps insertion order. Keys and
// values live in two arrays kept in step (the i-th value belongs to the i-th
// key), so access by position is constant time. Lookups compare keys with
// K's own Equals; beyond a handful of pairs they go through a hash index on
// K's GetHashCode (which must agree with Equals), so script scopes and large
// property bags do not turn quadratic. The index is kept up to date by the
// changing operations, so concurrent lookups only read.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

template <class K, class V>
class CDictionary : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("dy<>");

  CDictionary() : CObject(TypeCode) {}
  ~CDictionary() override { Clear(); }

  int GetCount() const { return static_cast<int>(keys_.size()); }

  // Appends a pair, even when an equal key is already present.
  Result AddItem(K* key, V* value) {
    if (!key) return ResultArgumentNull();
    key->Acquire();
    if (value) value->Acquire();
    keys_.push_back(key);
    values_.push_back(value);
    if (IndexIsBuilt()) {
      Insert(static_cast<int>(keys_.size()) - 1);
    } else if (keys_.size() > kLinearLimit) {
      BuildIndex();
    }
    return Result();
  }

  // Replaces the value of the first equal key (keeping its position), or appends.
  Result SetItem(K* key, V* value) {
    if (!key) return ResultArgumentNull();
    const int index = IndexOfKey(key);
    if (index < 0) return AddItem(key, value);
    if (value) value->Acquire();
    V* old = values_[static_cast<size_t>(index)];
    values_[static_cast<size_t>(index)] = value;
    if (old) old->Release();
    return Result();
  }

  // The pair at index, both acquired.
  Result GetKeyAndValue(int index, K*& key, V*& value) const {
    key = nullptr;
    value = nullptr;
    if (index < 0 || index >= GetCount()) return ResultArgumentOutOfRange();
    key = keys_[static_cast<size_t>(index)];
    key->Acquire();
    value = values_[static_cast<size_t>(index)];
    if (value) value->Acquire();
    return Result();
  }

  // The value of the first equal key, acquired; ResultFalse (and null) when absent.
  Result Get(K* key, V*& value) const {
    value = nullptr;
    if (!key) return ResultArgumentNull();
    const int index = IndexOfKey(key);
    if (index < 0) return ResultFalse();
    value = values_[static_cast<size_t>(index)];
    if (value) value->Acquire();
    return Result();
  }

  bool ContainsKey(K* key) const { return IndexOfKey(key) >= 0; }

  // Position of the first key equal to key, -1 when absent.
  int IndexOfKey(K* key) const {
    if (!key) return -1;
    if (!IndexIsBuilt()) {
      for (size_t i = 0; i < keys_.size(); ++i)
        if (Same(keys_[i], key)) return static_cast<int>(i);
      return -1;
    }
    const int hash = key->GetHashCode();
    // Equal keys were inserted in position order along one probe chain, so
    // the first match is the first equal key.
    for (size_t at = Home(hash);; at = (at + 1) & (slots_.size() - 1)) {
      const int slot = slots_[at];
      if (slot < 0) return -1;
      if (hashes_[static_cast<size_t>(slot)] == hash && Same(keys_[static_cast<size_t>(slot)], key)) return slot;
    }
  }

  // Removes the pair of the first equal key; ResultFalse when absent.
  Result Remove(K* key) {
    if (!key) return ResultArgumentNull();
    const int index = IndexOfKey(key);
    if (index < 0) return ResultFalse();
    K* oldKey = keys_[static_cast<size_t>(index)];
    V* oldValue = values_[static_cast<size_t>(index)];
    keys_.erase(keys_.begin() + index);
    values_.erase(values_.begin() + index);
    // Positions after index moved: index afresh (or not at all when small).
    DropIndex();
    if (keys_.size() > kLinearLimit) BuildIndex();
    oldKey->Release();
    if (oldValue) oldValue->Release();
    return Result();
  }

  void Clear() {
    // Detach first: releasing a value may reach back into this dictionary.
    std::vector<K*> keys;
    std::vector<V*> values;
    keys.swap(keys_);
    values.swap(values_);
    DropIndex();
    for (K* key : keys) key->Release();
    for (V* value : values)
      if (value) value->Release();
  }

 private:
  static constexpr size_t kLinearLimit = 8;

  static bool Same(K* a, K* b) { return a == b || a->Equals(b); }

  bool IndexIsBuilt() const { return !slots_.empty(); }

  size_t Home(int hash) const {
    // The high bits of a Fibonacci product mix every bit of the hash.
    const unsigned int mixed = static_cast<unsigned int>(hash) * 0x9E3779B1u;
    return static_cast<size_t>(mixed >> shift_);
  }

  void BuildIndex() {
    size_t capacity = 16;
    while (capacity < keys_.size() * 2) capacity <<= 1;
    slots_.assign(capacity, -1);
    hashes_.clear();
    hashes_.reserve(capacity / 2);
    shift_ = 32;
    for (size_t c = capacity; c > 1; c >>= 1) --shift_;
    for (size_t i = 0; i < keys_.size(); ++i) {
      hashes_.push_back(keys_[i]->GetHashCode());
      Place(static_cast<int>(i));
    }
  }

  void Insert(int index) {
    if (static_cast<size_t>(index + 1) * 2 > slots_.size()) {
      BuildIndex();  // grows and places every key, this one included
      return;
    }
    hashes_.push_back(keys_[static_cast<size_t>(index)]->GetHashCode());
    Place(index);
  }

  void Place(int index) {
    size_t at = Home(hashes_[static_cast<size_t>(index)]);
    while (slots_[at] >= 0) at = (at + 1) & (slots_.size() - 1);
    slots_[at] = index;
  }

  void DropIndex() {
    slots_.clear();
    hashes_.clear();
  }

  std::vector<K*> keys_;
  std::vector<V*> values_;
  // The hash index of a dictionary beyond kLinearLimit pairs: slots hold
  // positions (-1 empty), hashes_ the hash of each position's key.
  std::vector<int> slots_;
  std::vector<int> hashes_;
  int shift_ = 32;
};

}  // namespace Corvane::Mox
