#include "System/Collections/Array.h"
#include "System/Collections/ArrayList.h"

#include <vector>

#include "System/LeakCheckedTest.h"

using namespace Corvane::Mox;

namespace {

using ArrayTest = LeakCheckedTest;
using ArrayListTest = LeakCheckedTest;

TEST_F(ArrayTest, FixedSlotsStartNullAndSetSwapsReferences) {
  RObject<CArray<CObject>> array(new CArray<CObject>(3));
  EXPECT_TRUE(array->IsType(FourCC("ar<>")));
  EXPECT_EQ(array->GetCount(), 3);
  RObject<CObject> a(new CObject()), b(new CObject()), out;
  EXPECT_EQ(array->Get(1, out.Out()), ResultOK());
  EXPECT_EQ(out.Get(), nullptr);
  EXPECT_EQ(array->Get(3, out.Out()), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Set(-1, a), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Set(1, a), ResultOK());
  EXPECT_EQ(a->GetReferences(), 2);
  EXPECT_EQ(array->Set(1, b), ResultOK());
  EXPECT_EQ(a->GetReferences(), 1);
  array->Get(1, out.Out());
  EXPECT_EQ(out.Get(), b.Get());
  EXPECT_EQ(b->GetReferences(), 3);
  out.Clear();
  array.Clear();
  EXPECT_EQ(b->GetReferences(), 1);
  RObject<CArray<CObject>> negative(new CArray<CObject>(-4));
  EXPECT_EQ(negative->GetCount(), 0);
}

TEST_F(ArrayTest, RangeForVisitsEverySlotInOrder) {
  RObject<CArray<CObject>> array(new CArray<CObject>(3));
  RObject<CObject> a(new CObject()), c(new CObject());
  array->Set(0, a);
  array->Set(2, c);
  std::vector<CObject*> seen;
  for (CObject* item : *array) seen.push_back(item);
  EXPECT_EQ(seen, (std::vector<CObject*>{a, nullptr, c}));
  EXPECT_EQ(array->GetReferences(), 1);
  EXPECT_EQ(a->GetReferences(), 2);
}

TEST_F(ArrayListTest, EmptyListGrowsByDoublingPlusOne) {
  RObject<CArrayList<CObject>> list(new CArrayList<CObject>(0));
  EXPECT_TRUE(list->IsType(FourCC("al<>")));
  std::vector<int> capacities;
  RObject<CObject> item(new CObject());
  for (int i = 0; i < 15; ++i) {
    ASSERT_EQ(list->Add(item), ResultOK());
    if (capacities.empty() || capacities.back() != list->GetCapacity()) capacities.push_back(list->GetCapacity());
  }
  EXPECT_EQ(capacities, (std::vector<int>{1, 3, 7, 15}));
  EXPECT_EQ(item->GetReferences(), 16);
  RObject<CObject> out;
  EXPECT_EQ(list->Get(15, out.Out()), ResultArgumentOutOfRange());
  EXPECT_EQ(list->Get(14, out.Out()), ResultOK());
  EXPECT_EQ(out.Get(), item.Get());
  out.Clear();
  list.Clear();
  EXPECT_EQ(item->GetReferences(), 1);
}

TEST_F(ArrayListTest, GrowthStopsAtTheCeiling) {
  RObject<CArrayList<CObject>> list(new CArrayList<CObject>(8388607));
  EXPECT_EQ(list->Grow(), ResultOK());
  EXPECT_EQ(list->GetCapacity(), 8388608);
  EXPECT_EQ(list->Grow(), ResultArrayFull());
  EXPECT_EQ(list->GetCapacity(), 8388608);
}

TEST_F(ArrayListTest, SetContainsClearAndEnumeration) {
  RObject<CArrayList<CObject>> list(new CArrayList<CObject>(2));
  RObject<CObject> a(new CObject()), b(new CObject()), c(new CObject());
  list->Add(a);
  list->Add(b);
  list->Add(c);  // grows from 2 to 5, keeping the elements
  EXPECT_EQ(list->GetCapacity(), 5);
  EXPECT_EQ(list->Set(3, a), ResultArgumentOutOfRange());
  EXPECT_EQ(list->Set(1, c), ResultOK());
  EXPECT_EQ(b->GetReferences(), 1);
  EXPECT_FALSE(list->Contains(b));
  EXPECT_TRUE(list->Contains(c));
  std::vector<CObject*> seen;
  for (CObject* item : *list) seen.push_back(item);
  EXPECT_EQ(seen, (std::vector<CObject*>{a, c, c}));
  list->Clear();
  EXPECT_EQ(list->GetCount(), 0);
  EXPECT_EQ(c->GetReferences(), 1);
}

}  // namespace
