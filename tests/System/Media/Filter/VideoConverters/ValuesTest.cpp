// Conversions that change values: bit depth and rounding, ranges, the twist
// matrices, resampling.

#include <gtest/gtest.h>

#include <cmath>

#include "System/Media/Filter/VideoConverters/ColorMatrix.h"
#include "System/Media/Filter/VideoConverters/TwistStage.h"
#include "VideoConverterTestSupport.h"

using namespace VideoConverterTest;

namespace {

// A 4x2 "I0AL" picture whose luma line holds the given values.
std::vector<uint8_t> TenBitPicture(const std::vector<uint16_t>& luma) {
  std::vector<uint8_t> bytes(PlaneLayout::Find(Code("I0AL"))->GetSampleLength(4, 2), 0);
  for (size_t i = 0; i < luma.size(); ++i) {
    bytes[i * 2] = luma[i] & 0xFF;
    bytes[i * 2 + 1] = luma[i] >> 8;
  }
  for (size_t i = 16; i + 1 < bytes.size(); i += 2) bytes[i + 1] = 0x02;  // chroma 512
  return bytes;
}

}  // namespace

TEST(VideoFormatConverterValues, TenToEightBitsDropsTheLowBitsUnlessRoundingIsNearest) {
  RObject<CVideoProperties> input(Describe(Code("I0AL"), 4, 2));
  const std::vector<uint8_t> bytes = TenBitPicture({0x3FF, 0x203, 0x1FF, 0x0FE});
  Conversion down = Convert(input, bytes, Code("I420"));
  ASSERT_TRUE(down.result.Succeeded()) << down.result.GetDetails();
  EXPECT_EQ(down.stages, std::vector<unsigned int>{FourCC("cvrt")});
  EXPECT_EQ(std::vector<uint8_t>(down.bytes.begin(), down.bytes.begin() + 4), (std::vector<uint8_t>{0xFF, 0x80, 0x7F, 0x3F}));
  EXPECT_EQ(down.bytes[8], 0x80);  // chroma 512 -> 128
  Conversion nearest = Convert(input, bytes, Code("I420"),
                               [](CVideoFormatConverter* c) { c->SetProperty(Settings::RoundingMode, 3); });
  ASSERT_TRUE(nearest.result.Succeeded());
  EXPECT_EQ(std::vector<uint8_t>(nearest.bytes.begin(), nearest.bytes.begin() + 4), (std::vector<uint8_t>{0xFF, 0x81, 0x80, 0x40}));
}

TEST(VideoFormatConverterValues, RangeChangesMapBlackWhiteAndNeutralChroma) {
  RObject<CVideoProperties> narrow(Describe(Code("I444"), 2, 1, 1, 1));
  // Y 16, 235; Cb 128, 240; Cr 16, 128.
  Conversion full = Convert(narrow, {16, 235, 128, 240, 16, 128}, Code("I444"),
                            [](CVideoFormatConverter* c) { c->SetProperty(Settings::VideoRange, 2); });
  ASSERT_TRUE(full.result.Succeeded()) << full.result.GetDetails();
  EXPECT_EQ(full.output->GetVideoRange(), 2);
  EXPECT_EQ(full.bytes[0], 0);
  EXPECT_EQ(full.bytes[1], 255);
  EXPECT_EQ(full.bytes[2], 128);
  EXPECT_EQ(full.bytes[3], 255);
  EXPECT_EQ(full.bytes[4], 0);
}

TEST(VideoFormatConverterValues, ComposedMatricesInvertEachOtherAndKnownColoursLand) {
  const int matrices[] = {1, 4, 5, 6, 7, 8, 9};
  for (int m : matrices) {
    ColorMatrix4 toRgb, toYuv;
    ASSERT_TRUE(ColorMatrix4::Compose(m, 1, 8, 0, 2, 8, toRgb)) << m;
    ASSERT_TRUE(ColorMatrix4::Compose(0, 2, 8, m, 1, 8, toYuv)) << m;
    const ColorMatrix4 product = ColorMatrix4::Mul_mm4x4_32f(toYuv, toRgb);
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c)
        EXPECT_NEAR(product.m[r * 4 + c], r == c ? 1.0f : 0.0f, 1e-3f) << "matrix " << m << " at " << r << "," << c;
  }
  // Narrow BT.709 white (235, 128, 128) is full-range G = B = R = 255;
  // the BT.601 red primary has Y = 0.299.
  ColorMatrix4 m;
  ASSERT_TRUE(ColorMatrix4::Compose(1, 1, 8, 0, 2, 8, m));
  for (int r = 0; r < 3; ++r) EXPECT_NEAR(m.m[r * 4] * 235 + m.m[r * 4 + 1] * 128 + m.m[r * 4 + 2] * 128 + m.m[r * 4 + 3], 255.0f, 0.01f);
  ASSERT_TRUE(ColorMatrix4::Compose(0, 2, 8, 6, 2, 8, m));
  EXPECT_NEAR(m.m[2] * 255.0f + m.m[3], 0.299f * 255.0f, 0.01f);  // slot 2 is R
  EXPECT_FALSE(ColorMatrix4::Compose(3, 1, 8, 0, 2, 8, m));
}

