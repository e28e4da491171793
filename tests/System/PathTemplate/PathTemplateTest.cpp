#include <gtest/gtest.h>

#include <string>

#include "System/Guid.h"
#include "System/PathTemplate/AtsPathTemplate.h"
#include "System/PathTemplate/CmafLivePathTemplate.h"
#include "System/PathTemplate/DashPathTemplate.h"
#include "System/PathTemplate/HlsPathTemplate.h"
#include "System/PathTemplate/MssPathTemplate.h"
#include "System/PathTemplate/PathTemplateTestSupport.h"
#include "System/Properties.h"
#include "System/Variant.h"
#include "System/VariantArray.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::PathTemplateTesting;

namespace {

class PathTemplateTest : public LeakCheckedTest {};

std::string Take(CString* s) {
  if (!s) return "<null>";
  std::string text = s->GetChars();
  s->Release();
  return text;
}

TEST_F(PathTemplateTest, SegmentNamesWithAndWithoutASegment) {
  RObject<Context> context(new Context());
  context->SetContainer("v1");
  context->SetExtension("ts");
  const char* text = "$container$/segment$_segment$.$extension$";
  EXPECT_EQ(Resolve(text, context), "v1/segment.ts");
  context->SetSegmentIndex(7);
  EXPECT_EQ(Resolve(text, context), "v1/segment_7.ts");
  context->SetSegmentIndex(123);
  EXPECT_EQ(Resolve("segment_$segment:%05d$.ts", context), "segment_00123.ts");
  // The segment variable replaces the index (a DASH $Number$ placeholder, say).
  context->SetSegmentVariable("$Number$");
  EXPECT_EQ(Resolve(text, context), "v1/segment_$Number$.ts");
}

TEST_F(PathTemplateTest, FormatsApplyToIntegersOfBothWidths) {
  RObject<Context> context(new Context());
  context->SetDirectoryIndex(3);
  EXPECT_EQ(Resolve("$directory:/dir%d$", context), "/dir3");
  context->SetPresentationTime(90000000000LL);
  EXPECT_EQ(Resolve("t$time:%012d$", context), "t090000000000");
  EXPECT_EQ(Resolve("t$-time$", context), "t-90000000000");
  context->SetTrackIndex(255);
  EXPECT_EQ(Resolve("track$track:%02x$", context), "trackff");
  // A format that is not one integer conversion leaves the plain value.
  EXPECT_EQ(Resolve("track$track:%s$", context), "track255");
  EXPECT_EQ(Resolve("track$track:%d%d$", context), "track255");
  EXPECT_EQ(Resolve("track$track:%999d$", context), "track255");
  context->SetPresentationVariable("$Time$");
  EXPECT_EQ(Resolve("t$-time$", context), "t-$Time$");
}

TEST_F(PathTemplateTest, PrefixAndSuffixAppearOnlyWithAValue) {
  RObject<Context> context(new Context());
  context->SetContainer("v1");
  EXPECT_EQ(Resolve("$session/$$container$$_init$$.title$$ title$", context), "v1");
  context->SetSession("live");
  context->SetInitialization("init");
  context->SetTitle("Show");
  EXPECT_EQ(Resolve("$session/$$container$$_init$$.title$$ title$", context), "live/v1_init.Show Show");
  EXPECT_EQ(Resolve("$title-$$title_$$title.$$title $", context), "Show-Show_Show.Show ");
}

TEST_F(PathTemplateTest, BitRatesRoundToKilobitsAndMegabits) {
  RObject<Context> context(new Context());
  context->AddVideo(Video(FourCC("avc1"), 1499999, 1280, 720));
  EXPECT_EQ(Resolve("$kbps$", context), "1500");
  EXPECT_EQ(Resolve("$bps$ $mbps$", context), "1499999 1");
  // The rates of all media of the file add up.
  context->AddAudio(Audio(FourCC("mp4a"), 1000001, "eng", 2));
  EXPECT_EQ(Resolve("$kbps$ $mbps$", context), "2500 3");
  RObject<Context> none(new Context());
  EXPECT_EQ(Resolve("a$_kbps$", none), "a");
}

TEST_F(PathTemplateTest, TextTokensAndIdentifiers) {
  RObject<Context> context(new Context());
  context->SetPackage("pkg");
  context->SetEncryptionKeyIdentifier("0123456789abcdef");
  context->SetPlaylistName("index.m3u8");
  context->SetMediaType("video");
  context->SetData("extra");
  context->SetGuid(Guid(0x12345678, 0x9abc, 0xdef0, 1, 2, 3, 4, 5, 6, 7, 8));
  EXPECT_EQ(Resolve("$package$_$kid$.bin", context), "pkg_0123456789abcdef.bin");
  EXPECT_EQ(Resolve("$media$/$playlist_name$", context), "video/index.m3u8");
  EXPECT_EQ(Resolve("$data$-$uuid$", context), "extra-12345678-9abc-def0-0102-030405060708");
  context->SetPackage(static_cast<const char*>(nullptr));
  EXPECT_EQ(Resolve("[$package$]", context), "[]");
}

TEST_F(PathTemplateTest, MediaTokensComeFromTheDescriptions) {
  RObject<Context> context(new Context());
  Context::MediaInfo video = Video(FourCC("hvc1"), 4000000, 1920, 1080);
  video.pid = 0x101;
  context->AddVideo(video);
  Context::MediaInfo audio = Audio(FourCC("ec-3"), 384000, "ger", 6);
  audio.region = Pack("deu");
  audio.channelLabels = {1, 2, 3, 4, 5, 6};
  context->AddAudio(audio);
  context->AddSubtitle(Audio(FourCC("wvtt"), 0, "fra", 0));
  EXPECT_EQ(Resolve("$format$ $video_format$ $audio_format$ $subtitle_format$", context), "hevc hevc eac3 webvtt");
  EXPECT_EQ(Resolve("$width$x$height$ $channels$ch $layout$ pid$pid$", context), "1920x1080 6ch 51 pid257");
  EXPECT_EQ(Resolve("$language$ $LANGUAGE$ $language3$ $LANGUAGE3$", context), "de DE ger GER");
  EXPECT_EQ(Resolve("$region$ $REGION$ $region3$ $REGION3$", context), "de DE deu DEU");
  EXPECT_FALSE(context->IsVideoOnly());
  EXPECT_EQ(context->GetPid(), 0x101);
  EXPECT_EQ(Take(context->GetSubtitleFormat()), "webvtt");
}

TEST_F(PathTemplateTest, ChannelLayoutsCountMainAndLowFrequencyChannels) {
  Context::MediaInfo stereo = Audio(FourCC("mp4a"), 0, nullptr, 2);
  EXPECT_EQ(Take(Context::GetChannelLayout(stereo)), "20");
  Context::MediaInfo surround = Audio(FourCC("mp4a"), 0, nullptr, 8);
  EXPECT_EQ(Take(Context::GetChannelLayout(surround)), "71");
  surround.channelLabels = {1, 2, 3, 4, 5, 6, 68, 9};
  EXPECT_EQ(Take(Context::GetChannelLayout(surround)), "62");
  Context::MediaInfo silent;
  EXPECT_EQ(Take(Context::GetChannelLayout(silent)), "<null>");
}

TEST_F(PathTemplateTest, NowAndDateAreCurrentUtcTimes) {
  RObject<Context> context(new Context());
  std::string now = Resolve("$now$", context);
  std::string date = Resolve("$date$", context);
  RObject<CString> nowText(new CString(now.c_str()));
  RObject<CString> dateText(new CString(date.c_str()));
  EXPECT_TRUE(nowText->Matches(R"(\d{8}T\d{6}(\.\d+)?Z)")) << now;
  EXPECT_TRUE(dateText->Matches(R"(\d{4}-\d{2}-\d{2}T\d{2}:\d{2}:\d{2}(\.\d+)?Z)")) << date;
}

TEST_F(PathTemplateTest, SelectTemplateFollowsTheKindsOfMedia) {
  RObject<CPathTemplate> pathTemplate(new CPathTemplate());
  RObject<Context> context(new Context());
  RObject<CString> selected;
  Result missing = pathTemplate->SelectTemplate(context, selected.Out());
  EXPECT_EQ(missing.GetType(), ResultError().GetType());
  EXPECT_EQ(std::string(missing.GetDetails()), "CPathTemplate::SelectTemplate: path template not found");

  pathTemplate->SetMedia("m");
  pathTemplate->SetVideo("v");
  pathTemplate->SetAudio("a");
  pathTemplate->SetSubtitle("s");
  EXPECT_EQ(Take(pathTemplate->GetMediaFileName(context)), "m");
  context->AddVideo(Video(FourCC("avc1"), 0, 0, 0));
  EXPECT_EQ(Take(pathTemplate->GetMediaFileName(context)), "v");
  context->AddAudio(Audio(FourCC("mp4a"), 0, nullptr, 2));
  EXPECT_EQ(Take(pathTemplate->GetMediaFileName(context)), "m");
  RObject<Context> audioOnly(new Context());
  audioOnly->AddAudio(Audio(FourCC("mp4a"), 0, nullptr, 2));
  EXPECT_EQ(Take(pathTemplate->GetMediaFileName(audioOnly)), "a");
  RObject<Context> subtitleOnly(new Context());
  subtitleOnly->AddSubtitle(Audio(FourCC("wvtt"), 0, nullptr, 0));
  RObject<CString> name;
  ASSERT_TRUE(pathTemplate->GetMediaFileName(name.Out(), subtitleOnly).Succeeded());
  EXPECT_EQ(std::string(name->GetChars()), "s");
}

TEST_F(PathTemplateTest, ResolveFailuresNameTheirCause) {
  RObject<CPathTemplate> pathTemplate(new CPathTemplate());
  RObject<Context> context(new Context());
  RObject<CString> out;
  Result missing = pathTemplate->Resolve(context, nullptr, out.Out());
  EXPECT_EQ(std::string(missing.GetDetails()), "CPathTemplate::Resolve: missing path template");
  RObject<CString> empty(new CString(""));
  Result nothing = pathTemplate->Resolve(context, empty, out.Out());
  EXPECT_EQ(std::string(nothing.GetDetails()), "CPathTemplate::Resolve: error evaluating path template");
  RObject<CString> bad(new CString("$foo$"));
  EXPECT_THROW(pathTemplate->Resolve(context, bad, out.Out()), Result);
}

TEST_F(PathTemplateTest, PackageKindsResolveTheirDefaults) {
  RObject<Context> context(new Context());
  context->SetPackage("show");
  context->SetContainer("v1");
  context->SetExtension("m4s");
  context->SetSegmentIndex(12);
  context->SetSession("s1");
  context->SetPlaylistName("index.m3u8");
  context->SetEncryptionKeyIdentifier("kid1");
  context->AddVideo(Video(FourCC("avc1"), 2000000, 1280, 720));
  RObject<CString> out;

  RObject<CHlsPathTemplate> hls(new CHlsPathTemplate());
  ASSERT_TRUE(hls->Verify().Succeeded());
  EXPECT_EQ(Take(hls->GetMediaFileName(context)), "v1/segment_12.m4s");
  hls->GetManifest(out.Out(), context);
  EXPECT_EQ(std::string(out->GetChars()), "show.m3u8");
  hls->GetPlaylist(out.Out(), context);
  EXPECT_EQ(std::string(out->GetChars()), "v1/index.m3u8");
  hls->GetKey(out.Out(), context);
  EXPECT_EQ(std::string(out->GetChars()), "show_kid1.bin");

  RObject<CDashPathTemplate> dash(new CDashPathTemplate());
  EXPECT_EQ(Take(dash->GetMediaFileName(context)), "v1/segment12.m4s");
  dash->GetPresentation(out.Out(), context);
  EXPECT_EQ(std::string(out->GetChars()), "show.mpd");

  RObject<CAtsPathTemplate> ats(new CAtsPathTemplate());
  EXPECT_EQ(Take(ats->GetMediaFileName(context)), "v1.ts");

  RObject<CCmafLivePathTemplate> live(new CCmafLivePathTemplate());
  ASSERT_TRUE(live->Verify().Succeeded());
  context->SetDirectoryIndex(2);
  EXPECT_EQ(Take(live->GetMediaFileName(context)), "s1/v1/Video/2000/dir2/segment-12.m4s");
  context->SetMediaType("video");
  live->GetPlaylist(out.Out(), context);
  EXPECT_EQ(std::string(out->GetChars()), "s1/v1/video/2000/index.m3u8");

  RObject<Context> audio(new Context());
  audio->SetPackage("show");
  audio->AddAudio(Audio(FourCC("mp4a"), 128000, "eng", 2));
  RObject<CMssPathTemplate> mss(new CMssPathTemplate());
  EXPECT_EQ(Take(mss->GetMediaFileName(audio)), "show_a128_eng.isma");
  mss->GetServer(out.Out(), audio);
  EXPECT_EQ(std::string(out->GetChars()), "show.ism");
  mss->Clear();
  EXPECT_EQ(mss->GetClient(out.Out(), audio).GetType(), ResultError().GetType());
}

TEST_F(PathTemplateTest, TemplatesComeFromPropertyArrays) {
  RObject<CVariantArray> array(new CVariantArray(3));
  const char* entries[][2] = {{"manifest", "$package$/main.m3u8"}, {"media", "$package$/$segment$.ts"}, {"bogus", "x"}};
  for (int i = 0; i < 3; ++i) {
    RObject<CProperties> entry(new CProperties());
    entry->SetProperty(PropertyName("Name"), entries[i][0]);
    entry->SetProperty(PropertyName("Path"), entries[i][1]);
    RObject<CVariant> value(new CVariant(entry.Get()));
    array->Set(i, value);
  }
  RObject<CHlsPathTemplate> hls(new CHlsPathTemplate());
  ASSERT_TRUE(hls->FromProperties(array).Succeeded());
  EXPECT_EQ(std::string(hls->GetManifest()->GetChars()), "$package$/main.m3u8");
  EXPECT_EQ(std::string(hls->GetMedia()->GetChars()), "$package$/$segment$.ts");
  RObject<CString> path;
  ASSERT_TRUE(CPathTemplate::FromProperties(path.Out(), "media", array).Succeeded());
  EXPECT_EQ(std::string(path->GetChars()), "$package$/$segment$.ts");
  EXPECT_EQ(CPathTemplate::FromProperties(path.Out(), "video", array).GetType(), ResultFalse().GetType());
  // The base class has no manifest: the entry is ignored there.
  RObject<CPathTemplate> base(new CPathTemplate());
  base->FromProperties(array);
  EXPECT_EQ(std::string(base->GetMedia()->GetChars()), "$package$/$segment$.ts");
  EXPECT_FALSE(base->GetVideo());
}

TEST_F(PathTemplateTest, RelativePathsDropTheCommonFolders) {
  auto relative = [](const char* path, const char* base) {
    RObject<CString> p(new CString(path));
    RObject<CString> b(new CString(base));
    return Take(CPathTemplate::GetRelativeTo(p, b));
  };
  EXPECT_EQ(relative("show/v1/segment_1.ts", "show/v1"), "segment_1.ts");
  EXPECT_EQ(relative("show/v1/segment_1.ts", "show/a1"), "../v1/segment_1.ts");
  EXPECT_EQ(relative("show/v1/index.m3u8", ""), "show/v1/index.m3u8");
  EXPECT_EQ(relative("v1/index.m3u8", "show/"), "../v1/index.m3u8");
  RObject<CString> folder(new CString("show/a1"));
  RObject<CString> file(new CString("show/v1/x.ts"));
  EXPECT_EQ(Take(CPathTemplate::GetRelativeFrom(folder, file)), "../v1/x.ts");
}

// A stand-in with the accessors of the media descriptions.
struct FakeDescription {
  unsigned int GetFormat() const { return FourCC("mp4a"); }
  long long GetBitRate() const { return 96000; }
  unsigned short GetLanguage() const { return Pack("spa"); }
  unsigned short GetRegion() const { return Pack("mex"); }
  int GetChannels() const { return 2; }
  int GetChannelLabel(int i) const { return i + 1; }
  int GetWidth() const { return 640; }
  int GetHeight() const { return 360; }
  Result GetProperty(const PropertyName& name, int& value) const {
    if (std::string(name) != Context::PidProperty) return ResultFalse();
    value = 0x44;
    return ResultOK();
  }
};

TEST_F(PathTemplateTest, DescriptionsFillTheContext) {
  FakeDescription description;
  RObject<Context> context(new Context());
  context->AddAudioProperties(&description);
  EXPECT_TRUE(context->IsAudioOnly());
  EXPECT_EQ(Resolve("$audio_format$_$kbps$_$language$-$REGION$_$layout$_$pid$", context), "aac_96_es-MX_20_68");
  context->AddVideoProperties(&description);
  context->AddSubtitleProperties(&description);
  EXPECT_EQ(Resolve("$width$x$height$", context), "640x360");
  EXPECT_FALSE(context->IsAudioOnly());
  EXPECT_EQ(Take(Context::GetChannelLayout(&description)), "20");
}

}  // namespace
