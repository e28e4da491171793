// The WAV writer: the file layout it produces (reserved "JUNK", format,
// "fact", "bext", patched sizes, pad byte), the switch to RF64 when the
// file outgrows the size threshold, the extensible format and its mask, and
// the formats it refuses, and the metadata a track brings from the WAV it was
// read from. Files are read back with the WAV reader.
#include <gtest/gtest.h>

#include <string>

#include "ContainerTestSupport.h"
#include "System/ByteArray.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/TimeCode/AudioTimeCodeProperties.h"
#include "System/Media/Wav/AdmChannelAllocation.h"
#include "System/Media/Wav/AdmProperties.h"
#include "System/Media/Wav/BwfProperties.h"
#include "System/Media/Wav/DolbyAudioProperties.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"
#include "System/Text.h"
#include "WavTestSupport.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;
using namespace WavTest;

namespace {

using Settings = ContainerProperty::WavContainerWriter;

RObject<CAudioProperties> Description(unsigned int format, int channels, int rate) {
  RObject<CAudioProperties> properties(new CAudioProperties());
  properties->SetFormat(format);
  properties->SetChannels(channels);
  properties->SetSampleRate(rate);
  properties->SetSampleDuration(1);
  return properties;
}

class WavWriterTest : public LeakCheckedTest {
 protected:
  // Writes `essence` in samples of at most `chunk` bytes; returns the file.
  // `configure` sets the writer's properties before the track is added.
  template <class Configure>
  std::string Write(const std::string& name, CAudioProperties* track, const std::string& essence, Configure configure,
                    size_t chunk = 65536) {
    RObject<CString> path(CString::WithString(TempPath(name).c_str()));
    RObject<CContainerWriter> writer(CContainerWriter::Create(path, FourCC("wav ")));
    EXPECT_TRUE(writer);
    if (!writer) return "";
    configure(writer.Get());
    Result result = writer->AddAudioMedia(track);
    EXPECT_TRUE(result.Succeeded()) << (result.GetDetails() ? result.GetDetails() : "");
    EXPECT_TRUE(writer->BeginIndex().Succeeded());
    for (size_t offset = 0; offset < essence.size(); offset += chunk) {
      const size_t length = std::min(chunk, essence.size() - offset);
      RObject<CAudioSample> sample(new CAudioSample(1));
      RObject<CBufferDataReference> data(new CBufferDataReference(static_cast<int>(length)));
      std::copy(essence.begin() + static_cast<long>(offset), essence.begin() + static_cast<long>(offset + length),
                data->GetData());
      sample->SetDataReference(data);
      EXPECT_TRUE(writer->WriteAudioSample(0, sample).Succeeded());
    }
    EXPECT_TRUE(writer->EndIndex().Succeeded());
    return ReadFile(TempPath(name));
  }

  std::string Write(const std::string& name, CAudioProperties* track, const std::string& essence) {
    return Write(name, track, essence, [](CContainerWriter*) {});
  }

  // The track and the essence as our reader sees the file.
  static RObject<CAudioProperties> ReadBack(const std::string& name, std::string& essence) {
    RObject<CContainerReader> reader(CContainerReader::Create(TempPath(name).c_str()));
    EXPECT_TRUE(reader);
    if (!reader || reader->BeginIndex().Failed()) return nullptr;
    RObject<CAudioProperties> track(reader->GetAudioProperties(0));
    essence.clear();
    for (;;) {
      RObject<CAudioSample> sample;
      EXPECT_TRUE(reader->ReadAudioSample(0, sample.Out()).Succeeded());
      if (!sample) break;
      EXPECT_TRUE(reader->ReadAudioData(0, sample.Get()).Succeeded());
      RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
      essence.append(reinterpret_cast<const char*>(data->GetData()), static_cast<size_t>(data->GetLength()));
    }
    reader->EndIndex();
    return track;
  }
};

TEST_F(WavWriterTest, PlainPcmLayoutAndRoundTrip) {
  const std::string essence = Essence(48000 * 4 + 400);
  RObject<CAudioProperties> track(Description(FourCC("sowt"), 2, 48000));
  const std::string file = Write("plain.wav", track, essence, [](CContainerWriter*) {}, 10000);
  const std::string expected = Riff(Chunk("JUNK", std::string(28, '\0')) + Chunk("fmt ", Format(1, 2, 48000, 16)) +
                                    Chunk("data", essence));
  ASSERT_EQ(file.size(), expected.size());
  EXPECT_EQ(file, expected);
  std::string read;
  RObject<CAudioProperties> back(ReadBack("plain.wav", read));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->GetDuration(), 48100);
  EXPECT_EQ(read, essence);
}

