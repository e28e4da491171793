#include "System/Collections/List.h"

#include <vector>

#include "System/LeakCheckedTest.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

class ListTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    list = new CList<CString>();
    for (const char* text : {"a", "b", "c", "d"}) items.emplace_back(new CString(text));
  }
  void TearDown() override {
    list.Clear();
    items.clear();
    LeakCheckedTest::TearDown();
  }
  // The list's elements as text, in order, through Get.
  std::string Contents() {
    std::string text;
    for (int i = 0; i < list->GetCount(); ++i) {
      RObject<CString> s;
      EXPECT_EQ(list->Get(i, s.Out()), ResultOK());
      text += s ? s->GetChars() : "-";
    }
    return text;
  }

  RObject<CList<CString>> list;
  std::vector<RObject<CString>> items;
};

TEST_F(ListTest, IndexBoundsAndInsertPositions) {
  list->Add(items[0]);
  list->Add(items[1]);
  RObject<CString> out(new CString("stale"));
  EXPECT_EQ(list->Get(2, out.Out()), ResultArgumentOutOfRange());
  EXPECT_EQ(out.Get(), nullptr);
  EXPECT_EQ(list->Get(-1, out.Out()), ResultArgumentOutOfRange());
  EXPECT_EQ(list->Insert(3, items[2]), ResultArgumentOutOfRange());
  EXPECT_EQ(list->Insert(-1, items[2]), ResultArgumentOutOfRange());
  EXPECT_EQ(list->Insert(2, items[2]), ResultOK());  // index == count appends
  EXPECT_EQ(list->Insert(0, items[3]), ResultOK());
  EXPECT_EQ(list->Insert(2, nullptr), ResultOK());
  EXPECT_EQ(Contents(), "da-bc");
  EXPECT_EQ(list->Set(5, items[0]), ResultArgumentOutOfRange());
  EXPECT_EQ(list->Remove(5), ResultArgumentOutOfRange());
}

TEST_F(ListTest, StoresAcquiredReferencesAndHandsOutAcquiredOnes) {
  list->Add(items[0]);
  EXPECT_EQ(items[0]->GetReferences(), 2);
  {
    RObject<CString> got;
    list->Get(0, got.Out());
    EXPECT_EQ(items[0]->GetReferences(), 3);
  }
  list->Set(0, items[1]);
  EXPECT_EQ(items[0]->GetReferences(), 1);
  EXPECT_EQ(items[1]->GetReferences(), 2);
  list->Add(items[2]);
  list.Clear();  // destroying the list releases everything it holds
  EXPECT_EQ(items[1]->GetReferences(), 1);
  EXPECT_EQ(items[2]->GetReferences(), 1);
}

TEST_F(ListTest, RemoveAndRemoveItem) {
  for (auto& item : items) list->Add(item);
  list->Add(items[1]);
  RObject<CString> absent(new CString("b"));  // equal text, different object
  EXPECT_EQ(list->RemoveItem(absent), ResultFalse());
  EXPECT_EQ(Contents(), "abcdb");
  EXPECT_EQ(list->RemoveItem(items[1]), ResultOK());  // first occurrence only
  EXPECT_EQ(Contents(), "acdb");
  EXPECT_EQ(items[1]->GetReferences(), 2);
  EXPECT_EQ(list->Remove(3), ResultOK());  // the tail: a later Add must still append
  list->Add(items[0]);
  EXPECT_EQ(Contents(), "acda");
  EXPECT_EQ(list->Remove(0), ResultOK());
  EXPECT_EQ(Contents(), "cda");
  EXPECT_TRUE(list->Contains(items[3]));
  EXPECT_EQ(list->IndexOf(items[0]), 2);
  EXPECT_EQ(list->IndexOf(items[1]), -1);
  list->Clear();
  EXPECT_EQ(list->GetCount(), 0);
  EXPECT_EQ(items[0]->GetReferences(), 1);
}

