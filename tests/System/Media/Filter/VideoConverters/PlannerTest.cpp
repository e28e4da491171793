// The planner: canonical descriptions, candidate stages, edge weights and the
// failure when no chain joins two descriptions.

#include <gtest/gtest.h>

#include "System/Media/Filter/VideoConverters/ConvertStage.h"
#include "System/Media/Filter/VideoConverters/ResampleStage.h"
#include "System/Media/Filter/VideoConverters/TwistStage.h"
#include "VideoConverterTestSupport.h"

using namespace VideoConverterTest;

namespace {

std::vector<unsigned int> Plan(int strategy, const CVideoProperties* in, const CVideoProperties* out) {
  RObject<CList<CStage>> path(CVideoFormatConverter::FindConversionPath(strategy, in, out));
  std::vector<unsigned int> types;
  if (!path) return {0};
  for (CStage* stage : *path) types.push_back(stage->GetStageType());
  return types;
}

const unsigned int kTwist = CTwistStage::StageType;
const unsigned int kResample = CResampleStage::StageType;
const unsigned int kConvert = CConvertStage::StageType;

}  // namespace

TEST(VideoFormatConverterPlanner, IdentityMatrixOnSubsampledPicturesMeansUnspecified) {
  RObject<CVideoProperties> identity420(Describe(Code("I420"), 64, 32, 0));
  RObject<CVideoProperties> unspecified420(Describe(Code("I420"), 64, 32, 2));
  // 4:2:0 with matrix 0 is not RGB: nothing to do.
  EXPECT_EQ(Plan(CVideoFormatConverter::CS_SPEED, identity420, unspecified420), std::vector<unsigned int>{});
  // 4:4:4 with matrix 0 is planar RGB: making it YUV is a twist.
  RObject<CVideoProperties> identity444(Describe(Code("I444"), 64, 32, 0));
  RObject<CVideoProperties> bt709(Describe(Code("I444"), 64, 32, 1));
  EXPECT_EQ(Plan(CVideoFormatConverter::CS_SPEED, identity444, bt709), std::vector<unsigned int>{kTwist});
}

TEST(VideoFormatConverterPlanner, AMatrixChangeOfSubsampledPicturesGoesThroughFourFourFour) {
  RObject<CVideoProperties> bt601(Describe(Code("I420"), 64, 32, 6));
  RObject<CVideoProperties> bt709(Describe(Code("I420"), 64, 32, 1));
  RObject<CList<CStage>> path(CVideoFormatConverter::FindConversionPath(CVideoFormatConverter::CS_SPEED, bt601, bt709));
  ASSERT_TRUE(path);
  std::vector<unsigned int> types;
  for (CStage* stage : *path) types.push_back(stage->GetStageType());
  EXPECT_EQ(types, (std::vector<unsigned int>{kResample, kTwist, kResample}));
  CStage* twist = nullptr;
  path->Get(1, twist);
  RObject<CStage> held(twist);
  EXPECT_EQ(twist->GetInput()->GetSubsampling(), 0x11);
  EXPECT_EQ(twist->GetInput()->GetMatrixCoefficients(), 6);
  EXPECT_EQ(twist->GetOutput()->GetMatrixCoefficients(), 1);
}

TEST(VideoFormatConverterPlanner, YuvToRgbIsATwistToTheIdentityMatrix) {
  RObject<CVideoProperties> yuv(Describe(Code("I420"), 64, 32, 1));
  RObject<CVideoProperties> rgb(Describe(0x18, 64, 32));
  EXPECT_EQ(Plan(CVideoFormatConverter::CS_SPEED, yuv, rgb), (std::vector<unsigned int>{kResample, kTwist}));
  EXPECT_EQ(Plan(CVideoFormatConverter::CS_SPEED, rgb, yuv), (std::vector<unsigned int>{kTwist, kResample}));
}

TEST(VideoFormatConverterPlanner, QualityPrefersWideIntermediatesAndSpeedNarrowOnes) {
  // Two chains of two stages: through 16-bit RGB, or through 8-bit YUV.
  RObject<CVideoProperties> wide(Describe(Code("I4GL"), 64, 32, 1));
  RObject<CVideoProperties> rgb(Describe(Code("24BG"), 64, 32));
  EXPECT_EQ(Plan(CVideoFormatConverter::CS_QUALITY, wide, rgb), (std::vector<unsigned int>{kTwist, kConvert}));
  EXPECT_EQ(Plan(CVideoFormatConverter::CS_SPEED, wide, rgb), (std::vector<unsigned int>{kConvert, kTwist}));
  // Any other strategy counts stages only; both chains have two.
  EXPECT_EQ(Plan(7, wide, rgb).size(), 2u);
}

TEST(VideoFormatConverterPlanner, FormatsNoChainJoinsHaveNoPath) {
  RObject<CVideoProperties> yuv(Describe(Code("I420"), 64, 32, 1));
  RObject<CVideoProperties> planarRgb(Describe(Code("8BPS"), 64, 32));
  EXPECT_EQ(CVideoFormatConverter::FindConversionPath(CVideoFormatConverter::CS_SPEED, yuv, planarRgb), nullptr);
}

TEST(VideoFormatConverterPlanner, InitializeFailsWithoutAViablePath) {
  RObject<CVideoProperties> yuv(Describe(Code("I420"), 16, 16, 1));
  // Matrix 3 is reserved: no twist reaches it.
  Conversion conversion = Convert(yuv, Random(Code("I420"), 16, 16, 1), Code("I422"),
                                  [](CVideoFormatConverter* c) { c->SetProperty(Settings::MatrixCoefficients, 3); });
  ASSERT_TRUE(conversion.result.Failed());
  EXPECT_NE(std::string(conversion.result.GetDetails()).find("No viable conversion path"), std::string::npos);
}

TEST(VideoFormatConverterPlanner, UnknownStageTagsAndBadStageInputsAreRefused) {
  EXPECT_EQ(CStage::Create(Code("nope")), nullptr);
  RObject<CStage> twist(CStage::Create(kTwist));
  RObject<CVideoProperties> uyvy(Describe(Code("UYVY"), 16, 16));
  RObject<CVideoProperties> rgb(Describe(0x18, 16, 16));
  Result begun = twist->Begin(uyvy, rgb);
  ASSERT_TRUE(begun.Failed());
  EXPECT_EQ(std::string(begun.GetDetails()).rfind("Unexpected input/output: 'UYVY'/'", 0), 0u);
}
