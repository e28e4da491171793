#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/Xml/XmlAttribute.h"
#include "System/Xml/XmlElement.h"
#include "System/Xml/XmlNamespace.h"
#include "System/Xml/XmlTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::XmlTesting;

namespace {

constexpr const char* XmlNamespaceUri = "http://www.w3.org/XML/1998/namespace";

class XmlElementTest : public LeakCheckedTest {
 protected:
  // The root of a document parsed from text; the document stays alive through it.
  static CXmlElement* Root(const char* text) {
    RObject<CXmlDocument> document(Parse(text));
    return document ? document->GetRootElement() : nullptr;
  }
};

TEST_F(XmlElementTest, QualifiedNamesResolveThroughDeclarationsInScope) {
  RObject<CXmlElement> root(Root(
      "<m:root xmlns:m=\"urn:m\" xmlns=\"urn:d\"><child/><m:x a=\"1\" m:b=\"2\" xml:lang=\"fr\"/><x/></m:root>"));
  ASSERT_TRUE(root);
  EXPECT_EQ(Take(root->GetName()), "m:root");
  EXPECT_EQ(Take(root->GetLocalName()), "root");
  EXPECT_EQ(Take(root->GetNamespaceUri()), "urn:m");

  RObject<CXmlElement> child(root->GetChildElement("child", "urn:d"));
  ASSERT_TRUE(child);
  EXPECT_EQ(Take(child->GetNamespaceUri()), "urn:d");
  RObject<CXmlElement> none(root->GetChildElement("child", "urn:m"));
  EXPECT_FALSE(none);

  // By namespace, "x" matches only m:x; by qualified name "m:x" likewise; the
  // bare local name matches both.
  RObject<CList<CXmlElement>> inM(root->GetChildElements("x", "urn:m"));
  EXPECT_EQ(inM->GetCount(), 1);
  RObject<CList<CXmlElement>> bare(root->GetChildElements("x"));
  EXPECT_EQ(bare->GetCount(), 2);
  RObject<CList<CXmlElement>> prefixed(root->GetChildElements("m:x"));
  EXPECT_EQ(prefixed->GetCount(), 1);
  RObject<CList<CXmlElement>> all(root->GetChildElements());
  EXPECT_EQ(all->GetCount(), 3);
  EXPECT_TRUE(all->IsType(FourCC("<n/>")));

  RObject<CXmlElement> x(root->GetChildElement(reinterpret_cast<const unsigned char*>("x"),
                                               reinterpret_cast<const unsigned char*>("urn:m")));
  ASSERT_TRUE(x);
  EXPECT_EQ(Take(x->GetAttribute("a")), "1");
  EXPECT_EQ(Take(x->GetAttribute("m:b")), "2");
  EXPECT_EQ(Take(x->GetAttribute("b", "urn:m")), "2");
  EXPECT_EQ(Take(x->GetAttribute("b")), "<null>");
  // The prefix xml is always bound to the XML namespace.
  EXPECT_EQ(Take(x->GetAttribute("lang", XmlNamespaceUri)), "fr");
  EXPECT_EQ(Take(x->GetAttribute("xml:lang")), "fr");
  RObject<CXmlNamespace> xmlNs(x->GetNamespace("xml"));
  ASSERT_TRUE(xmlNs);
  EXPECT_STREQ(xmlNs->GetUri(), XmlNamespaceUri);
  EXPECT_EQ(Take(CXmlNode::GetQualifiedName(x, "b", "urn:m")), "m:b");
  EXPECT_EQ(Take(CXmlNode::GetNamespaceUri(x, "m:anything")), "urn:m");
  EXPECT_EQ(Take(CXmlNode::GetBaseName("m:anything")), "anything");
}

TEST_F(XmlElementTest, NamesWithSeveralColonsSplitAtTheFirst) {
  // Not namespace-well-formed, but libxml2 accepts it: prefix p, local name x:y.
  RObject<CXmlElement> root(Root("<r xmlns:p=\"urn:p\" p:x:y=\"1\"/>"));
  ASSERT_TRUE(root);
  RObject<CList<CXmlAttribute>> attributes(root->GetAttributes());
  RObject<CXmlAttribute> attribute;
  attributes->Get(1, attribute.Out());
  EXPECT_STREQ(attribute->GetName(), "p:x:y");
  EXPECT_STREQ(attribute->GetLocalName(), "x:y");
  EXPECT_EQ(Take(root->GetAttribute(attribute->GetName(), attribute->GetNamespaceUri())), "1");
  EXPECT_EQ(Take(root->GetAttribute("p:x:y")), "1");
}

TEST_F(XmlElementTest, DeclarationsAppearAsXmlnsAttributes) {
  RObject<CXmlElement> root(Root("<r xmlns=\"urn:d\" xmlns:p=\"urn:p\" p:a=\"1\" b=\"2\"/>"));
  RObject<CList<CXmlAttribute>> attributes(root->GetAttributes());
  std::vector<std::string> names;
  std::vector<bool> declarations;
  for (CXmlAttribute* attribute : *attributes) {
    names.push_back(attribute->GetName());
    declarations.push_back(attribute->IsNamespaceDeclaration());
    EXPECT_TRUE(attribute->IsType(FourCC("n=\"\"")));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"xmlns", "xmlns:p", "p:a", "b"}));
  EXPECT_EQ(declarations, (std::vector<bool>{true, true, false, false}));
  EXPECT_EQ(Take(root->GetAttribute("xmlns:p")), "urn:p");
  RObject<CList<CXmlNamespace>> namespaces(root->GetNamespaces());
  EXPECT_EQ(namespaces->GetCount(), 2);
  RObject<CXmlNamespace> p(root->GetNamespace("p"));
  EXPECT_EQ(Take(p->GetQualifiedName("a")), "p:a");
  RObject<CXmlNamespace> unprefixed(new CXmlNamespace("urn:d", nullptr));
  EXPECT_EQ(Take(unprefixed->GetQualifiedName("a")), "a");
}