TEST_F(ListTest, DequeueAndPopHandOverTheListReference) {
  EXPECT_EQ(list->Dequeue(), nullptr);
  EXPECT_EQ(list->Pop(), nullptr);
  for (int i = 0; i < 3; ++i) list->Add(items[i]);
  RObject<CString> first(list->Dequeue());
  RObject<CString> last(list->Pop());
  EXPECT_EQ(first.Get(), items[0].Get());
  EXPECT_EQ(last.Get(), items[2].Get());
  EXPECT_EQ(items[0]->GetReferences(), 2);  // ours and the holder's, none left in the list
  EXPECT_EQ(Contents(), "b");
  RObject<CString> only(list->Pop());
  EXPECT_EQ(list->GetCount(), 0);
  list->Add(items[3]);  // head and tail must both be reset
  EXPECT_EQ(Contents(), "d");
}

TEST_F(ListTest, AddRangeToArrayAndItself) {
  list->Add(items[0]);
  list->Add(items[1]);
  EXPECT_EQ(list->AddRange(nullptr), ResultArgumentNull());
  EXPECT_EQ(list->AddRange(list), ResultOK());
  EXPECT_EQ(Contents(), "abab");
  RObject<CArray<CString>> array(list->ToArray());
  ASSERT_EQ(array->GetCount(), 4);
  RObject<CString> third;
  array->Get(2, third.Out());
  EXPECT_EQ(third.Get(), items[0].Get());
  EXPECT_EQ(items[0]->GetReferences(), 6);  // holder, 2 in list, 2 in array, third
}

TEST_F(ListTest, EnumeratorProtocol) {
  list->Add(items[0]);
  list->Add(items[1]);
  RObject<CListEnumerator<CString>> e(new CListEnumerator<CString>(list, true));
  EXPECT_EQ(list->GetReferences(), 2);
  EXPECT_EQ(e->GetCurrent(), nullptr);
  EXPECT_TRUE(e->MoveNext());
  RObject<CString> a(e->GetCurrent());
  EXPECT_TRUE(e->MoveNext());
  RObject<CString> b;
  EXPECT_EQ(e->GetCurrent(b.Out()), ResultOK());
  EXPECT_FALSE(e->MoveNext());
  EXPECT_FALSE(e->MoveNext());
  EXPECT_EQ(a.Get(), items[0].Get());
  EXPECT_EQ(b.Get(), items[1].Get());
  EXPECT_EQ(e->GetCurrent(b.Out()), ResultFalse());
  e->Reset();
  EXPECT_TRUE(e->MoveNext());
  RObject<CString> again(e->GetCurrent());
  EXPECT_EQ(again.Get(), items[0].Get());
  e.Clear();
  EXPECT_EQ(list->GetReferences(), 1);

  RObject<CList<CString>> empty(new CList<CString>());
  RObject<CListEnumerator<CString>> none(new CListEnumerator<CString>(empty, true));
  EXPECT_FALSE(none->MoveNext());
  EXPECT_FALSE(none->MoveNext());
}

TEST_F(ListTest, RangeForBorrowsElementsAndKeepsTheListAlive) {
  list->Add(items[0]);
  list->Add(nullptr);
  list->Add(items[2]);
  std::vector<CString*> seen;
  CList<CString>* raw = list.Detach();  // only the loop keeps the list alive now
  for (CString* s : *raw) {
    if (seen.empty()) raw->Release();
    seen.push_back(s);
  }
  EXPECT_EQ(seen, (std::vector<CString*>{items[0], nullptr, items[2]}));
  EXPECT_EQ(items[0]->GetReferences(), 1);  // list gone, nothing left acquired
  RObject<CList<CString>> empty(new CList<CString>());
  int steps = 0;
  for (CString* s : *empty) steps += s ? 1 : 2;
  EXPECT_EQ(steps, 0);
}

TEST_F(ListTest, OwnEnumeratorAndTypeText) {
  list->Add(items[0]);
  CListEnumerator<CString>* own = list->GetEnumerator();
  EXPECT_EQ(own, list->GetEnumerator());
  EXPECT_EQ(list->GetReferences(), 1);  // the list's own enumerator does not hold it
  EXPECT_TRUE(own->MoveNext());
  EXPECT_EQ(own->PeekCurrent(), items[0].Get());
  EXPECT_TRUE(list->IsType(FourCC("li<>")));
  RObject<CString> text(list->ToString());
  char expected[64];
  std::snprintf(expected, sizeof expected, "CObject[%p].type = 'li<>'", static_cast<void*>(list.Get()));
  EXPECT_STREQ(text->GetChars(), expected);
}

}  // namespace
