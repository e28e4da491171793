// The example scripts a new user runs first must keep working.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "ToolRunner.h"

namespace {

std::string Example(const char* name) { return std::string(MOX_TEST_SOURCE_DIR) + "/examples/wfl/" + name; }

}  // namespace

TEST(MoxExamples, HelloRunsWithAndWithoutHostVariables) {
  const ToolRun plain = RunMox({"run", Example("hello.wfl")});
  ASSERT_EQ(plain.exitStatus, 0) << plain.err;
  EXPECT_EQ(plain.out.rfind("Hello, world!\nframe: 1920x1080\n", 0), 0u) << plain.out;
  EXPECT_NE(plain.out.find("rung 2: 480p at 1200 kbit/s\ntotal: 10.2 Mbit/s\n"), std::string::npos);
  const ToolRun custom = RunMox({"run", Example("hello.wfl"), "-D", "name='editor'", "-D", "width=3840"});
  ASSERT_EQ(custom.exitStatus, 0) << custom.err;
  EXPECT_EQ(custom.out.rfind("Hello, editor!\nframe: 3840x2160\n", 0), 0u) << custom.out;
}

TEST(MoxExamples, TimeCodeCountsDropFrames) {
  const ToolRun run = RunMox({"run", Example("timecode.wfl")});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out,
            "00:00:59;28\n00:00:59;29\n00:01:00;02\n00:01:00;03\n00:10:00;00\n"
            "one minute after 10:00:00:00 is 10:01:00:00 (1 minutes)\n"
            "frames since midnight: 901500\n");
}

TEST(MoxExamples, CopyJobCopiesTheShippedClip) {
  const std::string output = "/tmp/mox-example-copy-" + std::to_string(::getpid()) + ".y4m";
  const std::string clip = std::string(MOX_TEST_SOURCE_DIR) + "/examples/media/clip.y4m";
  const ToolRun run = RunMox({"run", Example("copy.wfl"), "-D", "input='" + clip + "'", "-D", "output='" + output + "'"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out, "video track 0: 64x48\n");
  std::ifstream source(clip, std::ios::binary), copy(output, std::ios::binary);
  const std::string a((std::istreambuf_iterator<char>(source)), {}), b((std::istreambuf_iterator<char>(copy)), {});
  std::remove(output.c_str());
  // The copy has the same pictures; only the header's wording may differ.
  ASSERT_GT(a.size(), 0u);
  EXPECT_EQ(a.substr(a.find("FRAME")), b.substr(b.find("FRAME")));
}

TEST(MoxExamples, AudioConversionTurnsTheShippedToneInto16BitAndFloat) {
  const std::string tone = std::string(MOX_TEST_SOURCE_DIR) + "/examples/media/tone.wav";
  const std::string base = "/tmp/mox-example-tone-" + std::to_string(::getpid());
  const ToolRun run = RunMox({"run", Example("convert-audio.wfl"), "-D", "input='" + tone + "'", "-D",
                              "output='" + base + "-16.wav'"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out, "audio track 0: 2 channels at 48000 Hz, 24 bits\n");
  const ToolRun floats = RunMox({"run", Example("convert-audio.wfl"), "-D", "input='" + tone + "'", "-D",
                                 "output='" + base + "-f.wav'", "-D", "format='23lf'"});
  ASSERT_EQ(floats.exitStatus, 0) << floats.err;
  std::ifstream a(base + "-16.wav", std::ios::binary | std::ios::ate), b(base + "-f.wav", std::ios::binary | std::ios::ate);
  // 4,800 stereo frames: two bytes a value, then four (plus the headers).
  const long long shorts = a.tellg(), singles = b.tellg();
  std::remove((base + "-16.wav").c_str());
  std::remove((base + "-f.wav").c_str());
  EXPECT_GE(shorts, 4800 * 4);
  EXPECT_LT(shorts, 4800 * 4 + 200);
  EXPECT_GE(singles, 4800 * 8);
  EXPECT_LT(singles, 4800 * 8 + 200);
}

TEST(MoxExamples, VideoConversionPacksTheShippedClipAsUyvy) {
  const std::string output = "/tmp/mox-example-uyvy-" + std::to_string(::getpid()) + ".raw";
  const std::string clip = std::string(MOX_TEST_SOURCE_DIR) + "/examples/media/clip.y4m";
  const ToolRun run = RunMox({"run", Example("convert-video.wfl"), "-D", "input='" + clip + "'", "-D", "output='" + output + "'"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  std::ifstream raw(output, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(raw)), {});
  std::remove(output.c_str());
  // 25 pictures of 64x48 at two bytes a pixel; UYVY puts chroma first, so the
  // bytes alternate between chroma near 128 and luma.
  ASSERT_EQ(bytes.size(), 25u * 64 * 48 * 2);
  EXPECT_NE(bytes[0], bytes[1]);
}

// "make demo" runs this script; it must reach its end. Pipes into head once
// ended it early with mox's SIGPIPE under pipefail.
TEST(MoxExamples, TheDemoRunsToItsEnd) {
  if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0) GTEST_SKIP() << "ffmpeg is not installed";
  const std::string tool = MOX_TOOL_PATH;
  const std::string build = tool.substr(0, tool.rfind("/bin/"));
  const std::string command =
      "bash '" + std::string(MOX_TEST_SOURCE_DIR) + "/examples/run-demo.sh' '" + build + "' 2>&1; echo \"exit $?\"";
  std::string output;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, n);
    pclose(pipe);
  }
  EXPECT_NE(output.find("ffmpeg: the copy's frames are identical to the source's"), std::string::npos) << output;
  EXPECT_NE(output.find("== what this build can create\nFAMILY"), std::string::npos) << output;
  EXPECT_EQ(output.substr(output.rfind("exit ")), "exit 0\n") << output;
}
