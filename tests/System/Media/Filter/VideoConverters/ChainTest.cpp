// Chains of several stages run by the converter line by line, without
// intermediate pictures, against the same stages run one after the other
// through whole intermediate pictures.

#include <gtest/gtest.h>

#include "VideoConverterTestSupport.h"

using namespace VideoConverterTest;

namespace {

struct Case {
  const char* from;
  const char* to;
  int width;
  int height;
  int maxThreads;
};

// The planned stages run one by one over whole pictures.
std::vector<uint8_t> StageByStage(const CVideoProperties* input, const std::vector<uint8_t>& bytes, unsigned int format,
                                  const CVideoProperties* output) {
  RObject<CList<CStage>> stages(
      CVideoFormatConverter::FindConversionPath(CVideoFormatConverter::CS_SPEED, input, output));
  if (!stages) return {};
  std::vector<uint8_t> current(bytes);
  unsigned int currentFormat = input->GetFormat();
  for (CStage* stage : *stages) {
    const CVideoProperties* to = stage->GetOutput();
    std::vector<uint8_t> next(NaturalSize(to->GetFormat(), to->GetWidth(), to->GetHeight()), 0);
    SamplePlanes in = NaturalPlanes(currentFormat, input->GetWidth(), input->GetHeight(), current.data());
    SamplePlanes out = NaturalPlanes(to->GetFormat(), to->GetWidth(), to->GetHeight(), next.data());
    if (stage->Transform(in, out, 0, to->GetHeight()).Failed()) return {};
    current.swap(next);
    currentFormat = to->GetFormat();
  }
  EXPECT_EQ(currentFormat, format);
  return current;
}

}  // namespace

TEST(VideoFormatConverterChain, LineByLineEqualsStageByStage) {
  const Case cases[] = {
      {"I420", "24BG", 64, 36, 1},     {"I420", "24BG", 1921, 1081, 2}, {"I420", "BGRA", 33, 17, 3},
      {"I420", "I2AL", 1921, 1081, 2}, {"I420", "I2AL", 2, 2, 1},       {"I420", "v210", 47, 9, 2},
      {"YV12", "RGBA", 1, 1, 1},       {"UYVY", "I4AL", 35, 7, 2},      {"NV12", "24BG", 18, 10, 2},
      {"I0AL", "UYVY", 17, 6, 1},      {"24BG", "I420", 15, 11, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.from) + " -> " + c.to + " " + std::to_string(c.width) + "x" + std::to_string(c.height));
    RObject<CVideoProperties> input(Describe(Code(c.from), c.width, c.height));
    const std::vector<uint8_t> bytes = Random(Code(c.from), c.width, c.height, 11);
    Conversion chained = Convert(input, bytes, Code(c.to),
                                 [&](CVideoFormatConverter* v) { v->SetProperty(Settings::MaxThreads, c.maxThreads); });
    ASSERT_TRUE(chained.result.Succeeded()) << chained.result.GetDetails();
    ASSERT_GE(chained.stages.size(), 2u);  // otherwise nothing is chained
    const std::vector<uint8_t> reference = StageByStage(input, bytes, Code(c.to), chained.output);
    ASSERT_FALSE(reference.empty());
    const Components got = Read(Code(c.to), c.width, c.height, chained.bytes);
    const Components want = Read(Code(c.to), c.width, c.height, reference);
    for (int s = 0; s < 4; ++s) EXPECT_EQ(got.slot[s], want.slot[s]) << "slot " << s;
  }
}
