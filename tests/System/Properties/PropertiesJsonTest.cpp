#include <cstdint>
#include <string>

#include "System/Properties/PropertiesTestSupport.h"

using namespace Corvane::Mox;
using PropertiesTest::BytesOf;
using PropertiesTest::FromJsonText;
using PropertiesTest::IntArray;
using PropertiesTest::RealisticBag;
using PropertiesTest::StreamOf;
using PropertiesTest::Take;

namespace {

using PropertiesJsonTest = LeakCheckedTest;

// The Result thrown by FromJson on text, or ResultOK when it parsed.
Result JsonFailure(const std::string& text) {
  try {
    RObject<CProperties> bag(FromJsonText(text));
  } catch (const Result& failure) {
    return failure;
  }
  return ResultOK();
}

std::string DetailsOf(const Result& result) { return result.GetDetails() ? result.GetDetails() : "<none>"; }

TEST_F(PropertiesJsonTest, EmptyBagsAndContainers) {
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(Take(bag->ToJson()), "{}");
  RObject<CProperties> inner(new CProperties());
  RObject<CVariantArray> array(new CVariantArray(0));
  bag->SetProperty("bag", inner.Get());
  bag->SetProperty("array", array.Get());
  bag->SetProperty("nothing", static_cast<CVariant*>(nullptr));
  bag->SetProperty("missing", static_cast<CProperties*>(nullptr));
  EXPECT_EQ(Take(bag->ToJson()),
            "{\n"
            "  \"bag\": {},\n"
            "  \"array\": [],\n"
            "  \"nothing\": null,\n"
            "  \"missing\": {}\n"
            "}");
}

TEST_F(PropertiesJsonTest, ScalarsAreWrittenByType) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("int", -12);
  bag->SetProperty("uint64", 18446744073709551615ULL);
  bag->SetProperty("bool", true);
  bag->SetProperty("double", 2.5);
  bag->SetProperty("text", "plain");
  bag->SetFourProperty("four", FourCC("vid "));
  RObject<CByteArray> bytes(BytesOf({0x00, 0xAB, 0x1F}));
  bag->SetProperty("bytes", bytes.Get());
  int local = 0;
  bag->SetProperty("pointer", static_cast<void*>(&local));
  std::string pointer = std::to_string(reinterpret_cast<std::uintptr_t>(&local));
  EXPECT_EQ(Take(bag->ToJson()),
            "{\n"
            "  \"int\": -12,\n"
            "  \"uint64\": 18446744073709551615,\n"
            "  \"bool\": true,\n"
            "  \"double\": 2.500000,\n"
            "  \"text\": \"plain\",\n"
            "  \"four\": \"vid \",\n"
            "  \"bytes\": \"00ab1f\",\n"
            "  \"pointer\": " +
                pointer +
                "\n"
                "}");
}

TEST_F(PropertiesJsonTest, TextIsEscapedWithQuotesBecomingApostrophes) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("s", "a\"b");
  EXPECT_EQ(Take(bag->ToJson()), "{\n  \"s\": \"a'b\"\n}");

  bag->SetProperty("s", "back\\slash \"q\"\ttab\nline\rret\bbs\ffeed");
  EXPECT_EQ(Take(bag->ToJson()), "{\n  \"s\": \"back\\\\slash 'q'\\ttab\\nline\\rret\\bbs\\ffeed\"\n}");
  // Apostrophes and other text pass unchanged.
  bag->SetProperty("s", "it's caf\xC3\xA9 / ok");
  EXPECT_EQ(Take(bag->ToJson()), "{\n  \"s\": \"it's caf\xC3\xA9 / ok\"\n}");
}

