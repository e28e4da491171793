#include <string>

#include "System/Properties/PropertiesTestSupport.h"

using namespace Corvane::Mox;
using PropertiesTest::BytesOf;
using PropertiesTest::FromXmlText;
using PropertiesTest::IntArray;
using PropertiesTest::RealisticBag;
using PropertiesTest::Take;

namespace {

using PropertiesXmlTest = LeakCheckedTest;

const std::string Header =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<container xmlns=\"urn:corvane:mox:properties\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"";

// The Result thrown by FromXml on text (ResultOK when it read), and whether
// anything reached standard error meanwhile.
Result XmlFailure(const std::string& text, std::string* errorOutput) {
  Result outcome;
  ::testing::internal::CaptureStderr();
  try {
    RObject<CProperties> bag(FromXmlText(text));
  } catch (const Result& failure) {
    outcome = failure;
  }
  *errorOutput = ::testing::internal::GetCapturedStderr();
  return outcome;
}

CProperties* XmlRoundTrip(CProperties* bag) { return FromXmlText(Take(bag->ToXml())); }

TEST_F(PropertiesXmlTest, DocumentShape) {
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(Take(bag->ToXml()), Header + "/>\n");
  bag->SetProperty("a", 1);
  bag->SetProperty("s", "x<y&z");
  bag->SetPropertyDescription("a", "the \"a\"");
  EXPECT_EQ(Take(bag->ToXml()), Header +
                                    ">\n"
                                    "  <a xsi:type=\"xs:int\" annotation=\"the &quot;a&quot;\">1</a>\n"
                                    "  <s xsi:type=\"xs:string\">x&lt;y&amp;z</s>\n"
                                    "</container>\n");
}

TEST_F(PropertiesXmlTest, NestingArraysNullsAndBytes) {
  RObject<CProperties> bag(new CProperties());
  RObject<CProperties> inner(new CProperties());
  inner->SetFourProperty("code", FourCC("vid "));
  bag->SetProperty("inner", inner.Get());
  RObject<CVariantArray> list(IntArray({7, 8}));
  list->Set(1, nullptr);
  bag->SetProperty("list", list.Get());
  bag->SetProperty("none", static_cast<CVariant*>(nullptr));
  RObject<CByteArray> bytes(BytesOf({'M', 'a', 'n'}));
  bag->SetProperty("bytes", bytes.Get());
  EXPECT_EQ(Take(bag->ToXml()), Header +
                                    ">\n"
                                    "  <inner xsi:type=\"object\">\n"
                                    "    <code xsi:type=\"four\">vid </code>\n"
                                    "  </inner>\n"
                                    "  <list xsi:type=\"array\">\n"
                                    "    <item xsi:type=\"xs:int\">7</item>\n"
                                    "    <item xsi:nil=\"true\"/>\n"
                                    "  </list>\n"
                                    "  <none xsi:nil=\"true\"/>\n"
                                    "  <bytes xsi:type=\"xs:base64Binary\">TWFu</bytes>\n"
                                    "</container>\n");
}

TEST_F(PropertiesXmlTest, RealisticBagsComeBackWithTheirTypes) {
  RObject<CProperties> original(RealisticBag());
  RObject<CProperties> back(XmlRoundTrip(original.Get()));
  // XML keeps order, types and descriptions, so every text form agrees.
  EXPECT_EQ(Take(back->ToJson()), Take(original->ToJson()));
  EXPECT_EQ(Take(back->ToYaml()), Take(original->ToYaml()));
  EXPECT_EQ(Take(back->ToXml()), Take(original->ToXml()));
  RObject<CVariant> codec(back->GetProperty("Codec"));
  EXPECT_EQ(codec->GetVariantType(), CVariant::Four);
  EXPECT_EQ(codec->ToFour(), FourCC("avc1"));
  RObject<CByteArray> config(back->GetByteArray("DecoderConfiguration"));
  const unsigned char expected[] = {0x01, 0x64, 0x00, 0x28, 0xFF, 0xE1};
  EXPECT_TRUE(config->Equals(expected, 6));
}

TEST_F(PropertiesXmlTest, EveryValueTypeRoundTrips) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("bool", true);
  bag->SetProperty("char", 'q');
  bag->SetProperty("int8", static_cast<signed char>(-128));
  bag->SetProperty("uint8", static_cast<unsigned char>(255));
  bag->SetProperty("int16", static_cast<short>(-32768));
  bag->SetProperty("uint16", static_cast<unsigned short>(65535));
  bag->SetProperty("int32", -2147483647 - 1);
  bag->SetProperty("uint32", 4294967295u);
  bag->SetProperty("int64", -9223372036854775807LL - 1);
  bag->SetProperty("uint64", 18446744073709551615ULL);
  bag->SetProperty("float", -0.125f);
  bag->SetProperty("double", 12345.5);
  bag->SetProperty("text", "  spaced\n\ttext & <tags> \xE2\x82\xAC ");
  bag->SetProperty("empty", "");
  bag->SetFourProperty("zero", 0x00000001u);
  RObject<CByteArray> noBytes(new CByteArray(nullptr, 0));
  bag->SetProperty("noBytes", noBytes.Get());
  RObject<CProperties> back(XmlRoundTrip(bag.Get()));
  EXPECT_EQ(Take(back->ToJson()), Take(bag->ToJson()));
  EXPECT_EQ(RObject<CVariant>(back->GetProperty("int64"))->GetVariantType(), CVariant::Int64);
  EXPECT_EQ(RObject<CVariant>(back->GetProperty("float"))->GetVariantType(), CVariant::Float);
  EXPECT_EQ(RObject<CVariant>(back->GetProperty("uint8"))->GetVariantType(), CVariant::UInt8);
  EXPECT_EQ(RObject<CVariant>(back->GetProperty("char"))->ToChar(), 'q');
  EXPECT_EQ(Take(RObject<CVariant>(back->GetProperty("text"))->ToString()), "  spaced\n\ttext & <tags> \xE2\x82\xAC ");
  RObject<CVariant> none(back->GetProperty("noBytes"));
  ASSERT_TRUE(none);
  EXPECT_EQ(none->GetVariantType(), CVariant::ByteArray);
  EXPECT_EQ(RObject<CByteArray>(none->ToByteArray())->GetLength(), 0);
}

