// Audio jobs end to end: WAV files made by ffmpeg converted by mox, the
// decoder the topology inserts for compressed WAV audio, and the results
// compared with ffmpeg's own conversion and decoding of the same file.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "System/Media/Container/WavTestSupport.h"
#include "ToolRunner.h"

namespace {

std::string Capture(const std::string& command) {
  std::string text;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) text.append(buffer, n);
    pclose(pipe);
  }
  return text;
}

// The MD5 of the audio ffmpeg decodes from a file (after optional arguments).
std::string DecodedMd5(const std::string& path, const std::string& arguments = "") {
  return Capture("ffmpeg -nostdin -v error -i '" + path + "' " + arguments + " -f md5 - 2>/dev/null");
}

std::vector<short> DecodedShorts(const std::string& path) {
  const std::string bytes = Capture("ffmpeg -nostdin -v error -i '" + path + "' -f s16le - 2>/dev/null");
  std::vector<short> values(bytes.size() / 2);
  std::memcpy(values.data(), bytes.data(), values.size() * 2);
  return values;
}

double SignalToError(const std::vector<short>& reference, const std::vector<short>& other) {
  double signal = 0, error = 0;
  for (size_t i = 0; i < reference.size() && i < other.size(); ++i) {
    signal += double(reference[i]) * reference[i];
    error += (double(reference[i]) - other[i]) * (double(reference[i]) - other[i]);
  }
  return 10 * std::log10(signal / std::max(error, 1.0));
}

class MoxAudioJob : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0) GTEST_SKIP() << "ffmpeg is not installed";
    char pattern[] = "/tmp/mox-audio-XXXXXX";
    dir_ = mkdtemp(pattern) ? pattern : "/tmp";
    script_ = File("decode.wfl");
    // The converter asks for 16-bit PCM; the reader's compressed audio needs a
    // decoder first, which the topology finds by itself.
    std::ofstream(script_) << "var reader = new ContainerReader(input);\n"
                              "var converter = new AudioConverter('afc ');\n"
                              "converter.OutputFormat = 'sowt';\n"
                              "reader.tracks.audio['0'] -> converter;\n"
                              "converter -> new ContainerWriter(output);\n";
  }
  void TearDown() override {
    if (!dir_.empty() && dir_ != "/tmp") std::system(("rm -rf '" + dir_ + "'").c_str());
  }
  std::string File(const std::string& name) const { return dir_ + "/" + name; }
  // A WAV file of a test signal in an ffmpeg codec.
  std::string Make(const std::string& name, const std::string& arguments, int rate = 22050, int channels = 2) {
    const std::string path = File(name);
    const std::string command =
        "ffmpeg -nostdin -v error -y -f lavfi -i \"aevalsrc='0.4*sin(2*PI*440*t)+0.2*sin(2*PI*2900*t)*sin(2*PI*3*t)':s=" +
        std::to_string(rate) + ":d=2.5\" -ac " + std::to_string(channels) + " " + arguments + " '" + path + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
  }
  std::vector<std::string> Decode(const std::string& input, const std::string& output) const {
    return {"run", script_, "-D", "input='" + input + "'", "-D", "output='" + output + "'"};
  }

  std::string dir_, script_;
};

TEST_F(MoxAudioJob, EightChannel24BitConvertsLikeFfmpegToIntegersAndFloats) {
  const std::string input = Make("in.wav", "-filter_complex \"[0]pan=7.1|c0=c0|c1=c1|c2=c0|c3=c1|c4=c0|c5=c1|c6=c0|c7=c1\" -c:a pcm_s24le", 48000, 8);
  for (const auto& [code, codec] : {std::pair<std::string, std::string>{"sowt", "pcm_s16le"}, {"23lf", "pcm_f32le"}}) {
    const std::string output = File("out-" + code + ".wav");
    const ToolRun run = RunMox({"convert", input, output, "--audio-format", code});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(DecodedMd5(output, "-c:a " + codec), DecodedMd5(input, "-c:a " + codec)) << code;
    const std::string stream = Capture("ffprobe -v error -show_entries stream=codec_name,channels,channel_layout "
                                       "-of default=nw=1 '" + output + "'");
    EXPECT_NE(stream.find("codec_name=" + codec), std::string::npos) << stream;
    EXPECT_NE(stream.find("channels=8"), std::string::npos) << stream;
    EXPECT_NE(stream.find("channel_layout=7.1"), std::string::npos) << stream;
  }
}

