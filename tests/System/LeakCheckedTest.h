#pragma once
// Test fixture that fails a test when objects it created are still alive at
// its end: the leak tracker is marked before each test and read after it.

#include <gtest/gtest.h>

#include "System/Diagnostics/Leaks.h"

class LeakCheckedTest : public ::testing::Test {
 protected:
  void SetUp() override { Corvane::Mox::CLeaks::Mark(1, 0); }
  void TearDown() override { EXPECT_EQ(Corvane::Mox::CLeaks::ShowLeaksSinceMark(), 0) << "objects left alive"; }
};
