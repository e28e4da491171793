#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Filter/FilterType.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Package/PackageType.h"
#include "System/Media/Signal/SignalReader.h"
#include "System/Media/Signal/SignalType.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

std::string CodeText(unsigned int code) {
  char text[5];
  FourCCToChars(code, text);
  return std::string(text, 4);
}

template <class Family>
std::vector<std::string> Codes() {
  std::vector<std::string> codes;
  for (auto* factory : *CFamilyInventory<Family>::GetFactories()) codes.push_back(CodeText(factory->GetCode()));
  return codes;
}

// A component built only for these tests; its code is not in any name table.
class CProbeConverter : public CAudioConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("tpc1");
  CProbeConverter() : CAudioConverter(ComponentCode) {}
};

// Claims a code that the library already registered.
class CShadowColourConverter : public CVideoConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("vcsc");
  CShadowColourConverter() : CVideoConverter(ComponentCode) {}
};

}  // namespace

class ComponentInventory : public LeakCheckedTest {};

TEST_F(ComponentInventory, FamiliesHoldTheirRegistrationsInOrder) {
  const std::vector<std::string> decompressors = Codes<CVideoDecompressor>();
  ASSERT_EQ(decompressors.size(), 13u);
  EXPECT_EQ(decompressors.front(), "ANIM");
  EXPECT_EQ(decompressors[9], "VPX ");  // trailing space kept
  EXPECT_EQ(decompressors.back(), "PNG ");
  EXPECT_EQ(Codes<CVideoConverter>().size(), 9u);
  EXPECT_EQ(Codes<CSubtitleConverter>().size(), 19u);
  EXPECT_EQ(Codes<CPackage>().size(), 11u);
  EXPECT_TRUE(Codes<CVideoAnalyzer>().empty());
  EXPECT_TRUE(Codes<CSignalReader>().empty());
  // Readers are registered in probing order, which breaks ties between them.
  const std::vector<std::string> readers = Codes<CContainerReader>();
  ASSERT_EQ(readers.size(), 74u);
  EXPECT_EQ(readers[0], "aac ");
  EXPECT_EQ(readers[3], "h264");
  EXPECT_EQ(readers.back(), "red ");
  const std::vector<std::string> writers = Codes<CContainerWriter>();
  ASSERT_EQ(writers.size(), 15u);
  EXPECT_EQ(writers.front(), "vide");
  EXPECT_EQ(writers[13], "wav ");  // between "vtt " and "y4m "
}

TEST_F(ComponentInventory, LookupByCode) {
  EXPECT_EQ(CFamilyInventory<CVideoConverter>::GetFactory(0), nullptr);
  EXPECT_EQ(CFamilyInventory<CVideoConverter>::GetFactory(FourCC("zzzz")), nullptr);
  // Codes are per family: "vcsc" is a video converter, not an audio one.
  auto* colour = CFamilyInventory<CVideoConverter>::GetFactory(FourCC("vcsc"));
  ASSERT_NE(colour, nullptr);
  EXPECT_EQ(colour->GetCode(), FourCC("vcsc"));
  EXPECT_EQ(CFamilyInventory<CAudioConverter>::GetFactory(FourCC("vcsc")), nullptr);
  // "vrc " needs its trailing space.
  EXPECT_NE(CFamilyInventory<CVideoConverter>::GetFactory(FourCC("vrc ")), nullptr);
}

TEST_F(ComponentInventory, ComponentsThisBuildLacksAreUnavailableAndCreateNothing) {
  auto* h264 = CFamilyInventory<CVideoCompressor>::GetFactory(FourCC("h264"));
  ASSERT_NE(h264, nullptr);
  EXPECT_FALSE(h264->IsAvailable());
  EXPECT_EQ(h264->GetPriority(), 0);
  EXPECT_EQ(h264->CreateInstance(), nullptr);
  EXPECT_EQ(CFamilyInventory<CVideoCompressor>::CreateAvailable(FourCC("h264")), nullptr);
  RObject<CString> path(CString::WithString("/tmp/in.flac"));
  EXPECT_EQ(CContainerReader::Create(path, FourCC("flac")), nullptr);
  EXPECT_EQ(CContainerReader::Create(path), nullptr);
  EXPECT_EQ(CContainerReaderInventory::Create(FourCC("flac")), nullptr);
  EXPECT_EQ(CContainerWriter::Create(path, FourCC("mp4 ")), nullptr);
  EXPECT_EQ(CSignalReader::Create(FourCC("ndi ")), nullptr);
  EXPECT_EQ(CPackage::Create(path, FourCC("hlsp")), nullptr);
}

