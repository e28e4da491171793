// Media descriptions: setter validation, the configuration rule, binary
// forms byte by byte, identity, and the descriptive form.
#include <gtest/gtest.h>

#include <cmath>

#include "System/Media/MediaTestSupport.h"
#include "System/ByteArray.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/PropertiesExtension.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Text.h"

using namespace Corvane::Mox;
using namespace MediaTest;

namespace {

class MediaPropertiesTest : public LeakCheckedTest {};

CVideoProperties* NewHd() {
  auto* p = new CVideoProperties();
  p->SetFormat(FourCC("I420"));
  p->SetWidth(1920);
  p->SetHeight(1080);
  p->SetFrameRate(Rational<int>(30000, 1001));
  p->SetFieldOrder(1);
  p->SetSubsampling(0x22);
  p->SetBitDepth(8);
  p->SetColorSpace(ColorSpace{1, 1, 1});
  p->SetVideoRange(1);
  return p;
}

TEST_F(MediaPropertiesTest, RefusedValuesLeaveTheDescriptionUnchanged) {
  RObject<CVideoProperties> p(NewHd());
  const unsigned int refused = ResultArgumentOutOfRange().GetType();
  EXPECT_EQ(p->SetWidth(131073).GetType(), refused);
  EXPECT_EQ(p->SetWidth(-1).GetType(), refused);
  EXPECT_EQ(p->GetWidth(), 1920);
  EXPECT_TRUE(p->SetWidth(131072).Succeeded());
  EXPECT_EQ(p->SetHeight(200000).GetType(), refused);
  EXPECT_EQ(p->SetFieldOrder(6).GetType(), refused);
  EXPECT_EQ(p->GetFieldOrder(), 1);
  EXPECT_EQ(p->SetPixelAspectRatio(Rational<int>(1, 0)).GetType(), refused);
  EXPECT_EQ(p->SetPixelAspectRatio(Rational<int>(-1, 1)).GetType(), refused);
  EXPECT_EQ(p->GetPixelAspectRatio(), Rational<int>(1, 1));
  EXPECT_EQ(p->SetCleanAperture(Rectangle<int>(0, -1, 0, 0)).GetType(), refused);
  EXPECT_EQ(p->SetOrientation(16).GetType(), refused);
  EXPECT_EQ(p->SetSubsampling(256).GetType(), refused);
  EXPECT_EQ(p->GetSubsampling(), 0x22);
  EXPECT_EQ(p->SetChromaSiting(6).GetType(), refused);
  EXPECT_EQ(p->SetAlphaChannel(3).GetType(), refused);
  EXPECT_EQ(p->SetTimeScale(-1).GetType(), refused);
  EXPECT_EQ(p->SetSampleDuration(0).GetType(), refused);
  EXPECT_EQ(p->SetMediaSampleRate(Rational<long long>(25, 0)).GetType(), refused);
  EXPECT_EQ(p->GetFrameRate(), Rational<long long>(30000, 1001));
  Result black = p->SetReferenceBlackLevel(-0.5f);
  EXPECT_EQ(black.GetType(), refused);
  EXPECT_STREQ(black.GetDetails(), "reference black level -0.50");
  EXPECT_EQ(p->SetReferenceLevels(Range<float>(101.0f, 50.0f)).GetType(), refused);
  EXPECT_EQ(p->GetReferenceLevels(), Range<float>(0.0f, 0.0f));

  RObject<CAudioProperties> a(new CAudioProperties());
  EXPECT_EQ(a->SetChannels(129).GetType(), refused);
  EXPECT_TRUE(a->SetChannels(128).Succeeded());
  EXPECT_EQ(a->SetBitsPerSample(65).GetType(), refused);
  EXPECT_EQ(a->SetFramesPerPacket(-1).GetType(), refused);
  EXPECT_EQ(a->SetSampleRate(-48000).GetType(), refused);
  EXPECT_EQ(a->SetChannelLabel(128, 1).GetType(), refused);
  int label = 9;
  EXPECT_EQ(a->GetChannelLabel(128, label).GetType(), refused);
  EXPECT_EQ(label, 9);
}

TEST_F(MediaPropertiesTest, FieldOrderFiveIsAcceptedAndPrintsUnknown) {
  RObject<CVideoProperties> p(NewHd());
  EXPECT_TRUE(p->SetFieldOrder(5).Succeeded());
  RObject<CProperties> bag(p->GetDescriptiveRepresentation());
  RObject<CString> order;
  ASSERT_TRUE(bag->GetProperty("field_order", order.Out()).Succeeded());
  EXPECT_STREQ(order->GetChars(), "unknown");
}

TEST_F(MediaPropertiesTest, AConfigurationWinsWhereItHasAValue) {
  RObject<CVideoProperties> p(new CVideoProperties());
  p->SetFormat(FourCC("ai56"));
  ASSERT_NE(p->GetConfiguration(), nullptr);
  EXPECT_TRUE(p->SetWidth(720).Succeeded());
  EXPECT_EQ(p->GetWidth(), 1440);
  EXPECT_EQ(p->GetPixelAspectRatio(), Rational<int>(4, 3));
  EXPECT_EQ(p->GetFrameRate(), Rational<long long>(30000, 1001));  // own time scale unset
  p->SetFrameRate(Rational<int>(25, 1));
  EXPECT_EQ(p->GetFrameRate(), Rational<long long>(25, 1));
  EXPECT_EQ(p->GetBitRate(), 50000000);
  p->SetBitRate(42);
  EXPECT_EQ(p->GetBitRate(), 42);
  // A format without a fixed frame rate leaves the description's own.
  p->SetFormat(FourCC("ai53"));
  EXPECT_EQ(p->GetFieldOrder(), 1);
  p->SetFormat(FourCC("I420"));
  EXPECT_EQ(p->GetConfiguration(), nullptr);
  EXPECT_EQ(p->GetWidth(), 720);
}

TEST_F(MediaPropertiesTest, VideoBinaryFormIs103BytesAfterTagAndSize) {
  RObject<CVideoProperties> p(NewHd());
  p->SetCleanAperture(Rectangle<int>(1, 2, 3, 4));
  p->SetReferenceLevels(Range<float>(6.25f, 100.0f));
  p->SetLanguage('e', 'n', 'g');
  p->SetChromaSiting(2);
  p->SetAlphaChannel(2);
  EXPECT_EQ(p->GetSize(), 103);
  Bytes bytes = Capture([&](CBinaryWriter* w) { return p->Write(w); });
  ASSERT_EQ(bytes.size(), 111u);
  Bytes head;
  PutFour(head, "vid ");
  Put32(head, 103);
  Put64(head, 30000);
  Put64(head, 1001);
  Put64(head, 0);
  PutFour(head, "I420");
  Put64(head, 0);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 44), head);
  // Language: 'e','n','g' as three 5-bit letters, little-endian.
  unsigned short eng = static_cast<unsigned short>((5 << 10) | (14 << 5) | 7);
  EXPECT_EQ(bytes[44], eng & 0xFF);
  EXPECT_EQ(bytes[45], eng >> 8);
  Bytes fields;
  for (int v : {1, 1920, 1080, 1, 1, 1, 2, 3, 4, 0, 0x22, 8}) Put32(fields, static_cast<unsigned int>(v));
  fields.push_back(1);  // matrix
  fields.push_back(1);  // primaries
  fields.push_back(1);  // transfer
  Put32(fields, 1);     // range
  unsigned int black = 0, white = 0;
  float b = 6.25f, wv = 100.0f;
  std::memcpy(&black, &b, 4);
  std::memcpy(&white, &wv, 4);
  Put32(fields, black);
  Put32(fields, white);
  EXPECT_EQ(Bytes(bytes.begin() + 48, bytes.end()), fields);

  RObject<CBinaryReader> reader(ReaderOver(bytes));
  RObject<CMediaProperties> back;
  ASSERT_TRUE(CMediaProperties::ReadProperties(reader.Get(), back.Out()).Succeeded());
  ASSERT_TRUE(back->IsType(FourCC("vid ")));
  auto* video = static_cast<CVideoProperties*>(back.Get());
  // Chroma siting and alpha are not in the binary form.
  EXPECT_EQ(video->GetChromaSiting(), 0);
  EXPECT_EQ(video->GetAlphaChannel(), 0);
  EXPECT_FALSE(video->Equals(p.Get()));
  p->SetChromaSiting(0);
  p->SetAlphaChannel(0);
  EXPECT_TRUE(video->Equals(p.Get()));
  EXPECT_EQ(video->GetHashCode(), p->GetHashCode());
  EXPECT_EQ(Capture([&](CBinaryWriter* w) { return back->Write(w); }), bytes);
}

