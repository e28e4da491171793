// The Bayer mosaics and the packed float formats: demosaicing values at
// known places, float values and what out-of-range floats read as, and
// conversions that run through them.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "VideoConverterTestSupport.h"

using namespace VideoConverterTest;

namespace {

// A 4x4 16-bit mosaic whose sample at (x, y) is 1000 + 100 y + 10 x: a ramp,
// which bilinear interpolation reproduces exactly inside the picture.
std::vector<uint8_t> RampMosaic() {
  std::vector<uint8_t> bytes;
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x) {
      const int v = 1000 + 100 * y + 10 * x;
      bytes.push_back(static_cast<uint8_t>(v));
      bytes.push_back(static_cast<uint8_t>(v >> 8));
    }
  return bytes;
}

// Component c (0 R, 1 G, 2 B) of pixel x of the first line of an "L48R" picture.
int Rgb48Wide(const std::vector<uint8_t>& bytes, int width, int x, int c, int y = 0) {
  const size_t i = (static_cast<size_t>(y) * width + x) * 6 + c * 2;
  return bytes[i] | bytes[i + 1] << 8;
}

// The same in a 4-pixel-wide picture.
int Rgb48(const std::vector<uint8_t>& bytes, int x, int y, int c) { return Rgb48Wide(bytes, 4, x, c, y); }

std::vector<uint8_t> Floats(const std::vector<float>& values) {
  std::vector<uint8_t> bytes(values.size() * 4);
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

}  // namespace

TEST(VideoFormatConverterMosaic, DemosaicingAveragesTheNeighboursHoldingEachComponent) {
  RObject<CVideoProperties> input(Describe(Code("RGGB"), 4, 4, 0, 2));
  Conversion rgb = Convert(input, RampMosaic(), Code("L48R"));
  ASSERT_TRUE(rgb.result.Succeeded()) << rgb.result.GetDetails();
  EXPECT_EQ(rgb.stages, std::vector<unsigned int>{FourCC("upck")});
  // (1, 1) is a blue place: green from its four edge neighbours, red from
  // its four corners; on the ramp both give the ramp's own value.
  EXPECT_EQ(Rgb48(rgb.bytes, 1, 1, 2), 1110);
  EXPECT_EQ(Rgb48(rgb.bytes, 1, 1, 1), 1110);
  EXPECT_EQ(Rgb48(rgb.bytes, 1, 1, 0), 1110);
  // (0, 0) is red: green from the two neighbours inside, blue from the one.
  EXPECT_EQ(Rgb48(rgb.bytes, 0, 0, 0), 1000);
  EXPECT_EQ(Rgb48(rgb.bytes, 0, 0, 1), 1055);
  EXPECT_EQ(Rgb48(rgb.bytes, 0, 0, 2), 1110);
  // (2, 1) is green in a green-blue row: blue from left and right, red from
  // above and below.
  EXPECT_EQ(Rgb48(rgb.bytes, 2, 1, 1), 1120);
  EXPECT_EQ(Rgb48(rgb.bytes, 2, 1, 2), (1110 + 1130 + 1) / 2);
  EXPECT_EQ(Rgb48(rgb.bytes, 2, 1, 0), (1020 + 1220 + 1) / 2);
}

TEST(VideoFormatConverterMosaic, ThePatternNamesWhereEachComponentSits) {
  // One picture of three flat colours mosaicked by each pattern: the top
  // left sample is the component the code starts with.
  std::vector<uint8_t> flat;
  for (int i = 0; i < 16; ++i)
    for (int v : {0x1111, 0x2222, 0x3333}) {  // R, G, B
      flat.push_back(static_cast<uint8_t>(v));
      flat.push_back(static_cast<uint8_t>(v >> 8));
    }
  RObject<CVideoProperties> input(Describe(Code("L48R"), 4, 4, 0, 2));
  const std::pair<const char*, int> firsts[] = {{"RGGB", 0x1111}, {"BGGR", 0x3333}, {"GRBG", 0x2222}, {"GBRG", 0x2222}};
  for (const auto& [pattern, first] : firsts) {
    SCOPED_TRACE(pattern);
    Conversion mosaic = Convert(input, flat, Code(pattern));
    ASSERT_TRUE(mosaic.result.Succeeded()) << mosaic.result.GetDetails();
    EXPECT_EQ(mosaic.bytes[0] | mosaic.bytes[1] << 8, first);
    // A flat picture comes back flat, edges included.
    Conversion back = Convert(mosaic.output, mosaic.bytes, Code("L48R"));
    ASSERT_TRUE(back.result.Succeeded());
    EXPECT_EQ(back.bytes, flat);
  }
}

