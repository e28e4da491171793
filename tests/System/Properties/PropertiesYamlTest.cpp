#include <cstdio>
#include <cstring>
#include <string>

#include "System/Properties/PropertiesTestSupport.h"

using namespace Corvane::Mox;
using PropertiesTest::BytesOf;
using PropertiesTest::IntArray;
using PropertiesTest::Take;

namespace {

using PropertiesYamlTest = LeakCheckedTest;

TEST_F(PropertiesYamlTest, EmptyBagIsJustTheDocumentMarker) {
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(Take(bag->ToYaml()), "---\n");
}

TEST_F(PropertiesYamlTest, TextsWithSyntaxCharactersAreSingleQuoted) {
  const std::string quoted = ":{}[],&*#?|+-<>=!%@\\";
  RObject<CProperties> bag(new CProperties());
  for (char c = ' '; c < 0x7F; ++c) {
    std::string text = std::string("a") + c + "b";
    bag->SetProperty("k", text.c_str());
    bool expectQuotes = quoted.find(c) != std::string::npos;
    std::string expected = "---\nk: " + (expectQuotes ? "'" + text + "'" : text) + "\n";
    EXPECT_EQ(Take(bag->ToYaml()), expected) << "character '" << c << "'";
  }
  // Four-character codes follow the same rule; numbers never get quotes.
  bag->ClearProperties();
  bag->SetFourProperty("plain", FourCC("vid "));
  bag->SetFourProperty("escaped", 1u);
  bag->SetProperty("number", -5);
  EXPECT_EQ(Take(bag->ToYaml()), "---\nplain: vid \nescaped: '%00%00%00%01'\nnumber: -5\n");
}

TEST_F(PropertiesYamlTest, ARealisticBagHasThisExactText) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("Width", 1920);
  bag->SetProperty("Title", "Evening News");
  bag->SetProperty("Ratio", "16:9");
  bag->SetFourProperty("Format", FourCC("vid "));
  bag->SetProperty("Negative", "-5");
  bag->SetProperty("Rate", 29.97);
  bag->SetProperty("Nothing", static_cast<CVariant*>(nullptr));
  RObject<CByteArray> bytes(BytesOf({0x00, 0xAB, 0x1F}));
  bag->SetProperty("Bytes", bytes.Get());
  int local = 0;
  bag->SetProperty("Pointer", static_cast<void*>(&local));
  RObject<CProperties> audio(new CProperties());
  audio->SetProperty("Channels", 6);
  audio->SetProperty("Layout", "L+R");
  audio->SetPropertyDescription("Channels", "six channels");
  bag->SetProperty("Audio", audio.Get());
  RObject<CProperties> empty(new CProperties());
  bag->SetProperty("Empty", empty.Get());
  RObject<CVariantArray> list(new CVariantArray(7));
  RObject<CVariant> one(new CVariant(1));
  RObject<CVariant> colon(new CVariant("a:b"));
  RObject<CVariantArray> emptyArray(new CVariantArray(0));
  RObject<CVariant> emptyArrayValue(new CVariant(emptyArray.Get()));
  RObject<CVariant> emptyBagValue(new CVariant(empty.Get()));
  RObject<CProperties> item(new CProperties());
  item->SetProperty("k", "v");
  RObject<CVariant> itemValue(new CVariant(item.Get()));
  RObject<CVariantArray> inner(IntArray({2}));
  RObject<CVariant> innerValue(new CVariant(inner.Get()));
  list->Set(0, one.Get());
  list->Set(1, colon.Get());
  list->Set(3, emptyArrayValue.Get());
  list->Set(4, emptyBagValue.Get());
  list->Set(5, itemValue.Get());
  list->Set(6, innerValue.Get());
  bag->SetProperty("List", list.Get());
  bag->SetProperty("Vacant", emptyArray.Get());
  bag->SetPropertyDescription("Width", "luma: samples");
  bag->SetPropertyDescription("Title", "shown");

  char pointer[32];
  std::snprintf(pointer, sizeof pointer, "%p", static_cast<void*>(&local));
  EXPECT_EQ(Take(bag->ToYaml()),
            "---\n"
            "Width: 1920\n"
            "Title: Evening News\n"
            "Ratio: '16:9'\n"
            "Format: vid \n"
            "Negative: '-5'\n"
            "Rate: 29.970000\n"
            "Nothing: null\n"
            "Bytes: 00ab1f\n"
            "Pointer: " +
                std::string(pointer) +
                "\n"
                "Audio:\n"
                "  Channels: 6\n"
                "  Layout: 'L+R'\n"
                "  $annotation:\n"
                "    Channels: six channels\n"
                "Empty: {}\n"
                "List:\n"
                "  - 1\n"
                "  - 'a:b'\n"
                "  - null\n"
                "  - []\n"
                "  - {}\n"
                "  -\n"
                "    k: v\n"
                "  -\n"
                "    - 2\n"
                "Vacant: []\n"
                "$annotation:\n"
                "  Width: 'luma: samples'\n"
                "  Title: shown\n");

  RObject<CMemoryStream> stream(new CMemoryStream());
  EXPECT_EQ(bag->ToYaml(stream.Get()), ResultOK());
  EXPECT_EQ(
      std::string(reinterpret_cast<const char*>(stream->GetData()), static_cast<std::size_t>(stream->GetLength())),
      Take(bag->ToYaml()));
  EXPECT_EQ(bag->ToYaml(nullptr), ResultArgumentNull());
}

TEST_F(PropertiesYamlTest, ObjectsPrintAsAddresses) {
  RObject<CProperties> bag(new CProperties());
  RObject<CString> text(new CString("held"));
  bag->SetProperty("object", static_cast<CObject*>(text.Get()));
  char expected[64];
  std::snprintf(expected, sizeof expected, "---\nobject: %p\n", static_cast<void*>(static_cast<CObject*>(text.Get())));
  EXPECT_EQ(Take(bag->ToYaml()), expected);
}

TEST_F(PropertiesYamlTest, BagsThatContainThemselvesAreRefused) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("self", bag.Get());
  EXPECT_THROW(Take(bag->ToYaml()), Result);
  EXPECT_THROW(Take(bag->ToJson()), Result);
  EXPECT_THROW(Take(bag->ToXml()), Result);
  bag->ClearProperties();  // break the cycle so that the bag can go
}

}  // namespace
