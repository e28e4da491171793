#include "System/Collections/Dictionary.h"
#include "System/Collections/HashTable.h"

#include <string>
#include <vector>

#include "System/Collections/Value.h"
#include "System/LeakCheckedTest.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

using Key = CValue<int>;
using HashTableTest = LeakCheckedTest;
using DictionaryTest = LeakCheckedTest;

// A key with a chosen hash code.
class CFixedHash : public CObject {
 public:
  explicit CFixedHash(int hash) : hash_(hash) {}
  int GetHashCode() const override { return hash_; }

 private:
  int hash_;
};

TEST_F(HashTableTest, BucketCountGrowsWhenEntriesExceedIt) {
  RObject<CHashTable<Key, CObject>> table(new CHashTable<Key, CObject>());
  std::vector<unsigned int> buckets{table->GetBucketCount()};
  for (int i = 0; i < 16; ++i) {
    RObject<Key> key(new Key(i));
    table->Set(key, nullptr);
    buckets.push_back(table->GetBucketCount());
  }
  EXPECT_EQ(buckets[0], 7u);
  EXPECT_EQ(buckets[7], 7u);
  EXPECT_EQ(buckets[8], 15u);
  EXPECT_EQ(buckets[15], 15u);
  EXPECT_EQ(buckets[16], 31u);
  EXPECT_EQ(table->GetCount(), 16);
}

TEST_F(HashTableTest, BoxedKeysMatchByValueAndSetReplaces) {
  RObject<CHashTable<Key, CString>> table(new CHashTable<Key, CString>());
  RObject<Key> k1(new Key(5)), k2(new Key(5));
  RObject<CString> v1(new CString("one")), v2(new CString("two"));
  EXPECT_EQ(table->Set(k1, v1), ResultOK());
  EXPECT_EQ(table->Set(k2, v2), ResultOK());
  EXPECT_EQ(table->GetCount(), 1);
  // Key and value are both replaced; the old ones are released.
  EXPECT_EQ(k1->GetReferences(), 1);
  EXPECT_EQ(v1->GetReferences(), 1);
  EXPECT_EQ(k2->GetReferences(), 2);
  RObject<CString> got;
  EXPECT_EQ(table->Get(k1, got.Out()), ResultOK());
  EXPECT_STREQ(got->GetChars(), "two");
  EXPECT_EQ(v2->GetReferences(), 3);
  EXPECT_EQ(table->Add(k1, v1), ResultFalse());
  EXPECT_EQ(v1->GetReferences(), 1);
}

TEST_F(HashTableTest, StringKeysMatchByText) {
  RObject<CHashTable<CString, CString>> table(new CHashTable<CString, CString>());
  RObject<CString> key(new CString("alpha")), same(new CString("alpha")), other(new CString("beta"));
  table->Set(key, other);
  EXPECT_TRUE(table->Contains(same));
  EXPECT_FALSE(table->Contains(other));
  RObject<CString> value(new CString("stale"));
  EXPECT_EQ(table->Get(other, value.Out()), ResultFalse());
  EXPECT_EQ(value.Get(), nullptr);
  EXPECT_EQ(table->Remove(other), ResultFalse());
  EXPECT_EQ(table->Remove(same), ResultOK());
  EXPECT_EQ(table->GetCount(), 0);
  EXPECT_EQ(key->GetReferences(), 1);
  EXPECT_EQ(other->GetReferences(), 1);
}

TEST_F(HashTableTest, NullKeysAreRefused) {
  RObject<CHashTable<Key, CObject>> table(new CHashTable<Key, CObject>());
  RObject<CObject> value;
  EXPECT_EQ(table->Set(nullptr, nullptr), ResultArgumentNull());
  EXPECT_EQ(table->Add(nullptr, nullptr), ResultArgumentNull());
  EXPECT_EQ(table->Get(nullptr, value.Out()), ResultArgumentNull());
  EXPECT_EQ(table->Remove(nullptr), ResultArgumentNull());
  EXPECT_FALSE(table->Contains(nullptr));
}

