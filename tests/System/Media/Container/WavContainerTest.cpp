// WAVE files through the container framework: the chunk list (padding, RF64
// sizes, damage), the track and its samples, the extensions the chunks
// become (Broadcast Wave, iXML time code, ADM, Dolby, decoder buffer), MPEG
// frames, channel-coding detection, and Wave64.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "ContainerTestSupport.h"
#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/PropertiesExtension.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/TimeCode/AudioTimeCodeProperties.h"
#include "System/Media/Wav/BwfProperties.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"
#include "System/Media/Wav/WaveData.h"
#include "System/Media/Wav/WaveDataSize64.h"
#include "System/Media/Wav/WaveFormat.h"
#include "System/Media/Wav/WaveList.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "WavTestSupport.h"

using namespace Corvane::Mox;
using namespace ContainerTest;
using namespace WavTest;

namespace {

class WavContainerTest : public LeakCheckedTest {
 protected:
  // A reader of the type over a file holding `bytes`, indexing begun (or
  // failed: result).
  RObject<CContainerReader> Open(const std::string& name, const std::string& bytes, Result* result = nullptr,
                                 unsigned int type = FourCC("wav ")) {
    const std::string path = TempPath(name);
    WriteFile(path, bytes);
    RObject<CString> text(CString::WithString(path.c_str()));
    RObject<CContainerReader> reader(CContainerReader::Create(text, type));
    EXPECT_TRUE(reader);
    if (!reader) return reader;
    Result begun = reader->BeginIndex();
    if (result) *result = begun;
    else EXPECT_TRUE(begun.Succeeded()) << (begun.GetDetails() ? begun.GetDetails() : begun.GetErrorMessage());
    return reader;
  }

  static RObject<CAudioProperties> Track(CContainerReader* reader) {
    return RObject<CAudioProperties>(reader->GetAudioProperties(0));
  }

  static std::vector<RObject<CAudioSample>> Drain(CContainerReader* reader) {
    std::vector<RObject<CAudioSample>> samples;
    for (int guard = 0; guard < 100000; ++guard) {
      RObject<CAudioSample> sample;
      EXPECT_TRUE(reader->ReadAudioSample(0, sample.Out()).Succeeded());
      if (!sample) break;
      samples.push_back(sample);
    }
    return samples;
  }

  // The bytes a sample refers to, read through the reader.
  static std::string Bytes(CContainerReader* reader, CAudioSample* sample) {
    EXPECT_TRUE(reader->ReadAudioData(0, sample).Succeeded());
    RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
    if (!data) return "";
    return std::string(reinterpret_cast<const char*>(data->GetData()), static_cast<size_t>(data->GetLength()));
  }

