// The decompressor filters: negotiation (what they accept and describe) and
// one decoded sample through the filter protocol.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "System/ByteArray.h"
#include "System/Collections/Value.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/G711Decompressor.h"
#include "System/Media/Filter/AudioDecompressors/G726Decompressor.h"
#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecompressor.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/PropertiesExtension.h"

using namespace Corvane::Mox;

namespace {

using Bytes = std::vector<unsigned char>;

CAudioSample* SampleOver(const Bytes& bytes, long long frames) {
  RObject<CBufferDataReference> data(new CBufferDataReference(static_cast<int>(bytes.size())));
  std::memcpy(data->GetData(), bytes.data(), bytes.size());
  auto* sample = new CAudioSample(frames);
  sample->SetDataReference(data);
  return sample;
}

std::vector<short> ShortsOf(const CMediaSample* sample) {
  RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
  std::vector<short> values(static_cast<size_t>(data->GetLength()) / 2);
  std::memcpy(values.data(), data->GetData(), values.size() * 2);
  return values;
}

// The description a WAV reader gives an IMA ADPCM stream of 9-frame blocks.
CAudioProperties* ImaDescription() {
  RObject<CWindowsAudioFormat> format(new CWindowsAudioFormat());
  format->SetFormatTag(0x11);
  format->SetChannels(1);
  format->SetSamplesPerSecond(8000);
  format->SetBlockAlignment(8);
  format->SetBitsPerSample(4);
  const unsigned char extra[] = {9, 0};
  format->SetExtraBytes(extra, 2);
  auto* properties = new CAudioProperties();
  properties->SetFormat(0x6D730011u);
  properties->SetChannels(1);
  properties->SetSampleRate(8000);
  properties->SetBytesPerPacket(8);
  properties->SetFramesPerPacket(9);
  RObject<CByteArray> bytes(format->ToByteArray());
  RObject<CDecoderBufferProperties> buffer(new CDecoderBufferProperties(bytes));
  properties->AddExtension(buffer);
  return properties;
}

}  // namespace

TEST(PcmDecompressor, DescribesSixteenBitPcmWithoutTheCodecConfiguration) {
  CImaAdpcmDecompressor filter;
  RObject<CAudioProperties> input(ImaDescription());
  EXPECT_EQ(filter.Evaluate(input.Get()), CMediaFilter::Acceptable);
  filter.AddInputMedia(input);
  RObject<CAudioProperties> output(static_cast<CAudioProperties*>(filter.GetOutputMedia(0)));
  ASSERT_TRUE(output);
  EXPECT_EQ(output->GetFormat(), FourCC("sowt"));
  EXPECT_EQ(output->GetBitsPerSample(), 16);
  EXPECT_EQ(output->GetChannels(), 1);
  EXPECT_EQ(output->GetSampleRate(), 8000);
  EXPECT_FALSE(output->ContainsExtension(CDecoderBufferProperties::TypeCode));

  RObject<CAudioProperties> pcm(new CAudioProperties());
  pcm->SetFormat(FourCC("sowt"));
  EXPECT_EQ(filter.Evaluate(pcm.Get()), 0);
}

TEST(PcmDecompressor, DecodesOneBlockPerSampleAndKeepsTheSampleTimes) {
  CImaAdpcmDecompressor filter;
  RObject<CAudioProperties> input(ImaDescription());
  filter.AddInputMedia(input);
  ASSERT_TRUE(filter.Begin().Succeeded());
  // Header: sample 100, index 0; then codes 4 (+7+0... ) and 0.
  RObject<CAudioSample> block(SampleOver({100, 0, 0, 0, 0x04, 0x00, 0x00, 0x00}, 9));
  block->SetTime(18);
  filter.WriteSample(block);
  CAudioSample* out = nullptr;
  filter.ReadSample(out);
  RObject<CAudioSample> decoded(out);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->GetDuration(), 9);
  EXPECT_EQ(decoded->GetTime(), 18);
  const std::vector<short> values = ShortsOf(decoded);
  ASSERT_EQ(values.size(), 9u);
  EXPECT_EQ(values[0], 100);
  EXPECT_EQ(values[1], 107);  // step 7: 7/8 + 7
}

TEST(PcmDecompressor, ReaderDurationShortensTheLastBlock) {
  CImaAdpcmDecompressor filter;
  RObject<CAudioProperties> input(ImaDescription());
  filter.AddInputMedia(input);
  ASSERT_TRUE(filter.Begin().Succeeded());
  RObject<CAudioSample> block(SampleOver({0, 0, 0, 0, 0x11, 0x11, 0x11, 0x11}, 5));
  filter.WriteSample(block);
  CAudioSample* out = nullptr;
  filter.ReadSample(out);
  RObject<CAudioSample> decoded(out);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->GetDuration(), 5);
  EXPECT_EQ(ShortsOf(decoded).size(), 5u);
}

TEST(PcmDecompressor, G726TakesItsCodeWidthFromTheDescription) {
  CG726Decompressor filter;
  RObject<CAudioProperties> input(new CAudioProperties());
  input->SetFormat(FourCC("g726"));
  input->SetChannels(1);
  input->SetSampleRate(8000);
  input->SetBitRate(24000);  // 3 bits per code
  filter.AddInputMedia(input);
  ASSERT_TRUE(filter.Begin().Succeeded());
  EXPECT_EQ(filter.GetBitsPerCode(), 3);
  RObject<CAudioSample> codes(SampleOver(Bytes(30, 0x5A), 0));
  filter.WriteSample(codes);
  CAudioSample* out = nullptr;
  filter.ReadSample(out);
  RObject<CAudioSample> decoded(out);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->GetDuration(), 80);
}

TEST(PcmDecompressor, QuickTimeG711IsMuLaw) {
  CG711Decompressor filter;
  RObject<CAudioProperties> input(new CAudioProperties());
  input->SetFormat(FourCC("g711"));
  input->SetChannels(2);
  input->SetSampleRate(8000);
  filter.AddInputMedia(input);
  ASSERT_TRUE(filter.Begin().Succeeded());
  RObject<CAudioSample> codes(SampleOver({0xFF, 0x00, 0x80}, 0));  // the odd byte is not a whole frame
  filter.WriteSample(codes);
  CAudioSample* out = nullptr;
  filter.ReadSample(out);
  RObject<CAudioSample> decoded(out);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->GetDuration(), 1);
  EXPECT_EQ(ShortsOf(decoded), (std::vector<short>{0, -32124}));
}