TEST_F(PropertiesXmlTest, KeysThatAreNotXmlNamesSurvive) {
  RObject<CProperties> bag(new CProperties());
  for (const char* key : {"with space", "1st", "$annotation", "a:b", "property", "item", "caf\xC3\xA9"})
    bag->SetProperty(key, key);
  std::string text = Take(bag->ToXml());
  EXPECT_NE(text.find("<property name=\"with space\" xsi:type=\"xs:string\">with space</property>"), std::string::npos);
  RObject<CProperties> back(FromXmlText(text));
  ASSERT_EQ(back->GetPropertyCount(), bag->GetPropertyCount());
  for (int i = 0; i < bag->GetPropertyCount(); ++i)
    EXPECT_EQ(Take(back->GetPropertyName(i)), Take(bag->GetPropertyName(i)));
  EXPECT_EQ(Take(back->ToJson()), Take(bag->ToJson()));
}

TEST_F(PropertiesXmlTest, HandWrittenDocumentsAreRead) {
  RObject<CProperties> bag(
      FromXmlText("<container xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>"
                  "<!-- comments and untyped elements are fine -->"
                  "<plain>just text</plain>"
                  "<flag xsi:type='xs:boolean'> 1 </flag>"
                  "<cdata xsi:type='xs:string'><![CDATA[a<b]]></cdata>"
                  "<n xsi:type='xs:unsignedShort'>65535</n>"
                  "</container>"));
  EXPECT_EQ(Take(RObject<CVariant>(bag->GetProperty("plain"))->ToString()), "just text");
  EXPECT_TRUE(RObject<CVariant>(bag->GetProperty("flag"))->ToBoolean());
  EXPECT_EQ(Take(RObject<CVariant>(bag->GetProperty("cdata"))->ToString()), "a<b");
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("n"))->GetVariantType(), CVariant::UInt16);
}

TEST_F(PropertiesXmlTest, MalformedOrForeignTextGivesAResultAndNoOutput) {
  std::string deep = "<container>";
  for (int i = 0; i < 100000; ++i)
    deep += "<a xsi:type='object' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>";
  std::string laughs =
      "<?xml version='1.0'?><!DOCTYPE container [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
      "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'>]>"
      "<container><x>&d;&d;&d;&d;</x></container>";
  const std::string xsi = " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";
  for (const std::string& text :
       {std::string(), std::string("not xml"), std::string("<container>"), std::string("<container><a></container>"),
        std::string("<other/>"), deep, laughs, "<container" + xsi + "><a xsi:type='xs:int'>abc</a></container>",
        "<container" + xsi + "><a xsi:type='xs:byte'>300</a></container>",
        "<container" + xsi + "><a xsi:type='xs:unsignedInt'>-1</a></container>",
        "<container" + xsi + "><a xsi:type='xs:boolean'>maybe</a></container>",
        "<container" + xsi + "><a xsi:type='xs:double'>1.5x</a></container>",
        "<container" + xsi + "><a xsi:type='mystery'>1</a></container>",
        std::string("<container>\xFF\xFE</container>")}) {
    std::string errorOutput;
    Result failure = XmlFailure(text, &errorOutput);
    EXPECT_TRUE(failure.Failed()) << text.substr(0, 80);
    EXPECT_EQ(failure, ResultFormatError()) << text.substr(0, 80);
    EXPECT_NE(failure.GetDetails(), nullptr) << text.substr(0, 80);
    EXPECT_EQ(errorOutput, "") << text.substr(0, 80);
  }
  EXPECT_THROW(RObject<CProperties>(CProperties::FromXml(nullptr)), Result);
}

TEST_F(PropertiesXmlTest, StreamFormRefusesNull) {
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(bag->ToXml(nullptr), ResultArgumentNull());
  RObject<CMemoryStream> stream(new CMemoryStream());
  EXPECT_EQ(bag->ToXml(stream.Get()), ResultOK());
  EXPECT_GT(stream->GetLength(), 0);
}

}  // namespace