  static std::string Details(const Result& result) { return result.GetDetails() ? result.GetDetails() : ""; }
};

TEST_F(WavContainerTest, ProbingKnowsRiffRf64AndWave64) {
  const std::string pcm = Riff(Chunk("fmt ", Format(1, 1, 8000, 16)) + Chunk("data", Essence(16)));
  const std::string rf64 = "RF64" + pcm.substr(4);
  const std::string w64 = Wave64(Wave64Chunk(Guid64("fmt "), Format(1, 1, 8000, 16)) +
                                 Wave64Chunk(Guid64("data"), Essence(16)));
  const struct {
    const char* name;
    std::string bytes;
    unsigned int type;
  } cases[] = {{"probe.wav", pcm, FourCC("wav ")}, {"probe-rf64.wav", rf64, FourCC("wav ")},
               {"probe.w64", w64, FourCC("wv64")}};
  for (const auto& c : cases) {
    WriteFile(TempPath(c.name), c.bytes);
    RObject<CContainerReader> reader(CContainerReader::Create(TempPath(c.name).c_str()));
    ASSERT_TRUE(reader) << c.name;
    EXPECT_EQ(reader->GetType(), c.type) << c.name;
  }
  // "RIFF" around something else is not ours.
  WriteFile(TempPath("avi.avi"), "RIFF" + Le(4, 4) + "AVI ");
  RObject<CContainerReader> other(CContainerReader::Create(TempPath("avi.avi").c_str()));
  EXPECT_FALSE(other && (other->GetType() == FourCC("wav ") || other->GetType() == FourCC("wv64")));
}

TEST_F(WavContainerTest, OneSecondSamplesUntilTheEnd) {
  // 44,100 Hz mono 16-bit, 100,000 frames.
  const std::string essence = Essence(200000);
  RObject<CContainerReader> reader(
      Open("frames.wav", Riff(Chunk("fmt ", Format(1, 1, 44100, 16)) + Chunk("data", essence))));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetFormat(), FourCC("sowt"));
  EXPECT_EQ(track->GetSampleRate(), 44100);
  EXPECT_EQ(track->GetDuration(), 100000);
  EXPECT_EQ(reader->GetAudioMediaCount(), 1);
  std::vector<RObject<CAudioSample>> samples(Drain(reader));
  ASSERT_EQ(samples.size(), 3u);
  const long long counts[] = {44100, 44100, 11800};
  long long offset = 0;
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(samples[i]->GetDuration(), counts[i]);
    EXPECT_EQ(samples[i]->GetTime(), offset);
    EXPECT_EQ(Bytes(reader, samples[i]), essence.substr(static_cast<size_t>(offset) * 2, counts[i] * 2));
    offset += counts[i];
  }
  RObject<CAudioSample> none;
  EXPECT_TRUE(reader->ReadAudioSample(1, none.Out()).Failed());
  reader->EndIndex();
}

TEST_F(WavContainerTest, SingleFramePacketsGoOutASecondAtATime) {
  // Stereo A-law at 8 kHz: a packet is one frame of two bytes; 2.5 s.
  const std::string essence = Essence(40000);
  RObject<CContainerReader> reader(
      Open("alaw.wav", Riff(Chunk("fmt ", Format(6, 2, 8000, 8, 2)) + Chunk("data", essence))));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetFormat(), 0x6D730006u);
  EXPECT_EQ(track->GetDuration(), 20000);
  std::vector<RObject<CAudioSample>> samples(Drain(reader));
  ASSERT_EQ(samples.size(), 3u);
  const long long counts[] = {8000, 8000, 4000};
  long long offset = 0;
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(samples[i]->GetDuration(), counts[i]);
    EXPECT_EQ(samples[i]->GetTime(), offset);
    EXPECT_EQ(Bytes(reader, samples[i]), essence.substr(static_cast<size_t>(offset) * 2, counts[i] * 2));
    offset += counts[i];
  }
  reader->EndIndex();
}

TEST_F(WavContainerTest, OddChunksArePadded) {
  // A 3-byte chunk, its pad byte, then the format and data: both found.
  const std::string bytes =
      Riff(Chunk("odd ", "abc") + Chunk("fmt ", Format(1, 2, 48000, 16)) + Chunk("data", Essence(400)));
  ASSERT_EQ(bytes.size(), 12 + 12 + 24 + 408u);
  RObject<CContainerReader> reader(Open("odd.wav", bytes));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetChannels(), 2);
  EXPECT_EQ(track->GetDuration(), 100);
}

TEST_F(WavContainerTest, Rf64SizesComeFromDs64) {
  const std::string essence = Essence(4800 * 4);
  std::string ds64 = Le(0, 8) + Le(essence.size(), 8) + Le(4800, 8) + Le(0, 4);
  const std::string rf64 = Riff(Chunk("ds64", ds64) + Chunk("fmt ", Format(1, 2, 48000, 16)) +
                                    Chunk("data", essence, 0xFFFFFFFF),
                                "RF64", 0xFFFFFFFF);
  RObject<CContainerReader> reader(Open("sizes.rf64.wav", rf64));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetDuration(), 4800);

  // The same file without "ds64" has no way to know the data size.
  const std::string without =
      Riff(Chunk("fmt ", Format(1, 2, 48000, 16)) + Chunk("data", essence, 0xFFFFFFFF), "RF64", 0xFFFFFFFF);
  Result result;
  RObject<CContainerReader> failed(Open("no-ds64.wav", without, &result));
  EXPECT_TRUE(result.Failed());
  EXPECT_EQ(Details(result), "missing 'ds64' chunk");
  EXPECT_EQ(failed->GetAudioMediaCount(), 0);
}

