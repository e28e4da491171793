// The audio planner of mox convert against WAV files ffmpeg makes: one
// converter where the converter's table has the step, an intermediate format
// where it has not, 16-bit PCM chosen only where the writer refuses a track,
// and nothing for inputs without audio.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <Mox.h>

#include "AudioChainPlan.h"

using namespace Corvane::Mox;
using MoxTool::PlanAudio;

namespace {

constexpr unsigned int Wav = FourCC("wav ");

// The converter chains of a job that asks for target.
std::vector<std::vector<unsigned int>> PlanAudioChains(const std::string& input, unsigned int target) {
  return PlanAudio(input, target, Wav).chains;
}

class AudioChainPlanTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0) GTEST_SKIP() << "ffmpeg is not installed";
    char pattern[] = "/tmp/mox-plan-XXXXXX";
    dir_ = mkdtemp(pattern) ? pattern : "/tmp";
  }
  void TearDown() override {
    if (!dir_.empty() && dir_ != "/tmp") std::system(("rm -rf '" + dir_ + "'").c_str());
  }
  // A short stereo WAV in an ffmpeg codec.
  std::string Make(const std::string& name, const std::string& codec) {
    const std::string path = dir_ + "/" + name;
    const std::string command = "ffmpeg -nostdin -v error -y -f lavfi -i sine=d=0.1:sample_rate=8000 -ac 2 -c:a " +
                                codec + " '" + path + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
  }
  std::string dir_;
};

TEST_F(AudioChainPlanTest, OneConverterWhereTheTableHasTheStep) {
  const std::vector<std::vector<unsigned int>> sixteen = PlanAudioChains(Make("s16.wav", "pcm_s16le"), FourCC("ulaw"));
  EXPECT_EQ(sixteen, (std::vector<std::vector<unsigned int>>{{FourCC("ulaw")}}));
  const std::vector<std::vector<unsigned int>> narrower = PlanAudioChains(Make("s24.wav", "pcm_s24le"), FourCC("sowt"));
  EXPECT_EQ(narrower, (std::vector<std::vector<unsigned int>>{{FourCC("sowt")}}));
}

TEST_F(AudioChainPlanTest, WithoutAStepTheChainGoesThroughTheFormatThatLosesLeast) {
  // 24-bit integers have no step to mu-law. Through 16 bits the chain drops
  // 8 bits and then 8 more; through 32-bit floats it would keep all 24 bits
  // and then drop 24 at once, which the loss measure ranks worse.
  const std::vector<std::vector<unsigned int>> mu = PlanAudioChains(Make("s24.wav", "pcm_s24le"), FourCC("ulaw"));
  EXPECT_EQ(mu, (std::vector<std::vector<unsigned int>>{{FourCC("sowt"), FourCC("ulaw")}}));
  // Unsigned 8-bit PCM reaches 16-bit integers only through a float format.
  const std::vector<std::vector<unsigned int>> wide = PlanAudioChains(Make("u8.wav", "pcm_u8"), FourCC("sowt"));
  ASSERT_EQ(wide.size(), 1u);
  ASSERT_EQ(wide[0].size(), 2u);
  EXPECT_TRUE(wide[0][0] == FourCC("23lf") || wide[0][0] == FourCC("fl32")) << wide[0][0];
  EXPECT_EQ(wide[0][1], FourCC("sowt"));
  // Mu-law WAV audio goes to its decoder first, which the topology inserts:
  // the plan leaves that track to one converter.
  EXPECT_EQ(PlanAudioChains(Make("mu.wav", "pcm_mulaw"), FourCC("42ni")),
            (std::vector<std::vector<unsigned int>>{{FourCC("42ni")}}));
}

TEST_F(AudioChainPlanTest, AFormatIsChosenOnlyWhenTheWriterRefusesTheAudio) {
  for (const char* codec : {"pcm_s24le", "pcm_mulaw"}) {
    const MoxTool::AudioPlan taken = PlanAudio(Make(std::string(codec) + ".wav", codec), 0, Wav);
    EXPECT_FALSE(taken.chosen) << codec;
    EXPECT_EQ(taken.format, 0u) << codec;
    EXPECT_TRUE(taken.chains.empty()) << codec;
  }
  for (const char* codec : {"adpcm_ima_wav", "adpcm_ms"}) {
    const MoxTool::AudioPlan decoded = PlanAudio(Make(std::string(codec) + ".wav", codec), 0, Wav);
    EXPECT_TRUE(decoded.chosen) << codec;
    EXPECT_EQ(decoded.format, FourCC("sowt")) << codec;
    EXPECT_EQ(decoded.chains, (std::vector<std::vector<unsigned int>>{{FourCC("sowt")}})) << codec;
  }
  EXPECT_FALSE(PlanAudio(dir_ + "/missing.wav", 0, Wav).chosen);
}

TEST_F(AudioChainPlanTest, InputsWithoutAudioOrUnreadableHaveNoPlan) {
  EXPECT_TRUE(PlanAudioChains(dir_ + "/missing.wav", FourCC("sowt")).empty());
  const std::string video = dir_ + "/picture.y4m";
  ASSERT_EQ(std::system(("ffmpeg -nostdin -v error -f lavfi -i testsrc=size=16x16 -frames:v 2 -pix_fmt yuv420p '" + video + "'").c_str()), 0);
  EXPECT_TRUE(PlanAudioChains(video, FourCC("sowt")).empty());
  const std::string noise = dir_ + "/noise.wav";
  ASSERT_EQ(std::system(("head -c 4096 /dev/urandom > '" + noise + "'").c_str()), 0);
  EXPECT_TRUE(PlanAudioChains(noise, FourCC("sowt")).empty());
}

}  // namespace