TEST(VideoFormatConverterValues, YuvToRgbAndBackKeepsColoursWithinTwoCodes) {
  RObject<CVideoProperties> yuv(Describe(Code("I444"), 16, 16, 1, 1));
  std::vector<uint8_t> picture(16 * 16 * 3);
  // Colours inside the RGB cube, so nothing is clipped on the way.
  for (size_t i = 0; i < picture.size(); ++i) picture[i] = static_cast<uint8_t>(i < 256 ? 90 + i % 90 : 116 + (i * 7) % 24);
  Conversion rgb = Convert(yuv, picture, Code("24BG"), [](CVideoFormatConverter* c) { c->SetProperty(Settings::VideoRange, 2); });
  ASSERT_TRUE(rgb.result.Succeeded()) << rgb.result.GetDetails();
  EXPECT_EQ(rgb.output->GetMatrixCoefficients(), 0);
  Conversion back = Convert(rgb.output, rgb.bytes, Code("I444"), [](CVideoFormatConverter* c) {
    c->SetProperty(Settings::VideoRange, 1);
    c->SetProperty(Settings::MatrixCoefficients, 1);
  });
  ASSERT_TRUE(back.result.Succeeded()) << back.result.GetDetails();
  ASSERT_EQ(back.bytes.size(), picture.size());
  // 8-bit RGB in between: half a code of RGB error grows by up to 255/224 per
  // chroma component on the way back.
  for (size_t i = 0; i < picture.size(); ++i) ASSERT_LE(std::abs(back.bytes[i] - picture[i]), 2) << i;
}

TEST(VideoFormatConverterValues, ResamplingKeepsFlatChromaAndLuma) {
  RObject<CVideoProperties> yuv420(Describe(Code("I420"), 9, 5, 1));
  std::vector<uint8_t> picture = Random(Code("I420"), 9, 5, 3);
  const size_t luma = 9 * 5;
  std::fill(picture.begin() + luma, picture.end(), 90);
  for (const char* target : {"I422", "I444", "NV16", "I411", "I440"}) {
    Conversion up = Convert(yuv420, picture, Code(target));
    ASSERT_TRUE(up.result.Succeeded()) << target << ": " << up.result.GetDetails();
    const Components c = Read(Code(target), 9, 5, up.bytes);
    EXPECT_EQ(std::vector<uint8_t>(up.bytes.begin(), up.bytes.begin() + luma), std::vector<uint8_t>(picture.begin(), picture.begin() + luma)) << target;
    for (uint16_t v : c.slot[1]) ASSERT_EQ(v, 90) << target;
  }
}

TEST(VideoFormatConverterValues, OutputDescriptionsFollowTheSettings) {
  RObject<CVideoProperties> rgb(Describe(0x18, 1920, 1080));
  RObject<CVideoFormatConverter> converter(new CVideoFormatConverter());
  EXPECT_TRUE(converter->CreateOutputProperties(Code("I420")) == nullptr);  // no input yet
  CVideoProperties* none = nullptr;
  EXPECT_STREQ(converter->CreateOutputProperties(Code("I420"), none).GetDetails(), "input properties not set");
  converter->AddInputMedia(rgb.Get());
  RObject<CVideoProperties> yuv(converter->CreateOutputProperties(Code("I420")));
  ASSERT_TRUE(yuv);
  EXPECT_EQ(yuv->GetMatrixCoefficients(), 1);  // what 1080 lines imply
  EXPECT_EQ(yuv->GetSubsampling(), 0x22);
  EXPECT_EQ(yuv->GetChromaSiting(), 1);
  converter->SetProperty(Settings::Subsampling, static_cast<unsigned char>(0x22));
  CVideoProperties* refused = nullptr;
  Result subsampled = converter->CreateOutputProperties(Code("BGRA"), refused);
  EXPECT_TRUE(subsampled.Failed());
  EXPECT_STREQ(subsampled.GetDetails(), "subsampled RGB is not allowed");
  converter->SetProperty(Settings::BitDepth, 10);
  RObject<CFormatList> formats(converter->GetOutputFormats());
  ASSERT_GT(formats->GetCount(), 0);
  for (int i = 0; i < formats->GetCount(); ++i) {
    unsigned int format = 0;
    formats->GetValue(i, format);
    EXPECT_EQ(PixelFormatDescriptor::GetBitDepth(format), 10);
    EXPECT_EQ(PixelFormatDescriptor::GetSubsampling(format), 0x22);
  }
}