TEST_F(WavContainerTest, Ds64TableSizesSkipLargeChunks) {
  // A chunk whose size is in the ds64 table is skipped by that size.
  std::string ds64 = Le(0, 8) + Le(8, 8) + Le(2, 8) + Le(1, 4) + "big " + Le(6, 8);
  const std::string bytes = Riff(Chunk("ds64", ds64) + "big " + Le(0xFFFFFFFF, 4) + "123456" +
                                     Chunk("fmt ", Format(1, 2, 8000, 16)) + Chunk("data", Essence(8)),
                                 "RF64", 0xFFFFFFFF);
  RObject<CContainerReader> reader(Open("table.wav", bytes));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetDuration(), 2);
}

TEST_F(WavContainerTest, HeaderErrorsNameTheProblem) {
  const struct {
    const char* name;
    std::string bytes;
    const char* details;
  } cases[] = {
      {"bad-id.wav", "RIFX" + Le(4, 4) + "WAVE", "incorrect chunk ID 'RIFX' (expected 'RIFF' or 'RF64')"},
      {"bad-form.wav", "RIFF" + Le(4, 4) + "AVI ", "incorrect format 'AVI ' (expected 'WAVE')"},
      {"no-fmt.wav", Riff(Chunk("data", Essence(8))), "missing 'fmt ' chunk"},
      {"no-data.wav", Riff(Chunk("fmt ", Format(1, 1, 8000, 8))), "missing 'data' chunk"},
  };
  for (const auto& c : cases) {
    Result result;
    RObject<CContainerReader> reader(Open(c.name, c.bytes, &result));
    EXPECT_TRUE(result.Failed()) << c.name;
    EXPECT_EQ(Details(result), c.details) << c.name;
    EXPECT_EQ(reader->GetAudioMediaCount(), 0) << c.name;
  }
}

TEST_F(WavContainerTest, DamageShortensInsteadOfFailing) {
  const std::string head = Chunk("fmt ", Format(1, 2, 8000, 16));
  // The data chunk claims 8000 bytes but the file ends after 1000.
  std::string truncated = Riff(head + "data" + Le(8000, 4) + Essence(1000));
  RObject<CContainerReader> shortened(Open("truncated.wav", truncated));
  RObject<CAudioProperties> track(Track(shortened));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetDuration(), 250);
  std::vector<RObject<CAudioSample>> samples(Drain(shortened));
  ASSERT_EQ(samples.size(), 1u);
  EXPECT_EQ(Bytes(shortened, samples[0]).size(), 1000u);

  // A ds64 that lies about the data size: the file's bytes decide.
  std::string ds64 = Le(0, 8) + Le(1ull << 40, 8) + Le(0, 8) + Le(0, 4);
  RObject<CContainerReader> lying(
      Open("lying.wav", Riff(Chunk("ds64", ds64) + head + Chunk("data", Essence(40), 0xFFFFFFFF), "RF64")));
  RObject<CAudioProperties> lied(Track(lying));
  ASSERT_TRUE(lied);
  EXPECT_EQ(lied->GetDuration(), 10);

  // A chunk cut off after the essence only ends the chunk list.
  std::string tail = Riff(head + Chunk("data", Essence(40)) + "bext" + Le(602, 4) + std::string(20, 'x'));
  RObject<CContainerReader> cut(Open("cut-bext.wav", tail));
  RObject<CAudioProperties> kept(Track(cut));
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->GetDuration(), 10);
  EXPECT_FALSE(kept->ContainsExtension(CBwfProperties::TypeCode));

  // Garbage after the header: a clear failure, no track.
  Result result;
  RObject<CContainerReader> garbage(Open("garbage.wav", Riff(std::string(37, '\xFF')), &result));
  EXPECT_TRUE(result.Failed());
}

