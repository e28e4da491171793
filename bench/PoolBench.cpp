// A pooled buffer's round trip (Get, touch, Release back into the pool)
// against allocating and freeing a buffer of the same size, both as a plain
// new[]/delete[] and as an unpooled CByteArray.

#include <benchmark/benchmark.h>

#include "System/ByteArrayPool.h"

using namespace Corvane::Mox;

namespace {

void PoolGetRelease(benchmark::State& state) {
  static CByteArrayPool* pool = nullptr;
  if (state.thread_index() == 0) pool = new CByteArrayPool(static_cast<int>(state.range(0)), 16);
  for (auto _ : state) {
    CByteArray* buffer = pool->Get();
    buffer->GetData()[0] = 1;
    benchmark::DoNotOptimize(buffer);
    buffer->Release();
  }
  if (state.thread_index() == 0) {
    state.counters["created"] = pool->GetCreatedCount();
    pool->Release();
  }
}

void NewDelete(benchmark::State& state) {
  auto size = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    auto* buffer = new unsigned char[size];
    buffer[0] = 1;
    benchmark::DoNotOptimize(buffer);
    benchmark::ClobberMemory();
    delete[] buffer;
  }
}

void NewByteArray(benchmark::State& state) {
  int size = static_cast<int>(state.range(0));
  for (auto _ : state) {
    auto* buffer = new CByteArray(size, 16);
    buffer->GetData()[0] = 1;
    benchmark::DoNotOptimize(buffer);
    buffer->Release();
  }
}

BENCHMARK(PoolGetRelease)->Arg(4096)->Arg(65536)->Arg(1 << 20);
BENCHMARK(NewDelete)->Arg(4096)->Arg(65536)->Arg(1 << 20);
BENCHMARK(NewByteArray)->Arg(4096)->Arg(65536)->Arg(1 << 20);
BENCHMARK(PoolGetRelease)->Arg(65536)->Threads(2);
BENCHMARK(NewDelete)->Arg(65536)->Threads(2);

}  // namespace
