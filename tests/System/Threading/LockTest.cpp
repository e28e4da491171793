#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <thread>

#include "System/Threading/Lock.h"
#include "System/Threading/RWLock.h"

using namespace Corvane::Mox;

TEST(LockTest, ErrnoMappingOfLockUnlockAndSignal) {
  EXPECT_TRUE(LockResults::FromLock(0).Succeeded());
  Result deadlock = LockResults::FromLock(EDEADLK);
  EXPECT_EQ(deadlock.GetType(), static_cast<unsigned int>(-19023));
  EXPECT_EQ(deadlock.GetResultCode(), EDEADLK);
  EXPECT_STREQ(deadlock.GetDetails(), "EDEADLK(35)");
  EXPECT_STREQ(LockResults::FromLock(EINVAL).GetDetails(), "EINVAL(22)");
  EXPECT_STREQ(LockResults::FromLock(EAGAIN).GetDetails(), "11");
  // EPERM on unlock is tolerated, EINVAL is not.
  EXPECT_TRUE(LockResults::FromUnlock(EPERM).Succeeded());
  EXPECT_STREQ(LockResults::FromUnlock(EINVAL).GetDetails(), "EINVAL(22)");
  EXPECT_STREQ(LockResults::FromSignal(EBUSY).GetDetails(), "16");
}

TEST(LockTest, TryEnterFromAnotherThreadFailsWhileHeld) {
  CLock lock;
  ASSERT_TRUE(lock.Enter().Succeeded());
  std::atomic<bool> failed{false};
  std::thread([&] { failed = lock.TryEnter(); }).join();
  EXPECT_TRUE(failed.load());
  lock.Exit();
  std::thread([&] {
    failed = lock.TryEnter();
    if (!failed) lock.Exit();
  }).join();
  EXPECT_FALSE(failed.load());
}

TEST(RWLockTest, ExclusiveReentryNeedsMatchingExits) {
  CRWLock lock;
  ASSERT_TRUE(lock.Enter(true).Succeeded());
  ASSERT_TRUE(lock.Enter(true).Succeeded());  // no deadlock on re-entry
  std::atomic<bool> entered{true};
  EXPECT_TRUE(lock.Exit().Succeeded());
  std::thread([&] { entered = lock.TryEnter(false); }).join();
  EXPECT_FALSE(entered.load());  // still held after the inner exit
  EXPECT_TRUE(lock.Exit().Succeeded());
  std::thread([&] {
    entered = lock.TryEnter(false);
    if (entered) lock.Exit();
  }).join();
  EXPECT_TRUE(entered.load());
}

TEST(RWLockTest, SharedEntriesCoexistAndBlockWriters) {
  CRWLock lock;
  ASSERT_TRUE(lock.Enter(false).Succeeded());
  std::atomic<bool> reader{false};
  std::atomic<bool> writer{true};
  std::thread([&] {
    reader = lock.TryEnter(false);
    if (reader) lock.Exit();
    writer = lock.TryEnter(true);
  }).join();
  EXPECT_TRUE(reader.load());
  EXPECT_FALSE(writer.load());
  EXPECT_TRUE(lock.Exit().Succeeded());
}