TEST_F(WavContainerTest, ChunkListWritesRiffOrRf64) {
  const std::string fmt = Format(1, 2, 48000, 16);
  RObject<CWindowsAudioFormat> format;
  ASSERT_TRUE(CWindowsAudioFormat::Parse(reinterpret_cast<const unsigned char*>(fmt.data()),
                                         static_cast<int>(fmt.size()), format.Out())
                  .Succeeded());
  RObject<CWaveList> list(new CWaveList());
  RObject<CWaveFormat> chunk(new CWaveFormat(format.Get()));
  RObject<CWaveData> data(new CWaveData());
  data->SetHeaderSize(4);
  list->Add(chunk.Get());
  list->Add(data.Get());
  auto written = [&list] {
    RObject<CMemoryStream> out(new CMemoryStream());
    RObject<CBinaryWriter> writer(new CBinaryWriter(out.Get()));
    EXPECT_TRUE(list->Write(writer.Get()).Succeeded());
    return std::string(reinterpret_cast<const char*>(out->GetData()), static_cast<size_t>(out->GetLength()));
  };
  EXPECT_EQ(written(), "RIFF" + Le(40, 4) + "WAVE" + Chunk("fmt ", fmt) + "data" + Le(4, 4));
  // A size kept in "ds64" makes the whole list RF64.
  data->SetHeaderSize(0xFFFFFFFF);
  EXPECT_EQ(list->GetSize(), 0xFFFFFFFFu);
  EXPECT_EQ(written(), "RF64" + Le(0xFFFFFFFF, 4) + "WAVE" + Chunk("fmt ", fmt) + "data" + Le(0xFFFFFFFF, 4));

  RObject<CWaveDataSize64> sizes(new CWaveDataSize64());
  sizes->SetRiffSize(1ll << 33);
  sizes->SetDataSize((1ll << 33) - 100);
  sizes->SetTableSize(FourCC("axml"), 5000000000ll);
  EXPECT_EQ(sizes->GetChunkSize(FourCC("RIFF")), 1ll << 33);
  EXPECT_EQ(sizes->GetChunkSize(FourCC("data")), (1ll << 33) - 100);
  EXPECT_EQ(sizes->GetChunkSize(FourCC("axml")), 5000000000ll);
  EXPECT_EQ(sizes->GetChunkSize(FourCC("iXML")), 0);
  EXPECT_EQ(sizes->GetSize(), 28u + 12u);
}