TEST_F(MediaPropertiesTest, AudioBinaryFormGrowsSixteenBytesPerChannel) {
  RObject<CAudioProperties> p(new CAudioProperties());
  p->SetFormat(FourCC("sowt"));
  p->SetSampleRate(48000);
  p->SetSampleDuration(1);
  p->SetChannels(2);
  p->SetChannelLabel(0, 1);
  p->SetChannelLabel(1, 2);
  p->SetChannelProgram(0, 1);
  p->SetChannelProgram(1, 1);
  p->SetChannelCoding(1, FourCC("ac-3"));
  p->SetBitsPerSample(16);
  EXPECT_EQ(p->GetSize(), 60 + 16 * 2);
  Bytes bytes = Capture([&](CBinaryWriter* w) { return p->Write(w); });
  ASSERT_EQ(bytes.size(), 8u + 92u);
  Bytes channels;
  Put32(channels, 2);
  Put32(channels, 1);
  Put32(channels, 2);  // labels
  Put32(channels, 1);
  Put32(channels, 1);  // programs
  Put32(channels, 0);
  Put32(channels, 0);  // contents
  Put32(channels, 0);
  PutFour(channels, "ac-3");  // codings, big-endian characters
  Put32(channels, 16);
  Put32(channels, 0);
  Put32(channels, 0);
  Put32(channels, 0);
  EXPECT_EQ(Bytes(bytes.begin() + 48, bytes.end()), channels);
  RObject<CAudioProperties> back(new CAudioProperties());
  RObject<CBinaryReader> reader(ReaderOver(bytes));
  ASSERT_TRUE(back->Read(reader.Get()).Succeeded());
  EXPECT_TRUE(back->Equals(p.Get()));
  EXPECT_EQ(back->GetChannelCoding(1), FourCC("ac-3"));

  RObject<CAudioProperties> empty(new CAudioProperties());
  EXPECT_EQ(Capture([&](CBinaryWriter* w) { return empty->Write(w); }).size(), 68u);
}