// Registrations last for the process, so these two are not leak-checked.
TEST(ComponentRegistration, AddedComponentsAreCreatedAndListedLast) {
  // Registries live for the process: add only once even if the test repeats.
  static const bool added = CFamilyInventory<CAudioConverter>::AddComponent<CProbeConverter>();
  ASSERT_TRUE(added);
  auto* factory = CFamilyInventory<CAudioConverter>::GetFactory(CProbeConverter::ComponentCode);
  ASSERT_NE(factory, nullptr);
  EXPECT_TRUE(factory->IsAvailable());
  RObject<CAudioConverter> converter(factory->CreateInstance());
  ASSERT_TRUE(converter);
  EXPECT_EQ(converter->GetComponentCode(), CProbeConverter::ComponentCode);
  EXPECT_EQ(Codes<CAudioConverter>().back(), "tpc1");
  RObject<CAudioConverter> another(CFamilyInventory<CAudioConverter>::CreateAvailable(CProbeConverter::ComponentCode));
  ASSERT_TRUE(another);
  EXPECT_NE(another.Get(), converter.Get());  // a new instance each time
}

TEST(ComponentRegistration, ASecondRegistrationOfACodeNeverShadowsTheFirst) {
  static const bool added = CFamilyInventory<CVideoConverter>::AddComponent<CShadowColourConverter>();
  ASSERT_TRUE(added);
  auto* factory = CFamilyInventory<CVideoConverter>::GetFactory(FourCC("vcsc"));
  ASSERT_NE(factory, nullptr);
  EXPECT_FALSE(factory->IsAvailable());
  const std::vector<std::string> codes = Codes<CVideoConverter>();
  EXPECT_EQ(codes.front(), "vcsc");
  EXPECT_EQ(codes.back(), "vcsc");
}

TEST_F(ComponentInventory, DisplayNameTables) {
  EXPECT_STREQ(FilterType::GetName(FourCC("vcsc")), "Color Space Converter");
  EXPECT_STREQ(FilterType::GetName(FourCC("mdbm")), "Metadata Bitmap onverter");  // spelled as registered
  EXPECT_STREQ(FilterType::GetName(FourCC("PNG ")), "Png Decompressor");
  EXPECT_EQ(FilterType::GetName(FourCC("wav ")), nullptr);
  EXPECT_STREQ(ContainerFormat::GetName(FourCC("mss ")), "Micrsoft Smooth Streaming Package");
  EXPECT_STREQ(ContainerFormat::GetName(FourCC("vide")), "Elementary Video");
  EXPECT_EQ(ContainerFormat::GetName(FourCC("vcsc")), nullptr);
  EXPECT_STREQ(SignalType::GetName(FourCC("ndi ")), "NDI Source");
  EXPECT_EQ(SignalType::GetName(FourCC("ndi\0")), nullptr);
  EXPECT_STREQ(PackageType::GetName(FourCC("hlop")), "HLS Optimized Package");
  EXPECT_STREQ(PackageType::GetName(FourCC("hss ")), "Smooth Streaming Package");
}

TEST_F(ComponentInventory, WriterTypeFromThePathExtension) {
  auto type = [](const char* path) {
    RObject<CString> text(CString::WithString(path));
    return CodeText(GetContainerWriterType(text));
  };
  EXPECT_EQ(type("out/clip.TS"), "m2ts");
  EXPECT_EQ(type("clip.mov"), "mov ");
  EXPECT_EQ(type("clip.Mp4"), "mp4 ");
  EXPECT_EQ(GetContainerWriterType(nullptr), 0u);
  RObject<CString> none(CString::WithString("dir.d/noextension"));
  EXPECT_EQ(GetContainerWriterType(none), 0u);
  RObject<CString> dot(CString::WithString("clip."));
  EXPECT_EQ(GetContainerWriterType(dot), 0u);
}
