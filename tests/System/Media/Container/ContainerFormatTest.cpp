// The container format table and the container property namespaces: the
// lookups over the published rows and the documentation hosts read.
#include <gtest/gtest.h>

#include <string>

#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/PropertiesDocumentation.h"
#include "System/Text.h"
#include "System/Types.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;

namespace {

class ContainerFormatTest : public LeakCheckedTest {};

std::string Text(const char* text) { return text ? text : "<null>"; }

std::string CodeText(unsigned int code) {
  char text[5];
  FourCCToChars(code, text);
  return std::string(text, 4);
}

TEST_F(ContainerFormatTest, RowsAreIndexedFromZeroAndNothingLiesOutside) {
  EXPECT_EQ(ContainerFormat::GetFormat(-1), 0u);
  EXPECT_EQ(ContainerFormat::GetFormat(112), 0u);
  EXPECT_EQ(ContainerFormat::GetFormat(ContainerFormat::GetFormatCount()), 0u);
  // The published rows start at "dpx " after the rebuilt ones and end at "yuv ".
  EXPECT_EQ(CodeText(ContainerFormat::GetFormat(ContainerFormat::GetFormatCount() - 1)), "yuv ");
  bool sawDpx = false;
  for (int i = 0; i < ContainerFormat::GetFormatCount(); ++i) sawDpx |= ContainerFormat::GetFormat(i) == FourCC("dpx ");
  EXPECT_TRUE(sawDpx);
}

TEST_F(ContainerFormatTest, NamesKeepTheirPublishedSpelling) {
  EXPECT_EQ(Text(ContainerFormat::GetName(FourCC("mss "))), "Micrsoft Smooth Streaming Package");
  EXPECT_EQ(Text(ContainerFormat::GetName(FourCC("jfif"))), "JPEG File Interchagne Format");
  EXPECT_EQ(Text(ContainerFormat::GetName(FourCC("y4m "))), "YUV4MPEG");
  EXPECT_EQ(ContainerFormat::GetName(FourCC("zzzz")), nullptr);
  EXPECT_EQ(ContainerFormat::GetName(FourCC("y4m\0")), nullptr);  // the blank is part of the code
}

TEST_F(ContainerFormatTest, MimeTypesCountFromOneAndZeroIsTheFirst) {
  const unsigned int wav = FourCC("wav ");
  EXPECT_EQ(Text(ContainerFormat::GetMimeType(wav, 0)), "audio/wav");
  EXPECT_EQ(Text(ContainerFormat::GetMimeType(wav, 1)), "audio/wav");
  EXPECT_EQ(Text(ContainerFormat::GetMimeType(wav, 4)), "audio/vnd.wave");
  EXPECT_EQ(ContainerFormat::GetMimeType(wav, 5), nullptr);
  EXPECT_EQ(ContainerFormat::GetMimeType(wav, 9), nullptr);
  EXPECT_EQ(ContainerFormat::GetMimeType(wav, -1), nullptr);
  // A child row without MIME types does not inherit them.
  EXPECT_EQ(ContainerFormat::GetMimeType(FourCC("op1a"), 0), nullptr);
}

TEST_F(ContainerFormatTest, ExtensionsComeFromTheParentWhenARowHasNone) {
  EXPECT_EQ(Text(ContainerFormat::GetFileExtension(FourCC("op1a"), 0)), "mxf");
  EXPECT_EQ(Text(ContainerFormat::GetFileExtension(FourCC("wv64"), 1)), "wav");
  EXPECT_EQ(Text(ContainerFormat::GetFileExtension(FourCC("mkv "), 4)), "mks");
  EXPECT_EQ(Text(ContainerFormat::GetFileExtension(FourCC("svg "), 1)), "svg ");  // trailing blank as published
  EXPECT_EQ(ContainerFormat::GetFileExtension(FourCC("indx"), 0), nullptr);     // no extension, no parent
  EXPECT_EQ(ContainerFormat::GetFileExtension(FourCC("zzzz"), 0), nullptr);
}

TEST_F(ContainerFormatTest, CanonicalFormatFollowsTheParentChain) {
  EXPECT_EQ(ContainerFormat::GetCanonicalFormat(FourCC("y4m ")), FourCC("y4m "));
  EXPECT_EQ(ContainerFormat::GetCanonicalFormat(FourCC("op1a")), FourCC("mxf "));
  EXPECT_EQ(ContainerFormat::GetCanonicalFormat(FourCC("mzts")), FourCC("m2ts"));
  EXPECT_EQ(ContainerFormat::GetCanonicalFormat(FourCC("zzzz")), 0u);
}

TEST_F(ContainerFormatTest, WriterTypesFollowTheTablesExtensions) {
  auto type = [](const char* path) {
    RObject<CString> text(CString::WithString(path));
    return CodeText(GetContainerWriterType(text));
  };
  EXPECT_EQ(type("out.y4m"), "y4m ");
  EXPECT_EQ(type("out.RAW"), "vide");
  EXPECT_EQ(type("a/b.vob"), "m2ps");
  EXPECT_EQ(type("clip.wav"), "wav ");
}

std::string TextAt(CProperties* bag, const char* key) {
  CString* text = nullptr;
  if (!bag || bag->GetProperty(key, text).Failed() || !text) return "<absent>";
  std::string result = text->GetChars();
  text->Release();
  return result;
}

RObject<CProperties> BagAt(CProperties* bag, const char* key) {
  CProperties* child = nullptr;
  if (bag) bag->GetProperty(key, child);
  return RObject<CProperties>(child);
}

TEST_F(ContainerFormatTest, GeneralNamespacesCarryTheirTypesAndTexts) {
  EXPECT_STREQ(ContainerProperty::ContainerReader::IsIndexAtEnd, "IsIndexAtEnd");
  EXPECT_EQ(static_cast<int>(ContainerProperty::ContainerReader::MetadataFlagType::DisableVbiDecode), 1);
  RObject<CProperties> reader(IPropertiesDocumentation::GetDocumentationT<ContainerProperty::ContainerReader>());
  EXPECT_EQ(TextAt(reader, "brief"), "ContainerReader configuration properties.");
  RObject<CProperties> duration(BagAt(BagAt(reader, "properties"), "IndexVideoDuration"));
  EXPECT_EQ(TextAt(duration, "type"), "Int64");
  EXPECT_EQ(TextAt(duration, "brief"), "Gets the accurate video duration from the index file (if present) or 0 if not.  Blocking!");
  RObject<CProperties> writer(IPropertiesDocumentation::GetDocumentationT<ContainerProperty::ContainerWriter>());
  RObject<CProperties> createIndex(BagAt(BagAt(writer, "properties"), "CreateIndex"));
  EXPECT_EQ(TextAt(createIndex, "note"), "Not all container writers support writing index files.");
  RObject<CProperties> flags(BagAt(BagAt(BagAt(reader, "enumerations"), "MetadataFlagType"), "values"));
  EXPECT_TRUE(BagAt(flags, "DisableVbiDecode"));
}

TEST_F(ContainerFormatTest, FormatNamespacesAreFoundByQualifiedName) {
  for (const char* name : {"ContainerProperty::MxfAs11Metadata", "ContainerProperty::YuvContainerReader",
                           "ContainerProperty::AvidMediaContainerReader", "ContainerProperty::SccContainerReader"}) {
    RObject<CProperties> doc(PropertiesDocumentation::Create(name));
    EXPECT_TRUE(doc) << name;
  }
  RObject<CProperties> scc(PropertiesDocumentation::Create("ContainerProperty::SccContainerReader"));
  RObject<CProperties> properties(BagAt(scc, "properties"));
  EXPECT_TRUE(BagAt(properties, "IgnoreDropFrameSeparators"));  // SCC's own addition
  RObject<CProperties> pac(PropertiesDocumentation::Create("ContainerProperty::PacContainerReader"));
  EXPECT_FALSE(BagAt(BagAt(pac, "properties"), "IgnoreDropFrameSeparators"));
  EXPECT_STREQ(ContainerProperty::Mpeg4ContainerWriter::ColorParameter, "ColorParameter");
  EXPECT_FALSE(PropertiesDocumentation::Create("ContainerProperty::NoSuchReader"));
}

}  // namespace
