// Path templates resolved from real media descriptions: the context reads
// the descriptions through their getters, so fixed-format configurations,
// channel labels and languages reach the tokens.
#include "PathTemplateTestSupport.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::PathTemplateTesting;

namespace {

class PathTemplateMediaTest : public LeakCheckedTest {};

TEST_F(PathTemplateMediaTest, TokensComeFromTheDescriptions) {
  RObject<CVideoProperties> video(new CVideoProperties());
  video->SetFormat(FourCC("ai56"));  // AVC-Intra 50 1080i: its configuration fixes 1440×1080
  video->SetWidth(720);
  video->SetProperty(Context::PidProperty, 481);
  RObject<CAudioProperties> audio(new CAudioProperties());
  audio->SetFormat(FourCC("mp4a"));
  audio->SetBitRate(128000);
  audio->SetChannels(6);
  const int labels[] = {1, 2, 3, 4, 5, 6};  // L R C LFE Ls Rs
  for (int i = 0; i < 6; ++i) audio->SetChannelLabel(i, labels[i]);
  audio->SetLanguage('f', 'r', 'e');
  RObject<CSubtitleProperties> subtitle(new CSubtitleProperties());
  subtitle->SetFormat(FourCC("wvtt"));

  RObject<Context> context(new Context());
  context->AddVideoProperties(video.Get());
  context->AddAudioProperties(audio.Get());
  context->AddSubtitleProperties(subtitle.Get());
  EXPECT_EQ(Resolve("$width$x$height$", context.Get()), "1440x1080");
  EXPECT_EQ(Resolve("$audio_format$_$layout$_$language$", context.Get()), "aac_51_fr");
  EXPECT_EQ(Resolve("$subtitle_format$", context.Get()), "webvtt");
  EXPECT_EQ(Resolve("$pid$", context.Get()), "481");
  // The configuration's bit rate counts when the description gives none.
  EXPECT_EQ(Resolve("$mbps$", context.Get()), "50");
}

}  // namespace