TEST_F(MoxAudioJob, TheTopologyInsertsTheImaDecoderAheadOfTheConverter) {
  const std::string input = Make("ima.wav", "-c:a adpcm_ima_wav");
  const ToolRun graph = RunMox({"graph", script_, "-D", "input='" + input + "'", "-D", "output='" + File("x.wav") + "'"});
  ASSERT_EQ(graph.exitStatus, 0) << graph.err;
  // Reader -> decoder -> converter -> writer, the decoder grey (inserted).
  const size_t decoder = graph.out.find("[label=\"Ima Adpcm Decompressor\", color=\"grey\"");
  ASSERT_NE(decoder, std::string::npos) << graph.out;
  const std::string id = graph.out.substr(graph.out.rfind('"', graph.out.rfind('"', decoder - 2) - 1) + 1,
                                          graph.out.rfind('"', decoder - 2) - graph.out.rfind('"', graph.out.rfind('"', decoder - 2) - 1) - 1);
  EXPECT_NE(graph.out.find("->\t\"" + id + "\""), std::string::npos) << graph.out;
  EXPECT_NE(graph.out.find("\"" + id + "\"\t->"), std::string::npos) << graph.out;

  const std::string output = File("ima-pcm.wav");
  const ToolRun run = RunMox(Decode(input, output));
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const std::vector<short> ours = DecodedShorts(output);
  const std::vector<short> theirs = DecodedShorts(input);
  ASSERT_EQ(ours.size(), theirs.size());
  // Both decoders follow the IMA steps; they round each difference
  // differently (shifted steps against a product), within each block.
  EXPECT_GE(SignalToError(theirs, ours), 40.0);
}

TEST_F(MoxAudioJob, MicrosoftAdpcmAndG711DecodeBitIdenticallyToFfmpeg) {
  for (const std::string codec : {"adpcm_ms", "pcm_alaw", "pcm_mulaw"}) {
    const std::string input = Make(codec + ".wav", "-c:a " + codec, 8000, codec == "pcm_mulaw" ? 1 : 2);
    const std::string output = File(codec + "-pcm.wav");
    const ToolRun run = RunMox(Decode(input, output));
    ASSERT_EQ(run.exitStatus, 0) << codec << ": " << run.err;
    EXPECT_EQ(DecodedMd5(output), DecodedMd5(input, "-c:a pcm_s16le")) << codec;
  }
}

