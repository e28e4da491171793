// The filter-type table and the code book's generated names and documentation.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "System/Media/Filter/FilterType.h"
#include "System/Properties.h"
#include "System/Types.h"
#include "gen/CodeBookProperty.h"

using namespace Corvane::Mox;

TEST(FilterTypeTest, TheTableHas246DistinctRowsWithTheirNamesAsPublished) {
  ASSERT_EQ(FilterType::GetCount(), 246);
  std::set<unsigned int> codes;
  for (int i = 0; i < 246; ++i) codes.insert(FilterType::GetType(i));
  EXPECT_EQ(codes.size(), 246u);
  EXPECT_EQ(FilterType::GetType(246), 0u);
  EXPECT_EQ(FilterType::GetType(-1), 0u);
  EXPECT_EQ(FilterType::GetType(0), FourCC("aana"));
  EXPECT_STREQ(FilterType::GetName(FourCC("flac")), "Flac ompressor");
  EXPECT_STREQ(FilterType::GetName(FourCC("mdbm")), "Metadata Bitmap onverter");
  EXPECT_STREQ(FilterType::GetName(FourCC("acnv")), "Audio Compressor");
  EXPECT_STREQ(FilterType::GetName(FourCC("DVHD")), "DvcPro HDDecompressor");
  EXPECT_STREQ(FilterType::GetName(FourCC("vfc ")), "Video Format Converter");
  EXPECT_EQ(FilterType::GetName(FourCC("wav ")), nullptr);
}

TEST(FilterTypeTest, CanonicalTypesAreTheFamilyRoots) {
  EXPECT_EQ(FilterType::GetCanonicalType(FourCC("vfc ")), FourCC("vcnv"));
  EXPECT_EQ(FilterType::GetCanonicalType(FourCC("PNG ")), FourCC("vdec"));
  EXPECT_EQ(FilterType::GetCanonicalType(FourCC("vcnv")), FourCC("vcnv"));
  EXPECT_EQ(FilterType::GetCanonicalType(FourCC("zzzz")), 0u);
}

TEST(FilterTypeTest, PerChannelNamesAreIndexedUpTo127) {
  using CodeBookProperty::AudioConverter;
  EXPECT_STREQ(AudioConverter::GetChannelLabel(0), "ChannelLabel0");
  EXPECT_STREQ(AudioConverter::GetChannelLabel(127), "ChannelLabel127");
  EXPECT_STREQ(AudioConverter::GetChannelLabel(128), "");
  EXPECT_STREQ(AudioConverter::GetChannelLabel(-1), "");
  EXPECT_STREQ(AudioConverter::GetChannelCoding(5), "ChannelCoding5");
  EXPECT_STREQ(CodeBookProperty::MediaFilter::OutputFormat, "OutputFormat");
}

TEST(FilterTypeTest, CodeBookDocumentationHasTheBagShape) {
  RObject<CProperties> doc(IPropertiesDocumentation::GetDocumentationT<CodeBookProperty::SelectableCompute>());
  ASSERT_TRUE(doc);
  CProperties* properties = nullptr;
  ASSERT_TRUE(doc->GetProperty("properties", properties).Succeeded());
  RObject<CProperties> heldProperties(properties);
  CProperties* mode = nullptr;
  ASSERT_TRUE(properties->GetProperty("ComputeMode", mode).Succeeded());
  RObject<CProperties> heldMode(mode);
  CString* type = nullptr;
  mode->GetProperty("type", type);
  RObject<CString> heldType(type);
  EXPECT_STREQ(type->GetChars(), "type:   \\ref ComputeModes");
  CProperties* enumerations = nullptr;
  ASSERT_TRUE(doc->GetProperty("enumerations", enumerations).Succeeded());
  RObject<CProperties> heldEnumerations(enumerations);
  CProperties* modes = nullptr;
  enumerations->GetProperty("ComputeModes", modes);
  RObject<CProperties> heldModes(modes);
  CProperties* values = nullptr;
  modes->GetProperty("values", values);
  RObject<CProperties> heldValues(values);
  CProperties* gpu = nullptr;
  values->GetProperty("GPU", gpu);
  RObject<CProperties> heldGpu(gpu);
  int value = -1;
  gpu->GetProperty("value", value);
  EXPECT_EQ(value, 1);
  CString* brief = nullptr;
  gpu->GetProperty("brief", brief);
  RObject<CString> heldBrief(brief);
  EXPECT_STREQ(brief->GetChars(), "GPU computation mode. Selects metal on OSX and CUDA on Windows/Linux.");
  RObject<CProperties> byName(PropertiesDocumentation::Create("CodeBookProperty::AudioConverter"));
  EXPECT_TRUE(byName);
}