TEST_F(XmlElementTest, NamespacesAndAttributesAreAddedAndRemoved) {
  RObject<CXmlDocument> document(CXmlDocument::Create());
  RObject<CXmlElement> root(new CXmlElement("root"));
  document->AddChildElement(root);
  ASSERT_TRUE(root->AddNamespace("cenc", "urn:mpeg:cenc:2013").Succeeded());
  ASSERT_TRUE(root->AddNamespace("cenc", "urn:mpeg:cenc:2013").Succeeded());
  Result redeclared = root->AddNamespace("cenc", "urn:other");
  EXPECT_TRUE(IsKind<ResultError>(redeclared));
  EXPECT_EQ(Details(redeclared), "failed to add new libxml namespace");
  RObject<CXmlNamespace> ns(new CXmlNamespace("urn:scte:scte35:2013:xml", "scte35"));
  ASSERT_TRUE(root->AddNamespace(ns).Succeeded());

  ASSERT_TRUE(root->SetAttribute("cenc:default_KID", "10000000-1000-1000-1000-100000000001").Succeeded());
  ASSERT_TRUE(root->SetAttribute("pssh", "urn:mpeg:cenc:2013", "AAAA").Succeeded());
  ASSERT_TRUE(root->SetAttribute("id", "urn:new", "3").Succeeded());
  RObject<CXmlAttribute> attribute(new CXmlAttribute("count", "5"));
  ASSERT_TRUE(root->SetAttribute(attribute).Succeeded());
  EXPECT_EQ(Take(root->GetAttribute("default_KID", "urn:mpeg:cenc:2013")), "10000000-1000-1000-1000-100000000001");
  EXPECT_EQ(Take(root->GetAttribute("cenc:pssh")), "AAAA");
  EXPECT_EQ(Take(root->GetAttribute("id", "urn:new")), "3");
  EXPECT_EQ(root->GetAttributeAsInt32("count", 0), 5);
  // Setting again replaces the value.
  root->SetAttribute("count", 6);
  EXPECT_EQ(root->GetAttributeAsInt32("count", 0), 6);

  RObject<CString> text(document->GetString(CXmlDocument::NoDeclaration));
  RObject<CXmlDocument> again(CXmlDocument::CreateWithString(text));
  ASSERT_TRUE(again) << text->GetChars();
  RObject<CXmlElement> readRoot(again->GetRootElement());
  EXPECT_EQ(Take(readRoot->GetAttribute("pssh", "urn:mpeg:cenc:2013")), "AAAA");
  EXPECT_EQ(Take(readRoot->GetAttribute("id", "urn:new")), "3");

  EXPECT_TRUE(root->RemoveAttribute("count").Succeeded());
  EXPECT_FALSE(root->HasAttribute("count"));
  EXPECT_EQ(root->RemoveAttribute("count").GetType(), ResultFalse().GetType());
  EXPECT_TRUE(root->RemoveAttribute("pssh", "urn:mpeg:cenc:2013").Succeeded());
  EXPECT_FALSE(root->HasAttribute("cenc:pssh"));
  EXPECT_EQ(Details(root->SetAttribute("bad name", "x")), "failed to set libxml property");
  EXPECT_TRUE(IsKind<ResultArgumentNull>(root->SetAttribute("a", static_cast<CString*>(nullptr))));
}