TEST_F(MediaPropertiesTest, SubtitleFormIsTheCommonForty) {
  RObject<CSubtitleProperties> p(new CSubtitleProperties());
  p->SetFormat(FourCC("tx3g"));
  p->SetFrameRate(Rational<long long>(25, 1));
  p->SetDuration(250);
  Bytes bytes = Capture([&](CBinaryWriter* w) { return p->Write(w); });
  EXPECT_EQ(bytes.size(), 48u);
  RObject<CSubtitleProperties> back(new CSubtitleProperties());
  RObject<CBinaryReader> reader(ReaderOver(bytes));
  ASSERT_TRUE(back->Read(reader.Get()).Succeeded());
  EXPECT_TRUE(back->Equals(p.Get()));
  // Reading into the wrong class fails on the tag.
  RObject<CAudioProperties> audio(new CAudioProperties());
  reader = ReaderOver(bytes);
  EXPECT_EQ(audio->Read(reader.Get()).GetType(), ResultFormatError().GetType());
}

TEST_F(MediaPropertiesTest, DamagedFormsFailWithAResult) {
  RObject<CAudioProperties> p(new CAudioProperties());
  p->SetChannels(3);
  Bytes bytes = Capture([&](CBinaryWriter* w) { return p->Write(w); });
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    RObject<CBinaryReader> reader(ReaderOver(Bytes(bytes.begin(), bytes.begin() + static_cast<long>(cut))));
    RObject<CMediaProperties> back;
    EXPECT_TRUE(CMediaProperties::ReadProperties(reader.Get(), back.Out()).Failed()) << cut;
    EXPECT_EQ(back.Get(), nullptr);
  }
  Bytes tooMany = bytes;
  tooMany[48] = 200;  // 200 channels
  RObject<CBinaryReader> reader(ReaderOver(tooMany));
  RObject<CMediaProperties> back;
  EXPECT_EQ(CMediaProperties::ReadProperties(reader.Get(), back.Out()).GetType(), ResultFormatError().GetType());
  Bytes unknown = bytes;
  std::memcpy(unknown.data(), "xyz ", 4);
  reader = ReaderOver(unknown);
  EXPECT_TRUE(CMediaProperties::ReadProperties(reader.Get(), back.Out()).Failed());
}

