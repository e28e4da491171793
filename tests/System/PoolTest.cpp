#include "System/ByteArrayPool.h"
#include "System/Pool.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

#include "System/LeakCheckedTest.h"

using namespace Corvane::Mox;

namespace {

// A pooled object that counts its clean-ups and its destruction.
class CCounted : public CPoolObject {
 public:
  CCounted(std::atomic<int>* cleanUps, std::atomic<int>* destroyed)
      : CPoolObject(FourCC("cntd")), cleanUps_(cleanUps), destroyed_(destroyed) {}
  ~CCounted() override { ++*destroyed_; }
  void ReclaimCleanUp() override { ++*cleanUps_; }

 private:
  std::atomic<int>* cleanUps_;
  std::atomic<int>* destroyed_;
};

// Counters that outlive the pool and the objects they count.
struct Counters {
  std::atomic<int> cleanUps{0};
  std::atomic<int> destroyed{0};
};

class PoolTest : public LeakCheckedTest {
 protected:
  Counters counters;
};

// Makes at most limit objects; Get blocks beyond that.
class CLimitedPool : public CPool<CCounted> {
 public:
  CLimitedPool(int limit, Counters& counters)
      : cleanUps(counters.cleanUps), destroyed(counters.destroyed), limit_(limit) {}
  CCounted* New() override {
    if (made_ >= limit_) return nullptr;
    ++made_;
    return new CCounted(&cleanUps, &destroyed);
  }

  std::atomic<int>& cleanUps;
  std::atomic<int>& destroyed;

 private:
  int limit_;
  int made_ = 0;
};

TEST_F(PoolTest, ReleasedObjectsGoBackAndComeOutAgain) {
  RObject<CLimitedPool> pool(new CLimitedPool(100, counters));
  CCounted* first = pool->Get();
  EXPECT_EQ(first->GetPool(), pool.Get());
  EXPECT_EQ(pool->GetReferences(), 2);  // an object in use holds its pool
  EXPECT_EQ(pool->GetCreatedCount(), 1);
  first->Release();
  EXPECT_EQ(pool->destroyed, 0);
  EXPECT_EQ(pool->cleanUps, 1);
  EXPECT_EQ(pool->GetAvailableCount(), 1);
  EXPECT_EQ(pool->GetReferences(), 1);  // an idle one does not
  EXPECT_EQ(first->GetPool(), nullptr);
  RObject<CCounted> again(pool->Get());
  EXPECT_EQ(again.Get(), first);
  EXPECT_EQ(again->GetReferences(), 1);
  EXPECT_EQ(pool->GetCreatedCount(), 1);
  EXPECT_EQ(pool->GetAvailableCount(), 0);
}

TEST_F(PoolTest, FreeStackGrowsPastItsInitialCapacity) {
  RObject<CLimitedPool> pool(new CLimitedPool(100, counters));
  std::vector<CCounted*> out;
  for (int i = 0; i < 40; ++i) out.push_back(pool->Get());
  for (CCounted* object : out) object->Release();
  EXPECT_EQ(pool->GetAvailableCount(), 40);
  EXPECT_EQ(pool->GetCreatedCount(), 40);
  EXPECT_EQ(pool->destroyed, 0);
}

TEST_F(PoolTest, ObjectsBeyondTheIdleLimitAreFreedOnReturn) {
  RObject<CLimitedPool> pool(new CLimitedPool(100, counters));
  pool->SetMaximumIdleCount(3);
  std::vector<CCounted*> out;
  for (int i = 0; i < 5; ++i) out.push_back(pool->Get());
  for (CCounted* object : out) object->Release();
  EXPECT_EQ(pool->GetAvailableCount(), 3);
  EXPECT_EQ(pool->destroyed, 2);
  EXPECT_EQ(pool->GetReferences(), 1) << "freed objects let go of the pool";
}

TEST_F(PoolTest, TimedGetGivesUpWhenNothingComesBack) {
  RObject<CLimitedPool> pool(new CLimitedPool(1, counters));
  RObject<CCounted> only(pool->Get(0));
  ASSERT_TRUE(only);
  EXPECT_EQ(pool->Get(20), nullptr) << "no object may be made and none came back";
  only = nullptr;  // back to the pool
  RObject<CCounted> again(pool->Get(0));
  EXPECT_TRUE(again);
}

TEST_F(PoolTest, DestroyingThePoolFreesIdleObjectsAndWaitsForBusyOnes) {
  auto* pool = new CLimitedPool(10, counters);
  CCounted* busy = pool->Get();
  pool->Get()->Release();  // one idle object
  pool->Release();  // the busy object still holds the pool
  EXPECT_EQ(counters.destroyed, 0);
  EXPECT_EQ(busy->GetPool(), pool);
  busy->Release();  // back to the pool, whose last reference it was
  EXPECT_EQ(counters.destroyed, 2);
  EXPECT_EQ(counters.cleanUps, 2);
}

TEST_F(PoolTest, UnpooledObjectsAreDestroyedOnRelease) {
  std::atomic<int> cleanUps{0}, destroyed{0};
  auto* object = new CCounted(&cleanUps, &destroyed);
  object->Release();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(cleanUps, 0);
}

TEST_F(PoolTest, GetBlocksUntilAnObjectComesBack) {
  RObject<CLimitedPool> pool(new CLimitedPool(1, counters));
  CCounted* held = pool->Get();
  std::atomic<CCounted*> received{nullptr};
  std::thread waiter([&] { received = pool->Get(); });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(received.load(), nullptr);
  held->Release();
  waiter.join();
  EXPECT_EQ(received.load(), held);
  EXPECT_EQ(pool->GetCreatedCount(), 1);
  received.load()->Release();
}

TEST_F(PoolTest, ThreadsShareOnePool) {
  // Objects handed between threads come out with exactly one reference, and
  // every one made is back in the pool at the end, none freed on the way.
  RObject<CLimitedPool> pool(new CLimitedPool(1 << 30, counters));
  std::atomic<int> corrupted{0};
  auto work = [&] {
    for (int i = 0; i < 20000; ++i) {
      CCounted* a = pool->Get();
      CCounted* b = pool->Get();
      if (a == b || a->GetReferences() != 1 || a->GetPool() != pool.Get()) ++corrupted;
      b->Release();
      a->Release();
    }
  };
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) threads.emplace_back(work);
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(corrupted, 0);
  EXPECT_EQ(pool->destroyed, 0);
  EXPECT_EQ(pool->GetAvailableCount(), pool->GetCreatedCount());
  EXPECT_LE(pool->GetCreatedCount(), 8);  // at most two per thread were ever out
  EXPECT_EQ(pool->cleanUps, 4 * 2 * 20000);
}

TEST_F(PoolTest, ByteArrayPoolMakesClampedBuffers) {
  RObject<CByteArrayPool> pool(new CByteArrayPool(-3, 0));
  RObject<CByteArray> buffer(pool->Get());
  EXPECT_EQ(buffer->GetCapacity(), 0);
  EXPECT_EQ(buffer->GetAlignment(), 1);
  RObject<CByteArrayPool> sized(new CByteArrayPool(1000, 64));
  RObject<CByteArray> big(sized->Get());
  EXPECT_EQ(big->GetCapacity(), 1000);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(big->GetData()) % 64, 0u);
}

}  // namespace
