#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/Yaml/YamlAttribute.h"
#include "System/Yaml/YamlDocument.h"
#include "System/Yaml/YamlSerialization.h"

using namespace Corvane::Mox;

namespace {

std::string Take(CString* s) {
  if (!s) return "<null>";
  std::string text = s->GetChars();
  s->Release();
  return text;
}

CYamlDocument* Read(const char* text) {
  RObject<CString> s(new CString(text));
  return CYamlDocument::CreateWithString(s);
}

std::vector<std::string> Names(CList<CYamlNode>* nodes) {
  std::vector<std::string> names;
  for (CYamlNode* node : *nodes) names.push_back(node->GetName() ? node->GetName()->GetChars() : "<null>");
  return names;
}

class YamlDocumentTest : public LeakCheckedTest {};

TEST_F(YamlDocumentTest, OneColonMakesAnAttributeMoreColonsAreIgnored) {
  RObject<CYamlDocument> one(Read("name: value"));
  ASSERT_TRUE(one);
  RObject<CList<CYamlAttribute>> attributes(one->GetAttributes());
  ASSERT_EQ(attributes->GetCount(), 1);
  EXPECT_EQ(Take(one->GetAttribute("name")), "value");

  RObject<CYamlDocument> time(Read("time: 10:00"));
  ASSERT_TRUE(time);
  EXPECT_FALSE(time->HasAttributes());
  RObject<CYamlDocument> url(Read("url: http://host/a\nkept:   spaced value  "));
  EXPECT_EQ(Take(url->GetAttribute("url")), "<null>");
  EXPECT_EQ(Take(url->GetAttribute("kept")), "spaced value");
  EXPECT_TRUE(one->IsType(FourCC("ymln")));
}

TEST_F(YamlDocumentTest, NameColonOpensAChildOfTheDeeperLines) {
  RObject<CYamlDocument> document(Read("child:\n  a: 1\nafter: 2"));
  ASSERT_TRUE(document);
  RObject<CYamlNode> child(document->GetChildNode("child"));
  ASSERT_TRUE(child);
  EXPECT_EQ(Take(child->GetAttribute("a")), "1");
  EXPECT_EQ(Take(child->GetAttribute("after")), "<null>");
  EXPECT_EQ(Take(document->GetAttribute("after")), "2");
  RObject<CList<CYamlNode>> children(document->GetChildNodes());
  EXPECT_EQ(children->GetCount(), 1);
}

TEST_F(YamlDocumentTest, LinesEndAtCarriageReturnsAndLineFeedsAndEmptyLinesDrop) {
  RObject<CYamlDocument> document(Read("a: 1\r\n\r\nb: 2\rc: 3\n\n\nd: 4\n   \n"));
  RObject<CList<CYamlAttribute>> attributes(document->GetAttributes());
  std::vector<std::string> names;
  for (CYamlAttribute* attribute : *attributes) names.push_back(attribute->GetName()->GetChars());
  EXPECT_EQ(names, (std::vector<std::string>{"a", "b", "c", "d"}));
}

TEST_F(YamlDocumentTest, ListItemsUnderANameAreChildrenOfThatName) {
  const char* text =
      "tracks:\n"
      "  - id: 1\n"
      "    kind: video\n"
      "  - id: 2\n"
      "    kind: audio\n"
      "    languages:\n"
      "      - code: eng\n"
      "      - code: fra\n"
      "compact:\n"
      "- x: 1\n"
      "- x: 2\n"
      "end: yes\n";
  RObject<CYamlDocument> document(Read(text));
  ASSERT_TRUE(document);
  RObject<CList<CYamlNode>> tracks(document->GetChildNodes("tracks"));
  ASSERT_EQ(tracks->GetCount(), 2);
  RObject<CYamlNode> second;
  tracks->Get(1, second.Out());
  EXPECT_EQ(second->GetAttributeAsInt32("id", 0), 2);
  EXPECT_EQ(Take(second->GetAttribute("kind")), "audio");
  RObject<CList<CYamlNode>> languages(second->GetChildNodes("languages"));
  ASSERT_EQ(languages->GetCount(), 2);
  RObject<CList<CYamlNode>> compact(document->GetChildNodes("compact"));
  EXPECT_EQ(compact->GetCount(), 2);
  EXPECT_EQ(Take(document->GetAttribute("end")), "yes");
  RObject<CList<CYamlNode>> all(document->GetChildNodes());
  EXPECT_EQ(Names(all), (std::vector<std::string>{"tracks", "tracks", "compact", "compact"}));
}

TEST_F(YamlDocumentTest, WritesFourSpacesPerLevelWithDashedListItems) {
  RObject<CYamlDocument> document(CYamlDocument::Create());
  document->SetAttribute("version", 2);
  RObject<CString> name(new CString("output"));
  RObject<CYamlNode> output(new CYamlNode(name, nullptr));
  output->SetAttribute("path", "/tmp/out.mp4");
  output->SetAttribute("enabled", true);
  RObject<CString> streamName(new CString("stream"));
  RObject<CYamlNode> stream(new CYamlNode(streamName, nullptr));
  stream->SetAttribute("bitrate", 1500000LL);
  output->AddChildNode(stream);
  document->AddChildNode(output);

  std::string expected =
      "version: 2\r\n"
      "output:\r\n"
      "  - path: /tmp/out.mp4\r\n"
      "    enabled: true\r\n"
      "    stream:\r\n"
      "      - bitrate: 1500000\r\n";
  EXPECT_EQ(Take(document->GetString()), expected);
  EXPECT_EQ(Take(output->GetString(0, false)), "path: /tmp/out.mp4\r\nenabled: true\r\nstream:\r\n  - bitrate: 1500000\r\n");
  RObject<CByteArray> bytes(document->GetBytes());
  EXPECT_EQ(bytes->GetLength(), static_cast<int>(expected.size()));

  // And the text reads back to the same tree.
  RObject<CYamlDocument> again(CYamlDocument::CreateWithBytes(bytes));
  ASSERT_TRUE(again);
  EXPECT_EQ(Take(again->GetString()), expected);
  RObject<CYamlNode> readOutput(again->GetChildNode("output"));
  RObject<CYamlNode> readStream(readOutput->GetChildNode("stream"));
  ASSERT_TRUE(readStream);
  EXPECT_EQ(readStream->GetAttributeAsInt64("bitrate", 0), 1500000LL);
  EXPECT_TRUE(readOutput->GetAttributeAsBool("enabled", false));
}

TEST_F(YamlDocumentTest, RoundTripsNestedRepeatedAndEmptyChildren) {
  RObject<CYamlDocument> document(CYamlDocument::Create());
  for (int i = 0; i < 3; ++i) {
    RObject<CString> name(new CString(i < 2 ? "item" : "empty"));
    RObject<CYamlNode> item(new CYamlNode(name, nullptr));
    if (i < 2) {
      RObject<CString> innerName(new CString("inner"));
      RObject<CYamlNode> inner(new CYamlNode(innerName, nullptr));
      inner->SetAttribute("depth", i);
      item->AddChildNode(inner);
      RObject<CString> otherName(new CString("other"));
      RObject<CYamlNode> other(new CYamlNode(otherName, nullptr));
      item->AddChildNode(other);
    }
    document->AddChildNode(item);
  }
  document->SetAttribute("last", "x");
  RObject<CString> text(document->GetString());
  RObject<CYamlDocument> again(CYamlDocument::CreateWithString(text));
  ASSERT_TRUE(again);
  EXPECT_EQ(Take(again->GetString()), std::string(text->GetChars()));
  RObject<CList<CYamlNode>> items(again->GetChildNodes("item"));
  ASSERT_EQ(items->GetCount(), 2);
  RObject<CYamlNode> second;
  items->Get(1, second.Out());
  RObject<CList<CYamlNode>> inner(second->GetChildNodes());
  EXPECT_EQ(Names(inner), (std::vector<std::string>{"inner", "other"}));
  RObject<CYamlNode> depth(second->GetChildNode("inner"));
  EXPECT_EQ(depth->GetAttributeAsInt32("depth", -1), 1);
}

TEST_F(YamlDocumentTest, AttributesKeepTheirOrderAndConvert) {
  RObject<CYamlDocument> document(Read("b: 0x10\na: -3\nc: 2.5\nd: true\ne: text"));
  document->SetAttribute("a", "4");
  RObject<CYamlAttribute> extra(new CYamlAttribute("f", "1"));
  document->SetAttribute(extra);
  document->SetAttribute("g", 0.1);
  RObject<CList<CYamlAttribute>> attributes(document->GetAttributes());
  std::vector<std::string> names;
  for (CYamlAttribute* attribute : *attributes) names.push_back(attribute->GetName()->GetChars());
  EXPECT_EQ(names, (std::vector<std::string>{"b", "a", "c", "d", "e", "f", "g"}));
  EXPECT_EQ(document->GetAttributeAsInt32("b", 0), 16);
  EXPECT_EQ(document->GetAttributeAsUInt32("a", 0), 4u);
  EXPECT_EQ(document->GetAttributeAsUInt64("f", 0), 1u);
  EXPECT_DOUBLE_EQ(document->GetAttributeAsDouble("c", 0), 2.5);
  EXPECT_DOUBLE_EQ(document->GetAttributeAsDouble("g", 0), 0.1);
  EXPECT_TRUE(document->GetAttributeAsBool("d", false));
  EXPECT_TRUE(document->GetAttributeAsBool("e", true));
  EXPECT_EQ(document->GetAttributeAsInt64("missing", 9), 9);

  RObject<CVariant> number(document->GetAttributeAsInt32Variant("b"));
  ASSERT_TRUE(number);
  EXPECT_EQ(number->GetVariantType(), CVariant::Int32);
  EXPECT_EQ(number->ToInt32(), 16);
  RObject<CVariant> wide(document->GetAttributeAsInt64Variant("a"));
  EXPECT_EQ(wide->GetVariantType(), CVariant::Int64);
  RObject<CVariant> real(document->GetAttributeAsDoubleVariant("c"));
  EXPECT_DOUBLE_EQ(real->ToDouble(), 2.5);
  RObject<CVariant> flag(document->GetAttributeAsBoolVariant("d"));
  EXPECT_TRUE(flag->ToBoolean());
  RObject<CVariant> missing(document->GetAttributeAsBoolVariant("missing"));
  EXPECT_FALSE(missing);
}

TEST_F(YamlDocumentTest, NestingIsBoundedAndCyclesAreRefused) {
  std::string text;
  for (int i = 0; i <= CYamlNode::MaxDepth + 1; ++i) text += std::string(static_cast<std::size_t>(i), ' ') + "n:\n";
  RObject<CString> deep(new CString(text.c_str()));
  RObject<CYamlDocument> document;
  Result result = CYamlDocument::CreateWithString(deep, document.Out());
  EXPECT_EQ(result.GetType(), ResultFormatError().GetType());
  ASSERT_TRUE(result.GetDetails());
  EXPECT_NE(std::string(result.GetDetails()).find("line 129"), std::string::npos) << result.GetDetails();
  EXPECT_FALSE(document);
  EXPECT_THROW(CYamlDocument doc(deep), Result);

  RObject<CString> name(new CString("a"));
  RObject<CYamlNode> a(new CYamlNode(name, nullptr));
  RObject<CYamlNode> b(new CYamlNode(name, nullptr));
  ASSERT_TRUE(a->AddChildNode(b).Succeeded());
  EXPECT_EQ(a->AddChildNode(a).GetType(), ResultInvalidOperation().GetType());
  EXPECT_EQ(b->AddChildNode(a).GetType(), ResultInvalidOperation().GetType());
  EXPECT_TRUE(a->RemoveChildNode(b).Succeeded());
  EXPECT_EQ(a->RemoveChildNode(b).GetType(), ResultFalse().GetType());
  // Once apart, b may hold a.
  EXPECT_TRUE(b->AddChildNode(a).Succeeded());
}

// A serialisable rendition: a name, a bit rate and its segments.
class CRendition : public CObject, public IYamlSerialization {
 public:
  std::string name;
  long long bitRate = 0;
  std::vector<int> segments;

