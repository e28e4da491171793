// The WAVE format structure: the three layouts read from bytes as ffmpeg and
// the codecs write them, the codes they map to, the codec extensions, the
// round trip through Write, and descriptions in both directions.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AdpcmExtension.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/ImaAdpcmExtension.h"
#include "System/Media/Audio/WindowsAudioFormat.h"

using namespace Corvane::Mox;

namespace {

using Bytes = std::vector<unsigned char>;

void Put(Bytes& bytes, unsigned int value, int count) {
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<unsigned char>(value >> (8 * i)));
}

// WAVEFORMAT fields in file order.
Bytes Header(unsigned tag, unsigned channels, unsigned rate, unsigned bytesPerSecond, unsigned align, unsigned bits) {
  Bytes bytes;
  Put(bytes, tag, 2);
  Put(bytes, channels, 2);
  Put(bytes, rate, 4);
  Put(bytes, bytesPerSecond, 4);
  Put(bytes, align, 2);
  Put(bytes, bits, 2);
  return bytes;
}

// The extensible tail: cbSize 22, valid bits, mask, the sub-format GUID.
Bytes Extensible(Bytes bytes, unsigned valid, unsigned mask, unsigned subTag) {
  Put(bytes, 22, 2);
  Put(bytes, valid, 2);
  Put(bytes, mask, 4);
  Put(bytes, subTag, 2);
  const Bytes tail = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
  bytes.insert(bytes.end(), tail.begin(), tail.end());
  return bytes;
}

RObject<CWindowsAudioFormat> Parse(const Bytes& bytes) {
  RObject<CWindowsAudioFormat> format;
  Result result = CWindowsAudioFormat::Parse(bytes.data(), static_cast<int>(bytes.size()), format.Out());
  EXPECT_TRUE(result.Succeeded()) << result.GetErrorMessage();
  return format;
}

Bytes Written(const CWindowsAudioFormat* format) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream.Get()));
  EXPECT_TRUE(format->Write(writer.Get()).Succeeded());
  const unsigned char* data = stream->GetData();
  return Bytes(data, data + stream->GetLength());
}

class WindowsAudioFormatTest : public LeakCheckedTest {};

TEST_F(WindowsAudioFormatTest, PcmWidthsMapToTheirCodes) {
  const struct {
    unsigned tag;
    unsigned bits;
    const char* code;
  } cases[] = {{1, 8, "raw "},  {1, 16, "sowt"}, {1, 20, "02ni"}, {1, 24, "42ni"},
               {1, 32, "23ni"}, {3, 32, "23lf"}, {3, 64, "46lf"}};
  for (const auto& c : cases) {
    RObject<CWindowsAudioFormat> format(Parse(Header(c.tag, 2, 48000, 0, 0, c.bits)));
    unsigned int expected = 0;
    for (int i = 0; i < 4; ++i) expected = (expected << 8) | static_cast<unsigned char>(c.code[i]);
    EXPECT_EQ(format->GetAudioFormat(), expected) << c.code;
  }
  // A width without a code of its own has none.
  RObject<CWindowsAudioFormat> odd(Parse(Header(1, 1, 8000, 0, 2, 12)));
  EXPECT_EQ(odd->GetAudioFormat(), 0u);
}

TEST_F(WindowsAudioFormatTest, OtherTagsBecomeMicrosoftCodes) {
  RObject<CWindowsAudioFormat> alaw(Parse(Header(6, 1, 8000, 8000, 1, 8)));
  EXPECT_EQ(alaw->GetAudioFormat(), 0x6D730006u);
  RObject<CWindowsAudioFormat> g726(Parse(Header(0x45, 1, 8000, 4000, 1, 4)));
  EXPECT_EQ(g726->GetAudioFormat(), 0x6D730045u);
  EXPECT_EQ(g726->GetSize(), 18);  // a non-PCM structure always has cbSize
}