TEST_F(XmlElementTest, BooleansFollowTrueFalseOneZero) {
  RObject<CXmlElement> root(Root("<a yes=\"yes\" zero=\"0\" one=\"1\" t=\"true\" f=\"false\" empty=\"\"/>"));
  EXPECT_TRUE(root->GetAttributeAsBool("yes", true));
  EXPECT_FALSE(root->GetAttributeAsBool("yes", false));
  EXPECT_FALSE(root->GetAttributeAsBool("zero", true));
  EXPECT_TRUE(root->GetAttributeAsBool("one", false));
  EXPECT_TRUE(root->GetAttributeAsBool("t", false));
  EXPECT_FALSE(root->GetAttributeAsBool("f", true));
  EXPECT_TRUE(root->GetAttributeAsBool("empty", true));
  EXPECT_FALSE(root->GetAttributeAsBool("missing", false));

  RObject<CXmlElement> element(new CXmlElement("b"));
  element->SetValue(true, false);
  EXPECT_EQ(Take(element->GetValue()), "true");
  EXPECT_TRUE(element->GetValueAsBoolean(false));
  element->SetValue(false, true);
  EXPECT_EQ(Take(element->GetValue()), "0");
  EXPECT_FALSE(element->GetValueAsBoolean(true));
}

TEST_F(XmlElementTest, IntegersDetectTheirBaseAndFallBackWhenEmpty) {
  RObject<CXmlElement> root(Root("<a hex=\"0x1F\" oct=\"010\" dec=\"-42\" big=\"18446744073709551615\" text=\"abc\"/>"));
  EXPECT_EQ(root->GetAttributeAsInt32("hex", 0), 31);
  EXPECT_EQ(root->GetAttributeAsInt32("oct", 0), 8);
  EXPECT_EQ(root->GetAttributeAsInt64("dec", 0), -42);
  EXPECT_EQ(root->GetAttributeAsUInt64("big", 0), 18446744073709551615ULL);
  EXPECT_EQ(root->GetAttributeAsInt32("missing", 77), 77);
  EXPECT_EQ(root->GetAttributeAsInt32("text", 77), 77);
  EXPECT_DOUBLE_EQ(root->GetAttributeAsDouble("dec", 0.0), -42.0);

  RObject<CXmlElement> value(new CXmlElement("v"));
  value->SetValue(static_cast<short>(-5));
  EXPECT_EQ(value->GetValueAsInt32(0), -5);
  value->SetValue(static_cast<unsigned short>(65535));
  EXPECT_EQ(Take(value->GetValue()), "65535");
  value->SetValue(4294967295u);
  EXPECT_EQ(value->GetValueAsUInt32(0), 4294967295u);
  value->SetValue(-9000000000LL);
  EXPECT_EQ(value->GetValueAsInt64(0), -9000000000LL);
  value->SetValue(18000000000000000000ULL);
  EXPECT_EQ(value->GetValueAsUInt64(0), 18000000000000000000ULL);
  value->SetValue(2.5, "%.3f");
  EXPECT_EQ(Take(value->GetValue()), "2.500");
  EXPECT_DOUBLE_EQ(value->GetValueAsDouble(0.0), 2.5);
  RObject<CString> empty(new CString(""));
  value->SetValue(empty);
  EXPECT_EQ(value->GetValueAsInt32(13), 13);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(value->SetValue(static_cast<CString*>(nullptr))));
  EXPECT_EQ(Details(value->SetValue(static_cast<CString*>(nullptr))), "value must not be nullptr");
}

