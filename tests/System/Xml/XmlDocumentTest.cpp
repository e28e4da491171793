#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/Console.h"
#include "System/IO/MemoryStream.h"
#include "System/Xml/XmlCharacterData.h"
#include "System/Xml/XmlComment.h"
#include "System/Xml/XmlElement.h"
#include "System/Xml/XmlProcessingInstruction.h"
#include "System/Xml/XmlSerialization.h"
#include "System/Xml/XmlText.h"
#include "System/Xml/XmlTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::XmlTesting;

namespace {

class XmlDocumentTest : public LeakCheckedTest {};

TEST_F(XmlDocumentTest, ParsesWellFormedTextAndRefusesMalformedText) {
  RObject<CXmlDocument> document(Parse("<a/>"));
  ASSERT_TRUE(document);
  RObject<CXmlElement> root(document->GetRootElement());
  ASSERT_TRUE(root);
  EXPECT_EQ(Take(root->GetName()), "a");
  EXPECT_TRUE(document->IsType(FourCC("<!DO")));
  EXPECT_TRUE(root->IsType(FourCC("<n/>")));

  RObject<CXmlDocument> broken(Parse("<a>"));
  EXPECT_FALSE(broken);
}

TEST_F(XmlDocumentTest, ParseErrorsBecomeResultsWithMessageAndLineAndNothingOnStderr) {
  RObject<CString> text(new CString("<root>\n  <child>\n</root>\n"));
  RObject<CXmlDocument> document;
  ::testing::internal::CaptureStderr();
  Result result = CXmlDocument::CreateWithString(text, document.Out());
  RObject<CXmlDocument> alsoNull(CXmlDocument::CreateWithString(text));
  RObject<CXmlDocument> empty(Parse(""));
  std::string printed = ::testing::internal::GetCapturedStderr();
  EXPECT_TRUE(printed.empty()) << printed;
  EXPECT_FALSE(document);
  EXPECT_FALSE(alsoNull);
  EXPECT_FALSE(empty);
  EXPECT_TRUE(IsKind<ResultFormatError>(result));
  // The mismatch is seen on line 3, where </root> closes <child>.
  EXPECT_NE(Details(result).find("line 3"), std::string::npos) << Details(result);
  EXPECT_NE(Details(result).find("child"), std::string::npos) << Details(result);
}

TEST_F(XmlDocumentTest, BuildsWritesAndParsesBackADocument) {
  RObject<CXmlDocument> document(CXmlDocument::Create());
  RObject<CXmlElement> root(new CXmlElement("MPD", "urn:mpeg:dash:schema:mpd:2011"));
  ASSERT_TRUE(document->AddChildElement(root).Succeeded());
  root->SetAttribute("type", "static");
  root->SetAttribute("minBufferTime", 1.5, "PT%.1fS");
  RObject<CXmlElement> period(new CXmlElement("Period"));
  ASSERT_TRUE(root->AddChildElement(period).Succeeded());
  period->SetAttribute("id", 7);
  period->SetAttribute("start", 9000000000LL);
  RObject<CXmlComment> comment(document->CreateComment(" generated "));
  ASSERT_TRUE(root->AddChildNode(comment).Succeeded());
  RObject<CString> note(new CString("a < b & c"));
  RObject<CXmlElement> title(new CXmlElement("Title"));
  period->AddChildElement(title);
  title->SetValue(note);

  RObject<CString> text(document->GetString(CXmlDocument::None));
  ASSERT_TRUE(text);
  std::string xml = text->GetChars();
  EXPECT_EQ(xml.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", 0), 0u) << xml;
  EXPECT_NE(xml.find("minBufferTime=\"PT1.5S\""), std::string::npos) << xml;
  EXPECT_NE(xml.find("a &lt; b &amp; c"), std::string::npos) << xml;
  RObject<CString> bare(document->GetString(CXmlDocument::NoDeclaration));
  EXPECT_EQ(std::string(bare->GetChars()).find("<?xml"), std::string::npos);

  RObject<CXmlDocument> again(CXmlDocument::CreateWithString(text));
  ASSERT_TRUE(again);
  RObject<CXmlElement> mpd(again->GetRootElement());
  EXPECT_EQ(Take(mpd->GetNamespaceUri()), "urn:mpeg:dash:schema:mpd:2011");
  // Period inherits the default namespace of its parent.
  RObject<CXmlElement> readPeriod(mpd->GetChildElement("Period", "urn:mpeg:dash:schema:mpd:2011"));
  ASSERT_TRUE(readPeriod);
  EXPECT_EQ(readPeriod->GetAttributeAsInt32("id", -1), 7);
  EXPECT_EQ(readPeriod->GetAttributeAsInt64("start", -1), 9000000000LL);
  RObject<CXmlElement> readTitle(readPeriod->GetChildElement("Title"));
  EXPECT_EQ(Take(readTitle->GetValue()), "a < b & c");
  RObject<CList<CXmlNode>> nodes(mpd->GetChildNodes());
  EXPECT_TRUE(nodes->IsType(FourCC("<n/>")));
  ASSERT_EQ(nodes->GetCount(), 2);
  RObject<CXmlNode> second;
  nodes->Get(1, second.Out());
  EXPECT_EQ(second->GetNodeType(), CXmlNode::CommentNode);
}

TEST_F(XmlDocumentTest, BytesFilesAndStreamsCarryTheSameDocument) {
  RObject<CXmlDocument> document(Parse("<r><v>1</v></r>"));
  RObject<CByteArray> bytes(document->GetBytes(CXmlDocument::NoDeclaration));
  ASSERT_TRUE(bytes);
  RObject<CXmlDocument> fromBytes(CXmlDocument::CreateWithBytes(bytes));
  ASSERT_TRUE(fromBytes);
  RObject<CXmlElement> root(fromBytes->GetRootElement());
  RObject<CXmlElement> v(root->GetChildElement("v"));
  EXPECT_EQ(v->GetValueAsInt32(0), 1);

  std::string path = ::testing::TempDir() + "xml_document_test.xml";
  {
    RObject<CString> text(document->GetString(CXmlDocument::Format));
    std::ofstream file(path, std::ios::binary);
    file << text->GetChars();
  }
  RObject<CXmlDocument> fromFile(CXmlDocument::CreateWithFileAtPath(path.c_str()));
  ASSERT_TRUE(fromFile);
  RObject<CXmlElement> fileRoot(fromFile->GetRootElement());
  EXPECT_EQ(Take(fileRoot->GetName()), "r");
  std::remove(path.c_str());
  RObject<CXmlDocument> missing;
  EXPECT_TRUE(IsKind<ResultFileNotFound>(CXmlDocument::CreateWithFileAtPath(path.c_str(), missing.Out())));

  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(document->Save(stream, CXmlDocument::NoDeclaration).Succeeded());
  EXPECT_EQ(stream->GetLength(), bytes->GetLength());
}

TEST_F(XmlDocumentTest, NodesKeepTheirDocumentAlive) {
  RObject<CXmlElement> child;
  {
    RObject<CXmlDocument> document(Parse("<a><b x=\"1\"/></a>"));
    RObject<CXmlElement> root(document->GetRootElement());
    child = root->GetChildElement("b");
  }
  ASSERT_TRUE(child);
  EXPECT_EQ(Take(child->GetAttribute("x")), "1");
  RObject<CXmlNode> parent(child->GetParent());
  ASSERT_TRUE(parent);
  RObject<CXmlDocument> owner(child->GetDocument());
  owner->Acquire();
  RObject<CXmlElement> root(owner->GetRootElement());
  EXPECT_TRUE(root->Equals(parent.Get()));
}

TEST_F(XmlDocumentTest, ElementsBuiltApartMoveIntoTheDocumentWithTheirWrappers) {
  RObject<CXmlElement> set(new CXmlElement("AdaptationSet"));
  RObject<CXmlElement> representation(new CXmlElement("Representation"));
  ASSERT_TRUE(set->AddChildElement(representation).Succeeded());
  RObject<CXmlDocument> document(CXmlDocument::Create());
  ASSERT_TRUE(document->AddChildElement(set).Succeeded());
  // The wrapper taken before the move still edits the node in the document.
  representation->SetAttribute("bandwidth", 1500000);
  RObject<CXmlElement> root(document->GetRootElement());
  RObject<CXmlElement> found(root->GetChildElement("Representation"));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->GetAttributeAsUInt32("bandwidth", 0), 1500000u);
  EXPECT_TRUE(found->GetDocument() == document.Get());
}

TEST_F(XmlDocumentTest, AnElementTakenFromAParsedDocumentOutlivesIt) {
  // A parsed document keeps its names in a dictionary of its own: the element
  // must not go on pointing into it once that document is gone.
  RObject<CXmlDocument> target(CXmlDocument::Create());
  {
    RObject<CXmlDocument> parsed(Parse("<main xmlns=\"urn:x\" a=\"1\"><part b=\"2\">text</part></main>"));
    RObject<CXmlElement> root(parsed->GetRootElement());
    ASSERT_TRUE(root->SetParent(nullptr).Succeeded());
    ASSERT_TRUE(target->AddChildElement(root).Succeeded());
    // The wrapper follows the element into its new document.
    EXPECT_TRUE(root->GetDocument() == target.Get());
    root->SetAttribute("c", 3);
  }
  RObject<CString> text(target->GetString(CXmlDocument::NoDeclaration));
  EXPECT_EQ(std::string(text->GetChars()), "<main xmlns=\"urn:x\" a=\"1\" c=\"3\"><part b=\"2\">text</part></main>\n");
}

TEST_F(XmlDocumentTest, RemovedNodesCanBeAddedAgain) {
  RObject<CXmlDocument> document(Parse("<a><b/><c/></a>"));
  RObject<CXmlElement> root(document->GetRootElement());
  RObject<CXmlElement> b(root->GetChildElement("b"));
  ASSERT_TRUE(root->RemoveChildNode(b).Succeeded());
  EXPECT_FALSE(b->HasParent());
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(root->RemoveChildNode(b)));
  RObject<CXmlElement> c(root->GetChildElement("c"));
  ASSERT_TRUE(c->AddChildElement(b).Succeeded());
  RObject<CString> text(document->GetString(CXmlDocument::NoDeclaration));
  EXPECT_EQ(std::string(text->GetChars()), "<a><c><b/></c></a>\n");
  ASSERT_TRUE(b->SetParent(nullptr).Succeeded());
  ASSERT_TRUE(b->SetParent(root).Succeeded());
  RObject<CString> moved(document->GetString(CXmlDocument::NoDeclaration));
  EXPECT_EQ(std::string(moved->GetChars()), "<a><c/><b/></a>\n");
}

