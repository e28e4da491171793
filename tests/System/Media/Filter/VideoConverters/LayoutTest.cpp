// Pure layout changes: every pair round-trips bit-identically, at sizes that
// do not fill whole blocks or chroma samples.

#include <gtest/gtest.h>

#include "VideoConverterTestSupport.h"

using namespace VideoConverterTest;

namespace {

struct Pair {
  const char* from;
  const char* to;
};

// A layout change and its inverse, each between formats of one depth and
// subsampling. 0x18 and 0x20 are the numbered packed RGB codes.
const Pair kPairs[] = {
    {"I420", "NV12"}, {"I420", "NV21"}, {"I420", "YV12"}, {"I422", "UYVY"}, {"I422", "YUYV"},
    {"I422", "YVYU"}, {"I422", "VYUY"}, {"I422", "NV16"}, {"I422", "NV61"}, {"I422", "YV16"},
    {"I444", "YV24"}, {"I42A", "YV16"}, {"YUVA", "YV24"}, {"RGBA", "BGRA"}, {"24BG", "BGRX"},
    {"I2AL", "v210"}, {"I2AA", "v210"}, {"I4AL", "v410"}, {"r210", "R10k"}, {"L48R", "R64L"},
    {"L64A", "b64a"}, {"L48R", "r48b"}, {"x422", "v216"}, {"I416", "y416"}, {"I4GL", "x444"},
    {"I411", "Y41B"}, {"I410", "YVU9"}, {"I2GL", "x422"}, {"I0GL", "x420"}, {"I444", "NV32"},
    {"YV24", "NV32"}, {"I416", "norm"}, {"I416", "r4fl"}, {"R4fl", "L64A"}, {"RGGB", "L48R"},
    {"BGGR", "L48R"}, {"GRBG", "L48R"}, {"GBRG", "L48R"},
};

unsigned int ParseCode(const char* text) { return std::string(text) == "0x18" ? 0x18u : Code(text); }

void ExpectRoundTrip(const Pair& pair, int width, int height) {
  const unsigned int from = ParseCode(pair.from), to = ParseCode(pair.to);
  SCOPED_TRACE(std::string(pair.from) + " -> " + pair.to + " at " + std::to_string(width) + "x" + std::to_string(height));
  RObject<CVideoProperties> input(Describe(from, width, height));
  const std::vector<uint8_t> original = Random(from, width, height, static_cast<unsigned>(width * 31 + height));
  Conversion there = Convert(input, original, to);
  ASSERT_TRUE(there.result.Succeeded()) << there.result.GetDetails();
  for (unsigned int stage : there.stages) {
    // Layout changes never touch a value.
    EXPECT_NE(stage, FourCC("cvrt"));
    EXPECT_NE(stage, FourCC("twst"));
    EXPECT_NE(stage, FourCC("smpl"));
  }
  Conversion back = Convert(there.output, there.bytes, from);
  ASSERT_TRUE(back.result.Succeeded()) << back.result.GetDetails();
  const Components a = Read(from, width, height, original), b = Read(from, width, height, back.bytes);
  // Alpha survives only when the other layout has it too.
  const int slots = PixelFormatDescriptor::HasAlpha(to) ? 4 : 3;
  for (int s = 0; s < slots; ++s) EXPECT_EQ(a.slot[s], b.slot[s]) << "slot " << s;
}

}  // namespace

TEST(VideoFormatConverterLayout, EveryLayoutChangeRoundTripsExactly) {
  for (const Pair& pair : kPairs) ExpectRoundTrip(pair, 38, 6);
}

TEST(VideoFormatConverterLayout, TinyAndOddSizesStayInsideThePlanes) {
  for (const Pair& pair : kPairs) {
    ExpectRoundTrip(pair, 1, 1);
    ExpectRoundTrip(pair, 2, 2);
    ExpectRoundTrip(pair, 7, 3);
  }
}

