#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/LeakCheckedTest.h"
#include "System/Media/Inventory/InventoryCatalog.h"

using namespace Corvane::Mox;

class InventoryCatalog : public LeakCheckedTest {};

TEST_F(InventoryCatalog, ListsEveryCategoryInOrderWithNamesAndAvailability) {
  RObject<CInventoryCatalog> catalog(GetInventoryCatalog());
  ASSERT_TRUE(catalog);
  ASSERT_EQ(catalog->GetCount(), 24);
  const char* const expected[] = {"Video Analyzers", "Video Fan-In Analyzers", "Video Compressors",
                                  "Video Fan-Out Compressors", "Video Converters", "Video Fan-In Converters",
                                  "Video Decompressors", "Audio Analyzers", "Audio Fan-In Analyzers",
                                  "Audio Compressors", "Audio Converters", "Audio Fan-In Converters",
                                  "Audio Fan-Out Converters", "Audio Decompressors", "Subtitle Converters",
                                  "Subtitle Fan-In Converters", "Metadata Analyzers", "Metadata Converters",
                                  "Media Filters", "Container Readers", "Container Writers", "Signal Readers",
                                  "Signal Writers", "Packagers"};
  for (int i = 0; i < 24; ++i) {
    CString* key = nullptr;
    CList<CInventoryCatalogEntry>* list = nullptr;
    ASSERT_TRUE(catalog->GetKeyAndValue(i, key, list).Succeeded());
    EXPECT_STREQ(key->GetChars(), expected[i]);
    key->Release();
    list->Release();
  }
}

TEST_F(InventoryCatalog, EntriesCarryCodeNameAndAvailability) {
  RObject<CInventoryCatalog> catalog(GetInventoryCatalog());
  RObject<CString> key(CString::WithString("Video Decompressors"));
  CList<CInventoryCatalogEntry>* list = nullptr;
  ASSERT_TRUE(catalog->Get(key, list).Succeeded());
  RObject<CList<CInventoryCatalogEntry>> held(list);
  ASSERT_EQ(list->GetCount(), 13);
  CInventoryCatalogEntry* first = nullptr;
  ASSERT_TRUE(list->Get(0, first).Succeeded());
  RObject<CInventoryCatalogEntry> entry(first);
  EXPECT_EQ(entry->GetCode(), FourCC("ANIM"));
  EXPECT_STREQ(entry->GetName()->GetChars(), "Animation Decompressor");
  EXPECT_FALSE(entry->IsAvailable());

  RObject<CString> empty(CString::WithString("Video Analyzers"));
  CList<CInventoryCatalogEntry>* none = nullptr;
  ASSERT_TRUE(catalog->Get(empty, none).Succeeded());
  RObject<CList<CInventoryCatalogEntry>> heldNone(none);
  EXPECT_EQ(none->GetCount(), 0);
}

TEST_F(InventoryCatalog, CodesWithoutADisplayNameAreNamedNull) {
  const CInventoryCatalogEntry entry(FourCC("zzzz"), nullptr, true);
  EXPECT_STREQ(entry.GetName()->GetChars(), "(null)");
  EXPECT_TRUE(entry.IsAvailable());
}