TEST_F(XmlDocumentTest, ChildInsertionFailuresNameTheirCause) {
  RObject<CXmlDocument> document(Parse("<a><b/></a>"));
  RObject<CXmlElement> root(document->GetRootElement());
  RObject<CXmlElement> b(root->GetChildElement("b"));

  Result nullNode = root->AddChildNode(nullptr);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(nullNode));
  EXPECT_EQ(Details(nullNode), "child node must not be nullptr");
  Result nullElement = root->AddChildElement(nullptr);
  EXPECT_EQ(Details(nullElement), "child element must not be nullptr");
  Result hasParent = root->AddChildNode(b);
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(hasParent));
  EXPECT_EQ(Details(hasParent), "child node already has a parent");
  EXPECT_EQ(Details(root->AddChildElement(b)), "child element already has a parent");

  // A second root element, and an element inside itself, are refused.
  RObject<CXmlElement> second(new CXmlElement("second"));
  Result twoRoots = document->AddChildElement(second);
  EXPECT_TRUE(IsKind<ResultError>(twoRoots));
  EXPECT_EQ(Details(twoRoots), "failed to add libxml child node");
  ASSERT_TRUE(root->RemoveChildNode(b).Succeeded());
  ASSERT_TRUE(b->AddChildElement(second).Succeeded());
  EXPECT_EQ(Details(second->AddChildElement(b)), "failed to add libxml child node");
  EXPECT_THROW(CXmlElement("not a name"), Result);
}

