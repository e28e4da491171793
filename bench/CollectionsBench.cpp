// Collection hot paths against their standard-library counterparts holding the
// same reference-counted objects: hash-table insert and lookup against
// std::unordered_map, list and queue FIFO traffic against std::deque, array
// list appends against std::vector. The standard containers acquire what they
// store, as ours do, so both sides pay the same reference counting on insert.

#include <benchmark/benchmark.h>

#include <deque>
#include <unordered_map>
#include <vector>

#include "System/Collections/ArrayList.h"
#include "System/Collections/HashTable.h"
#include "System/Collections/List.h"
#include "System/Collections/Queue.h"
#include "System/Collections/Value.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

// Keys made once per run so that only the containers are measured.
template <class K>
std::vector<RObject<K>> MakeKeys(int n);

template <>
std::vector<RObject<CString>> MakeKeys<CString>(int n) {
  std::vector<RObject<CString>> keys;
  for (int i = 0; i < n; ++i) keys.emplace_back(CString::WithFormat("media/track%d/sample", i));
  return keys;
}

template <>
std::vector<RObject<CValue<int>>> MakeKeys<CValue<int>>(int n) {
  std::vector<RObject<CValue<int>>> keys;
  for (int i = 0; i < n; ++i) keys.emplace_back(new CValue<int>(i * 7919));
  return keys;
}

// The standard map keyed the way CHashTable is: GetHashCode and K's Equals.
template <class K>
struct ObjectHash {
  std::size_t operator()(K* key) const noexcept { return static_cast<unsigned int>(key->GetHashCode()); }
};
template <class K>
struct ObjectEquals {
  bool operator()(K* a, K* b) const noexcept { return a == b || a->Equals(b); }
};
template <class K>
using StdTable = std::unordered_map<K*, CObject*, ObjectHash<K>, ObjectEquals<K>>;

template <class K>
void StdInsert(StdTable<K>& table, K* key, CObject* value) {
  auto [it, inserted] = table.try_emplace(key, value);
  if (!inserted) return;
  key->Acquire();
  value->Acquire();
}

template <class K>
void StdClear(StdTable<K>& table) {
  for (auto& [key, value] : table) {
    key->Release();
    value->Release();
  }
  table.clear();
}

template <class K>
void HashTableInsertLookup(benchmark::State& state) {
  auto keys = MakeKeys<K>(static_cast<int>(state.range(0)));
  RObject<CObject> value(new CObject());
  for (auto _ : state) {
    RObject<CHashTable<K, CObject>> table(new CHashTable<K, CObject>());
    for (auto& key : keys) table->Set(key, value);
    for (auto& key : keys) {
      CObject* found = nullptr;
      table->Get(key, found);
      benchmark::DoNotOptimize(found);
      found->Release();
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(keys.size()));
}

template <class K>
void UnorderedMapInsertLookup(benchmark::State& state) {
  auto keys = MakeKeys<K>(static_cast<int>(state.range(0)));
  RObject<CObject> value(new CObject());
  for (auto _ : state) {
    StdTable<K> table;
    for (auto& key : keys) StdInsert<K>(table, key, value);
    for (auto& key : keys) {
      CObject* found = table.find(key)->second;
      benchmark::DoNotOptimize(found);
    }
    StdClear(table);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(keys.size()));
}

template <class K>
void HashTableLookup(benchmark::State& state) {
  auto keys = MakeKeys<K>(static_cast<int>(state.range(0)));
  RObject<CObject> value(new CObject());
  RObject<CHashTable<K, CObject>> table(new CHashTable<K, CObject>());
  for (auto& key : keys) table->Set(key, value);
  for (auto _ : state) {
    for (auto& key : keys) {
      CObject* found = nullptr;
      table->Get(key, found);
      benchmark::DoNotOptimize(found);
      found->Release();
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(keys.size()));
}

template <class K>
void UnorderedMapLookup(benchmark::State& state) {
  auto keys = MakeKeys<K>(static_cast<int>(state.range(0)));
  RObject<CObject> value(new CObject());
  StdTable<K> table;
  for (auto& key : keys) StdInsert<K>(table, key, value);
  for (auto _ : state) {
    for (auto& key : keys) {
      CObject* found = table.find(key)->second;
      benchmark::DoNotOptimize(found);
    }
  }
  StdClear(table);
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(keys.size()));
}

// The lookup as CHashTable::Get defines it: the value is handed out as an
// acquired reference, which the caller releases.
template <class K>
void UnorderedMapLookupAcquired(benchmark::State& state) {
  auto keys = MakeKeys<K>(static_cast<int>(state.range(0)));
  RObject<CObject> value(new CObject());
  StdTable<K> table;
  for (auto& key : keys) StdInsert<K>(table, key, value);
  for (auto _ : state) {
    for (auto& key : keys) {
      CObject* found = table.find(key)->second;
      found->Acquire();
      benchmark::DoNotOptimize(found);
      found->Release();
    }
  }
  StdClear(table);
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(keys.size()));
}