TEST_F(PropertiesJsonTest, NestedBagsAndArraysIndentByTwo) {
  RObject<CProperties> bag(new CProperties());
  RObject<CProperties> inner(new CProperties());
  RObject<CProperties> deepest(new CProperties());
  deepest->SetProperty("z", 26);
  inner->SetProperty("x", 1);
  inner->SetProperty("deep", deepest.Get());
  bag->SetProperty("inner", inner.Get());
  RObject<CVariantArray> array(new CVariantArray(4));
  RObject<CVariant> one(new CVariant(1));
  RObject<CVariantArray> nested(IntArray({2, 3}));
  RObject<CVariant> nestedValue(new CVariant(nested.Get()));
  RObject<CVariant> bagValue(new CVariant(deepest.Get()));
  array->Set(0, one.Get());
  array->Set(1, nestedValue.Get());
  array->Set(3, bagValue.Get());
  bag->SetProperty("list", array.Get());
  bag->SetProperty("last", "end");
  EXPECT_EQ(Take(bag->ToJson()),
            "{\n"
            "  \"inner\": {\n"
            "    \"x\": 1,\n"
            "    \"deep\": {\n"
            "      \"z\": 26\n"
            "    }\n"
            "  },\n"
            "  \"list\": [\n"
            "    1,\n"
            "    [\n"
            "      2,\n"
            "      3\n"
            "    ],\n"
            "    null,\n"
            "    {\n"
            "      \"z\": 26\n"
            "    }\n"
            "  ],\n"
            "  \"last\": \"end\"\n"
            "}");
}

TEST_F(PropertiesJsonTest, DescriptionsGoIntoATrailingAnnotationObject) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("a", 1);
  bag->SetProperty("b", 2);
  bag->SetProperty("c", 3);
  bag->SetPropertyDescription("a", "first \"one\"");
  bag->SetPropertyDescription("c", "third");
  EXPECT_EQ(Take(bag->ToJson()),
            "{\n"
            "  \"a\": 1,\n"
            "  \"b\": 2,\n"
            "  \"c\": 3,\n"
            "  \"$annotation\": {\n"
            "    \"a\": \"first 'one'\",\n"
            "    \"c\": \"third\"\n"
            "  }\n"
            "}");
}

TEST_F(PropertiesJsonTest, StreamFormWritesTheSameTextAndRefusesNull) {
  RObject<CProperties> bag(RealisticBag());
  RObject<CMemoryStream> stream(new CMemoryStream());
  EXPECT_EQ(bag->ToJson(stream.Get()), ResultOK());
  std::string written(reinterpret_cast<const char*>(stream->GetData()), static_cast<std::size_t>(stream->GetLength()));
  EXPECT_EQ(written, Take(bag->ToJson()));
  EXPECT_EQ(bag->ToJson(nullptr), ResultArgumentNull());
  // A bag's own text is its JSON.
  EXPECT_EQ(Take(bag->ToString()), written);
}

TEST_F(PropertiesJsonTest, WriteFailuresAreThrown) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("long enough", "to overflow a four-byte stream");
  RObject<CMemoryStream> tiny(new CMemoryStream(4));
  EXPECT_THROW(bag->ToJson(tiny.Get()), Result);
  EXPECT_THROW(bag->ToYaml(tiny.Get()), Result);
}