TEST_F(WavWriterTest, OddEssenceGetsItsPadByte) {
  RObject<CAudioProperties> track(Description(FourCC("raw "), 1, 8000));
  const std::string file = Write("odd.wav", track, "abc");
  EXPECT_EQ(file, Riff(Chunk("JUNK", std::string(28, '\0')) + Chunk("fmt ", Format(1, 1, 8000, 8)) +
                       Chunk("data", "abc")));
  std::string read;
  RObject<CAudioProperties> back(ReadBack("odd.wav", read));
  ASSERT_TRUE(back);
  EXPECT_EQ(read, "abc");
}

TEST_F(WavWriterTest, OutgrowingTheThresholdTurnsTheFileIntoRf64) {
  const std::string essence = Essence(6000);
  RObject<CAudioProperties> track(Description(FourCC("sowt"), 1, 8000));
  const std::string file = Write("switch.wav", track, essence, [](CContainerWriter* writer) {
    writer->SetProperty(Settings::Rf64Threshold, 4096ll);
  });
  // The reserved "JUNK" became "ds64" in place; every 32-bit size says so.
  const std::string ds64 = Le(file.size() - 8, 8) + Le(6000, 8) + Le(3000, 8) + Le(0, 4);
  EXPECT_EQ(file, Riff(Chunk("ds64", ds64) + Chunk("fmt ", Format(1, 1, 8000, 16)) +
                           Chunk("data", essence, 0xFFFFFFFF),
                       "RF64", 0xFFFFFFFF));
  std::string read;
  RObject<CAudioProperties> back(ReadBack("switch.wav", read));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->GetDuration(), 3000);
  EXPECT_EQ(read, essence);

  // Below the threshold the file stays RIFF; ForceRf64 makes RF64 anyway.
  const std::string small = Write("small.wav", track, essence.substr(0, 100), [](CContainerWriter* writer) {
    writer->SetProperty(Settings::Rf64Threshold, 4096ll);
  });
  EXPECT_EQ(small.substr(0, 4), "RIFF");
  const std::string forced = Write("forced.wav", track, essence.substr(0, 100), [](CContainerWriter* writer) {
    writer->SetProperty(Settings::ForceRf64, true);
  });
  EXPECT_EQ(forced.substr(0, 4), "RF64");
  EXPECT_EQ(forced.substr(12, 4), "ds64");
  RObject<CAudioProperties> forcedBack(ReadBack("forced.wav", read));
  ASSERT_TRUE(forcedBack);
  EXPECT_EQ(forcedBack->GetDuration(), 50);
}

TEST_F(WavWriterTest, ExtensibleFormatCarriesTheChannelMask) {
  RObject<CAudioProperties> surround(Description(FourCC("42ni"), 6, 48000));
  for (int channel = 0; channel < 6; ++channel) surround->SetChannelLabel(channel, channel + 1);
  const std::string file = Write("surround.wav", surround, Essence(18 * 10));
  // WAVE_FORMAT_EXTENSIBLE: cbSize 22, 24 valid bits, mask 0x3F, PCM.
  EXPECT_EQ(file.substr(48, 8), "fmt " + Le(40, 4));
  EXPECT_EQ(file.substr(56, 2), Le(0xFFFE, 2));
  EXPECT_EQ(file.substr(72, 10), Le(22, 2) + Le(24, 2) + Le(0x3F, 4) + Le(1, 2));
  std::string read;
  RObject<CAudioProperties> back(ReadBack("surround.wav", read));
  ASSERT_TRUE(back);
  for (int channel = 0; channel < 6; ++channel) EXPECT_EQ(back->GetChannelLabel(channel), channel + 1);

  // Stereo 16-bit is plain unless asked for.
  RObject<CAudioProperties> stereo(Description(FourCC("sowt"), 2, 44100));
  EXPECT_EQ(Write("stereo.wav", stereo, Essence(40)).substr(52, 4), Le(16, 4));
  const std::string asked = Write("stereo-ext.wav", stereo, Essence(40), [](CContainerWriter* writer) {
    writer->SetProperty(Settings::ExtensibleFormat, true);
  });
  EXPECT_EQ(asked.substr(52, 4), Le(40, 4));
}

TEST_F(WavWriterTest, G711HasAFactChunk) {
  RObject<CAudioProperties> track(Description(FourCC("alaw"), 1, 8000));
  const std::string file = Write("alaw.wav", track, Essence(800));
  EXPECT_EQ(file, Riff(Chunk("JUNK", std::string(28, '\0')) + Chunk("fmt ", Format(6, 1, 8000, 8)) +
                       Chunk("fact", Le(800, 4)) + Chunk("data", Essence(800))));
  std::string read;
  RObject<CAudioProperties> back(ReadBack("alaw.wav", read));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->GetFormat(), 0x6D730006u);
  EXPECT_EQ(back->GetDuration(), 800);
}