TEST(VideoFormatConverterValues, ValueStagesStayInsideThePlanesAtOddSizes) {
  // Chains with resampling, twists and depth changes; the address sanitizer
  // judges the reads and writes at the picture edges.
  const std::pair<const char*, const char*> chains[] = {
      {"I420", "24BG"}, {"24BG", "I420"}, {"I420", "I2AL"}, {"I0AL", "UYVY"},
      {"YUVA", "BGRA"}, {"I420", "I410"}, {"I410", "I444"}, {"v210", "I420"}, {"I411", "NV12"},
  };
  const std::pair<int, int> sizes[] = {{1, 1}, {2, 2}, {5, 3}, {13, 7}};
  for (const auto& [from, to] : chains)
    for (const auto& [width, height] : sizes) {
      SCOPED_TRACE(std::string(from) + " -> " + to + " at " + std::to_string(width) + "x" + std::to_string(height));
      RObject<CVideoProperties> input(Describe(Code(from), width, height, 1, PixelFormatDescriptor::IsRgb(Code(from)) ? 2 : 1));
      Conversion conversion = Convert(input, Random(Code(from), width, height, 5), Code(to));
      ASSERT_TRUE(conversion.result.Succeeded()) << conversion.result.GetDetails();
      EXPECT_FALSE(conversion.stages.empty());
      EXPECT_EQ(conversion.bytes.size(), NaturalSize(Code(to), width, height));
    }
  RObject<CVideoProperties> big(Describe(Code("I420"), 1921, 1081, 1, 1));
  for (const char* to : {"24BG", "I2AL", "UYVY"}) {
    Conversion conversion = Convert(big, Random(Code("I420"), 1921, 1081, 9), Code(to));
    ASSERT_TRUE(conversion.result.Succeeded()) << to << ": " << conversion.result.GetDetails();
  }
}

TEST(VideoFormatConverterValues, BandsOnSeveralThreadsGiveTheSamePictureAsOne) {
  RObject<CVideoProperties> input(Describe(Code("I420"), 322, 181, 1, 1));
  const std::vector<uint8_t> picture = Random(Code("I420"), 322, 181, 11);
  for (const char* to : {"24BG", "UYVY", "I444"}) {
    Conversion one = Convert(input, picture, Code(to), [](CVideoFormatConverter* c) { c->SetProperty(Settings::MaxThreads, 1); });
    Conversion four = Convert(input, picture, Code(to), [](CVideoFormatConverter* c) { c->SetProperty(Settings::MaxThreads, 4); });
    ASSERT_TRUE(one.result.Succeeded() && four.result.Succeeded()) << to;
    EXPECT_TRUE(one.bytes == four.bytes) << to;
  }
}

TEST(VideoFormatConverterValues, EveryPackedRgbOrderHoldsTheSameMixedValues) {
  // YUV straight to each packed order against YUV to "24BG" and then a pure
  // layout change: the one-pass mix and pack must put each component where
  // the format's own encoder does, padding bytes set.
  RObject<CVideoProperties> input(Describe(Code("I444"), 37, 3));
  const std::vector<uint8_t> bytes = Random(Code("I444"), 37, 3, 9);
  Conversion bgr = Convert(input, bytes, Code("24BG"));
  ASSERT_TRUE(bgr.result.Succeeded()) << bgr.result.GetDetails();
  const std::pair<unsigned int, const char*> orders[] = {
      {Code("BGRA"), "BGRA"}, {Code("RGBA"), "RGBA"}, {Code("BGRX"), "BGRX"}, {0x18u, "0x18"}};
  for (const auto& [format, name] : orders) {
    SCOPED_TRACE(name);
    Conversion direct = Convert(input, bytes, format);
    ASSERT_TRUE(direct.result.Succeeded()) << direct.result.GetDetails();
    EXPECT_EQ(direct.stages.back(), FourCC("twst"));  // the mix writes the pixels
    Conversion shuffled = Convert(bgr.output, bgr.bytes, format);
    ASSERT_TRUE(shuffled.result.Succeeded()) << shuffled.result.GetDetails();
    EXPECT_EQ(direct.bytes, shuffled.bytes);
  }
}