TEST_F(PropertiesJsonTest, ReadingMapsJsonKindsToVariantTypes) {
  RObject<CProperties> bag(
      FromJsonText("{\"small\": -5, \"big\": -9000000000, \"positive\": 3000000000, \"large\": 9000000000,"
                   " \"huge\": 18446744073709551615,"
                   " \"real\": 1.5, \"exp\": 1e3, \"yes\": true, \"text\": \"caf\\u00e9\", \"none\": null,"
                   " \"list\": [1, \"two\", null, [], {}], \"bag\": {\"k\": \"v\"}}"));
  const struct {
    const char* name;
    CVariant::VariantType type;
  } expected[] = {{"small", CVariant::Int32},       {"big", CVariant::Int64},     {"positive", CVariant::UInt32},
                  {"large", CVariant::Int64},       {"huge", CVariant::UInt64},   {"real", CVariant::Double},
                  {"exp", CVariant::Double},        {"yes", CVariant::Boolean},   {"text", CVariant::String},
                  {"list", CVariant::VariantArray}, {"bag", CVariant::Properties}};
  for (const auto& entry : expected) {
    RObject<CVariant> value(bag->GetProperty(entry.name));
    ASSERT_TRUE(value) << entry.name;
    EXPECT_EQ(value->GetVariantType(), entry.type) << entry.name;
  }
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("small"))->ToInt32(), -5);
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("big"))->ToInt64(), -9000000000LL);
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("positive"))->ToUInt32(), 3000000000u);
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("huge"))->ToUInt64(), 18446744073709551615ULL);
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("exp"))->ToDouble(), 1000.0);
  EXPECT_EQ(Take(RObject<CVariant>(bag->GetProperty("text"))->ToString()), "caf\xC3\xA9");
  EXPECT_FALSE(bag->ContainsProperty("none"));
  EXPECT_EQ(bag->GetPropertyCount(), 12);  // the null member keeps its key
  EXPECT_EQ(Take(RObject<CVariant>(bag->GetProperty("list"))->ToString()), "[ 1, two, <null>, [  ], {} ]");
  RObject<CProperties> inner;
  ASSERT_EQ(bag->GetProperty("bag", inner.Out()), ResultOK());
  EXPECT_EQ(Take(RObject<CVariant>(inner->GetProperty("k"))->ToString()), "v");
}

TEST_F(PropertiesJsonTest, TextsEndAtAZeroCharacter) {
  RObject<CProperties> bag(FromJsonText("{\"a\\u0000b\": 1, \"a\\u0000c\": 2, \"t\": \"x\\u0000y\"}"));
  EXPECT_EQ(bag->GetPropertyCount(), 2);
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("a"))->ToInt32(), 2);
  EXPECT_EQ(Take(RObject<CVariant>(bag->GetProperty("t"))->ToString()), "x");
}

TEST_F(PropertiesJsonTest, AnnotationsComeBackAsDescriptions) {
  RObject<CProperties> bag(FromJsonText("{\"a\": 1, \"$annotation\": {\"a\": \"the a\", \"ghost\": \"no such key\"}}"));
  EXPECT_EQ(bag->GetPropertyCount(), 1);
  RObject<CString> description;
  EXPECT_EQ(bag->GetPropertyDescription("a", description.Out()), ResultOK());
  EXPECT_STREQ(description->GetChars(), "the a");
  // The name is reserved: under it nothing but descriptions is read, and a
  // name that only differs after a zero character is the same name.
  RObject<CProperties> plain(FromJsonText("{\"$annotation\": 5, \"b\": 2}"));
  EXPECT_EQ(plain->GetPropertyCount(), 1);
  EXPECT_FALSE(plain->ContainsProperty("$annotation"));
  RObject<CProperties> alias(FromJsonText("{\"b\": 2, \"$annotation\\u0000x\": {\"b\": \"bee\"}}"));
  EXPECT_EQ(alias->GetPropertyCount(), 1);
  EXPECT_EQ(alias->GetPropertyDescription("b", description.Out()), ResultOK());
  EXPECT_STREQ(description->GetChars(), "bee");
}

TEST_F(PropertiesJsonTest, BadTextIsRefusedWithTheReasons) {
  for (const char* text : {"", "{", "{\"a\": }", "{\"a\" 1}", "[1, 2", "nul", "{\"a\": 1} trailing", "{'a': 1}",
                           "{\"a\": 1,}", "\xFF\xFE"}) {
    Result failure = JsonFailure(text);
    EXPECT_EQ(failure, ResultError()) << text;
    EXPECT_EQ(DetailsOf(failure), "Json::Reader.parse failed") << text;
  }
  for (const char* text : {"[1, 2]", "42", "\"text\"", "null", "true"}) {
    Result failure = JsonFailure(text);
    EXPECT_EQ(failure, ResultError()) << text;
    EXPECT_EQ(DetailsOf(failure), "root value is not an object") << text;
  }
  EXPECT_THROW(RObject<CProperties>(CProperties::FromJson(nullptr)), Result);
}