TEST_F(WindowsAudioFormatTest, ExtensibleReportsItsSubFormatAndMask) {
  Bytes bytes = Extensible(Header(0xFFFE, 6, 48000, 48000 * 18, 18, 24), 24, 0x3F, 1);
  RObject<CWindowsAudioFormat> format(Parse(bytes));
  EXPECT_TRUE(format->IsExtensible());
  EXPECT_EQ(format->GetFormatTag(), 0xFFFE);
  EXPECT_EQ(format->GetFormat(), 1);
  EXPECT_EQ(format->GetAudioFormat(), FourCC("42ni"));
  EXPECT_EQ(format->GetChannelMask(), 0x3Fu);
  EXPECT_EQ(format->GetSize(), 40);
  EXPECT_EQ(Written(format.Get()), bytes);

  RObject<CAudioProperties> properties(new CAudioProperties());
  ASSERT_TRUE(format->GetProperties(properties.Get()).Succeeded());
  EXPECT_EQ(properties->GetChannels(), 6);
  EXPECT_EQ(properties->GetSampleRate(), 48000);
  EXPECT_EQ(properties->GetBitRate(), 48000 * 18 * 8);
  for (int channel = 0; channel < 6; ++channel) EXPECT_EQ(properties->GetChannelLabel(channel), channel + 1);
}

TEST_F(WindowsAudioFormatTest, MaskBitsGoToChannelsInOrder) {
  // FL, FR, BL, BR: the labels skip C and LFE.
  RObject<CWindowsAudioFormat> format(Parse(Extensible(Header(0xFFFE, 4, 44100, 0, 8, 16), 16, 0x33, 1)));
  RObject<CAudioProperties> properties(new CAudioProperties());
  ASSERT_TRUE(format->GetProperties(properties.Get()).Succeeded());
  EXPECT_EQ(properties->GetChannelLabel(0), 1);
  EXPECT_EQ(properties->GetChannelLabel(1), 2);
  EXPECT_EQ(properties->GetChannelLabel(2), 5);
  EXPECT_EQ(properties->GetChannelLabel(3), 6);
  EXPECT_EQ(CWindowsAudioFormat::GetChannelMask(properties.Get()), 0x33u);
}

TEST_F(WindowsAudioFormatTest, AdpcmExtensionCarriesTheCoefficients) {
  // ffmpeg's adpcm_ms header: 2 channels, 1024-byte blocks, the 7 standard pairs.
  Bytes bytes = Header(2, 2, 44100, 44359, 1024, 4);
  const short pairs[7][2] = {{256, 0}, {512, -256}, {0, 0}, {192, 64}, {240, 0}, {460, -208}, {392, -232}};
  Put(bytes, 32, 2);
  Put(bytes, 1012, 2);
  Put(bytes, 7, 2);
  for (const auto& pair : pairs) {
    Put(bytes, static_cast<unsigned short>(pair[0]), 2);
    Put(bytes, static_cast<unsigned short>(pair[1]), 2);
  }
  RObject<CWindowsAudioFormat> format(Parse(bytes));
  EXPECT_EQ(format->GetAudioFormat(), 0x6D730002u);
  RObject<CObject> extension(format->GetExtension());
  ASSERT_TRUE(extension);
  ASSERT_TRUE(extension->IsType(CAdpcmExtension::TypeCode));
  auto* adpcm = static_cast<CAdpcmExtension*>(extension.Get());
  EXPECT_EQ(adpcm->GetSamplesPerBlock(), 1012);
  ASSERT_EQ(adpcm->GetPredictorCount(), 7);
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(adpcm->GetCoefficient1(i), pairs[i][0]);
    EXPECT_EQ(adpcm->GetCoefficient2(i), pairs[i][1]);
  }
  EXPECT_EQ(adpcm->GetCoefficient1(7), 0);
  RObject<CAudioProperties> properties(new CAudioProperties());
  ASSERT_TRUE(format->GetProperties(properties.Get()).Succeeded());
  EXPECT_EQ(properties->GetFramesPerPacket(), 1012);
  EXPECT_EQ(properties->GetBytesPerPacket(), 1024);
  EXPECT_EQ(Written(format.Get()), bytes);
}

TEST_F(WindowsAudioFormatTest, ImaExtensionAndLyingCounts) {
  Bytes ima = Header(0x11, 1, 22050, 11100, 512, 4);
  Put(ima, 2, 2);
  Put(ima, 1017, 2);
  RObject<CWindowsAudioFormat> format(Parse(ima));
  RObject<CObject> extension(format->GetExtension());
  ASSERT_TRUE(extension && extension->IsType(CImaAdpcmExtension::TypeCode));
  EXPECT_EQ(static_cast<CImaAdpcmExtension*>(extension.Get())->GetSamplesPerBlock(), 1017);

  // cbSize and wNumCoef both claim more than there is: only what the
  // structure holds is used.
  Bytes lying = Header(2, 1, 8000, 4096, 256, 4);
  Put(lying, 60000, 2);
  Put(lying, 500, 2);
  Put(lying, 1000, 2);
  Put(lying, 256, 2);
  Put(lying, 0, 2);
  RObject<CWindowsAudioFormat> damaged(Parse(lying));
  EXPECT_EQ(damaged->GetExtraByteCount(), 8);
  RObject<CObject> partial(damaged->GetExtension());
  ASSERT_TRUE(partial);
  EXPECT_EQ(static_cast<CAdpcmExtension*>(partial.Get())->GetPredictorCount(), 1);
}

