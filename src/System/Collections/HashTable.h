#pragma once
// CHashTable<K,V>: a chained hash table of (key, value) references. A key goes
// to bucket key->GetHashCode() (as unsigned) modulo the bucket count. The table
// starts with 7 buckets and, whenever the entry count exceeds the bucket count,
// grows to 2n + 1 buckets (at most 1,048,575). Keys compare with K's own
// Equals, looked up on the static type K: boxed values compare by value and
// strings by text.
//
// Each bucket is the list of its entries, chained through the entries
// themselves: an insert costs one allocation and a lookup walks no separate
// list nodes. New entries go to the end of their bucket, and growing moves
// entries in bucket order, so the order of a walk is that of re-inserting
// every entry of every old bucket.

#include <algorithm>

#include "System/Collections/Enumerator.h"
#include "System/Collections/List.h"

namespace Corvane::Mox {

template <class K, class V>
class CHashTable;
template <class K, class V>
class CHashTableEnumerator;

// One association; holds one reference to the key and one to the value.
template <class K, class V>
class CHashTableEntry : public CObject {
 public:
  CHashTableEntry(K* key, V* value, unsigned int hash) : key_(key), value_(value), hash_(hash), next_(nullptr) {
    key_->Acquire();
    if (value_) value_->Acquire();
  }
  ~CHashTableEntry() override {
    key_->Release();
    if (value_) value_->Release();
  }

  // The key, acquired.
  K* GetKey() const {
    key_->Acquire();
    return key_;
  }
  // The value, acquired (null values come back null).
  V* GetValue() const {
    if (value_) value_->Acquire();
    return value_;
  }

 private:
  friend class CHashTable<K, V>;
  friend class CHashTableEnumerator<K, V>;

  K* key_;
  V* value_;
  // The key's hash, kept so that growing never asks the keys again and a
  // lookup compares keys only when the hashes match.
  unsigned int hash_;
  // The next entry of the same bucket.
  CHashTableEntry* next_;
};

template <class K, class V>
class CHashTable : public CObject {
 public:
  using Entry = CHashTableEntry<K, V>;
  static constexpr unsigned int InitialBucketCount = 7;
  static constexpr unsigned int MaximumBucketCount = 1048575;

  CHashTable() : buckets_(new Entry*[InitialBucketCount]()), bucketCount_(InitialBucketCount), count_(0) {}
  ~CHashTable() override {
    Clear();
    delete[] buckets_;
  }

  int GetCount() const { return static_cast<int>(count_); }
  unsigned int GetBucketCount() const { return bucketCount_; }

  // Inserts the pair, or replaces key and value of the entry with an equal key.
  Result Set(K* key, V* value) {
    if (!key) return ResultArgumentNull();
    unsigned int hash = Hash(key);
    Entry** link = &buckets_[hash % bucketCount_];
    for (; *link; link = &(*link)->next_) {
      if (Matches(*link, key, hash)) {
        Replace(*link, key, value);
        return Result();
      }
    }
    *link = new Entry(key, value, hash);
    if (++count_ > bucketCount_) Rehash();
    return Result();
  }

  // Inserts the pair when the key is new; ResultFalse (nothing changed) when an
  // equal key is already present.
  Result Add(K* key, V* value) {
    if (!key) return ResultArgumentNull();
    if (Contains(key)) return ResultFalse();
    return Set(key, value);
  }

  // The value of key, acquired; ResultFalse (and null) when the key is absent.
  Result Get(K* key, V*& value) const {
    value = nullptr;
    if (!key) return ResultArgumentNull();
    Entry* entry = *Find(key);
    if (!entry) return ResultFalse();
    value = entry->value_;
    if (value) value->Acquire();
    return Result();
  }

  bool Contains(K* key) const { return key && *Find(key); }

  // Removes the entry of key; ResultFalse when absent.
  Result Remove(K* key) {
    if (!key) return ResultArgumentNull();
    Entry** link = Find(key);
    if (!*link) return ResultFalse();
    Unlink(link);
    return Result();
  }

  // Removes the first entry (in table order) whose value is item, by identity;
  // ResultFalse when there is none.
  Result RemoveItem(V* item) {
    for (unsigned int i = 0; i < bucketCount_; ++i) {
      for (Entry** link = &buckets_[i]; *link; link = &(*link)->next_) {
        if ((*link)->value_ == item) {
          Unlink(link);
          return Result();
        }
      }
    }
    return ResultFalse();
  }