TEST_F(WavContainerTest, BroadcastExtensionRoundTrip) {
  // 602 bytes: no coding history.
  const std::string fixed = BroadcastExtension("Interview", "Mox", 1234567);
  RObject<CMemoryStream> stream(new CMemoryStream(static_cast<int>(fixed.size()),
                                                  reinterpret_cast<unsigned char*>(const_cast<char*>(fixed.data()))));
  RObject<CBinaryReader> reader(new CBinaryReader(stream.Get()));
  RObject<CWaveBroadcastExtension> bext(new CWaveBroadcastExtension(0, 602));
  ASSERT_TRUE(bext->Read(reader.Get()).Succeeded());
  RObject<CByteArray> none(bext->GetCodingHistory());
  EXPECT_FALSE(none);
  EXPECT_EQ(bext->GetSize(), 602u);
  RObject<CString> description(bext->GetDescription());
  EXPECT_STREQ(description->GetChars(), "Interview");
  EXPECT_EQ(bext->GetTimeReference(), 1234567u);
  EXPECT_EQ(bext->GetLoudnessValue(), -2300);

  // A 5-byte history is written back with a sixth, zero byte.
  const std::string withHistory = BroadcastExtension("Interview", "Mox", 1234567, "A=PCM");
  RObject<CMemoryStream> in(new CMemoryStream(static_cast<int>(withHistory.size()),
                                              reinterpret_cast<unsigned char*>(const_cast<char*>(withHistory.data()))));
  RObject<CBinaryReader> historyReader(new CBinaryReader(in.Get()));
  RObject<CWaveBroadcastExtension> read(new CWaveBroadcastExtension(0, 607));
  ASSERT_TRUE(read->Read(historyReader.Get()).Succeeded());
  EXPECT_EQ(read->GetSize(), 608u);
  RObject<CMemoryStream> out(new CMemoryStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(out.Get()));
  ASSERT_TRUE(read->Write(writer.Get()).Succeeded());
  const std::string written(reinterpret_cast<const char*>(out->GetData()), static_cast<size_t>(out->GetLength()));
  EXPECT_EQ(written, "bext" + Le(608, 4) + withHistory + std::string(1, '\0'));

  // Text is cut to the field width; the properties show the history escaped.
  RObject<CString> longName(CString::WithString(std::string(40, 'o').c_str()));
  read->SetOriginator(longName.Get());
  RObject<CString> cutName(read->GetOriginator());
  EXPECT_EQ(cutName->GetLength(), 32);
  RObject<CString> history(CString::WithString("A=PCM,F=48000\r\n"));
  read->SetCodingHistory(history.Get());
  RObject<CProperties> bag(new CProperties());
  ASSERT_TRUE(read->GetProperties(bag.Get()).Succeeded());
  RObject<CString> shown;
  ASSERT_TRUE(bag->GetProperty("coding_history", shown.Out()).Succeeded());
  EXPECT_STREQ(shown->GetChars(), "A=PCM,F=48000\\r\\n");
  RObject<CString> loudness;
  ASSERT_TRUE(bag->GetProperty("loudness_value", loudness.Out()).Succeeded());
  EXPECT_STREQ(loudness->GetChars(), "-23.00 LUFS");
}

TEST_F(WavContainerTest, BroadcastWaveAndIxmlTimeCode) {
  const std::string ixml =
      "<?xml version=\"1.0\"?><BWFXML><SPEED><TIMECODE_RATE>30000/1001</TIMECODE_RATE>"
      "<TIMECODE_FLAG>DF</TIMECODE_FLAG><TIMESTAMP_SAMPLE_RATE>48000</TIMESTAMP_SAMPLE_RATE>"
      "<TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI>0</TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI>"
      "<TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO>28799972</TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO></SPEED></BWFXML>";
  const std::string bytes = Riff(Chunk("fmt ", Format(1, 2, 48000, 24)) +
                                 Chunk("bext", BroadcastExtension("Scene 4", "Recorder", 28799972, "A=PCM\r\n")) +
                                 Chunk("iXML", ixml) + Chunk("data", Essence(600)));
  RObject<CContainerReader> reader(Open("bwf.wav", bytes));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  RObject<CMediaPropertiesExtension> bwf(track->GetExtension(CBwfProperties::TypeCode));
  ASSERT_TRUE(bwf);
  RObject<CWaveBroadcastExtension> bext(static_cast<CBwfProperties*>(bwf.Get())->GetBroadcastExtension());
  RObject<CString> originator(bext->GetOriginator());
  EXPECT_STREQ(originator->GetChars(), "Recorder");
  // 28,799,972 samples at 48 kHz are 17,982 frames at 29.97 fps: ten minutes
  // of drop-frame time code.
  RObject<CMediaPropertiesExtension> atc(track->GetExtension(CAudioTimeCodeProperties::TypeCode));
  ASSERT_TRUE(atc);
  const auto* timeCode = static_cast<CAudioTimeCodeProperties*>(atc.Get());
  RObject<CString> text(timeCode->GetTimeCode().ToString(';'));
  ASSERT_TRUE(text);
  EXPECT_STREQ(text->GetChars(), "00:10:00;00");
  EXPECT_EQ(timeCode->GetTimeCodeRate().numerator, 30000);
  EXPECT_EQ(timeCode->GetTimeCodeRate().denominator, 1001);

  // An iXML that does not parse gives no time code, the rest stays.
  const std::string broken = Riff(Chunk("fmt ", Format(1, 2, 48000, 24)) +
                                  Chunk("bext", BroadcastExtension("x", "y", 0)) + Chunk("iXML", "<BWFXML><SPEED>") +
                                  Chunk("data", Essence(600)));
  RObject<CContainerReader> other(Open("bwf-broken.wav", broken));
  RObject<CAudioProperties> plain(Track(other));
  ASSERT_TRUE(plain);
  EXPECT_TRUE(plain->ContainsExtension(CBwfProperties::TypeCode));
  EXPECT_FALSE(plain->ContainsExtension(CAudioTimeCodeProperties::TypeCode));
}

