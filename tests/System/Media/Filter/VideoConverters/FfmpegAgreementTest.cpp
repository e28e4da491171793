// Agreement with ffmpeg on the same frames: layout changes bit-identical to
// its raw video, RGB/YUV conversions within two codes of swscale given the
// same matrix and range, chroma resampling close to swscale's. The frames
// are made by ffmpeg's testsrc2 at test time; without ffmpeg the tests skip.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>

#include "VideoConverterTestSupport.h"

using namespace VideoConverterTest;

namespace {

constexpr int kWidth = 322;  // not a multiple of 4 or 6: partial blocks at the line ends
constexpr int kHeight = 182;

bool HaveFfmpeg() { return std::system("command -v ffmpeg >/dev/null 2>&1") == 0; }

std::string Directory() {
  static const std::string directory = [] {
    auto path = std::filesystem::temp_directory_path() / ("mox-vfc-" + std::to_string(getpid()));
    std::filesystem::create_directories(path);
    return path.string();
  }();
  return directory;
}

std::vector<uint8_t> ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::vector<uint8_t> Ffmpeg(const std::string& arguments, const std::string& name) {
  const std::string path = Directory() + "/" + name;
  const std::string command = "ffmpeg -v error -y " + arguments + " -frames:v 1 -f rawvideo '" + path + "'";
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  return ReadBytes(path);
}

// One testsrc2 frame in an ffmpeg pixel format.
std::vector<uint8_t> Source(const std::string& pixelFormat) {
  static std::map<std::string, std::vector<uint8_t>> made;
  auto found = made.find(pixelFormat);
  if (found != made.end()) return found->second;
  const std::string size = std::to_string(kWidth) + "x" + std::to_string(kHeight);
  auto bytes = Ffmpeg("-f lavfi -i testsrc2=size=" + size + ":rate=1 -pix_fmt " + pixelFormat, "src-" + pixelFormat + ".raw");
  made[pixelFormat] = bytes;
  return bytes;
}

// ffmpeg's conversion of a raw frame with extra options (a -vf chain, an encoder).
std::vector<uint8_t> FfmpegConvert(const std::string& from, const std::vector<uint8_t>& bytes, const std::string& options,
                                   const std::string& name) {
  const std::string input = Directory() + "/in-" + name + ".raw";
  WriteBytes(input, bytes);
  const std::string size = std::to_string(kWidth) + "x" + std::to_string(kHeight);
  return Ffmpeg("-f rawvideo -pix_fmt " + from + " -s " + size + " -i '" + input + "' " + options, "out-" + name + ".raw");
}

int MaximumDifference(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
  int worst = a.size() == b.size() ? 0 : 256;
  for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) worst = std::max(worst, std::abs(a[i] - b[i]));
  return worst;
}

double Psnr(const std::vector<uint16_t>& a, const std::vector<uint16_t>& b) {
  if (a.size() != b.size() || a.empty()) return 0;
  double sum = 0;
  for (size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * static_cast<double>(a[i] - b[i]);
  const double mse = sum / static_cast<double>(a.size());
  return mse == 0 ? 99.0 : 10.0 * std::log10(255.0 * 255.0 / mse);
}

class VideoFormatConverterFfmpeg : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!HaveFfmpeg()) GTEST_SKIP() << "ffmpeg is not installed";
  }
};

struct LayoutCase {
  const char* ours;
  const char* theirs;
  const char* target;
  const char* targetTheirs;  // ffmpeg output options
};

}  // namespace

TEST_F(VideoFormatConverterFfmpeg, LayoutChangesMatchItsRawVideoExactly) {
  const LayoutCase cases[] = {
      {"I420", "yuv420p", "NV12", "-pix_fmt nv12"},       {"I420", "yuv420p", "NV21", "-pix_fmt nv21"},
      {"I422", "yuv422p", "UYVY", "-pix_fmt uyvy422"},    {"I422", "yuv422p", "YUYV", "-pix_fmt yuyv422"},
      {"I422", "yuv422p", "YVYU", "-pix_fmt yvyu422"},    {"I444", "yuv444p", "YV24", "-vf shuffleplanes=0:2:1 -pix_fmt yuv444p"},
      {"24BG", "bgr24", "BGRA", "-pix_fmt bgra"},         {"24BG", "bgr24", "RGBA", "-pix_fmt rgba"},
      {"BGRA", "bgra", "0x20", "-pix_fmt argb"},          {"24BG", "bgr24", "BGRX", "-pix_fmt bgr0"},
      {"I2AL", "yuv422p10le", "v210", "-c:v v210"},       {"L48R", "rgb48le", "R64L", "-pix_fmt rgba64le"},
      {"I444", "yuv444p", "NV32", "-pix_fmt nv42"},
  };
  for (const LayoutCase& c : cases) {
    SCOPED_TRACE(std::string(c.ours) + " -> " + c.target);
    std::vector<uint8_t> source = Source(c.theirs);
    // ffmpeg's v210 encoder clips to 4..1019; a source inside that keeps it
    // a pure layout change.
    if (std::string(c.target) == "v210")
      for (size_t i = 0; i + 1 < source.size(); i += 2) {
        const int v = std::clamp(source[i] | source[i + 1] << 8, 4, 1019);
        source[i] = static_cast<uint8_t>(v), source[i + 1] = static_cast<uint8_t>(v >> 8);
      }
    RObject<CVideoProperties> input(Describe(Code(c.ours), kWidth, kHeight, 1, PixelFormatDescriptor::IsRgb(Code(c.ours)) ? 2 : 1));
    ASSERT_EQ(source.size(), NaturalSize(Code(c.ours), kWidth, kHeight));
    const unsigned int target = std::string(c.target) == "0x20" ? 0x20u : Code(c.target);
    Conversion ours = Convert(input, source, target);
    ASSERT_TRUE(ours.result.Succeeded()) << ours.result.GetDetails();
    const std::vector<uint8_t> theirs = FfmpegConvert(c.theirs, source, c.targetTheirs, c.target);
    EXPECT_EQ(ours.bytes.size(), theirs.size());
    EXPECT_TRUE(ours.bytes == theirs) << "max difference " << MaximumDifference(ours.bytes, theirs);
  }
}