TEST_F(WavWriterTest, BroadcastExtensionFromTrackAndSettings) {
  RObject<CAudioProperties> track(Description(FourCC("sowt"), 2, 48000));
  RObject<CWaveBroadcastExtension> source(new CWaveBroadcastExtension());
  RObject<CString> description(CString::WithString("from the track"));
  RObject<CString> originator(CString::WithString("track originator"));
  source->SetDescription(description.Get());
  source->SetOriginator(originator.Get());
  source->SetTimeReference(96000);
  RObject<CBwfProperties> bwf(new CBwfProperties(source.Get()));
  track->AddExtension(bwf.Get());
  Write("bext.wav", track, Essence(400), [](CContainerWriter* writer) {
    writer->SetProperty(ContainerProperty::WavContainerWriter::IncludeBroadcastExtension, true);
    writer->SetProperty(ContainerProperty::WavMetadata::Description, "from the settings");
    writer->SetProperty(ContainerProperty::WavMetadata::CodingHistory, "A=PCM,F=48000,W=16,M=stereo\r\n");
  });
  RObject<CContainerReader> reader(CContainerReader::Create(TempPath("bext.wav").c_str()));
  ASSERT_TRUE(reader && reader->BeginIndex().Succeeded());
  RObject<CAudioProperties> back(reader->GetAudioProperties(0));
  RObject<CMediaPropertiesExtension> extension(back->GetExtension(CBwfProperties::TypeCode));
  ASSERT_TRUE(extension);
  RObject<CWaveBroadcastExtension> bext(static_cast<CBwfProperties*>(extension.Get())->GetBroadcastExtension());
  RObject<CString> text(bext->GetDescription());
  EXPECT_STREQ(text->GetChars(), "from the settings");
  text = bext->GetOriginator();
  EXPECT_STREQ(text->GetChars(), "track originator");
  EXPECT_EQ(bext->GetTimeReference(), 96000u);
  RObject<CByteArray> history(bext->GetCodingHistory());
  ASSERT_TRUE(history);
  // 29 bytes of history, padded to 30.
  EXPECT_EQ(bext->GetHeaderSize(), 602u + 30u);
  EXPECT_EQ(back->GetDuration(), 100);
  reader->EndIndex();
}