TEST_F(MediaPropertiesTest, DescriptionsBuiltTwiceAreEqualAndHashAlike) {
  RObject<CVideoProperties> a(NewHd()), b(NewHd());
  EXPECT_TRUE(a->Equals(b.Get()));
  EXPECT_EQ(a->GetHashCode(), b->GetHashCode());
  b->SetWidth(1280);
  EXPECT_FALSE(a->Equals(b.Get()));
  EXPECT_NE(a->GetHashCode(), b->GetHashCode());
  // The frame rate hashes reduced: 60000/2002 is 30000/1001.
  b->SetWidth(1920);
  b->SetFrameRate(Rational<long long>(60000, 2002));
  EXPECT_EQ(a->GetHashCode(), b->GetHashCode());
  RObject<CAudioProperties> audio(new CAudioProperties());
  EXPECT_FALSE(a->Equals(audio.Get()));
  // A clone is equal, of the same class, and shares the extensions.
  RObject<CThumbnailProperties> thumbnails(new CThumbnailProperties(160, 90, 10));
  a->AddExtension(thumbnails.Get());
  a->SetProperty("H264Profile", 100);
  RObject<CMediaProperties> clone(CMediaProperties::Clone(a.Get()));
  ASSERT_TRUE(clone->IsType(FourCC("vid ")));
  EXPECT_TRUE(clone->Equals(a.Get()));
  EXPECT_TRUE(clone->ContainsExtension(FourCC("thmb")));
  EXPECT_TRUE(clone->ContainsProperty("H264Profile"));
  EXPECT_EQ(CMediaProperties::Clone(nullptr), nullptr);
}

TEST_F(MediaPropertiesTest, ExtensionsAreKeyedByTag) {
  RObject<CAudioProperties> p(new CAudioProperties());
  EXPECT_EQ(p->GetExtensionCount(), 0);
  EXPECT_EQ(p->GetExtensions(), nullptr);
  RObject<CByteArray> config(new CByteArray(reinterpret_cast<const unsigned char*>("\x12\x10"), 2));
  RObject<CDecoderBufferProperties> decoder(new CDecoderBufferProperties(config.Get()));
  p->AddExtension(decoder.Get());
  RObject<CDecoderBufferProperties> replacement(new CDecoderBufferProperties(nullptr));
  p->AddExtension(replacement.Get());
  EXPECT_EQ(p->GetExtensionCount(), 1);
  RObject<CMediaPropertiesExtension> found(p->GetExtension(FourCC("dspe")));
  EXPECT_EQ(found.Get(), replacement.Get());
  EXPECT_TRUE(p->RemoveExtension(FourCC("dspe")).Succeeded());
  EXPECT_EQ(p->RemoveExtension(FourCC("dspe")).GetType(), ResultFalse().GetType());
  EXPECT_FALSE(p->ContainsExtension(FourCC("dspe")));
}