struct ColourCase {
  int matrix;
  const char* name;
  int range;
  const char* rangeName;
};

const ColourCase kColours[] = {{6, "bt601", 1, "tv"}, {6, "bt601", 2, "pc"}, {1, "bt709", 1, "tv"}, {1, "bt709", 2, "pc"}};
// Exact rounding and no chroma shortcuts, so the difference is the
// arithmetic alone.
const std::string kExact = ":flags=accurate_rnd+full_chroma_int+bitexact";

TEST_F(VideoFormatConverterFfmpeg, YuvToRgbIsWithinTwoCodesOfSwscale) {
  const std::vector<uint8_t> source = Source("yuv444p");
  for (const ColourCase& c : kColours) {
    SCOPED_TRACE(std::string(c.name) + " " + c.rangeName);
    RObject<CVideoProperties> input(Describe(Code("I444"), kWidth, kHeight, c.matrix, c.range));
    Conversion ours = Convert(input, source, Code("24BG"), [](CVideoFormatConverter* f) { f->SetProperty(Settings::VideoRange, 2); });
    ASSERT_TRUE(ours.result.Succeeded()) << ours.result.GetDetails();
    const std::string vf = std::string("-vf scale=in_color_matrix=") + c.name + ":in_range=" + c.rangeName + kExact + ",format=bgr24";
    const std::vector<uint8_t> theirs = FfmpegConvert("yuv444p", source, vf, std::string("rgb-") + c.name + c.rangeName);
    EXPECT_LE(MaximumDifference(ours.bytes, theirs), 2);
  }
}

TEST_F(VideoFormatConverterFfmpeg, RgbToYuvIsWithinTwoCodesOfSwscale) {
  const std::vector<uint8_t> source = Source("bgr24");
  for (const ColourCase& c : kColours) {
    SCOPED_TRACE(std::string(c.name) + " " + c.rangeName);
    RObject<CVideoProperties> input(Describe(Code("24BG"), kWidth, kHeight, 0, 2));
    Conversion ours = Convert(input, source, Code("I444"), [&](CVideoFormatConverter* f) {
      f->SetProperty(Settings::VideoRange, c.range);
      f->SetProperty(Settings::MatrixCoefficients, c.matrix);
    });
    ASSERT_TRUE(ours.result.Succeeded()) << ours.result.GetDetails();
    const std::string vf = std::string("-vf scale=out_color_matrix=") + c.name + ":out_range=" + c.rangeName + kExact + ",format=yuv444p";
    const std::vector<uint8_t> theirs = FfmpegConvert("bgr24", source, vf, std::string("yuv-") + c.name + c.rangeName);
    EXPECT_LE(MaximumDifference(ours.bytes, theirs), 2);
  }
}