TEST_F(WavContainerTest, AdmNeedsBothAxmlAndChna) {
  const std::string axml =
      "<?xml version=\"1.0\"?><ebuCoreMain xmlns=\"urn:ebu:metadata-schema:ebuCore_2014\"><coreMetadata>"
      "<format><audioFormatExtended/></format></coreMetadata></ebuCoreMain>";
  const std::string chna = Le(1, 2) + Le(1, 2) + Le(1, 2) + "ATU_00000001" + "AT_00010001_01" + std::string(3, '\0');
  const std::string head = Chunk("fmt ", Format(1, 1, 48000, 24));
  RObject<CContainerReader> alone(Open("axml.wav", Riff(head + Chunk("axml", axml) + Chunk("data", Essence(30)))));
  RObject<CAudioProperties> without(Track(alone));
  ASSERT_TRUE(without);
  EXPECT_FALSE(without->ContainsExtension(FourCC("adm ")));

  RObject<CContainerReader> both(
      Open("adm.wav", Riff(head + Chunk("chna", chna) + Chunk("axml", axml) + Chunk("data", Essence(30)))));
  RObject<CAudioProperties> with(Track(both));
  ASSERT_TRUE(with);
  EXPECT_TRUE(with->ContainsExtension(FourCC("adm ")));

  RObject<CContainerReader> dolby(
      Open("dbmd.wav", Riff(head + Chunk("dbmd", std::string(9, '\x07')) + Chunk("data", Essence(30)))));
  RObject<CAudioProperties> metadata(Track(dolby));
  ASSERT_TRUE(metadata);
  EXPECT_TRUE(metadata->ContainsExtension(FourCC("dbmd")));
}

TEST_F(WavContainerTest, BlockCodecsCarryTheirFormatForTheDecoder) {
  // IMA ADPCM, mono, 256-byte blocks of 505 frames; 3 whole blocks.
  const std::string format = Format(0x11, 1, 22050, 4, 256, Le(505, 2));
  RObject<CContainerReader> reader(
      Open("ima.wav", Riff(Chunk("fmt ", format) + Chunk("fact", Le(1515, 4)) + Chunk("data", Essence(768)))));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetFormat(), 0x6D730011u);
  EXPECT_EQ(track->GetDuration(), 1515);
  RObject<CMediaPropertiesExtension> extension(track->GetExtension(CDecoderBufferProperties::TypeCode));
  ASSERT_TRUE(extension);
  RObject<CByteArray> buffer(static_cast<CDecoderBufferProperties*>(extension.Get())->GetDecoderBuffer());
  ASSERT_TRUE(buffer);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer->GetData()), static_cast<size_t>(buffer->GetLength())),
            format);
  std::vector<RObject<CAudioSample>> samples(Drain(reader));
  ASSERT_EQ(samples.size(), 3u);
  EXPECT_EQ(samples[2]->GetDuration(), 505);
  EXPECT_EQ(Bytes(reader, samples[2]), Essence(768).substr(512));

  // Microsoft GSM 6.10: 65-byte blocks of 320 frames, the half block at
  // the end is not a block.
  RObject<CContainerReader> gsm(Open(
      "gsm.wav", Riff(Chunk("fmt ", Format(0x31, 1, 8000, 0, 65, Le(320, 2))) + Chunk("data", Essence(65 * 2 + 30)))));
  RObject<CAudioProperties> gsmTrack(Track(gsm));
  ASSERT_TRUE(gsmTrack);
  EXPECT_EQ(gsmTrack->GetDuration(), 640);
  EXPECT_EQ(Drain(gsm).size(), 2u);
}

