#include <gtest/gtest.h>

#include "System/LeakCheckedTest.h"
#include "System/Text.h"
#include "System/Threading/PerformanceCounter.h"
#include "System/Threading/PerformanceCounterInventory.h"

using namespace Corvane::Mox;

namespace {

class CCountingCounter : public CPerformanceCounter {
 public:
  double GetNextSample() override { return ++samples_; }

 private:
  double samples_ = 0;
};

CPerformanceCounter* MakeCountingCounter() { return new CCountingCounter(); }

std::string Text(CString* s) {
  std::string text = s ? s->GetChars() : "<null>";
  if (s) s->Release();
  return text;
}

// Registers the test factory for the duration of a test.
class PerformanceCounterTest : public LeakCheckedTest {
 protected:
  void TearDown() override {
    CPerformanceCounterInventory::SetFactory(FourCC("gpu "), nullptr);
    CPerformanceCounterInventory::SetFactory(FourCC("aja "), nullptr);
    LeakCheckedTest::TearDown();
  }
};

}  // namespace

TEST_F(PerformanceCounterTest, CategoryChoosesTheFactory) {
  RObject<CString> nvidia(new CString("NVIDIA"));
  RObject<CString> aja(new CString("AJA"));
  RObject<CString> other(new CString("Intel"));
  RObject<CString> name(new CString("Utilization"));
  RObject<CString> instance(new CString("0"));
  // Nothing registered yet.
  EXPECT_EQ(CPerformanceCounter::Create(nvidia, name, instance, 3), nullptr);
  CPerformanceCounterInventory::SetFactory(FourCC("gpu "), &MakeCountingCounter);
  RObject<CPerformanceCounter> gpu(CPerformanceCounter::Create(nvidia, name, instance, 3));
  ASSERT_TRUE(gpu);
  EXPECT_EQ(Text(gpu->GetCategory()), "NVIDIA");
  EXPECT_EQ(Text(gpu->GetCounter()), "Utilization");
  EXPECT_EQ(Text(gpu->GetInstance()), "0");
  EXPECT_EQ(gpu->GetValue(), 3u);
  EXPECT_EQ(gpu->GetNextSample(), 1.0);
  EXPECT_EQ(gpu->GetNextSample(), 2.0);
  // "AJA" needs its own factory; other categories never get one.
  EXPECT_EQ(CPerformanceCounter::Create(aja, name, instance, 0), nullptr);
  CPerformanceCounterInventory::SetFactory(FourCC("aja "), &MakeCountingCounter);
  RObject<CPerformanceCounter> card(CPerformanceCounter::Create(aja, name, instance, 0));
  EXPECT_TRUE(card);
  EXPECT_EQ(CPerformanceCounter::Create(other, name, instance, 0), nullptr);
  EXPECT_EQ(CPerformanceCounter::Create(nullptr, name, instance, 0), nullptr);
}

TEST_F(PerformanceCounterTest, InventoryCreatesByCodeAndForgetsRemovedFactories) {
  EXPECT_EQ(CPerformanceCounterInventory::Create(FourCC("gpu ")), nullptr);
  CPerformanceCounterInventory::SetFactory(FourCC("gpu "), &MakeCountingCounter);
  RObject<CPerformanceCounter> counter(CPerformanceCounterInventory::Create(FourCC("gpu ")));
  ASSERT_TRUE(counter);
  EXPECT_TRUE(counter->IsType(FourCC("pcnt")));
  CPerformanceCounterInventory::SetFactory(FourCC("gpu "), nullptr);
  EXPECT_EQ(CPerformanceCounterInventory::Create(FourCC("gpu ")), nullptr);
}

TEST_F(PerformanceCounterTest, InitializeReplacesTheNames) {
  RObject<CCountingCounter> counter(new CCountingCounter());
  RObject<CString> first(new CString("first"));
  RObject<CString> second(new CString("second"));
  ASSERT_TRUE(counter->Initialize(first, first, first, 1).Succeeded());
  EXPECT_EQ(first->GetReferences(), 4);  // held three times
  ASSERT_TRUE(counter->Initialize(second, nullptr, nullptr, 2).Succeeded());
  EXPECT_EQ(first->GetReferences(), 1);  // all released
  EXPECT_EQ(Text(counter->GetCategory()), "second");
  EXPECT_EQ(counter->GetCounter(), nullptr);
  EXPECT_EQ(counter->GetInstance(), nullptr);
  EXPECT_EQ(counter->GetValue(), 2u);
}
