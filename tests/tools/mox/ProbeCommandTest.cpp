// mox probe run as a child process: what it prints for Y4M files made by
// ffmpeg (checked against ffprobe), damaged files and files it cannot read.
#include <gtest/gtest.h>
#include <string>

#include "System/Media/Container/ContainerTestSupport.h"
#include "ToolRunner.h"

namespace {

using ContainerTest::Shell;
using ContainerTest::TempPath;
using ContainerTest::WriteFile;

size_t Count(const std::string& text, const std::string& pattern) {
  size_t count = 0;
  for (size_t at = text.find(pattern); at != std::string::npos; at = text.find(pattern, at + 1)) ++count;
  return count;
}

// A Y4M of `frames` 4x2 frames (12 bytes each).
std::string SmallY4m(int frames) {
  std::string bytes = "YUV4MPEG2 W4 H2 F25:1 A1:1\n";
  for (int f = 0; f < frames; ++f) bytes += "FRAME\n" + std::string(12, static_cast<char>('0' + f));
  return bytes;
}

TEST(MoxProbe, DescribesAnFfmpegFileAsFfprobeDoes) {
  bool ok = false;
  Shell("command -v ffmpeg >/dev/null && command -v ffprobe >/dev/null", ok);
  if (!ok) GTEST_SKIP() << "ffmpeg and ffprobe are needed";
  const std::string path = TempPath("ffmpeg.y4m");
  Shell("ffmpeg -v error -y -f lavfi -i testsrc2=size=160x90:rate=30000/1001 -frames:v 12 -pix_fmt yuv422p '" + path +
            "'",
        ok);
  ASSERT_TRUE(ok);
  const std::string expected = Shell(
      "ffprobe -v error -count_frames -show_entries stream=width,height,nb_read_frames -of csv=p=0 '" + path + "'", ok);
  ASSERT_TRUE(ok);
  const ToolRun run = RunMox({"probe", path, "--json"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("\"type\": \"y4m \""), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"name\": \"YUV4MPEG\""), std::string::npos);
  // ffprobe prints "160,90,12".
  const std::string fields = std::string("\"width\": ") + expected.substr(0, expected.find(',')) + ",";
  EXPECT_NE(run.out.find(fields), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"height\": 90,"), std::string::npos);
  EXPECT_NE(run.out.find("\"sampleCount\": " + expected.substr(expected.rfind(',') + 1, 2)), std::string::npos);
  EXPECT_NE(run.out.find("\"numerator\": 30000"), std::string::npos);
  EXPECT_NE(run.out.find("\"denominator\": 1001"), std::string::npos);
  EXPECT_EQ(run.out.find("\"samples\""), std::string::npos);  // only with --samples
}

TEST(MoxProbe, SamplesListTimesPositionsAndLengths) {
  const std::string path = TempPath("small.y4m");
  WriteFile(path, SmallY4m(3));
  const ToolRun run = RunMox({"probe", path, "--json", "--samples"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(Count(run.out, "\"length\": 12}"), 3u);
  // The first picture starts after the header line (27 bytes) and "FRAME\n".
  EXPECT_NE(run.out.find("{\"time\": 0, \"duration\": 1, \"pictureType\": 0, \"hint\": 0, \"position\": 33,"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("\"position\": 51,"), std::string::npos);
  EXPECT_NE(run.out.find("\"extensions\": []"), std::string::npos);
  const ToolRun text = RunMox({"probe", path, "--samples"});
  ASSERT_EQ(text.exitStatus, 0) << text.err;
  EXPECT_NE(text.out.find("video track 0: 3 samples"), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("    2 1 0 0 69 12\n"), std::string::npos) << text.out;
}

TEST(MoxProbe, ADamagedFileShowsWhatWasReadAndItsVariances) {
  const std::string path = TempPath("cut.y4m");
  std::string bytes = SmallY4m(3);
  bytes.resize(bytes.size() - 4);
  WriteFile(path, bytes);
  const ToolRun run = RunMox({"probe", path, "--json"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("\"sampleCount\": 2"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"CVariance\""), std::string::npos) << run.out;
  // The third frame's line starts at 27 + 2 * 18.
  EXPECT_NE(run.out.find("\"position\": 63"), std::string::npos) << run.out;
}

TEST(MoxProbe, UnreadableFilesAndBadArgumentsFail) {
  const std::string path = TempPath("noise.bin");
  WriteFile(path, "not a media file at all");
  ToolRun run = RunMox({"probe", path});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_NE(run.err.find("no reader recognises '" + path + "'"), std::string::npos) << run.err;
  run = RunMox({"probe", path, "--type", "flac"});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_NE(run.err.find("no available reader of type 'flac'"), std::string::npos) << run.err;
  // A reader of the type that cannot index the bytes says why.
  run = RunMox({"probe", path, "--type", "wav"});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_NE(run.err.find("incorrect chunk ID 'not ' (expected 'RIFF' or 'RF64')"), std::string::npos) << run.err;
  run = RunMox({"probe", TempPath("absent.y4m")});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_NE(run.err.find("cannot open"), std::string::npos);
  const std::string broken = TempPath("broken.y4m");
  WriteFile(broken, "YUV4MPEG2 W4 H2 Im\n");
  run = RunMox({"probe", broken});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_NE(run.err.find("cannot index"), std::string::npos) << run.err;
  EXPECT_EQ(RunMox({"probe"}).exitStatus, 2);
  EXPECT_EQ(RunMox({"probe", path, "--type", "toolong"}).exitStatus, 2);
  EXPECT_EQ(RunMox({"probe", path, "--bogus"}).exitStatus, 2);
}

TEST(MoxProbe, TypeSkipsProbing) {
  const std::string path = TempPath("named.bin");
  WriteFile(path, SmallY4m(1));
  const ToolRun run = RunMox({"probe", path, "--type", "y4m"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("type:     y4m  (YUV4MPEG)"), std::string::npos) << run.out;
}

}  // namespace