TEST_F(WavContainerTest, MpegFramesOneSampleEach) {
  // MPEG-1 layer III, 128 kbit/s, 44.1 kHz, stereo: 417-byte frames.
  std::string frame = std::string("\xFF\xFB\x90\x00", 4) + std::string(413, '\x11');
  const std::string essence = frame + frame + frame + "junk";
  const std::string fmt = Format(0x55, 2, 44100, 0, 1, Le(1, 2) + Le(2, 4) + Le(417, 2) + Le(1, 2) + Le(1393, 2));
  RObject<CContainerReader> reader(
      Open("mp3.wav", Riff(Chunk("fmt ", fmt) + Chunk("fact", Le(3456, 4)) + Chunk("data", essence))));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetFormat(), FourCC("mpga"));
  EXPECT_EQ(track->GetDuration(), 3456);
  EXPECT_EQ(track->GetChannels(), 2);
  std::vector<RObject<CAudioSample>> samples(Drain(reader));
  ASSERT_EQ(samples.size(), 3u);
  EXPECT_EQ(samples[1]->GetDuration(), 1152);
  EXPECT_EQ(Bytes(reader, samples[1]), frame);
}

// Interleaved PCM frames: `bytes` per sample, little-endian, the burst
// words left-justified; every other value is a ramp.
std::string Pcm337(int channels, int bytes, int frames, int pair, unsigned pa, unsigned pb, unsigned pc, int bits) {
  std::string essence;
  for (int f = 0; f < frames; ++f) {
    for (int c = 0; c < channels; ++c) {
      unsigned value = static_cast<unsigned>((f * 131 + c * 17) & 0x7FFF) << (bytes * 8 - 16);
      if (pair >= 0 && c / 2 == pair && f % 100 == 10) value = (c % 2 ? pb : pa) << (bytes * 8 - bits);
      if (pair >= 0 && c / 2 == pair && f % 100 == 11 && c % 2 == 0) value = pc << (bytes * 8 - bits);
      essence += Le(value, bytes);
    }
  }
  return essence;
}