// The converter has no single step from 24-bit integers to mu-law: convert
// plans one through 16 bits, as ffmpeg's encoder does. The two encoders
// place the decision levels differently (the G.711 segments cut by
// truncation, ffmpeg's table by the nearest level), so a code may differ by
// one step where a value falls between them.
TEST_F(MoxAudioJob, TwentyFourBitsToMuLawGoThroughSixteenBitsAndAgreeWithFfmpeg) {
  const std::string input = Make("s24.wav", "-c:a pcm_s24le", 8000);
  const std::string output = File("mu.wav");
  const ToolRun run = RunMox({"convert", input, output, "--audio-format", "ulaw", "--print-script"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("audio0_sowt.OutputFormat = 'sowt';"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("audio0_sowt -> audio0_ulaw;"), std::string::npos) << run.out;
  const std::string reference = File("ffmpeg-mu.wav");
  ASSERT_EQ(std::system(("ffmpeg -nostdin -v error -i '" + input + "' -c:a pcm_mulaw '" + reference + "'").c_str()), 0);
  const std::string ours = Capture("ffmpeg -nostdin -v error -i '" + output + "' -c copy -f mulaw - 2>/dev/null");
  const std::string theirs = Capture("ffmpeg -nostdin -v error -i '" + reference + "' -c copy -f mulaw - 2>/dev/null");
  ASSERT_EQ(ours.size(), theirs.size());
  ASSERT_GT(ours.size(), 30000u);
  size_t same = 0, apart = 0;
  for (size_t i = 0; i < ours.size(); ++i) {
    const int a = static_cast<unsigned char>(ours[i]), b = static_cast<unsigned char>(theirs[i]);
    if (a == b)
      ++same;
    else if (std::abs(a - b) > 1 && !((a | b) == 0xFF && (a & b) == 0x7F))
      ++apart;
  }
  EXPECT_EQ(apart, 0u) << "codes more than one step from ffmpeg's";
  EXPECT_GE(same, ours.size() * 9 / 10);

  // Unsigned 8 bits reach 16 bits through a float format, exactly.
  const std::string u8 = Make("u8.wav", "-c:a pcm_u8", 8000);
  const std::string widened = File("s16-from-u8.wav");
  const ToolRun wide = RunMox({"convert", u8, widened, "--audio-format", "sowt"});
  ASSERT_EQ(wide.exitStatus, 0) << wide.err;
  EXPECT_EQ(DecodedMd5(widened), DecodedMd5(u8, "-c:a pcm_s16le"));

  // 16-bit input needs one converter: the plain per-kind loop.
  const std::string direct = Make("s16.wav", "-c:a pcm_s16le", 8000);
  const ToolRun once = RunMox({"convert", direct, File("mu16.wav"), "--audio-format", "ulaw", "--print-script"});
  ASSERT_EQ(once.exitStatus, 0) << once.err;
  EXPECT_NE(once.out.find("for (var t in reader.tracks.audio)"), std::string::npos) << once.out;
  EXPECT_EQ(once.out.find("_sowt"), std::string::npos) << once.out;
}

// An ADM-described Broadcast Wave converted from 24 to 16 bits keeps its
// Audio Definition Model: mediainfo finds the programme and content in the
// converted file as in the source.
TEST_F(MoxAudioJob, AnAdmDocumentSurvivesAConversion) {
  if (std::system("command -v mediainfo >/dev/null 2>&1") != 0) GTEST_SKIP() << "mediainfo is not installed";
  using namespace WavTest;
  const std::string axml =
      "<?xml version=\"1.0\"?><ebuCoreMain xmlns=\"urn:ebu:metadata-schema:ebuCore_2014\"><coreMetadata><format>"
      "<audioFormatExtended><audioProgramme audioProgrammeID=\"APR_1001\" audioProgrammeName=\"Evening News\">"
      "<audioContentIDRef>ACO_1001</audioContentIDRef></audioProgramme><audioContent audioContentID=\"ACO_1001\" "
      "audioContentName=\"Dialogue\"><audioObjectIDRef>AO_1001</audioObjectIDRef></audioContent><audioObject "
      "audioObjectID=\"AO_1001\" audioObjectName=\"Stereo\"><audioPackFormatIDRef>AP_00010002</audioPackFormatIDRef>"
      "<audioTrackUIDRef>ATU_00000001</audioTrackUIDRef><audioTrackUIDRef>ATU_00000002</audioTrackUIDRef>"
      "</audioObject><audioTrackUID UID=\"ATU_00000001\"/><audioTrackUID UID=\"ATU_00000002\"/>"
      "</audioFormatExtended></format></coreMetadata></ebuCoreMain>";
  const std::string chna = Le(2, 2) + Le(2, 2) + Le(1, 2) + "ATU_00000001" + "AT_00010001_01" + "AP_00010002" +
                           std::string(1, '\0') + Le(2, 2) + "ATU_00000002" + "AT_00010002_01" + "AP_00010002" +
                           std::string(1, '\0');
  const std::string input = File("adm24.wav");
  std::ofstream(input, std::ios::binary) << Riff(Chunk("fmt ", Format(1, 2, 48000, 24)) + Chunk("chna", chna) +
                                                 Chunk("axml", axml) + Chunk("data", Essence(48000 * 6)));
  const std::string output = File("adm16.wav");
  const ToolRun run = RunMox({"convert", input, output, "--audio-format", "sowt"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const std::string described = Capture("mediainfo '" + output + "'");
  EXPECT_NE(described.find("ADM"), std::string::npos) << described;
  EXPECT_NE(described.find("Evening News"), std::string::npos) << described;
  EXPECT_NE(described.find("Dialogue"), std::string::npos) << described;
  EXPECT_NE(described.find("16 bits"), std::string::npos) << described;
}

TEST_F(MoxAudioJob, ATrackTheWriterRefusesAsItIsBecomesSixteenBitPcm) {
  // The WAV writer takes PCM and G.711, not IMA ADPCM: without a format asked
  // for, convert decodes to 16-bit PCM, as ffmpeg's default for WAV does.
  const std::string input = Make("ima.wav", "-c:a adpcm_ima_wav");
  const std::string output = File("copy.wav");
  const ToolRun run = RunMox({"convert", input, output, "--print-script"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("it gets 16-bit PCM ('sowt')"), std::string::npos) << run.out;
  EXPECT_NE(Capture("ffprobe -v error -show_entries stream=codec_name -of csv=p=0 '" + output + "'").find("pcm_s16le"),
            std::string::npos);
  const std::vector<short> ours = DecodedShorts(output);
  const std::vector<short> theirs = DecodedShorts(input);
  ASSERT_EQ(ours.size(), theirs.size());
  EXPECT_GE(SignalToError(theirs, ours), 40.0);
}

}  // namespace