std::string g_log;

TEST_F(XmlDocumentTest, UnknownNodeKindsAreLoggedAndSkipped) {
  RObject<CXmlDocument> document(Parse("<!DOCTYPE a><a>x<![CDATA[<raw>]]><?pi data?></a>"));
  ASSERT_TRUE(document);
  Console::LogLevel level = Console::GetLogLevel();
  Console::SetLogLevel(Console::Error);
  g_log.clear();
  Console::SetLogCallback([](Console::LogLevel, CString* text) { g_log += text->GetChars(); });
  RObject<CList<CXmlNode>> nodes(document->GetChildNodes());
  Console::SetLogCallback(&Console::DefaultLog);
  Console::SetLogLevel(level);
  // The document type declaration (libxml2 node type 14) has no class.
  ASSERT_EQ(nodes->GetCount(), 1);
  EXPECT_NE(g_log.find("Unrecognized XML node type (14).\n"), std::string::npos) << g_log;
  EXPECT_NE(g_log.find("GetChildNodes"), std::string::npos) << g_log;

  RObject<CXmlElement> root(document->GetRootElement());
  RObject<CList<CXmlNode>> children(root->GetChildNodes());
  ASSERT_EQ(children->GetCount(), 3);
  std::vector<int> kinds;
  for (CXmlNode* node : *children) kinds.push_back(node->GetNodeType());
  EXPECT_EQ(kinds, (std::vector<int>{CXmlNode::TextNode, CXmlNode::CharacterDataNode,
                                     CXmlNode::ProcessingInstructionNode}));
  RObject<CXmlNode> pi;
  children->Get(2, pi.Out());
  EXPECT_EQ(Take(static_cast<CXmlProcessingInstruction*>(pi.Get())->GetTarget()), "pi");
  EXPECT_EQ(Take(root->GetValue()), "x<raw>");
}