TEST_F(HashTableTest, EveryEntrySurvivesRehashing) {
  RObject<CHashTable<CString, Key>> table(new CHashTable<CString, Key>());
  for (int i = 0; i < 3000; ++i) {
    RObject<CString> key(CString::WithFormat("key%d", i));
    RObject<Key> value(new Key(i));
    ASSERT_EQ(table->Set(key, value), ResultOK());
  }
  EXPECT_EQ(table->GetBucketCount(), 4095u);
  int wrong = 0;
  for (int i = 0; i < 3000; ++i) {
    RObject<CString> key(CString::WithFormat("key%d", i));
    RObject<Key> value;
    if (table->Get(key, value.Out()) != ResultOK() || value->GetValue() != i) ++wrong;
  }
  EXPECT_EQ(wrong, 0);
  int visited = 0;
  long long sum = 0;
  for (auto* entry : *table) {
    RObject<Key> value(entry->GetValue());
    sum += value->GetValue();
    ++visited;
  }
  EXPECT_EQ(visited, 3000);
  EXPECT_EQ(sum, 3000LL * 2999 / 2);
}

TEST_F(HashTableTest, BucketIsTheUnsignedHashModuloTheCount) {
  // -1 as unsigned is 4294967295, which is 3 modulo 7: the key hashed -1 lies
  // in an earlier bucket than the key hashed 6, whatever the insertion order.
  RObject<CHashTable<CFixedHash, CObject>> table(new CHashTable<CFixedHash, CObject>());
  RObject<CFixedHash> six(new CFixedHash(6)), minusOne(new CFixedHash(-1)), three(new CFixedHash(3));
  table->Set(six, nullptr);
  table->Set(minusOne, nullptr);
  table->Set(three, nullptr);  // shares bucket 3, after minusOne
  std::vector<CObject*> order;
  for (auto* entry : *table) {
    RObject<CFixedHash> key(entry->GetKey());
    order.push_back(key);
  }
  EXPECT_EQ(order, (std::vector<CObject*>{minusOne, three, six}));
}

TEST_F(HashTableTest, ValuesRemoveItemAndClear) {
  RObject<CHashTable<Key, CObject>> table(new CHashTable<Key, CObject>());
  RObject<CObject> a(new CObject()), b(new CObject());
  for (int i = 0; i < 4; ++i) {
    RObject<Key> key(new Key(i));
    table->Set(key, i % 2 ? b.Get() : a.Get());
  }
  RObject<CList<CObject>> values(table->GetValues());
  RObject<CList<Key>> keys(table->GetKeys());
  ASSERT_EQ(values->GetCount(), 4);
  EXPECT_EQ(a->GetReferences(), 1 + 2 + 2);
  for (int i = 0; i < 4; ++i) {
    RObject<CObject> value;
    RObject<Key> key;
    values->Get(i, value.Out());
    keys->Get(i, key.Out());
    EXPECT_EQ(value.Get(), key->GetValue() % 2 ? b.Get() : a.Get());
  }
  EXPECT_EQ(table->RemoveItem(b), ResultOK());
  EXPECT_EQ(table->GetCount(), 3);
  EXPECT_EQ(table->RemoveItem(nullptr), ResultFalse());
  table->Clear();
  EXPECT_EQ(table->GetCount(), 0);
  values.Clear();
  EXPECT_EQ(a->GetReferences(), 1);
  EXPECT_EQ(b->GetReferences(), 1);
}

