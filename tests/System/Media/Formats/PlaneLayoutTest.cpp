// Plane layouts of uncompressed pictures: strides and sizes worked out by
// hand from the pixel formats' public definitions.
#include <gtest/gtest.h>

#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/Video/PlaneLayout.h"
#include "System/Types.h"

using namespace Corvane::Mox;

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

TEST(PlaneLayout, PlanarFourTwoZero) {
  const PlaneLayout* layout = PlaneLayout::Find(F("I420"));
  ASSERT_NE(layout, nullptr);
  EXPECT_EQ(layout->planeCount, 3);
  EXPECT_EQ(layout->GetStride(0, 1920), 1920);
  EXPECT_EQ(layout->GetStride(1, 1920), 960);
  EXPECT_EQ(layout->GetPlaneHeight(1, 1080), 540);
  EXPECT_EQ(layout->GetSampleLength(1920, 1080), 1920LL * 1080 * 3 / 2);
  // Odd sizes round the chroma planes up.
  EXPECT_EQ(layout->GetStride(1, 721), 361);
  EXPECT_EQ(layout->GetPlaneHeight(2, 481), 241);
  EXPECT_EQ(layout->GetStride(3, 1920), 0);
  EXPECT_EQ(layout->GetStride(0, 0), 0);
}

TEST(PlaneLayout, AliasesShareTheirNamedCodesLayout) {
  EXPECT_EQ(PlaneLayout::Find(F("IYUV")), PlaneLayout::Find(F("I420")));
  EXPECT_EQ(PlaneLayout::Find(F("2vuy")), PlaneLayout::Find(F("UYVY")));
  EXPECT_EQ(PlaneLayout::Find(F("avc1")), nullptr);
  EXPECT_EQ(PlaneLayout::Find(F("zzzz")), nullptr);
}

TEST(PlaneLayout, SixteenBitPlanesInBothByteOrders) {
  const PlaneLayout* le = PlaneLayout::Find(F("I0AL"));
  const PlaneLayout* be = PlaneLayout::Find(F("I0AB"));
  ASSERT_TRUE(le && be);
  EXPECT_EQ(le->byteOrder, PlaneLayout::LittleEndian);
  EXPECT_EQ(be->byteOrder, PlaneLayout::BigEndian);
  EXPECT_EQ(le->bitDepth, 10);
  EXPECT_EQ(le->GetStride(0, 1920), 3840);
  EXPECT_EQ(le->GetStride(1, 1920), 1920);
  EXPECT_EQ(be->GetSampleLength(1920, 1080), 1920LL * 1080 * 3);
}

TEST(PlaneLayout, BiPlanarInterleavesChroma) {
  const PlaneLayout* nv12 = PlaneLayout::Find(F("NV12"));
  ASSERT_NE(nv12, nullptr);
  EXPECT_EQ(nv12->planeCount, 2);
  EXPECT_EQ(nv12->GetStride(1, 1920), 1920);
  EXPECT_EQ(nv12->GetPlaneHeight(1, 1080), 540);
  EXPECT_STREQ(nv12->planes[1].components, "UV");
  EXPECT_STREQ(PlaneLayout::Find(F("NV21"))->planes[1].components, "VU");
  const PlaneLayout* p010 = PlaneLayout::Find(F("x420"));
  ASSERT_NE(p010, nullptr);
  EXPECT_EQ(p010->GetStride(0, 1920), 3840);
  EXPECT_EQ(p010->GetStride(1, 1920), 3840);
  EXPECT_EQ(p010->GetSampleLength(1920, 1080), 3840LL * 1080 + 3840LL * 540);
}

TEST(PlaneLayout, PackedFourTwoTwoAndV210) {
  EXPECT_EQ(PlaneLayout::Find(F("UYVY"))->GetStride(0, 720), 1440);
  EXPECT_EQ(PlaneLayout::Find(F("YUY2"))->GetStride(0, 721), 1444);  // whole pixel pairs
  const PlaneLayout* v210 = PlaneLayout::Find(F("v210"));
  ASSERT_NE(v210, nullptr);
  // 48 pixels in 128 bytes, lines padded to 128 bytes.
  EXPECT_EQ(v210->GetStride(0, 1920), 1920 / 48 * 128);
  EXPECT_EQ(v210->GetStride(0, 1280), 27 * 128);
  EXPECT_EQ(v210->GetStride(0, 720), 15 * 128);
  EXPECT_EQ(v210->GetStride(0, 1), 128);
  EXPECT_EQ(v210->GetStride(0, 1280) % 128, 0);
}

TEST(PlaneLayout, RgbPixelSizes) {
  EXPECT_EQ(PlaneLayout::Find(F("BGRA"))->GetStride(0, 100), 400);
  EXPECT_EQ(PlaneLayout::Find(F("24BG"))->GetStride(0, 100), 300);
  EXPECT_EQ(PlaneLayout::Find(0x00000018u)->GetStride(0, 100), 300);
  EXPECT_EQ(PlaneLayout::Find(F("b64a"))->GetStride(0, 100), 800);
  EXPECT_EQ(PlaneLayout::Find(F("b64a"))->byteOrder, PlaneLayout::BigEndian);
  EXPECT_EQ(PlaneLayout::Find(F("r210"))->GetStride(0, 100), 400);
  EXPECT_EQ(PlaneLayout::Find(F("8BPS"))->planeCount, 3);
}

TEST(PlaneLayout, EveryLayoutNamesAnUncompressedFormat) {
  for (int i = 0; i < PlaneLayout::GetCount(); ++i) {
    const PlaneLayout* layout = PlaneLayout::GetAt(i);
    unsigned int root = VideoFormat::GetCanonicalFormat(layout->format);
    // "norm", the converter's normalised working form, belongs to no family.
    EXPECT_TRUE(root == F("RGB ") || root == F("YUV ") || root == F("alfa") || root == F("norm")) << i;
    EXPECT_GE(layout->planeCount, 1);
    // The chroma byte agrees with the planes' divisors.
    if (layout->packing == PlaneLayout::Planar && layout->subsampling) {
      EXPECT_EQ(layout->planes[1].blockWidth, layout->subsampling >> 4) << i;
      EXPECT_EQ(layout->planes[1].verticalDivisor, layout->subsampling & 15) << i;
    }
  }
}

}  // namespace