TEST_F(PropertiesJsonTest, DeepNestingIsRefusedNotRecursedInto) {
  for (int depth : {150, 100000}) {
    std::string objects;
    for (int i = 0; i < depth; ++i) objects += "{\"a\":";
    objects += "1";
    objects.append(static_cast<std::size_t>(depth), '}');
    std::string arrays = "{\"a\":" + std::string(static_cast<std::size_t>(depth), '[') +
                         std::string(static_cast<std::size_t>(depth), ']') + "}";
    if (depth == 150) {
      // Realistic depths still read.
      RObject<CProperties> bag(FromJsonText(objects));
      EXPECT_EQ(bag->GetPropertyCount(), 1);
      RObject<CProperties> arrayBag(FromJsonText(arrays));
      EXPECT_EQ(arrayBag->GetPropertyCount(), 1);
    } else {
      EXPECT_EQ(JsonFailure(objects), ResultError());
      EXPECT_EQ(JsonFailure(arrays), ResultError());
    }
  }
}

TEST_F(PropertiesJsonTest, RealisticBagsSurviveARoundTrip) {
  RObject<CProperties> original(RealisticBag());
  std::string text = Take(original->ToJson());
  RObject<CProperties> back(FromJsonText(text));
  EXPECT_EQ(back->GetPropertyCount(), original->GetPropertyCount());
  // JSON keeps no types of its own: numbers, texts and booleans come back with
  // their values, codes and bytes as their texts.
  int width = 0;
  EXPECT_EQ(back->GetProperty("Width", width), ResultOK());
  EXPECT_EQ(width, 1920);
  long long duration = 0;
  EXPECT_EQ(back->GetProperty("Duration", duration), ResultOK());
  EXPECT_EQ(duration, 90000000000LL);
  bool interlaced = true;
  EXPECT_EQ(back->GetProperty("Interlaced", interlaced), ResultOK());
  EXPECT_FALSE(interlaced);
  unsigned int codec = 0;
  EXPECT_EQ(back->GetFourProperty("Format", codec), ResultOK());
  EXPECT_EQ(codec, FourCC("vid "));
  EXPECT_EQ(Take(RObject<CVariant>(back->GetProperty("DecoderConfiguration"))->ToString()), "01640028ffe1");
  RObject<CProperties> audio;
  ASSERT_EQ(back->GetProperty("Audio", audio.Out()), ResultOK());
  RObject<CProperties> loudness;
  ASSERT_EQ(audio->GetProperty("Loudness", loudness.Out()), ResultOK());
  double integrated = 0;
  EXPECT_EQ(loudness->GetProperty("Integrated", integrated), ResultOK());
  EXPECT_EQ(integrated, -23.5);
  RObject<CString> description;
  EXPECT_EQ(audio->GetPropertyDescription("Channels", description.Out()), ResultOK());
  EXPECT_STREQ(description->GetChars(), "5.1 layout");
  EXPECT_EQ(back->GetPropertyDescription("Width", description.Out()), ResultOK());
  EXPECT_STREQ(description->GetChars(), "luma samples per line");
  RObject<CVariantArray> tracks;
  ASSERT_EQ(back->GetProperty("Tracks", tracks.Out()), ResultOK());
  EXPECT_EQ(
      Take(tracks->ToString()),
      Take(RObject<CVariantArray>(RObject<CVariant>(original->GetProperty("Tracks"))->ToVariantArray())->ToString()));

  // A second trip gives the same bag: the text of its members is stable
  // (member order follows the reader, which sorts names).
  RObject<CProperties> again(FromJsonText(Take(back->ToJson())));
  EXPECT_EQ(Take(again->ToJson()), Take(back->ToJson()));
}

}  // namespace