TEST_F(XmlElementTest, RationalsFourCodesAndBase64) {
  RObject<CXmlElement> rate(new CXmlElement("FrameRate"));
  rate->SetValue(Rational<int>(30000, 1001), ':');
  EXPECT_EQ(Take(rate->GetValue()), "30000:1001");
  Rational<int> read = rate->GetValueAsRational32(Rational<int>(0, 1), "/:");
  EXPECT_EQ(read, Rational<int>(30000, 1001));
  rate->SetValue(Rational<long long>(90000LL * 100000, 1), '/');
  EXPECT_EQ(Take(rate->GetValue()), "9000000000/1");
  rate->SetValue("25");
  EXPECT_EQ(rate->GetValueAsRational32(Rational<int>(0, 1), "/"), Rational<int>(25, 1));
  rate->SetValue("x/y");
  EXPECT_EQ(rate->GetValueAsRational32(Rational<int>(7, 3), "/"), Rational<int>(7, 3));

  RObject<CXmlElement> code(new CXmlElement("Codec"));
  code->SetValue("avc1");
  EXPECT_EQ(code->GetValueAsFour(), FourCC("avc1"));

  const unsigned char raw[] = {0x00, 0xFF, 0x10, 0x80, 0x7F};
  RObject<CByteArray> bytes(new CByteArray(raw, 5));
  RObject<CXmlElement> data(new CXmlElement("Data"));
  data->SetValue(bytes);
  EXPECT_EQ(Take(data->GetValue()), "AP8QgH8=");
  RObject<CByteArray> decoded(data->GetValueAsBase64Binary());
  ASSERT_TRUE(decoded);
  EXPECT_TRUE(decoded->Equals(raw, 5));
  RObject<CXmlElement> nothing(new CXmlElement("Empty"));
  RObject<CByteArray> none(nothing->GetValueAsBase64Binary());
  EXPECT_FALSE(none);
}

TEST_F(XmlElementTest, SetValueReplacesMixedContent) {
  RObject<CXmlElement> root(Root("<a>one<b/>two</a>"));
  RObject<CXmlElement> b(root->GetChildElement("b"));
  root->SetValue("plain");
  EXPECT_EQ(Take(root->GetValue()), "plain");
  RObject<CList<CXmlNode>> nodes(root->GetChildNodes());
  EXPECT_EQ(nodes->GetCount(), 1);
  // The removed child is still usable through its wrapper.
  EXPECT_FALSE(b->HasParent());
  EXPECT_EQ(Take(b->GetName()), "b");
  EXPECT_EQ(Take(root->GetString()), "<a>plain</a>");
  RObject<CByteArray> bytes(root->GetBytes());
  EXPECT_EQ(bytes->GetLength(), 12);
}

}  // namespace
