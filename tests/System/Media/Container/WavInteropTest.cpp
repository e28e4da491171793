// WAVE files made by ffmpeg and sox are described by `mox probe --json` as
// ffprobe describes them, and files our writer makes are read by ffprobe,
// soxi and mediainfo with the right format, layout and Broadcast Wave
// fields, decoding to the same audio as their sources.
#include <gtest/gtest.h>

#include <map>
#include <cctype>
#include <sstream>
#include <string>

#include "ContainerTestSupport.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Text.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;

namespace {

struct Fixture {
  const char* name;
  // Made by this shell command with $OUT as the output path.
  const char* command;
  const char* type;
};

const Fixture kFixtures[] = {
    {"u8-mono", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=22050 -c:a pcm_u8 $OUT", "wav "},
    {"s16-stereo", "ffmpeg -v error -y -f lavfi -i sine=d=2.3 -ac 2 -c:a pcm_s16le $OUT", "wav "},
    {"s24-5.1", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=48000 -ac 6 -c:a pcm_s24le $OUT", "wav "},
    {"s32-7.1", "ffmpeg -v error -y -f lavfi -i sine=d=1.7:sample_rate=48000 -ac 8 -c:a pcm_s32le $OUT", "wav "},
    {"f32-stereo", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=96000 -ac 2 -c:a pcm_f32le $OUT", "wav "},
    {"f64-mono", "ffmpeg -v error -y -f lavfi -i sine=d=1.1:sample_rate=48000 -c:a pcm_f64le $OUT", "wav "},
    {"rf64", "ffmpeg -v error -y -f lavfi -i sine=d=2.3 -ac 2 -c:a pcm_s16le -rf64 always $OUT", "wav "},
    {"wave64", "ffmpeg -v error -y -f lavfi -i sine=d=2.3 -ac 2 -c:a pcm_s24le -f w64 $OUT", "wv64"},
    {"bext", "ffmpeg -v error -y -f lavfi -i sine=d=2.3 -ac 2 -c:a pcm_s16le -write_bext 1 "
             "-metadata coding_history=A=PCM,F=44100,W=16,M=stereo -metadata originator=Mox $OUT", "wav "},
    {"alaw", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=8000 -c:a pcm_alaw $OUT", "wav "},
    {"mulaw", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=8000 -ac 2 -c:a pcm_mulaw $OUT", "wav "},
    {"adpcm-ms", "ffmpeg -v error -y -f lavfi -i sine=d=2.3 -ac 2 -c:a adpcm_ms $OUT", "wav "},
    {"adpcm-ima", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=22050 -c:a adpcm_ima_wav $OUT", "wav "},
    {"g726", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=8000 -c:a g726 -b:a 32k $OUT", "wav "},
    {"sox-s24-quad", "sox -n -r 48000 -c 4 -b 24 $OUT synth 1.3 sine 440", "wav "},
    {"sox-u8", "sox -n -r 11025 -c 1 -b 8 $OUT synth 1.3 sine 440", "wav "},
    {"sox-f32", "sox -n -r 44100 -c 2 -e floating-point -b 32 $OUT synth 1.3 sine 440", "wav "},
};

std::string RunTool(const std::string& command) {
  bool ok = false;
  const std::string output = Shell(command, ok);
  EXPECT_TRUE(ok) << command << "\n" << output;
  return output;
}

// key=value lines into a map.
std::map<std::string, std::string> KeyValues(const std::string& text) {
  std::map<std::string, std::string> values;
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    const size_t equals = line.find('=');
    if (equals != std::string::npos) values[line.substr(0, equals)] = line.substr(equals + 1);
  }
  return values;
}

std::map<std::string, std::string> FfprobeStream(const std::string& path) {
  return KeyValues(RunTool("ffprobe -v error -select_streams a:0 -show_entries "
                       "stream=codec_name,channels,channel_layout,sample_rate,bits_per_sample -of default=nw=1 '" +
                       path + "'"));
}

// Frames ffmpeg decodes from the file.
std::string DecodedFrames(const std::string& path) {
  const std::string bytes = RunTool("ffmpeg -v quiet -i '" + path + "' -ac 1 -f s16le - | wc -c");
  return std::to_string(std::stoll(bytes) / 2);
}

std::string AudioMd5(const std::string& path) { return RunTool("ffmpeg -v error -i '" + path + "' -map 0:a -f md5 -"); }

// The first number after `"key": ` in the JSON text, or "".
std::string JsonNumber(const std::string& json, const std::string& key) {
  const std::string marker = "\"" + key + "\": ";
  for (size_t at = json.find(marker); at != std::string::npos; at = json.find(marker, at + 1)) {
    size_t end = at + marker.size();
    if (end < json.size() && json[end] == '-') ++end;
    const size_t digits = end;
    while (end < json.size() && std::isdigit(static_cast<unsigned char>(json[end]))) ++end;
    if (end > digits) return json.substr(at + marker.size(), end - at - marker.size());
  }
  return "";
}

int Count(const std::string& text, const std::string& what) {
  int count = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

class WavInteropTest : public LeakCheckedTest, public ::testing::WithParamInterface<Fixture> {
 protected:
  void SetUp() override {
    if (!HaveTool("ffmpeg") || !HaveTool("ffprobe")) GTEST_SKIP() << "ffmpeg and ffprobe are needed";
    if (std::string(GetParam().command).rfind("sox", 0) == 0 && !HaveTool("sox")) GTEST_SKIP() << "sox is needed";
    LeakCheckedTest::SetUp();
  }
  void TearDown() override {
    if (!IsSkipped()) LeakCheckedTest::TearDown();
  }

  static std::string Make(const Fixture& f) {
    const std::string path = TempPath(std::string("interop-") + f.name + (std::string(f.type) == "wv64" ? ".w64" : ".wav"));
    std::string command = f.command;
    command.replace(command.find("$OUT"), 4, "'" + path + "'");
    RunTool(command + " 2>&1");
    return path;
  }
};

TEST_P(WavInteropTest, ProbeAgreesWithFfprobe) {
  const std::string path = Make(GetParam());
  std::map<std::string, std::string> expected = FfprobeStream(path);
  const std::string json = RunTool(std::string(MOX_TOOL_PATH) + " probe --json '" + path + "'");
  EXPECT_NE(json.find(std::string("\"type\": \"") + GetParam().type + "\""), std::string::npos) << json;
  EXPECT_EQ(std::to_string(Count(json, "\"program\":")), expected["channels"]);
  EXPECT_EQ(JsonNumber(json, "numerator"), expected["sample_rate"]);
  // ffprobe reports no width for G.726 (0); the others must agree.
  if (expected["bits_per_sample"] != "0") {
    EXPECT_EQ(JsonNumber(json, "bits_per_sample"), expected["bits_per_sample"]);
  }
  EXPECT_EQ(JsonNumber(json, "duration"), DecodedFrames(path));
}

INSTANTIATE_TEST_SUITE_P(Fixtures, WavInteropTest, ::testing::ValuesIn(kFixtures),
                         [](const ::testing::TestParamInfo<Fixture>& info) {
                           std::string name = info.param.name;
                           for (char& c : name) {
                             if (!isalnum(static_cast<unsigned char>(c))) c = '_';
                           }
                           return name;
                         });

// Copies a file through our reader and writer.
template <class Configure>
void Copy(const std::string& source, const std::string& target, Configure configure) {
  RObject<CContainerReader> reader(CContainerReader::Create(source.c_str()));
  ASSERT_TRUE(reader);
  ASSERT_TRUE(reader->BeginIndex().Succeeded());
  RObject<CAudioProperties> track(reader->GetAudioProperties(0));
  RObject<CString> out(CString::WithString(target.c_str()));
  RObject<CContainerWriter> writer(CContainerWriter::Create(out, FourCC("wav ")));
  ASSERT_TRUE(writer);
  configure(writer.Get());
  ASSERT_TRUE(writer->AddAudioMedia(track).Succeeded());
  ASSERT_TRUE(writer->BeginIndex().Succeeded());
  for (;;) {
    RObject<CAudioSample> sample;
    ASSERT_TRUE(reader->ReadAudioSample(0, sample.Out()).Succeeded());
    if (!sample) break;
    ASSERT_TRUE(reader->ReadAudioData(0, sample.Get()).Succeeded());
    ASSERT_TRUE(writer->WriteAudioSample(0, sample).Succeeded());
  }
  ASSERT_TRUE(writer->EndIndex().Succeeded());
  reader->EndIndex();
}

class WavWriterInteropTest : public LeakCheckedTest, public ::testing::WithParamInterface<Fixture> {
 protected:
  void SetUp() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "soxi", "mediainfo"}) {
      if (!HaveTool(tool)) GTEST_SKIP() << tool << " is needed";
    }
    LeakCheckedTest::SetUp();
  }
  void TearDown() override {
    if (!IsSkipped()) LeakCheckedTest::TearDown();
  }
};

const Fixture kWriterFixtures[] = {
    {"w-u8", "ffmpeg -v error -y -f lavfi -i sine=d=1.3:sample_rate=22050 -c:a pcm_u8 $OUT", "wav "},
    {"w-s16", "ffmpeg -v error -y -f lavfi -i sine=d=2.3 -ac 2 -c:a pcm_s16le $OUT", "wav "},
    {"w-s24-5.1", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=48000 -ac 6 -c:a pcm_s24le $OUT", "wav "},
    {"w-s32-7.1", "ffmpeg -v error -y -f lavfi -i sine=d=1.7:sample_rate=48000 -ac 8 -c:a pcm_s32le $OUT", "wav "},
    {"w-f32", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=96000 -ac 2 -c:a pcm_f32le $OUT", "wav "},
    {"w-f64", "ffmpeg -v error -y -f lavfi -i sine=d=1.1:sample_rate=48000 -c:a pcm_f64le $OUT", "wav "},
    {"w-alaw", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=8000 -c:a pcm_alaw $OUT", "wav "},
    {"w-mulaw", "ffmpeg -v error -y -f lavfi -i sine=d=2.3:sample_rate=8000 -ac 2 -c:a pcm_mulaw $OUT", "wav "},
    {"w-sox-quad", "sox -n -r 48000 -c 4 -b 24 $OUT synth 1.3 sine 440", "wav "},
};

TEST_P(WavWriterInteropTest, OthersReadWhatWeWrite) {
  const std::string source = TempPath(std::string(GetParam().name) + "-source.wav");
  const std::string target = TempPath(std::string(GetParam().name) + "-copy.wav");
  std::string command = GetParam().command;
  command.replace(command.find("$OUT"), 4, "'" + source + "'");
  RunTool(command + " 2>&1");
  Copy(source, target, [](CContainerWriter* writer) {
    writer->SetProperty(ContainerProperty::WavContainerWriter::IncludeBroadcastExtension, true);
    writer->SetProperty(ContainerProperty::WavMetadata::Description, "Written by Mox");
    writer->SetProperty(ContainerProperty::WavMetadata::Originator, "Mox tests");
    writer->SetProperty(ContainerProperty::WavMetadata::CodingHistory, "A=PCM,T=mox\r\n");
  });
  std::map<std::string, std::string> from = FfprobeStream(source);
  std::map<std::string, std::string> to = FfprobeStream(target);
  for (const char* key : {"codec_name", "channels", "channel_layout", "sample_rate", "bits_per_sample"})
    EXPECT_EQ(to[key], from[key]) << key;
  EXPECT_EQ(AudioMd5(target), AudioMd5(source));

  const std::string soxi = RunTool("soxi '" + target + "'");
  EXPECT_NE(soxi.find("Channels       : " + from["channels"]), std::string::npos) << soxi;
  EXPECT_NE(soxi.find("Sample Rate    : " + from["sample_rate"]), std::string::npos) << soxi;

  const std::string general =
      RunTool("mediainfo --Inform='General;%Description%|%Producer%|%Encoded_Library_Settings%' '" + target + "'");
  EXPECT_EQ(general, "Written by Mox|Mox tests|A=PCM,T=mox\n");
  const std::string audio = RunTool("mediainfo --Inform='Audio;%Channels%|%SamplingRate%' '" + target + "'");
  EXPECT_EQ(audio, from["channels"] + "|" + from["sample_rate"] + "\n");
}

INSTANTIATE_TEST_SUITE_P(Fixtures, WavWriterInteropTest, ::testing::ValuesIn(kWriterFixtures),
                         [](const ::testing::TestParamInfo<Fixture>& info) {
                           std::string name = info.param.name;
                           for (char& c : name) {
                             if (!isalnum(static_cast<unsigned char>(c))) c = '_';
                           }
                           return name;
                         });

class WavRf64InteropTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    if (!HaveTool("ffmpeg") || !HaveTool("ffprobe")) GTEST_SKIP() << "ffmpeg and ffprobe are needed";
    LeakCheckedTest::SetUp();
  }
  void TearDown() override {
    if (!IsSkipped()) LeakCheckedTest::TearDown();
  }
};

TEST_F(WavRf64InteropTest, TheSwitchToRf64IsReadByFfprobe) {
  const std::string source = TempPath("rf64-source.wav");
  const std::string target = TempPath("rf64-copy.wav");
  RunTool("ffmpeg -v error -y -f lavfi -i sine=d=3 -ac 2 -c:a pcm_s16le '" + source + "' 2>&1");
  // A lowered threshold stands in for 4 GiB.
  Copy(source, target, [](CContainerWriter* writer) {
    writer->SetProperty(ContainerProperty::WavContainerWriter::Rf64Threshold, 100000ll);
  });
  EXPECT_EQ(ReadFile(target).substr(0, 4), "RF64");
  EXPECT_EQ(AudioMd5(target), AudioMd5(source));
  EXPECT_EQ(DecodedFrames(target), DecodedFrames(source));
}

}  // namespace