// swscale's bilinear filter with no chroma location given: samples centred
// between the luma samples they cover, as an unknown siting is here.
TEST_F(VideoFormatConverterFfmpeg, ChromaResamplingIsCloseToSwscale) {
  struct Case {
    const char* from;
    const char* fromTheirs;
    const char* to;
    const char* toTheirs;
  };
  const Case cases[] = {{"I420", "yuv420p", "I422", "yuv422p"},
                        {"I420", "yuv420p", "I444", "yuv444p"},
                        {"I444", "yuv444p", "I420", "yuv420p"},
                        {"I422", "yuv422p", "I420", "yuv420p"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.from) + " -> " + c.to);
    const std::vector<uint8_t> source = Source(c.fromTheirs);
    RObject<CVideoProperties> input(Describe(Code(c.from), kWidth, kHeight, 1, 1));
    Conversion ours = Convert(input, source, Code(c.to));
    ASSERT_TRUE(ours.result.Succeeded()) << ours.result.GetDetails();
    const std::vector<uint8_t> theirs =
        FfmpegConvert(c.fromTheirs, source, std::string("-vf scale") + "=flags=accurate_rnd+bitexact+bilinear,format=" + c.toTheirs,
                      std::string("smpl-") + c.from + c.to);
    const Components a = Read(Code(c.to), kWidth, kHeight, ours.bytes), b = Read(Code(c.to), kWidth, kHeight, theirs);
    EXPECT_EQ(a.slot[0], b.slot[0]);  // luma is copied
    for (int s = 1; s < 3; ++s) {
      const double psnr = Psnr(a.slot[s], b.slot[s]);
      EXPECT_GE(psnr, 45.0) << "slot " << s;
      RecordProperty(std::string(c.from) + c.to + "_psnr" + std::to_string(s), std::to_string(psnr));
    }
  }
}

// ffmpeg reads Bayer mosaics but does not write them: the mosaic is ours
// (every pixel keeps its own component, which is exact). ffmpeg fills in
// the missing components from the pixel's own 2x2 cell where this
// converter interpolates bilinearly, so the pictures agree closely but not
// exactly; a wrong cell order would put red where blue is and fall far
// below the bound.
TEST_F(VideoFormatConverterFfmpeg, BayerDemosaicingIsCloseToSwscale) {
  const std::vector<uint8_t> source = Source("rgb48le");
  const char* patterns[][2] = {{"RGGB", "bayer_rggb16le"}, {"BGGR", "bayer_bggr16le"}, {"GRBG", "bayer_grbg16le"},
                               {"GBRG", "bayer_gbrg16le"}};
  RObject<CVideoProperties> rgb(Describe(Code("L48R"), kWidth, kHeight, 0, 2));
  for (const auto& pattern : patterns) {
    SCOPED_TRACE(pattern[0]);
    Conversion mosaic = Convert(rgb, source, Code(pattern[0]));
    ASSERT_TRUE(mosaic.result.Succeeded()) << mosaic.result.GetDetails();
    Conversion ours = Convert(mosaic.output, mosaic.bytes, Code("L48R"));
    ASSERT_TRUE(ours.result.Succeeded()) << ours.result.GetDetails();
    const std::vector<uint8_t> theirs = FfmpegConvert(pattern[1], mosaic.bytes, "-pix_fmt rgb48le", pattern[0]);
    ASSERT_EQ(theirs.size(), ours.bytes.size());
    std::vector<uint16_t> a(ours.bytes.size() / 2), b(theirs.size() / 2);
    for (size_t i = 0; i < a.size(); ++i) {
      a[i] = static_cast<uint16_t>((ours.bytes[i * 2] | ours.bytes[i * 2 + 1] << 8) >> 8);
      b[i] = static_cast<uint16_t>((theirs[i * 2] | theirs[i * 2 + 1] << 8) >> 8);
    }
    const double psnr = Psnr(a, b);
    RecordProperty(std::string(pattern[0]) + "_psnr", std::to_string(psnr));
    EXPECT_GE(psnr, 30.0);
  }
}

// Packed RGBA floats against ffmpeg's planar G, B, R, A floats of the same
// 16-bit picture: the same value for every component, within the few codes
// ffmpeg's own path from 16-bit to float loses (it is not exact).
TEST_F(VideoFormatConverterFfmpeg, FloatRgbaHoldsSwscalesValues) {
  const std::vector<uint8_t> source = Source("rgba64le");
  RObject<CVideoProperties> input(Describe(Code("R64L"), kWidth, kHeight, 0, 2));
  Conversion ours = Convert(input, source, Code("R4fl"));
  ASSERT_TRUE(ours.result.Succeeded()) << ours.result.GetDetails();
  const std::vector<uint8_t> theirs = FfmpegConvert("rgba64le", source, "-pix_fmt gbrapf32le", "r4fl");
  const size_t pixels = static_cast<size_t>(kWidth) * kHeight;
  ASSERT_EQ(ours.bytes.size(), pixels * 16);
  ASSERT_EQ(theirs.size(), pixels * 16);
  const int planeOf[4] = {2, 0, 1, 3};  // R, G, B, A in the planes G, B, R, A
  float worst = 0;
  for (size_t p = 0; p < pixels; ++p)
    for (int c = 0; c < 4; ++c) {
      float a, b;
      std::memcpy(&a, &ours.bytes[(p * 4 + c) * 4], 4);
      std::memcpy(&b, &theirs[(planeOf[c] * pixels + p) * 4], 4);
      worst = std::max(worst, std::fabs(a - b));
    }
  EXPECT_LE(worst, 1e-3f);
}