TEST(VideoFormatConverterLayout, OddFullHdSizesRoundTrip) {
  const Pair big[] = {{"I420", "NV12"}, {"I422", "UYVY"}, {"I2AL", "v210"}, {"24BG", "RGBA"},
                      {"GBRG", "L48R"}, {"I444", "NV32"}, {"I416", "r4fl"}};
  for (const Pair& pair : big) ExpectRoundTrip(pair, 1921, 1081);
}

TEST(VideoFormatConverterLayout, UnpackedRgbLandsInThePlanesAsGreenBlueRed) {
  // One BGR pixel: B=10, G=20, R=30; the identity-matrix planes hold G, B, R.
  RObject<CVideoProperties> rgb(Describe(Code("24BG"), 1, 1));
  Conversion planar = Convert(rgb, {10, 20, 30}, Code("I444"),
                              [](CVideoFormatConverter* c) { c->SetProperty(Settings::MatrixCoefficients, 0); });
  ASSERT_TRUE(planar.result.Succeeded()) << planar.result.GetDetails();
  EXPECT_EQ(planar.bytes, (std::vector<uint8_t>{20, 10, 30}));
  EXPECT_EQ(planar.output->GetMatrixCoefficients(), 0);
}

TEST(VideoFormatConverterLayout, PackedTenBitWordsHoldTheDocumentedBits) {
  // v210: the first word is Cb0 | Y0 << 10 | Cr0 << 20.
  RObject<CVideoProperties> planar(Describe(Code("I2AL"), 6, 1));
  std::vector<uint8_t> bytes(PlaneLayout::Find(Code("I2AL"))->GetSampleLength(6, 1), 0);
  const uint16_t y0 = 0x3AC, cb0 = 0x155, cr0 = 0x2AA;
  bytes[0] = y0 & 0xFF, bytes[1] = y0 >> 8;
  bytes[12] = cb0 & 0xFF, bytes[13] = cb0 >> 8;
  bytes[18] = cr0 & 0xFF, bytes[19] = cr0 >> 8;
  Conversion packed = Convert(planar, bytes, Code("v210"));
  ASSERT_TRUE(packed.result.Succeeded()) << packed.result.GetDetails();
  const uint32_t word = packed.bytes[0] | packed.bytes[1] << 8 | packed.bytes[2] << 16 | static_cast<uint32_t>(packed.bytes[3]) << 24;
  EXPECT_EQ(word, cb0 | static_cast<uint32_t>(y0) << 10 | static_cast<uint32_t>(cr0) << 20);
  // r210: big-endian, R in bits 20-29; R10k: R in bits 22-31.
  RObject<CVideoProperties> rgb(Describe(Code("L48R"), 1, 1));
  const std::vector<uint8_t> white16 = {0xFF, 0xFF, 0x00, 0x00, 0x00, 0x00};  // R = 65535, G = B = 0
  Conversion r210 = Convert(rgb, white16, Code("r210"));
  ASSERT_TRUE(r210.result.Succeeded()) << r210.result.GetDetails();
  EXPECT_EQ(r210.bytes, (std::vector<uint8_t>{0x3F, 0xF0, 0x00, 0x00}));
}

TEST(VideoFormatConverterLayout, BottomUpPackedRgbIsReadFromItsLastLine) {
  // Two lines of one BGR pixel each; planar G, B, R comes out in picture order.
  RObject<CVideoProperties> rgb(Describe(Code("24BG"), 1, 2));
  const std::vector<uint8_t> lines = {1, 2, 3, 4, 5, 6};
  auto planar = [](bool bottomUp) {
    return [bottomUp](CVideoFormatConverter* c) {
      c->SetProperty(Settings::MatrixCoefficients, 0);
      c->SetProperty(Settings::BottomUp, bottomUp);
    };
  };
  Conversion topDown = Convert(rgb, lines, Code("I444"), planar(false));
  Conversion bottomUp = Convert(rgb, lines, Code("I444"), planar(true));
  ASSERT_TRUE(topDown.result.Succeeded() && bottomUp.result.Succeeded());
  EXPECT_EQ(topDown.bytes, (std::vector<uint8_t>{2, 5, 1, 4, 3, 6}));
  EXPECT_EQ(bottomUp.bytes, (std::vector<uint8_t>{5, 2, 4, 1, 6, 3}));
}
