// Partial descriptions: matching with unspecified, specified and "anything
// except" fields, qualification, and the vocabularies of property names and
// extension types.
#include <gtest/gtest.h>

#include <cmath>

#include "System/Media/MediaTestSupport.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioConfiguration.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/MediaPropertyName.h"
#include "System/Media/PropertiesExtension.h"
#include "System/Media/Subtitle/SubtitleConfiguration.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoConfiguration.h"
#include "System/Media/Video/VideoProperties.h"

using namespace Corvane::Mox;

namespace {

class ConfigurationTest : public LeakCheckedTest {};

CVideoProperties* NewSd() {
  auto* p = new CVideoProperties();
  p->SetFormat(FourCC("UYVY"));
  p->SetWidth(720);
  p->SetHeight(486);
  p->SetBitDepth(8);
  p->SetSubsampling(0x21);
  p->SetFieldOrder(3);
  p->SetFrameRate(Rational<int>(30000, 1001));
  return p;
}

TEST_F(ConfigurationTest, UnspecifiedFieldsMatchAnything) {
  RObject<CVideoProperties> p(NewSd());
  VideoConfiguration any;
  EXPECT_TRUE(any.Matches(VideoConfiguration::Create(p.Get())));
  VideoConfiguration uyvy;
  uyvy.SetFormat(static_cast<int>(FourCC("UYVY")));
  uyvy.SetBitDepth(8);
  EXPECT_TRUE(uyvy.Matches(VideoConfiguration::Create(p.Get())));
  uyvy.SetBitDepth(10);
  EXPECT_FALSE(uyvy.Matches(VideoConfiguration::Create(p.Get())));
}

TEST_F(ConfigurationTest, NegatedFieldsMatchAnythingExceptTheirValue) {
  RObject<CVideoProperties> p(NewSd());
  VideoConfiguration notInterlacedLower;
  notInterlacedLower.SetFieldOrderExcept(3);
  EXPECT_LT(notInterlacedLower.GetFieldOrder(), 0);
  EXPECT_FALSE(notInterlacedLower.Matches(VideoConfiguration::Create(p.Get())));
  p->SetFieldOrder(1);
  EXPECT_TRUE(notInterlacedLower.Matches(VideoConfiguration::Create(p.Get())));
  VideoConfiguration notV210;
  notV210.SetFormatExcept(static_cast<int>(FourCC("v210")));
  EXPECT_TRUE(notV210.Matches(VideoConfiguration::Create(p.Get())));
}

TEST_F(ConfigurationTest, RatesMatchAsFractions) {
  RObject<CVideoProperties> p(NewSd());
  VideoConfiguration rate;
  rate.SetFrameRate(Rational<long long>(60000, 2002));
  EXPECT_TRUE(rate.Matches(VideoConfiguration::Create(p.Get())));
  rate.SetFrameRate(Rational<long long>(25, 1));
  EXPECT_FALSE(rate.Matches(VideoConfiguration::Create(p.Get())));
  VideoConfiguration levels;
  levels.SetReferenceLevels(Range<float>(0.0f, 100.0f));
  EXPECT_FALSE(levels.Matches(VideoConfiguration::Create(p.Get())));
}

TEST_F(ConfigurationTest, QualifyFillsTheOpenFieldsIncludingUnspecifiedColour) {
  RObject<CVideoProperties> p(NewSd());
  p->SetColorSpace(ColorSpace{6, 6, 6});
  p->SetVideoRange(1);
  p->SetPixelAspectRatio(Rational<int>(10, 11));
  VideoConfiguration output;
  output.SetFormat(static_cast<int>(FourCC("v210")));
  output.SetBitDepth(10);
  output.SetColorPrimaries(CVideoProperties::Unspecified);
  EXPECT_FALSE(output.IsQualified());
  VideoConfiguration full = output.Qualify(VideoConfiguration::Create(p.Get()));
  EXPECT_EQ(full.GetFormat(), static_cast<int>(FourCC("v210")));
  EXPECT_EQ(full.GetBitDepth(), 10);
  EXPECT_EQ(full.GetWidth(), 720);
  EXPECT_EQ(full.GetColorPrimaries(), 6);
  EXPECT_TRUE(full.IsQualified());
  RObject<CVideoProperties> made(new CVideoProperties());
  full.Apply(made.Get());
  EXPECT_EQ(made->GetFormat(), FourCC("v210"));
  EXPECT_EQ(made->GetHeight(), 486);
  EXPECT_EQ(made->GetFrameRate(), Rational<long long>(30000, 1001));
  EXPECT_TRUE(VideoConfiguration::Create(made.Get()) == full);
  EXPECT_FALSE(VideoConfiguration::Create(made.Get()) == output);
}

TEST_F(ConfigurationTest, ExtensionDataTravelsWithTheValue255) {
  VideoConfiguration source;
  source.SetVideoRange(255);
  source.SetVideoRangeExtension(ColorRange{64, 940});
  VideoConfiguration open;
  open.SetVideoRange(255);
  VideoConfiguration filled = open.Qualify(source);
  ASSERT_TRUE(filled.IsVideoRangeExtensionSpecified());
  EXPECT_EQ(filled.GetVideoRangeExtension().whiteLevel, 940);
  VideoConfiguration narrow;
  narrow.SetVideoRange(1);
  EXPECT_FALSE(narrow.Qualify(source).IsVideoRangeExtensionSpecified());
}

TEST_F(ConfigurationTest, AFullConfigurationNeverNegatesAField) {
  // A damaged binary form can carry a negative subsampling that no setter
  // would accept; the full configuration of it must still match itself.
  RObject<CVideoProperties> p(NewSd());
  MediaTest::Bytes bytes = MediaTest::Capture([&](CBinaryWriter* w) { return p->Write(w); });
  for (int i = 0; i < 4; ++i) bytes[88 + i] = 0xFF;  // subsampling −1
  RObject<CBinaryReader> reader(MediaTest::ReaderOver(bytes));
  RObject<CVideoProperties> damaged(new CVideoProperties());
  ASSERT_TRUE(damaged->Read(reader.Get()).Succeeded());
  EXPECT_EQ(damaged->GetSubsampling(), -1);
  VideoConfiguration full = VideoConfiguration::Create(damaged.Get());
  EXPECT_EQ(full.GetSubsampling(), 0);
  EXPECT_TRUE(full.Matches(full));
}

TEST_F(ConfigurationTest, LevelsThatAreNotNumbersStillMatchThemselves) {
  RObject<CVideoProperties> p(NewSd());
  p->SetReferenceWhiteLevel(std::nanf(""));
  VideoConfiguration full = VideoConfiguration::Create(p.Get());
  EXPECT_TRUE(full.Matches(full));
  EXPECT_TRUE(full == full);
  RObject<CMediaProperties> clone(CMediaProperties::Clone(p.Get()));
  EXPECT_TRUE(clone->Equals(p.Get()));
}

TEST_F(ConfigurationTest, ObjectFormsCompareAndMatchDescriptions) {
  RObject<CVideoProperties> p(NewSd());
  VideoConfiguration c;
  c.SetWidth(720);
  RObject<CVideoConfiguration> a(new CVideoConfiguration(c)), b(new CVideoConfiguration(c));
  EXPECT_TRUE(a->Equals(b.Get()));
  EXPECT_EQ(a->GetHashCode(), b->GetHashCode());
  EXPECT_TRUE(a->Matches(p.Get()));
  b->GetConfiguration().SetWidth(1280);
  EXPECT_FALSE(a->Equals(b.Get()));
  EXPECT_FALSE(b->Matches(p.Get()));
  EXPECT_FALSE(a->Matches(nullptr));
}

TEST_F(ConfigurationTest, AudioAndSubtitleConfigurations) {
  RObject<CAudioProperties> audio(new CAudioProperties());
  audio->SetFormat(FourCC("twos"));
  audio->SetSampleRate(48000);
  audio->SetChannels(2);
  AudioConfiguration anyPcm;
  anyPcm.format = static_cast<int>(FourCC("twos"));
  EXPECT_TRUE(anyPcm.Matches(AudioConfiguration::Create(audio.Get())));
  EXPECT_EQ(AudioConfiguration::Create(audio.Get()).bitsPerSample, 16);  // derived
  AudioConfiguration notStereo;
  notStereo.channels = ~2;
  EXPECT_FALSE(notStereo.Matches(AudioConfiguration::Create(audio.Get())));
  AudioConfiguration full = anyPcm.Qualify(AudioConfiguration::Create(audio.Get()));
  EXPECT_TRUE(full.IsQualified());
  EXPECT_FALSE(anyPcm.IsQualified());

  RObject<CSubtitleProperties> subtitle(new CSubtitleProperties());
  subtitle->SetFormat(FourCC("tx3g"));
  subtitle->SetTimeScale(1000);
  SubtitleConfiguration timed;
  timed.timeScale = 1000;
  RObject<CSubtitleConfiguration> object(new CSubtitleConfiguration(timed));
  EXPECT_TRUE(object->Matches(subtitle.Get()));
  subtitle->SetTimeScale(90000);
  EXPECT_FALSE(object->Matches(subtitle.Get()));
}

TEST_F(ConfigurationTest, MediaPropertyNamesAndExtensionTypes) {
  EXPECT_EQ(MediaPropertyName::GetCount(), 7 + 26 + 20 + 1);
  EXPECT_STREQ(MediaPropertyName::H264Profile.GetName(), "H264Profile");
  EXPECT_STREQ(MediaPropertyName::CaptionSource.GetName(), "CaptionSource");
  const MediaPropertyName::Entry* entry = MediaPropertyName::Find("WavLoudnessRange");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->group, MediaPropertyName::Audio);
  EXPECT_EQ(MediaPropertyName::Find("Nonsense"), nullptr);
  EXPECT_EQ(PropertiesExtensionType::GetCount(), 69);
  EXPECT_STREQ(PropertiesExtensionType::GetName(FourCC("dspe")), "Decoder Buffer");
  EXPECT_STREQ(PropertiesExtensionType::GetName(FourCC("cc  ")), "Closed Captions (CEA-608, CEA-708, ATSC A/65)");
  EXPECT_EQ(PropertiesExtensionType::GetName(FourCC("cc\0\0")), nullptr);
  EXPECT_EQ(PropertiesExtensionType::GetName(FourCC("zzzz")), nullptr);
  // The decode delay is read from the priming property.
  RObject<CAudioProperties> audio(new CAudioProperties());
  EXPECT_EQ(audio->GetDecodeDelay(), 0);
  audio->SetProperty(MediaPropertyName::PrimingSamples, 2112);
  EXPECT_EQ(audio->GetDecodeDelay(), 2112);
}

TEST_F(ConfigurationTest, ChannelCodingExtensionHoldsOnePerChannel) {
  RObject<CAudioChannelCodingProperties> coding(new CAudioChannelCodingProperties(2, 16));
  RObject<CDecoderBufferProperties> decoder(new CDecoderBufferProperties(nullptr));
  EXPECT_TRUE(coding->AddExtension(1, decoder.Get()).Succeeded());
  EXPECT_EQ(coding->AddExtension(2, decoder.Get()).GetType(), ResultArgumentOutOfRange().GetType());
  RObject<CMediaPropertiesExtension> found(coding->GetExtension(1));
  EXPECT_EQ(found.Get(), decoder.Get());
  EXPECT_EQ(coding->GetExtension(0), nullptr);
  RObject<CList<CMediaPropertiesExtension>> all(coding->GetExtensions());
  EXPECT_EQ(all->GetCount(), 2);
  RObject<CProperties> bag(coding->GetDescriptiveRepresentation());
  EXPECT_TRUE(bag->ContainsProperty("channels"));
}

}  // namespace