TEST_F(MediaPropertiesTest, DescriptiveFormNamesTheFields) {
  RObject<CVideoProperties> p(NewHd());
  p->SetBitRate(8000000);
  p->SetDuration(30000 * 61);
  p->SetTimeScale(30000);
  RObject<CProperties> bag(p->GetDescriptiveRepresentation());
  RObject<CString> text;
  ASSERT_TRUE(bag->GetPropertyDescription("bit_rate", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "8.000 Mbit/s");
  ASSERT_TRUE(bag->GetPropertyDescription("sample_rate", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "29.970 fps");
  ASSERT_TRUE(bag->GetPropertyDescription("duration", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "00:01:01.000");
  ASSERT_TRUE(bag->GetPropertyDescription("chroma_subsampling", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "4:2:0");
  ASSERT_TRUE(bag->GetProperty("video_range", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "narrow");
  EXPECT_TRUE(bag->ContainsProperty("color_primaries"));
  p->SetColorSpace(ColorSpace{2, 2, 2});
  p->SetVideoRange(0);
  bag = p->GetDescriptiveRepresentation();
  EXPECT_FALSE(bag->ContainsProperty("color_primaries"));
  EXPECT_FALSE(bag->ContainsProperty("video_range"));

  RObject<CAudioProperties> audio(new CAudioProperties());
  audio->SetSampleRate(48000);
  audio->SetSampleDuration(1);
  audio->SetBitRate(192000);
  bag = audio->GetDescriptiveRepresentation();
  ASSERT_TRUE(bag->GetPropertyDescription("sample_rate", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "48.0 kHz");
  ASSERT_TRUE(bag->GetPropertyDescription("bit_rate", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "192.000 kbit/s");
}

TEST_F(MediaPropertiesTest, DerivedAudioLayoutWinsForUncompressedFormats) {
  RObject<CAudioProperties> p(new CAudioProperties());
  p->SetChannels(6);
  p->SetFormat(FourCC("sowt"));
  p->SetFramesPerPacket(0);
  p->SetBitsPerSample(24);
  EXPECT_EQ(p->GetFramesPerPacket(), 1);
  EXPECT_EQ(p->GetBitsPerSample(), 16);
  EXPECT_EQ(p->GetBytesPerFrame(), 12);
  EXPECT_EQ(p->GetBytesPerPacket(), 12);
  EXPECT_EQ(p->GetBytesPerSample(), 2);
  p->SetFormat(FourCC("in24"));
  EXPECT_EQ(p->GetBytesPerFrame(), 18);
  p->SetFormat(FourCC("mp4a"));
  p->SetBytesPerPacket(0);
  EXPECT_EQ(p->GetFramesPerPacket(), 1024);
  EXPECT_EQ(p->GetBitsPerSample(), 24);  // stored
  EXPECT_EQ(p->GetBytesPerSample(), 0);
  p->SetFormat(FourCC("ac-3"));
  EXPECT_EQ(p->GetFramesPerPacket(), 1536);
  EXPECT_EQ(p->GetBitsPerSample(), 16);
  p->SetFormat(FourCC("331m"));
  EXPECT_EQ(p->GetBytesPerSample(), 4);
  p->SetFormat(FourCC("zzzz"));
  p->SetFramesPerPacket(7);
  EXPECT_EQ(p->GetFramesPerPacket(), 7);
}

TEST_F(MediaPropertiesTest, SpeakerLabelsAndContentTypes) {
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(1), "L");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(4), "LFE");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(16), "Ltr");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(17), "");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(65536), "1");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(65536 + 23), "24");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(65536 + 24), "");
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(4096), "O");
  EXPECT_EQ(CAudioProperties::ParseSpeakerIdentifier("FL"), 1);
  EXPECT_EQ(CAudioProperties::ParseSpeakerIdentifier("Ctr"), 16);
  EXPECT_EQ(CAudioProperties::ParseSpeakerIdentifier("TBC"), 16);
  EXPECT_EQ(CAudioProperties::ParseSpeakerIdentifier("Trr"), 18);
  EXPECT_EQ(CAudioProperties::ParseSpeakerIdentifier("12"), 65536 + 11);
  EXPECT_EQ(CAudioProperties::ParseSpeakerIdentifier("nope"), 0);
  EXPECT_STREQ(CAudioProperties::GetContentType(1), "commentary");
  EXPECT_STREQ(CAudioProperties::GetContentType(10), "visually_impaired");
  EXPECT_STREQ(CAudioProperties::GetContentType(0), "");
  EXPECT_STREQ(CAudioProperties::GetContentType(11), "");
  EXPECT_EQ(CAudioProperties::GetChannelLayout(FourCC("2035"), FourCC("zzzz")), nullptr);
}