  Result Write(CYamlNode* node) override {
    node->SetAttribute("name", name.c_str());
    node->SetAttribute("bitrate", bitRate);
    for (int segment : segments) {
      RObject<CString> childName(new CString("segment"));
      RObject<CYamlNode> child(new CYamlNode(childName, nullptr));
      child->SetAttribute("number", segment);
      node->AddChildNode(child);
    }
    return ResultOK();
  }
  Result Parse(CYamlNode* node) override {
    RObject<CString> value(node->GetAttribute("name"));
    if (!value) return ResultFormatError("no name");
    name = value->GetChars();
    bitRate = node->GetAttributeAsInt64("bitrate", 0);
    RObject<CList<CYamlNode>> children(node->GetChildNodes("segment"));
    for (CYamlNode* child : *children) segments.push_back(child->GetAttributeAsInt32("number", -1));
    return ResultOK();
  }
};

TEST_F(YamlDocumentTest, SerializationRoundTripsThroughAStream) {
  RObject<CRendition> rendition(new CRendition());
  rendition->name = "video_1500k";
  rendition->bitRate = 1500000;
  rendition->segments = {1, 2, 3};
  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(rendition->Serialize(stream).Succeeded());
  RObject<CString> text(rendition->GetString());
  RObject<CByteArray> bytes(rendition->GetBytes());
  EXPECT_EQ(stream->GetLength(), bytes->GetLength());
  EXPECT_EQ(text->GetChars(), std::string("name: video_1500k\r\nbitrate: 1500000\r\nsegment:\r\n  - number: 1\r\n"
                                          "segment:\r\n  - number: 2\r\nsegment:\r\n  - number: 3\r\n"));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CRendition> copy(new CRendition());
  ASSERT_TRUE(copy->Deserialize(stream).Succeeded());
  EXPECT_EQ(copy->name, "video_1500k");
  EXPECT_EQ(copy->bitRate, 1500000);
  EXPECT_EQ(copy->segments, (std::vector<int>{1, 2, 3}));
  RObject<CMemoryStream> empty(new CMemoryStream());
  RObject<CRendition> nameless(new CRendition());
  EXPECT_EQ(nameless->Deserialize(empty).GetType(), ResultFormatError().GetType());
}

}  // namespace