TEST_F(WindowsAudioFormatTest, Gsm610BlocksHoldTheirSamplesPerBlock) {
  Bytes gsm = Header(0x31, 1, 8000, 1625, 65, 0);
  Put(gsm, 2, 2);
  Put(gsm, 320, 2);
  RObject<CWindowsAudioFormat> format(Parse(gsm));
  RObject<CAudioProperties> properties(new CAudioProperties());
  ASSERT_TRUE(format->GetProperties(properties.Get()).Succeeded());
  EXPECT_EQ(properties->GetFramesPerPacket(), 320);
  EXPECT_EQ(properties->GetBytesPerPacket(), 65);
}

TEST_F(WindowsAudioFormatTest, ShortInputFails) {
  RObject<CWindowsAudioFormat> format;
  const Bytes bytes = Header(1, 2, 44100, 0, 4, 16);
  EXPECT_TRUE(CWindowsAudioFormat::Parse(bytes.data(), 12, format.Out()).Failed());
  EXPECT_FALSE(format);
  // Claims 40 bytes but holds 16: the read past the end fails.
  RObject<CMemoryStream> stream(new CMemoryStream(16, const_cast<unsigned char*>(bytes.data())));
  RObject<CBinaryReader> reader(new CBinaryReader(stream.Get()));
  RObject<CWindowsAudioFormat> fresh(new CWindowsAudioFormat());
  EXPECT_TRUE(fresh->Read(reader.Get(), 40).Failed());
}

TEST_F(WindowsAudioFormatTest, DescriptionsBecomeStructures) {
  RObject<CAudioProperties> properties(new CAudioProperties());
  properties->SetFormat(FourCC("42ni"));
  properties->SetChannels(2);
  properties->SetSampleRate(48000);
  RObject<CWindowsAudioFormat> format(new CWindowsAudioFormat());
  ASSERT_TRUE(format->SetProperties(properties.Get(), false).Succeeded());
  EXPECT_EQ(Written(format.Get()), Header(1, 2, 48000, 288000, 6, 24));

  // 5.1 labelled: the extensible form with the 5.1 mask.
  properties->SetChannels(6);
  for (int channel = 0; channel < 6; ++channel) properties->SetChannelLabel(channel, channel + 1);
  properties->SetFormat(FourCC("23lf"));
  ASSERT_TRUE(format->SetProperties(properties.Get(), true).Succeeded());
  EXPECT_EQ(Written(format.Get()), Extensible(Header(0xFFFE, 6, 48000, 48000 * 24, 24, 32), 32, 0x3F, 3));

  // 20-bit samples need the extensible form to say 20 valid bits in 24.
  properties->SetFormat(FourCC("02ni"));
  ASSERT_TRUE(format->SetProperties(properties.Get(), false).Succeeded());
  EXPECT_TRUE(format->IsExtensible());
  EXPECT_EQ(format->GetValidBitsPerSample(), 20);
  EXPECT_EQ(format->GetBlockAlignment(), 18);

  properties->SetFormat(FourCC("alaw"));
  ASSERT_TRUE(format->SetProperties(properties.Get(), false).Succeeded());
  EXPECT_EQ(format->GetAudioFormat(), 0x6D730006u);

  properties->SetFormat(FourCC("twos"));
  EXPECT_TRUE(format->SetProperties(properties.Get(), false).Failed());
}

TEST_F(WindowsAudioFormatTest, LabelsWithoutAMaskGiveNone) {
  RObject<CAudioProperties> properties(new CAudioProperties());
  properties->SetChannels(2);
  EXPECT_EQ(CWindowsAudioFormat::GetChannelMask(properties.Get()), 0u);  // unlabelled
  properties->SetChannelLabel(0, 1);
  properties->SetChannelLabel(1, 1);
  EXPECT_EQ(CWindowsAudioFormat::GetChannelMask(properties.Get()), 0u);  // repeated
  properties->SetChannelLabel(0, 2);
  EXPECT_EQ(CWindowsAudioFormat::GetChannelMask(properties.Get()), 0u);  // out of mask order
}

}  // namespace
