// The data-reference lock: holds exclude each other as a read/write lock's
// do, nest on the writer's thread, and may be released on any thread.
#include <gtest/gtest.h>

#include <thread>

#include "System/Threading/SharedExclusiveLock.h"

using namespace Corvane::Mox;

TEST(SharedExclusiveLockTest, ReadersShareWritersExclude) {
  CSharedExclusiveLock lock;
  ASSERT_TRUE(lock.Enter(false).Succeeded());
  ASSERT_TRUE(lock.TryEnter(false));
  EXPECT_EQ(lock.GetSharedCount(), 2);
  EXPECT_FALSE(lock.TryEnter(true)) << "a writer entered beside readers";
  ASSERT_TRUE(lock.Exit().Succeeded());
  ASSERT_TRUE(lock.Exit().Succeeded());
  ASSERT_TRUE(lock.TryEnter(true));
  bool otherThreadEntered = true;
  std::thread([&] { otherThreadEntered = lock.TryEnter(false) || lock.TryEnter(true); }).join();
  EXPECT_FALSE(otherThreadEntered) << "another thread entered beside the writer";
  ASSERT_TRUE(lock.Exit().Succeeded());
  EXPECT_FALSE(lock.Exit().Succeeded()) << "releasing a free lock must fail";
}

TEST(SharedExclusiveLockTest, WriterThreadNestsAndUnwindsInOrder) {
  CSharedExclusiveLock lock;
  ASSERT_TRUE(lock.Enter(true).Succeeded());
  ASSERT_TRUE(lock.TryEnter(true));
  ASSERT_TRUE(lock.TryEnter(false));
  ASSERT_TRUE(lock.Exit().Succeeded());
  ASSERT_TRUE(lock.Exit().Succeeded());
  EXPECT_TRUE(lock.IsHeldExclusive()) << "the outermost hold was released early";
  ASSERT_TRUE(lock.Exit().Succeeded());
  EXPECT_FALSE(lock.IsHeldExclusive());
}

TEST(SharedExclusiveLockTest, HoldTakenOnOneThreadIsReleasedOnAnother) {
  CSharedExclusiveLock lock;
  std::thread([&] { ASSERT_TRUE(lock.Enter(true).Succeeded()); }).join();
  EXPECT_FALSE(lock.TryEnter(false));
  std::thread([&] { EXPECT_TRUE(lock.Exit().Succeeded()); }).join();
  EXPECT_TRUE(lock.TryEnter(true)) << "the hold released on another thread is still there";
  lock.Exit();
}

TEST(SharedExclusiveLockTest, BlockedWriterProceedsWhenTheLastReaderLeaves) {
  CSharedExclusiveLock lock;
  ASSERT_TRUE(lock.Enter(false).Succeeded());
  std::atomic<bool> entered{false};
  std::thread writer([&] {
    lock.Enter(true);
    entered = true;
    lock.Exit();
  });
  EXPECT_FALSE(entered.load());
  ASSERT_TRUE(lock.Exit().Succeeded());
  writer.join();  // would hang if the release did not wake the writer
  EXPECT_TRUE(entered.load());
}
