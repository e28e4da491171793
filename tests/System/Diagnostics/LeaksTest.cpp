#include <gtest/gtest.h>

#include "System/Diagnostics/Leaks.h"
#include "System/Object.h"

using namespace Corvane::Mox;

TEST(LeaksTest, MarkCountsLiveObjectsCreatedSinceIt) {
  RObject<CObject> before(new CObject());
  CLeaks::Mark(1, 0);
  EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 0);
  auto* leaked = new CObject(FourCC("leak"));
  {
    RObject<CObject> transient(new CObject());
    EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 2);
  }
  EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 1);
  before.Clear();  // made before the mark: not counted either way
  EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 1);
  EXPECT_EQ(CLeaks::GetTotalObjectCount(), 2);
  EXPECT_EQ(CLeaks::GetPeakObjectCount(), 2);
  EXPECT_GE(CLeaks::GetTotalBytesAllocated(), static_cast<long long>(2 * sizeof(CObject)));
  leaked->Release();
  EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 0);
  EXPECT_EQ(CLeaks::GetObjectCount(), 0);
  EXPECT_EQ(CLeaks::GetBytesAllocated(), 0);
}

TEST(LeaksTest, ModeZeroReportsNothing) {
  CLeaks::Mark(0, 0);
  RObject<CObject> live(new CObject());
  EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 0);
  EXPECT_EQ(CLeaks::GetObjectCount(), 1);
}