TEST(VideoFormatConverterMosaic, SinglePixelsAndLinesHaveNoMissingNeighboursToRead) {
  // A 1x1 mosaic has no neighbours: the other components read as zero.
  RObject<CVideoProperties> one(Describe(Code("BGGR"), 1, 1, 0, 2));
  Conversion rgb = Convert(one, {0x34, 0x12}, Code("L48R"));
  ASSERT_TRUE(rgb.result.Succeeded()) << rgb.result.GetDetails();
  EXPECT_EQ(rgb.bytes, (std::vector<uint8_t>{0, 0, 0, 0, 0x34, 0x12}));
  // A single line 3 wide: green between two reds comes from them.
  RObject<CVideoProperties> line(Describe(Code("GRBG"), 3, 1, 0, 2));
  Conversion wide = Convert(line, {10, 0, 20, 0, 30, 0}, Code("L48R"));
  ASSERT_TRUE(wide.result.Succeeded()) << wide.result.GetDetails();
  EXPECT_EQ(Rgb48Wide(wide.bytes, 3, 1, 0), 20);  // its own red sample
  EXPECT_EQ(Rgb48Wide(wide.bytes, 3, 1, 1), 20);  // green from (10 + 30) / 2
  EXPECT_EQ(Rgb48Wide(wide.bytes, 3, 1, 2), 0);   // no blue in a single line
}

TEST(VideoFormatConverterFloat, FloatsAreCodeValuesOverTheTopCode) {
  // I416 planes Y, U, V, A of one pixel.
  RObject<CVideoProperties> input(Describe(Code("I416"), 1, 1));
  Conversion floats = Convert(input, {0xFF, 0xFF, 0x00, 0x80, 0x00, 0x00, 0x00, 0x00}, Code("r4fl"));
  ASSERT_TRUE(floats.result.Succeeded()) << floats.result.GetDetails();
  ASSERT_EQ(floats.bytes.size(), 16u);
  float v[4];
  std::memcpy(v, floats.bytes.data(), 16);
  EXPECT_EQ(v[0], 0.0f);                     // A
  EXPECT_EQ(v[1], 1.0f);                     // Y' at the top code
  EXPECT_FLOAT_EQ(v[2], 32768.0f / 65535);   // Cb at its centre
  EXPECT_EQ(v[3], 0.0f);                     // Cr
}

TEST(VideoFormatConverterFloat, OutOfRangeAndNanFloatsClampToTheCodeRange) {
  RObject<CVideoProperties> input(Describe(Code("R4fl"), 2, 1, 0, 2));
  const float nan = std::numeric_limits<float>::quiet_NaN();
  Conversion codes = Convert(input, Floats({-0.5f, 2.0f, nan, 0.25f, 0.5f, 1.0f, 0.0f, 1.0f}), Code("L64A"));
  ASSERT_TRUE(codes.result.Succeeded()) << codes.result.GetDetails();
  std::vector<int> values;
  for (size_t i = 0; i + 1 < codes.bytes.size(); i += 2) values.push_back(codes.bytes[i] | codes.bytes[i + 1] << 8);
  // L64A holds A, R, G, B per pixel.
  EXPECT_EQ(values, (std::vector<int>{16384, 0, 65535, 0, 65535, 32768, 65535, 0}));
}

TEST(VideoFormatConverterFloat, EightBitPicturesReachTheFloatFormatsThroughSixteenBits) {
  RObject<CVideoProperties> input(Describe(Code("I444"), 3, 2));
  const std::vector<uint8_t> bytes = Random(Code("I444"), 3, 2, 5);
  Conversion floats = Convert(input, bytes, Code("r4fl"));
  ASSERT_TRUE(floats.result.Succeeded()) << floats.result.GetDetails();
  EXPECT_EQ(floats.output->GetBitDepth(), 16);
  Conversion back = Convert(floats.output, floats.bytes, Code("I444"));
  ASSERT_TRUE(back.result.Succeeded()) << back.result.GetDetails();
  EXPECT_EQ(back.bytes, bytes);
}

TEST(VideoFormatConverterMosaicAndFloat, LayoutsReachAndAreReachedFromTheCommonOnes) {
  const std::pair<const char*, const char*> pairs[] = {
      {"RGGB", "I420"}, {"BGGR", "24BG"}, {"I420", "GRBG"}, {"r4fl", "UYVY"}, {"I420", "r4fl"},
      {"R4fl", "I444"}, {"24BG", "R4fl"}, {"NV32", "24BG"}, {"I420", "NV32"}, {"norm", "I420"},
  };
  for (const auto& [from, to] : pairs) {
    SCOPED_TRACE(std::string(from) + " -> " + to);
    RObject<CVideoProperties> input(Describe(Code(from), 6, 4));
    Conversion made = Convert(input, Random(Code(from), 6, 4, 3), Code(to));
    ASSERT_TRUE(made.result.Succeeded()) << made.result.GetDetails();
    EXPECT_EQ(made.output->GetFormat(), Code(to));
    EXPECT_EQ(made.bytes.size(), NaturalSize(Code(to), 6, 4));
  }
}