BENCHMARK_TEMPLATE(HashTableInsertLookup, CString)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(UnorderedMapInsertLookup, CString)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(HashTableInsertLookup, CValue<int>)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(UnorderedMapInsertLookup, CValue<int>)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(HashTableLookup, CString)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(UnorderedMapLookup, CString)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(HashTableLookup, CValue<int>)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(UnorderedMapLookup, CValue<int>)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(UnorderedMapLookupAcquired, CString)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(UnorderedMapLookupAcquired, CValue<int>)->Arg(1000)->Arg(100000);

// FIFO traffic: fill with n elements, then drain them.
std::vector<RObject<CObject>> MakeItems(int n) {
  std::vector<RObject<CObject>> items;
  for (int i = 0; i < n; ++i) items.emplace_back(new CObject());
  return items;
}

void ListFifo(benchmark::State& state) {
  auto items = MakeItems(static_cast<int>(state.range(0)));
  RObject<CList<CObject>> list(new CList<CObject>());
  for (auto _ : state) {
    for (auto& item : items) list->Add(item);
    while (CObject* item = list->Dequeue()) item->Release();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(items.size()));
}

void QueueFifo(benchmark::State& state) {
  auto items = MakeItems(static_cast<int>(state.range(0)));
  RObject<CQueue<CObject>> queue(new CQueue<CObject>(16, 1 << 20));
  for (auto _ : state) {
    for (auto& item : items) queue->Enqueue(item);
    while (CObject* item = queue->Dequeue()) item->Release();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(items.size()));
}

void DequeFifo(benchmark::State& state) {
  auto items = MakeItems(static_cast<int>(state.range(0)));
  std::deque<CObject*> deque;
  for (auto _ : state) {
    for (auto& item : items) {
      item->Acquire();
      deque.push_back(item);
    }
    while (!deque.empty()) {
      deque.front()->Release();
      deque.pop_front();
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(items.size()));
}

BENCHMARK(ListFifo)->Arg(64)->Arg(10000);
BENCHMARK(QueueFifo)->Arg(64)->Arg(10000);
BENCHMARK(DequeFifo)->Arg(64)->Arg(10000);

void ArrayListAdd(benchmark::State& state) {
  auto items = MakeItems(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    RObject<CArrayList<CObject>> list(new CArrayList<CObject>());
    for (auto& item : items) list->Add(item);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(items.size()));
}

void VectorPushBack(benchmark::State& state) {
  auto items = MakeItems(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::vector<CObject*> vector;
    for (auto& item : items) {
      item->Acquire();
      vector.push_back(item);
    }
    for (CObject* item : vector) item->Release();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(items.size()));
}

BENCHMARK(ArrayListAdd)->Arg(64)->Arg(10000);
BENCHMARK(VectorPushBack)->Arg(64)->Arg(10000);

}  // namespace