TEST_F(WavContainerTest, ChannelCodingFindsDataBursts) {
  // 16-bit stereo carrying AC-3 bursts (data type 1).
  RObject<CContainerReader> ac3(Open("337-16.wav", Riff(Chunk("fmt ", Format(1, 2, 48000, 16)) +
                                                        Chunk("data", Pcm337(2, 2, 1000, 0, 0xF872, 0x4E1F, 1, 16)))));
  RObject<CAudioProperties> track(Track(ac3));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetChannelCoding(0), FourCC("ac-3"));
  EXPECT_EQ(track->GetChannelCoding(1), FourCC("ac-3"));
  // The analysis does not use up the samples.
  EXPECT_EQ(Drain(ac3).size(), 1u);

  // 24-bit, four channels, Dolby E (28) in 20-bit words in the second pair.
  RObject<CContainerReader> dolbyE(
      Open("337-24.wav", Riff(Chunk("fmt ", Format(1, 4, 48000, 24)) +
                              Chunk("data", Pcm337(4, 3, 1000, 1, 0x6F872, 0x54E1F, 28, 20)))));
  RObject<CAudioProperties> four(Track(dolbyE));
  ASSERT_TRUE(four);
  EXPECT_EQ(four->GetChannelCoding(0), 0u);
  EXPECT_EQ(four->GetChannelCoding(1), 0u);
  EXPECT_EQ(four->GetChannelCoding(2), FourCC("dlbe"));
  EXPECT_EQ(four->GetChannelCoding(3), FourCC("dlbe"));

  // 24-bit sync words in 24-bit samples; and plain PCM stays PCM.
  RObject<CContainerReader> wide(Open("337-24w.wav", Riff(Chunk("fmt ", Format(1, 2, 48000, 24)) +
                                                          Chunk("data", Pcm337(2, 3, 500, 0, 0x96F872, 0xA54E1F,
                                                                               16, 24)))));
  RObject<CAudioProperties> eac3(Track(wide));
  ASSERT_TRUE(eac3);
  EXPECT_EQ(eac3->GetChannelCoding(0), FourCC("ec-3"));
  RObject<CContainerReader> plain(Open("337-none.wav", Riff(Chunk("fmt ", Format(1, 2, 48000, 16)) +
                                                            Chunk("data", Pcm337(2, 2, 1000, -1, 0, 0, 0, 16)))));
  RObject<CAudioProperties> pcm(Track(plain));
  ASSERT_TRUE(pcm);
  EXPECT_EQ(pcm->GetChannelCoding(0), 0u);
  EXPECT_EQ(pcm->GetChannelCoding(1), 0u);
}

TEST_F(WavContainerTest, Wave64Tracks) {
  const std::string essence = Essence(4800 * 6);
  const std::string fmt = Format(0xFFFE, 2, 48000, 24, 6,
                                 Le(24, 2) + Le(0x3, 4) + Le(1, 2) +
                                     std::string("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14));
  const std::string file =
      Wave64(Wave64Chunk(Guid64("fmt "), fmt) + Wave64Chunk(Guid64("bext"), BroadcastExtension("w64", "o", 5)) +
             Wave64Chunk(Guid64("data"), essence));
  RObject<CContainerReader> reader(Open("pcm.w64", file, nullptr, FourCC("wv64")));
  RObject<CAudioProperties> track(Track(reader));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetFormat(), FourCC("42ni"));
  EXPECT_EQ(track->GetDuration(), 4800);
  EXPECT_EQ(track->GetChannelLabel(1), 2);
  EXPECT_TRUE(track->ContainsExtension(CBwfProperties::TypeCode));
  std::vector<RObject<CAudioSample>> samples(Drain(reader));
  ASSERT_EQ(samples.size(), 1u);
  EXPECT_EQ(Bytes(reader, samples[0]), essence);

  const struct {
    const char* name;
    std::string format;
    const char* details;
  } failures[] = {{"12bit.w64", Format(1, 1, 8000, 12, 2), "unsupported wBitsPerSample 12"},
                  {"adpcm.w64", Format(2, 1, 8000, 4, 256, Le(2, 2) + Le(0, 2)), "unsupported formatd"}};
  for (const auto& f : failures) {
    Result result;
    RObject<CContainerReader> failed(Open(f.name,
                                          Wave64(Wave64Chunk(Guid64("fmt "), f.format) +
                                                 Wave64Chunk(Guid64("data"), Essence(64))),
                                          &result, FourCC("wv64")));
    EXPECT_TRUE(result.Failed()) << f.name;
    EXPECT_EQ(Details(result), f.details) << f.name;
  }
  Result result;
  RObject<CContainerReader> noFormat(
      Open("nofmt.w64", Wave64(Wave64Chunk(Guid64("data"), Essence(64))), &result, FourCC("wv64")));
  EXPECT_EQ(Details(result), "missing 'fmt ' chunk");
}

}  // namespace