TEST_F(DictionaryTest, KeepsInsertionOrderAndSetItemKeepsPosition) {
  RObject<CDictionary<CString, CObject>> dictionary(new CDictionary<CString, CObject>());
  EXPECT_TRUE(dictionary->IsType(FourCC("dy<>")));
  RObject<CString> x(new CString("x")), y(new CString("y")), y2(new CString("y"));
  RObject<CObject> v1(new CObject()), v2(new CObject()), v3(new CObject());
  EXPECT_EQ(dictionary->AddItem(nullptr, v1), ResultArgumentNull());
  dictionary->AddItem(x, v1);
  dictionary->AddItem(y, v2);
  EXPECT_EQ(dictionary->SetItem(y2, v3), ResultOK());
  EXPECT_EQ(dictionary->GetCount(), 2);
  EXPECT_EQ(v2->GetReferences(), 1);
  RObject<CString> key;
  RObject<CObject> value;
  EXPECT_EQ(dictionary->GetKeyAndValue(1, key.Out(), value.Out()), ResultOK());
  EXPECT_EQ(key.Get(), y.Get());  // the first key object stays
  EXPECT_EQ(value.Get(), v3.Get());
  EXPECT_EQ(dictionary->GetKeyAndValue(2, key.Out(), value.Out()), ResultArgumentOutOfRange());
  EXPECT_EQ(dictionary->Get(y2, value.Out()), ResultOK());
  EXPECT_EQ(value.Get(), v3.Get());
  dictionary->AddItem(x, v2);  // duplicates are allowed; lookups find the first
  EXPECT_EQ(dictionary->Get(x, value.Out()), ResultOK());
  EXPECT_EQ(value.Get(), v1.Get());
  EXPECT_EQ(dictionary->Remove(x), ResultOK());
  EXPECT_EQ(dictionary->Get(x, value.Out()), ResultOK());
  EXPECT_EQ(value.Get(), v2.Get());
  value.Clear();
  key.Clear();
  dictionary->Clear();
  EXPECT_EQ(dictionary->GetCount(), 0);
  EXPECT_FALSE(dictionary->ContainsKey(y));
  EXPECT_EQ(x->GetReferences(), 1);
  EXPECT_EQ(v3->GetReferences(), 1);
}

TEST_F(DictionaryTest, LargeDictionariesKeepFirstKeySemanticsThroughTheirIndex) {
  // Enough pairs that lookups go through the hash index, with duplicates,
  // removals that shift positions and replacements in between.
  RObject<CDictionary<CString, CObject>> dictionary(new CDictionary<CString, CObject>());
  std::vector<RObject<CObject>> values;
  auto name = [](int i) { return RObject<CString>(CString::WithFormat("key-%d", i)); };
  for (int i = 0; i < 200; ++i) {
    values.emplace_back(new CObject());
    dictionary->AddItem(name(i), values.back());
  }
  RObject<CObject> duplicate(new CObject());
  dictionary->AddItem(name(50), duplicate);
  RObject<CObject> found;
  for (int i = 0; i < 200; i += 7) {
    ASSERT_EQ(dictionary->Get(name(i), found.Out()), ResultOK()) << i;
    EXPECT_EQ(found.Get(), values[static_cast<size_t>(i)].Get()) << i;
    EXPECT_EQ(dictionary->IndexOfKey(name(i)), i);
  }
  EXPECT_EQ(dictionary->Get(name(50), found.Out()), ResultOK());
  EXPECT_EQ(found.Get(), values[50].Get());  // the first of two equal keys
  EXPECT_FALSE(dictionary->ContainsKey(name(200)));

  EXPECT_EQ(dictionary->Remove(name(10)), ResultOK());
  EXPECT_EQ(dictionary->IndexOfKey(name(11)), 10);  // later positions moved up
  EXPECT_EQ(dictionary->Remove(name(50)), ResultOK());
  EXPECT_EQ(dictionary->Get(name(50), found.Out()), ResultOK());
  EXPECT_EQ(found.Get(), duplicate.Get());  // the second now comes first
  RObject<CObject> replacement(new CObject());
  EXPECT_EQ(dictionary->SetItem(name(150), replacement), ResultOK());
  EXPECT_EQ(dictionary->IndexOfKey(name(150)), 148);
  EXPECT_EQ(dictionary->GetCount(), 199);
  RObject<CString> key;
  EXPECT_EQ(dictionary->GetKeyAndValue(148, key.Out(), found.Out()), ResultOK());
  EXPECT_STREQ(key->GetChars(), "key-150");
  EXPECT_EQ(found.Get(), replacement.Get());
  EXPECT_EQ(values[150]->GetReferences(), 1);
  key.Clear();
  found.Clear();
  dictionary->Clear();
  EXPECT_FALSE(dictionary->ContainsKey(name(1)));
  EXPECT_EQ(replacement->GetReferences(), 1);
}

}  // namespace