TEST_F(MediaPropertiesTest, LanguageAndRegionCodes) {
  char a, b, c;
  CMediaProperties::UnpackLanguageCode(CMediaProperties::PackLanguageCode('E', 'N', 'G'), a, b, c);
  EXPECT_EQ(std::string({a, b, c}), "eng");
  unsigned short ger = CMediaProperties::PackLanguageCode('g', 'e', 'r');
  EXPECT_EQ(CMediaProperties::ConvertToTerminologyCodeIfBibliographicCode(ger),
            CMediaProperties::PackLanguageCode('d', 'e', 'u'));
  EXPECT_STREQ(CMediaProperties::ConvertToBibliographicCodeIfTerminologyCode("fra"), "fre");
  EXPECT_STREQ(CMediaProperties::ConvertToBibliographicCodeIfTerminologyCode("eng"), "eng");
  EXPECT_STREQ(CMediaProperties::ConvertToAlpha3IfAlpha2("de"), "ger");
  EXPECT_STREQ(CMediaProperties::ConvertToAlpha3_TIfAlpha2("de"), "deu");
  EXPECT_STREQ(CMediaProperties::ConvertToAlpha3IfAlpha2("eng"), "eng");
  EXPECT_STREQ(CMediaProperties::ConvertAlpha3ToAlpha2("ger"), "de");
  EXPECT_EQ(CMediaProperties::ConvertAlpha3ToAlpha2("ace"), nullptr);  // no ISO 639-1 code
  EXPECT_STREQ(CMediaProperties::ConvertNameToAlpha2("French"), "fr");
  EXPECT_STREQ(CMediaProperties::ConvertRegionToAlpha3IfAlpha2("GB"), "GBR");
  EXPECT_STREQ(CMediaProperties::ConvertRegionAlpha3ToAlpha2("USA"), "US");
  RObject<CString> tag(CMediaProperties::ConvertToRfc5646(CMediaProperties::PackLanguageCode('e', 'n', 'g'),
                                                          CMediaProperties::PackRegionCode('g', 'b', 'r')));
  ASSERT_TRUE(tag);
  EXPECT_STREQ(tag->GetChars(), "en-GB");
  tag = CMediaProperties::ConvertToRfc5646(ger, 0);
  EXPECT_STREQ(tag->GetChars(), "de");
  EXPECT_EQ(CMediaProperties::ConvertToRfc5646(CMediaProperties::PackLanguageCode('a', 'c', 'e'), 0), nullptr);
  RObject<CString> time(CMediaProperties::MillisecondsToTime(3723004));
  EXPECT_STREQ(time->GetChars(), "01:02:03.004");
}

TEST_F(MediaPropertiesTest, DisplayAspectAndDefaultColour) {
  RObject<CVideoProperties> p(new CVideoProperties());
  p->SetWidth(720);
  p->SetHeight(576);
  p->SetPixelAspectRatio(Rational<int>(12, 11));
  p->SetCleanAperture(Rectangle<int>(8, 8, 0, 0));
  EXPECT_EQ(p->GetDisplayAspectRatio(), Rational<int>(4, 3));  // 704×12 : 576×11 reduced
  p->SetWidth(0);
  EXPECT_EQ(p->GetDisplayAspectRatio(), Rational<int>(0, 0));
  EXPECT_EQ(CVideoProperties::GetDefaultColorSpace(576), (ColorSpace{5, 5, 6}));
  EXPECT_EQ(CVideoProperties::GetDefaultColorSpace(2160), (ColorSpace{9, 9, 14}));
  EXPECT_EQ(CVideoProperties::GetDefaultColorSpace(1000), (ColorSpace{2, 2, 2}));
  // The instance form uses thresholds on the configuration's height.
  p->SetFormat(FourCC("ai15"));
  p->SetColorSpace(ColorSpace{2, 2, 2});
  EXPECT_EQ(p->GetColorSpace(), (ColorSpace{1, 1, 1}));  // the configuration's colour
  RObject<CVideoProperties> plain(new CVideoProperties());
  plain->SetTransferCharacteristics(16);
  EXPECT_EQ(plain->GetDefaultColorSpace(), (ColorSpace{6, 6, 16}));
}

TEST_F(MediaPropertiesTest, SampleLengthAndStrideFollowThePlaneLayout) {
  RObject<CVideoProperties> p(NewHd());
  EXPECT_EQ(p->GetStride(0), 1920);
  EXPECT_EQ(p->GetStride(1), 960);
  EXPECT_EQ(p->GetSampleLength(0), 1920 * 1080 * 3 / 2);
  EXPECT_EQ(p->GetSampleLength(2048), 2048 * 1080 + 2 * 1024 * 540);
  p->SetFormat(FourCC("avc1"));
  EXPECT_EQ(p->GetStride(0), 0);
  EXPECT_EQ(p->GetSampleLength(0), 0);
}

}  // namespace
