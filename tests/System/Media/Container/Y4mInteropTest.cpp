// Y4M files made by ffmpeg are read with what ffprobe reports, and a copy
// made through the reader and writer has the source's frames (ffmpeg's
// framemd5 of both). Skipped when ffmpeg is not installed.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "ContainerTestSupport.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Container/MediaIndexer.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"

using namespace Corvane::Mox;
using namespace ContainerTest;

namespace {

struct Fixture {
  const char* name;
  const char* size;
  const char* pixelFormat;
  const char* filters;  // ffmpeg -vf, or null
  const char* rate;
};

const Fixture kFixtures[] = {
    {"yuv420", "176x144", "yuv420p", nullptr, "25"},
    {"yuv420jpeg", "176x144", "yuvj420p", nullptr, "25"},
    {"yuv422", "160x120", "yuv422p", nullptr, "30000/1001"},
    {"yuv444", "64x48", "yuv444p", "setsar=10/11", "24"},
    {"yuv411", "128x96", "yuv411p", nullptr, "25"},
    {"yuv420p10", "96x64", "yuv420p10le", nullptr, "50"},
    {"yuv422p10", "96x64", "yuv422p10le", nullptr, "60000/1001"},
    {"top-first", "128x96", "yuv420p", "setfield=tff", "25"},
    {"bottom-first", "128x96", "yuv420p", "setfield=bff", "25"},
    {"odd-size", "33x17", "yuv420p", nullptr, "25"},
    {"odd-444", "31x9", "yuv444p", nullptr, "25"},
};

class Y4mInteropTest : public LeakCheckedTest, public ::testing::WithParamInterface<Fixture> {
 protected:
  void SetUp() override {
    if (!HaveTool("ffmpeg") || !HaveTool("ffprobe")) GTEST_SKIP() << "ffmpeg and ffprobe are needed";
    LeakCheckedTest::SetUp();
  }
  void TearDown() override {
    if (!IsSkipped()) LeakCheckedTest::TearDown();
  }

  static std::string Make(const Fixture& f) {
    const std::string path = TempPath(std::string("interop-") + f.name + ".y4m");
    std::string command = std::string("ffmpeg -v error -y -f lavfi -i testsrc2=size=") + f.size + ":rate=" + f.rate +
                          " -frames:v 7 -pix_fmt " + f.pixelFormat + " -strict -1";
    if (f.filters) command += std::string(" -vf ") + f.filters;
    command += " '" + path + "' 2>&1";
    bool ok = false;
    const std::string output = Shell(command, ok);
    EXPECT_TRUE(ok) << output;
    return path;
  }

  // ffprobe's key=value lines for the first video stream.
  static std::map<std::string, std::string> Probe(const std::string& path) {
    bool ok = false;
    const std::string output = Shell(
        "ffprobe -v error -count_frames -select_streams v:0 -show_entries "
        "stream=width,height,r_frame_rate,sample_aspect_ratio,nb_read_frames,field_order -of default=nw=1 '" +
            path + "'",
        ok);
    EXPECT_TRUE(ok) << output;
    std::map<std::string, std::string> values;
    std::istringstream lines(output);
    std::string line;
    while (std::getline(lines, line)) {
      const size_t equals = line.find('=');
      if (equals != std::string::npos) values[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return values;
  }

  // The frame hashes of ffmpeg's framemd5, without its header lines.
  static std::vector<std::string> FrameHashes(const std::string& path) {
    bool ok = false;
    const std::string output = Shell("ffmpeg -v error -i '" + path + "' -f framemd5 - 2>&1", ok);
    EXPECT_TRUE(ok) << output;
    std::vector<std::string> hashes;
    std::istringstream lines(output);
    std::string line;
    while (std::getline(lines, line)) {
      if (line.empty() || line[0] == '#') continue;
      hashes.push_back(line.substr(line.rfind(',') + 1));
    }
    return hashes;
  }
};

std::string Ratio(long long a, long long b, char separator) {
  return std::to_string(a) + separator + std::to_string(b);
}

TEST_P(Y4mInteropTest, ReadsWhatFfprobeReports) {
  const std::string path = Make(GetParam());
  std::map<std::string, std::string> expected = Probe(path);
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerReader> reader(CContainerReader::Create(text));
  ASSERT_TRUE(reader);
  EXPECT_EQ(reader->GetType(), FourCC("y4m "));
  RObject<CIndexer> indexer(new CIndexer(reader));
  ASSERT_TRUE(indexer->Begin(false).Succeeded());
  RObject<CVideoProperties> video(reader->GetVideoProperties(0));
  ASSERT_TRUE(video);
  EXPECT_EQ(std::to_string(video->GetWidth()), expected["width"]);
  EXPECT_EQ(std::to_string(video->GetHeight()), expected["height"]);
  EXPECT_EQ(Ratio(video->GetTimeScale(), video->GetFrameDuration(), '/'), expected["r_frame_rate"]);
  const Rational<int> par = video->GetPixelAspectRatio();
  EXPECT_EQ(Ratio(par.numerator, par.denominator, ':'), expected["sample_aspect_ratio"]);
  EXPECT_EQ(std::to_string(indexer->GetVideoMediaIndexer(0)->GetSampleCount()), expected["nb_read_frames"]);
  const char* order = video->GetFieldOrder() == 2 ? "tt" : video->GetFieldOrder() == 3 ? "bb" : "progressive";
  EXPECT_EQ(order, expected["field_order"]);
  indexer->End();
}

TEST_P(Y4mInteropTest, ACopyThroughReaderAndWriterHasTheSameFrames) {
  const std::string source = Make(GetParam());
  const std::string copy = TempPath(std::string("copy-") + GetParam().name + ".y4m");
  {
    RObject<CString> in(CString::WithString(source.c_str()));
    RObject<CContainerReader> reader(CContainerReader::Create(in));
    ASSERT_TRUE(reader);
    ASSERT_TRUE(reader->BeginIndex().Succeeded());
    RObject<CString> out(CString::WithString(copy.c_str()));
    RObject<CContainerWriter> writer(CContainerWriter::Create(out, GetContainerWriterType(out)));
    ASSERT_TRUE(writer);
    RObject<CVideoProperties> video(reader->GetVideoProperties(0));
    ASSERT_TRUE(writer->AddVideoMedia(video).Succeeded());
    ASSERT_TRUE(writer->BeginIndex().Succeeded());
    for (;;) {
      RObject<CVideoSample> sample;
      ASSERT_TRUE(reader->ReadVideoSample(0, sample.Out()).Succeeded());
      if (!sample) break;
      ASSERT_TRUE(reader->ReadVideoData(0, sample).Succeeded());
      ASSERT_TRUE(writer->WriteVideoSample(0, sample).Succeeded());
    }
    ASSERT_TRUE(writer->EndIndex().Succeeded());
    reader->EndIndex();
  }
  const std::vector<std::string> expected = FrameHashes(source);
  ASSERT_EQ(expected.size(), 7u);
  EXPECT_EQ(FrameHashes(copy), expected);
}

INSTANTIATE_TEST_SUITE_P(FfmpegFixtures, Y4mInteropTest, ::testing::ValuesIn(kFixtures),
                         [](const ::testing::TestParamInfo<Fixture>& info) {
                           std::string name = info.param.name;
                           for (char& c : name)
                             if (c == '-') c = '_';
                           return name;
                         });

}  // namespace
