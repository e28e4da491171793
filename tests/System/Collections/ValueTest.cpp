#include "System/Collections/Value.h"
#include "System/Collections/Vector.h"

#include <array>

#include "System/LeakCheckedTest.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

using ValueTest = LeakCheckedTest;
using ValueListTest = LeakCheckedTest;
using VectorTest = LeakCheckedTest;

TEST_F(ValueTest, HashMixesUnsignedBytesThenShiftsTheSignedValue) {
  // Reference values of the byte mixing over little-endian ints: -1 sets the
  // high bit during the per-byte steps, where a signed shift would differ; 1
  // reaches the final step with the high bit set, where a logical shift would.
  EXPECT_EQ(static_cast<unsigned int>(RObject<CValue<int>>(new CValue<int>(-1))->GetHashCode()), 0x66E088BCu);
  EXPECT_EQ(static_cast<unsigned int>(RObject<CValue<int>>(new CValue<int>(1))->GetHashCode()), 0xBE3DBEE6u);
  EXPECT_EQ(static_cast<unsigned int>(RObject<CValue<int>>(new CValue<int>(0x12345678))->GetHashCode()), 0x69B836B4u);
  // For short ASCII text both mixings agree with the string hash.
  RObject<CValue<std::array<char, 3>>> text(new CValue<std::array<char, 3>>({'a', 'b', 'c'}));
  RObject<CString> string(new CString("abc"));
  EXPECT_EQ(text->GetHashCode(), string->GetHashCode());
}

TEST_F(ValueTest, BoxesCompareByValue) {
  RObject<CValue<int>> a(new CValue<int>(3)), b(new CValue<int>(3)), c(new CValue<int>(4));
  RObject<CValue<unsigned int>> other(new CValue<unsigned int>(3));
  EXPECT_TRUE(a->Equals(b.Get()));
  EXPECT_TRUE(a->Equals(static_cast<const CObject*>(b.Get())));
  EXPECT_FALSE(a->Equals(c.Get()));
  EXPECT_FALSE(a->Equals(static_cast<const CObject*>(other.Get())));
  EXPECT_FALSE(a->Equals(static_cast<const CValue<int>*>(nullptr)));
  c->SetValue(3);
  EXPECT_TRUE(a->Equals(c.Get()));
  EXPECT_TRUE(a->IsType(FourCC("vu<>")));
}

TEST_F(ValueListTest, ValuesAndTheListsOwnEnumerator) {
  RObject<CValueList<double>> list(new CValueList<double>());
  EXPECT_TRUE(list->IsType(FourCC("vu<>")));
  EXPECT_TRUE(list->IsType(FourCC("li<>")));
  list->AddValue(1.5);
  list->AddValue(-2.0);
  double value = 0;
  EXPECT_EQ(list->GetValue(1, value), ResultOK());
  EXPECT_EQ(value, -2.0);
  EXPECT_EQ(list->GetValue(2, value), ResultArgumentOutOfRange());
  EXPECT_TRUE(list->ContainsValue(1.5));
  EXPECT_FALSE(list->ContainsValue(2.0));
  EXPECT_EQ(list->GetCurrentValue(value), ResultFalse());
  auto* walker = list->GetEnumerator();
  walker->Reset();
  ASSERT_TRUE(walker->MoveNext());
  ASSERT_TRUE(walker->MoveNext());
  double replacement = 7.25;
  EXPECT_EQ(list->SetCurrentValue(replacement), ResultOK());
  EXPECT_EQ(list->GetCurrentValue(value), ResultOK());
  EXPECT_EQ(value, 7.25);
  EXPECT_EQ(list->GetValue(1, value), ResultOK());
  EXPECT_EQ(value, 7.25);
  EXPECT_FALSE(walker->MoveNext());
  list->Clear();
  EXPECT_EQ(list->GetCurrentValue(value), ResultFalse());
}

TEST_F(VectorTest, OwnsPlainValuesWithCheckedAccess) {
  const int source[] = {4, 5, 6};
  RObject<CVector<int>> vector(new CVector<int>(source, 3));
  EXPECT_EQ(vector->GetLength(), 3);
  int value = 0;
  EXPECT_EQ(vector->Get(2, value), ResultOK());
  EXPECT_EQ(value, 6);
  EXPECT_EQ(vector->Get(3, value), ResultArgumentOutOfRange());
  EXPECT_EQ(vector->Set(-1, 1), ResultArgumentOutOfRange());
  EXPECT_EQ(vector->Set(0, 9), ResultOK());
  EXPECT_EQ((*vector)[0], 9);
  EXPECT_NE(vector->GetData(), source);
  RObject<CVector<double>> zeros(new CVector<double>(2));
  EXPECT_EQ((*zeros)[1], 0.0);
  EXPECT_EQ(RObject<CVector<int>>(new CVector<int>(-3))->GetLength(), 0);
}

}  // namespace