// A Broadcast Wave with iXML time code, an ADM document and Dolby metadata,
// read and written again: everything arrives in the new file, the ADM only
// while its channel allocation still names tracks the file has.
TEST_F(WavWriterTest, MetadataReadFromAWavTravelsToTheFileWritten) {
  const std::string ixml =
      "<?xml version=\"1.0\"?><BWFXML><SPEED><TIMECODE_RATE>25/1</TIMECODE_RATE><TIMECODE_FLAG>NDF</TIMECODE_FLAG>"
      "<TIMESTAMP_SAMPLE_RATE>48000</TIMESTAMP_SAMPLE_RATE><TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI>0"
      "</TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI><TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO>172800000"
      "</TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO></SPEED></BWFXML>";
  const std::string axml =
      "<?xml version=\"1.0\"?><ebuCoreMain xmlns=\"urn:ebu:metadata-schema:ebuCore_2014\"><coreMetadata><format>"
      "<audioFormatExtended><audioTrackUID UID=\"ATU_00000001\"/><audioTrackUID UID=\"ATU_00000002\"/>"
      "</audioFormatExtended></format></coreMetadata></ebuCoreMain>";
  const std::string entry = std::string("AT_00010001_01") + "AP_00010001" + std::string(1, '\0');
  const std::string chna = Le(2, 2) + Le(2, 2) + Le(1, 2) + "ATU_00000001" + entry + Le(2, 2) + "ATU_00000002" +
                           "AT_00010002_01" + "AP_00010002" + std::string(1, '\0');
  const std::string dbmd(9, '\x07');
  const std::string essence = Essence(48000 * 6 / 10);
  WriteFile(TempPath("source.wav"),
            Riff(Chunk("fmt ", Format(1, 2, 48000, 24)) + Chunk("bext", BroadcastExtension("Take 2", "Mixer", 172800000)) +
                 Chunk("iXML", ixml) + Chunk("chna", chna) + Chunk("axml", axml) + Chunk("dbmd", dbmd) +
                 Chunk("data", essence)));
  std::string read;
  RObject<CAudioProperties> source(ReadBack("source.wav", read));
  ASSERT_TRUE(source);
  ASSERT_EQ(read, essence);
  ASSERT_TRUE(source->ContainsExtension(CAdmProperties::TypeCode));

  const std::string file = Write("carried.wav", source, essence, [](CContainerWriter* writer) {
    writer->SetProperty(Settings::IncludeBroadcastExtension, true);
  });
  const size_t dataAt = file.find("data" + Le(essence.size(), 4));
  ASSERT_NE(dataAt, std::string::npos);
  for (const char* id : {"bext", "iXML", "chna", "axml", "dbmd"})
    EXPECT_LT(file.find(id), dataAt) << id << " before the essence";
  RObject<CAudioProperties> back(ReadBack("carried.wav", read));
  ASSERT_TRUE(back);
  EXPECT_EQ(read, essence);
  RObject<CMediaPropertiesExtension> timeCode(back->GetExtension(CAudioTimeCodeProperties::TypeCode));
  ASSERT_TRUE(timeCode);
  RObject<CString> text(static_cast<CAudioTimeCodeProperties*>(timeCode.Get())->GetTimeCode().ToString(':'));
  EXPECT_STREQ(text->GetChars(), "01:00:00:00");
  RObject<CMediaPropertiesExtension> adm(back->GetExtension(CAdmProperties::TypeCode));
  ASSERT_TRUE(adm);
  RObject<CAdmChannelAllocation> allocation(static_cast<CAdmProperties*>(adm.Get())->GetChannelAllocation());
  RObject<CByteArray> allocationBytes(allocation->GetDocument());
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(allocationBytes->GetData()), allocationBytes->GetLength()), chna);
  const size_t axmlAt = file.find("axml");
  ASSERT_NE(axmlAt, std::string::npos);
  const std::string written = file.substr(axmlAt + 8, file.find("dbmd") - axmlAt - 8);
  EXPECT_NE(written.find("<audioTrackUID UID=\"ATU_00000002\"/>"), std::string::npos) << written;
  RObject<CMediaPropertiesExtension> dolby(back->GetExtension(CDolbyAudioProperties::TypeCode));
  ASSERT_TRUE(dolby);
  RObject<CByteArray> dolbyBytes(static_cast<CDolbyAudioProperties*>(dolby.Get())->GetBytes());
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(dolbyBytes->GetData()), dolbyBytes->GetLength()), dbmd);

  // Without the broadcast extension the iXML stays out too; the ADM document
  // and the Dolby metadata describe the audio and still travel.
  const std::string plain = Write("plain-metadata.wav", source, essence);
  EXPECT_EQ(plain.find("bext"), std::string::npos);
  EXPECT_EQ(plain.find("iXML"), std::string::npos);
  EXPECT_NE(plain.find("chna"), std::string::npos);
  EXPECT_NE(plain.find("dbmd"), std::string::npos);

  // One channel left: the allocation names track 2, which the file lacks.
  RObject<CAudioProperties> mono(static_cast<CAudioProperties*>(CMediaProperties::Clone(source)));
  mono->SetChannels(1);
  const std::string single = Write("mono-metadata.wav", mono, essence.substr(0, 300));
  EXPECT_EQ(single.find("chna"), std::string::npos);
  EXPECT_EQ(single.find("axml"), std::string::npos);
  EXPECT_NE(single.find("dbmd"), std::string::npos);
}

TEST_F(WavWriterTest, RefusesFormatsItCannotWrite) {
  for (unsigned int format : {FourCC("twos"), FourCC("mp4a"), FourCC("in24")}) {
    RObject<CContainerWriter> writer(CContainerWriter::Create(
        RObject<CString>(CString::WithString(TempPath("refused.wav").c_str())), FourCC("wav ")));
    ASSERT_TRUE(writer);
    RObject<CAudioProperties> track(Description(format, 2, 48000));
    Result result = writer->AddAudioMedia(track);
    ASSERT_TRUE(result.Failed());
    const std::string details = result.GetDetails() ? result.GetDetails() : "";
    char code[5] = {static_cast<char>(format >> 24), static_cast<char>(format >> 16), static_cast<char>(format >> 8),
                    static_cast<char>(format), 0};
    EXPECT_NE(details.find(std::string("'") + code + "'"), std::string::npos) << details;
    EXPECT_NE(details.find("add an audio converter"), std::string::npos) << details;
    EXPECT_EQ(details.find('\n'), std::string::npos);
    EXPECT_TRUE(writer->BeginIndex().Failed());
  }
}

}  // namespace
