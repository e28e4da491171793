#include "System/ByteArray.h"

#include <cstdint>
#include <cstring>

#include "System/LeakCheckedTest.h"

using namespace Corvane::Mox;

namespace {

using ByteArrayTest = LeakCheckedTest;

const unsigned char kBytes[] = {1, 2, 3, 4, 5, 6};

TEST_F(ByteArrayTest, ConstructionClampsAndAllocatesLazily) {
  RObject<CByteArray> empty(new CByteArray(-5, 0));
  EXPECT_EQ(empty->GetCapacity(), 0);
  EXPECT_EQ(empty->GetLength(), 0);
  EXPECT_EQ(empty->GetAlignment(), 1);
  EXPECT_TRUE(empty->IsType(FourCC("data")));

  RObject<CByteArray> lazy(new CByteArray(8, 4));
  EXPECT_EQ(lazy->GetLength(), 8);
  EXPECT_EQ(lazy->GetData(3), 0);  // no storage yet
  EXPECT_EQ(lazy->GetHashCode(), 0);
  EXPECT_EQ(lazy->Clear(0, 1), ResultError());
  unsigned char* data = lazy->GetData();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(lazy->GetData(), data);
  data[3] = 0x5A;
  EXPECT_EQ(lazy->GetData(3), 0x5A);
  lazy->Free();
  EXPECT_EQ(lazy->GetData(3), 0);
}

TEST_F(ByteArrayTest, DataStartsOnTheRequestedAlignment) {
  for (int alignment : {16, 64, 4096}) {
    for (int capacity = 1; capacity < 24; ++capacity) {
      RObject<CByteArray> array(new CByteArray(capacity, alignment));
      auto address = reinterpret_cast<std::uintptr_t>(array->GetData());
      EXPECT_EQ(address % static_cast<std::uintptr_t>(alignment), 0u) << alignment << " " << capacity;
      std::memset(array->GetData(), 0xFF, static_cast<std::size_t>(capacity));  // the whole capacity is usable
    }
  }
}

TEST_F(ByteArrayTest, LengthAndClearBounds) {
  RObject<CByteArray> array(new CByteArray(6, 1));
  std::memset(array->GetData(), 0xAB, 6);
  EXPECT_EQ(array->SetLength(-1), ResultArgumentOutOfRange());
  EXPECT_EQ(array->SetLength(7), ResultArgumentOutOfRange());
  EXPECT_EQ(array->SetLength(4), ResultOK());
  EXPECT_EQ(array->GetLength(), 4);
  EXPECT_EQ(array->Clear(-1, 1), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Clear(5, 0), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Clear(0, 5), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Clear(2, 3), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Clear(1, -1), ResultArgumentOutOfRange());
  EXPECT_EQ(array->Clear(1, 2), ResultOK());
  const unsigned char partly[] = {0xAB, 0, 0, 0xAB, 0xAB, 0xAB};
  EXPECT_EQ(std::memcmp(array->GetData(), partly, 6), 0);
  array->Clear();  // the first length bytes only
  const unsigned char cleared[] = {0, 0, 0, 0, 0xAB, 0xAB};
  EXPECT_EQ(std::memcmp(array->GetData(), cleared, 6), 0);
}

TEST_F(ByteArrayTest, CopiesAndViews) {
  unsigned char source[6];
  std::memcpy(source, kBytes, 6);
  RObject<CByteArray> copy(new CByteArray(source, 6));
  source[0] = 99;
  EXPECT_TRUE(copy->Equals(kBytes, 6));
  RObject<CByteArray> blank(new CByteArray(static_cast<const unsigned char*>(nullptr), 3));
  EXPECT_EQ(blank->GetLength(), 3);

  RObject<CByteArray> view(new CByteArray(4, copy->GetData() + 1, copy));
  EXPECT_EQ(copy->GetReferences(), 2);
  EXPECT_EQ(view->GetData(), copy->GetData() + 1);
  EXPECT_EQ(view->GetAlignment(), 1);
  EXPECT_TRUE(view->Equals(kBytes + 1, 4));
  CByteArray* raw = copy.Detach();
  raw->Release();  // the view keeps the owner alive
  EXPECT_EQ(raw->GetReferences(), 1);
  EXPECT_EQ(view->GetData(0), 2);
  view->Free();  // external memory is never freed by the view
  EXPECT_EQ(view->GetData(0), 2);
}

TEST_F(ByteArrayTest, FromHexString) {
  CByteArray* out = nullptr;
  EXPECT_EQ(CByteArray::FromHexString("0aFF", out), ResultOK());
  ASSERT_NE(out, nullptr);
  const unsigned char expected[] = {0x0A, 0xFF};
  EXPECT_TRUE(out->Equals(expected, 2));
  out->Release();
  EXPECT_EQ(CByteArray::FromHexString("abc", out), ResultArgumentOutOfRange());
  EXPECT_EQ(CByteArray::FromHexString(nullptr, out), ResultArgumentNull());
  EXPECT_EQ(CByteArray::FromHexString("", out), ResultOK());
  ASSERT_NE(out, nullptr);
  EXPECT_EQ(out->GetLength(), 0);
  out->Release();
  // A bad pair stops the conversion; the partly filled array is handed out.
  EXPECT_EQ(CByteArray::FromHexString("A7zz10", out), ResultArgumentOutOfRange());
  ASSERT_NE(out, nullptr);
  EXPECT_EQ(out->GetLength(), 3);
  EXPECT_EQ(out->GetData(0), 0xA7);
  out->Release();
}

TEST_F(ByteArrayTest, HashIsFnv1aOverTheLength) {
  RObject<CByteArray> a(new CByteArray(reinterpret_cast<const unsigned char*>("a"), 1));
  EXPECT_EQ(static_cast<unsigned int>(a->GetHashCode()), 0xE40C292Cu);
  RObject<CByteArray> longer(new CByteArray(reinterpret_cast<const unsigned char*>("ab"), 2));
  longer->SetLength(1);
  EXPECT_EQ(longer->GetHashCode(), a->GetHashCode());
  longer->SetLength(0);
  EXPECT_EQ(static_cast<unsigned int>(longer->GetHashCode()), 0x811C9DC5u);
}

TEST_F(ByteArrayTest, EqualsAndStartsWith) {
  RObject<CByteArray> a(new CByteArray(kBytes, 4));
  RObject<CByteArray> b(new CByteArray(kBytes, 4));
  RObject<CByteArray> lazy(new CByteArray(4, 1));
  EXPECT_TRUE(a->Equals(b.Get()));
  EXPECT_FALSE(a->Equals(static_cast<CByteArray*>(nullptr)));
  b->GetData()[3] = 0;
  EXPECT_FALSE(a->Equals(b.Get()));
  b->SetLength(3);
  EXPECT_FALSE(a->Equals(b.Get()));
  // An array without storage is never equal; one compared against gets storage.
  EXPECT_FALSE(lazy->Equals(a.Get()));
  EXPECT_EQ(lazy->Clear(0, 1), ResultError());
  a->Equals(lazy.Get());
  EXPECT_EQ(lazy->Clear(0, 1), ResultOK());
  EXPECT_TRUE(a->StartsWith(kBytes, 2));
  EXPECT_TRUE(a->StartsWith(kBytes, 4));
  EXPECT_FALSE(a->StartsWith(kBytes, 5));
  EXPECT_FALSE(a->StartsWith(kBytes + 1, 2));
  EXPECT_FALSE(a->StartsWith(nullptr, 1));
  EXPECT_FALSE(a->StartsWith(kBytes, -1));
  EXPECT_FALSE(a->Equals(kBytes, 3));
  EXPECT_FALSE(a->Equals(nullptr, 4));
}

}  // namespace