  void Clear() {
    for (unsigned int i = 0; i < bucketCount_; ++i) {
      Entry* entry = buckets_[i];
      buckets_[i] = nullptr;
      while (entry) {
        Entry* next = entry->next_;
        entry->Release();
        entry = next;
      }
    }
    count_ = 0;
  }

  // New lists of the values and of the keys, in table order.
  CList<V>* GetValues() const {
    auto* values = new CList<V>();
    ForEachEntry([values](Entry* entry) { values->Add(entry->value_); });
    return values;
  }
  CList<K>* GetKeys() const {
    auto* keys = new CList<K>();
    ForEachEntry([keys](Entry* entry) { keys->Add(entry->key_); });
    return keys;
  }

  // Grows to 2n + 1 buckets and redistributes the entries.
  void Rehash();

  Iterator<Entry> GetIterator() const { return Iterator<Entry>(new CHashTableEnumerator<K, V>(this)); }
  Iterator<Entry> begin() const { return GetIterator(); }
  Iterator<Entry> end() const { return Iterator<Entry>(); }

 private:
  friend class CHashTableEnumerator<K, V>;

  static unsigned int Hash(K* key) { return static_cast<unsigned int>(key->GetHashCode()); }
  static bool Matches(Entry* entry, K* key, unsigned int hash) {
    return entry->hash_ == hash && (entry->key_ == key || entry->key_->Equals(key));
  }

  // The link that points at the entry of key, or at the null ending its bucket.
  Entry** Find(K* key) const {
    unsigned int hash = Hash(key);
    Entry** link = &buckets_[hash % bucketCount_];
    while (*link && !Matches(*link, key, hash)) link = &(*link)->next_;
    return link;
  }

  void Unlink(Entry** link) {
    Entry* entry = *link;
    *link = entry->next_;
    --count_;
    entry->Release();
  }

  static void Replace(Entry* entry, K* key, V* value) {
    key->Acquire();
    if (value) value->Acquire();
    K* oldKey = entry->key_;
    V* oldValue = entry->value_;
    entry->key_ = key;
    entry->value_ = value;
    oldKey->Release();
    if (oldValue) oldValue->Release();
  }

  template <class Function>
  void ForEachEntry(Function function) const {
    for (unsigned int i = 0; i < bucketCount_; ++i)
      for (Entry* entry = buckets_[i]; entry; entry = entry->next_) function(entry);
  }

  Entry** buckets_;
  unsigned int bucketCount_;
  unsigned int count_;
};

template <class K, class V>
void CHashTable<K, V>::Rehash() {
  if (bucketCount_ == MaximumBucketCount) return;
  unsigned int oldCount = bucketCount_;
  Entry** old = buckets_;
  bucketCount_ = std::min(oldCount * 2 + 1, MaximumBucketCount);
  buckets_ = new Entry*[bucketCount_]();
  // The last entry of every new bucket, so that moved entries keep their order.
  Entry** tails = new Entry*[bucketCount_]();
  for (unsigned int i = 0; i < oldCount; ++i) {
    for (Entry* entry = old[i]; entry;) {
      Entry* next = entry->next_;
      unsigned int index = entry->hash_ % bucketCount_;
      entry->next_ = nullptr;
      (tails[index] ? tails[index]->next_ : buckets_[index]) = entry;
      tails[index] = entry;
      entry = next;
    }
  }
  delete[] tails;
  delete[] old;
}

// Walks every entry, bucket by bucket; holds one reference to the table.
template <class K, class V>
class CHashTableEnumerator : public CEnumerator<CHashTableEntry<K, V>> {
 public:
  using Entry = CHashTableEntry<K, V>;

  explicit CHashTableEnumerator(const CHashTable<K, V>* table) : table_(table), bucket_(0), entry_(nullptr), started_(false) {
    table_->Acquire();
  }
  ~CHashTableEnumerator() override { table_->Release(); }

  using CEnumerator<Entry>::GetCurrent;
  void Reset() override {
    bucket_ = 0;
    entry_ = nullptr;
    started_ = false;
  }
  bool MoveNext() override {
    if (entry_) {
      entry_ = entry_->next_;
      if (!entry_) ++bucket_;
    } else if (started_) {
      return false;
    }
    started_ = true;
    for (; !entry_ && bucket_ < table_->bucketCount_; ++bucket_)
      if ((entry_ = table_->buckets_[bucket_])) break;
    return entry_ != nullptr;
  }
  Entry* GetCurrent() override {
    if (entry_) entry_->Acquire();
    return entry_;
  }

 private:
  const CHashTable<K, V>* table_;
  unsigned int bucket_;
  Entry* entry_;
  bool started_;
};

}  // namespace Corvane::Mox