TEST_F(XmlDocumentTest, CreatedNodesAreDetachedUntilAdded) {
  RObject<CXmlDocument> document(Parse("<a/>"));
  RObject<CXmlElement> root(document->GetRootElement());
  RObject<CXmlProcessingInstruction> pi(document->CreateProcessingInstruction("xml-stylesheet href=\"s.xsl\""));
  ASSERT_TRUE(pi);
  EXPECT_FALSE(pi->HasParent());
  RObject<CString> value(new CString("1 < 2"));
  RObject<CXmlText> text(root->CreateText(value));
  RObject<CXmlCharacterData> cdata(root->CreateCharacterData(value));
  ASSERT_TRUE(root->AddChildNode(text).Succeeded());
  ASSERT_TRUE(root->AddChildNode(cdata).Succeeded());
  ASSERT_TRUE(root->AddChildNode(pi).Succeeded());
  RObject<CString> xml(document->GetString(CXmlDocument::NoDeclaration));
  EXPECT_EQ(std::string(xml->GetChars()), "<a>1 &lt; 2<![CDATA[1 < 2]]><?xml-stylesheet href=\"s.xsl\"?></a>\n");
  // Two text nodes side by side stay two nodes (libxml2 would merge them).
  RObject<CXmlText> more(root->CreateText(value));
  ASSERT_TRUE(root->AddChildNode(more).Succeeded());
  RObject<CString> changed(new CString("!"));
  ASSERT_TRUE(more->SetValue(changed).Succeeded());
  EXPECT_EQ(Take(more->GetValue()), "!");
  EXPECT_TRUE(IsKind<ResultArgumentNull>(more->SetValue(nullptr)));
}

// A small serialisable object: a name and a count.
class CSample : public CXmlSerialization {
 public:
  CSample() : CXmlSerialization(FourCC("smpl")) {}
  std::string name;
  int count = 0;

  Result Write(CXmlDocument* document) override {
    RObject<CXmlElement> root(new CXmlElement("sample"));
    Result result = document->AddChildElement(root);
    if (result.Failed()) return result;
    root->SetAttribute("name", name.c_str());
    return root->SetValue(count);
  }
  Result Parse(CXmlElement* root) override {
    RObject<CString> value(root->GetAttribute("name"));
    if (!value) return ResultFormatError("no name");
    name = value->GetChars();
    count = root->GetValueAsInt32(-1);
    return ResultOK();
  }
};

TEST_F(XmlDocumentTest, SerializationRoundTripsThroughTextBytesAndStreams) {
  RObject<CSample> sample(new CSample());
  sample->name = "first";
  sample->count = 12;
  RObject<CString> text;
  ASSERT_TRUE(sample->Serialize(text.Out(), CXmlDocument::NoDeclaration).Succeeded());
  EXPECT_EQ(std::string(text->GetChars()), "<sample name=\"first\">12</sample>\n");

  RObject<CSample> copy(new CSample());
  ASSERT_TRUE(copy->Deserialize(text).Succeeded());
  EXPECT_EQ(copy->name, "first");
  EXPECT_EQ(copy->count, 12);

  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(sample->Serialize(stream, CXmlDocument::None).Succeeded());
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CSample> fromStream(new CSample());
  ASSERT_TRUE(fromStream->Deserialize(stream).Succeeded());
  EXPECT_EQ(fromStream->count, 12);

  RObject<CByteArray> bytes;
  ASSERT_TRUE(sample->Serialize(bytes.Out(), CXmlDocument::None).Succeeded());
  RObject<CSample> fromBytes(new CSample());
  ASSERT_TRUE(fromBytes->Deserialize(bytes).Succeeded());
  EXPECT_EQ(fromBytes->name, "first");

  RObject<CString> broken(new CString("<sample name='x'>"));
  EXPECT_TRUE(IsKind<ResultFormatError>(copy->Deserialize(broken)));
  RObject<CString> nameless(new CString("<sample/>"));
  EXPECT_EQ(Details(copy->Deserialize(nameless)), "no name");
}

}  // namespace
