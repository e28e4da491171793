// CFidelity's worked numbers and hash identities, the transform inventory's
// ranking, and the label-correcting path search.

#include <gtest/gtest.h>

#include "System/Collections/Value.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Video/VideoProperties.h"
#include "wfl/Fidelity.h"
#include "wfl/MediaFilterTransformInventory.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

CVideoProperties* Picture(int depth, int subsampling, bool alpha = false) {
  auto* video = new CVideoProperties();
  video->SetFormat(FourCC("I420"));
  video->SetWidth(1920);
  video->SetHeight(1080);
  video->SetBitDepth(depth);
  video->SetSubsampling(subsampling);
  video->SetAlphaChannel(alpha ? 1 : 2);
  return video;
}

CAudioProperties* Sound(int rate, int channels, int bits) {
  auto* audio = new CAudioProperties();
  audio->SetFormat(FourCC("lpcm"));
  audio->SetSampleRate(rate);
  audio->SetChannels(channels);
  audio->SetBitsPerSample(bits);
  return audio;
}

class FidelityTest : public LeakCheckedTest {};

}  // namespace

TEST_F(FidelityTest, VideoLossCountsBitsPerPixelThatDoNotSurvive) {
  // 10-bit into 8-bit, 2 horizontal 1 vertical: (16 + 16) x 10 - (16 + 16) x 8 = 64.
  RObject<CVideoProperties> ten(Picture(10, 0x12));
  RObject<CVideoProperties> eight(Picture(8, 0x12));
  EXPECT_EQ(CFidelity::GetFidelityLoss(ten, eight), 64.0f);
  EXPECT_EQ(CFidelity::GetFidelityLoss(eight, ten), 0.0f);
  // 4:2:0 8-bit into itself and into 4:4:4 loses nothing.
  RObject<CVideoProperties> i420(Picture(8, 0x22));
  RObject<CVideoProperties> i444(Picture(8, 0x11));
  EXPECT_EQ(CFidelity::GetFidelityLoss(i420, i420), 0.0f);
  EXPECT_EQ(CFidelity::GetFidelityLoss(i420, i444), 0.0f);
  // 4:4:4 into 4:2:0: chroma 32 -> 8 bits per pixel, times the depth 8.
  EXPECT_EQ(CFidelity::GetFidelityLoss(i444, i420), 192.0f);
  // Dropping alpha: 32 -> 16.
  RObject<CVideoProperties> withAlpha(Picture(8, 0x11, true));
  EXPECT_EQ(CFidelity::GetFidelityLoss(withAlpha, i444), 128.0f);
  // Unknown subsampling: 16 x the source depth.
  RObject<CVideoProperties> unknown(Picture(10, 0));
  EXPECT_EQ(CFidelity::GetFidelityLoss(unknown, eight), 160.0f);
  // A depth below 2 counts as 1.
  RObject<CVideoProperties> flat(Picture(0, 0));
  EXPECT_EQ(CFidelity::GetFidelityLoss(flat, eight), 16.0f);
}

TEST_F(FidelityTest, AudioLossIsScaledBitsPerSecond) {
  // 48 kHz stereo 24-bit into 16-bit: (2,304,000 - 1,536,000) >> 13 = 93.
  RObject<CAudioProperties> deep(Sound(48000, 2, 24));
  RObject<CAudioProperties> shallow(Sound(48000, 2, 16));
  EXPECT_EQ(CFidelity::GetFidelityLoss(deep, shallow), 93.0f);
  EXPECT_EQ(CFidelity::GetFidelityLoss(shallow, deep), 0.0f);
  // Stereo to mono at 48 kHz 16-bit: 768,000 >> 13 = 93 as well.
  RObject<CAudioProperties> mono(Sound(48000, 1, 16));
  EXPECT_EQ(CFidelity::GetFidelityLoss(shallow, mono), 93.0f);
}

TEST_F(FidelityTest, MixedKindsAndMissingDescriptionsCostNothing) {
  RObject<CVideoProperties> video(Picture(10, 0x22));
  RObject<CAudioProperties> audio(Sound(48000, 2, 24));
  EXPECT_EQ(CFidelity::GetFidelityLoss(video, audio), 0.0f);
  EXPECT_EQ(CFidelity::GetFidelityLoss(audio, video), 0.0f);
  EXPECT_EQ(CFidelity::GetFidelityLoss(nullptr, video), 0.0f);
  EXPECT_EQ(CFidelity::GetHashCode(nullptr), 0u);
}

TEST_F(FidelityTest, HashesIgnoreDurationAndReduceRatios) {
  RObject<CVideoProperties> a(Picture(8, 0x22));
  RObject<CVideoProperties> b(Picture(8, 0x22));
  a->SetDuration(1000);
  b->SetDuration(99999);
  EXPECT_EQ(CFidelity::GetHashCode(a), CFidelity::GetHashCode(b));
  a->SetPixelAspectRatio(Rational<int>(2, 2));
  b->SetPixelAspectRatio(Rational<int>(1, 1));
  a->SetFrameRate(Rational<int>(60000, 2002));
  b->SetFrameRate(Rational<int>(30000, 1001));
  EXPECT_EQ(CFidelity::GetHashCode(a), CFidelity::GetHashCode(b));
  b->SetWidth(1280);
  EXPECT_NE(CFidelity::GetHashCode(a), CFidelity::GetHashCode(b));

  // The one-at-a-time steps over format, rate, channels and bits, no final mix.
  RObject<CAudioProperties> audio(Sound(48000, 2, 16));
  unsigned int h = 0;
  for (unsigned int x : {FourCC("lpcm"), 48000u, 2u, 16u}) {
    h += x;
    h += h << 10;
    h ^= h >> 6;
  }
  EXPECT_EQ(CFidelity::GetHashCode(audio), h);

  RObject<CMediaProperties> other(new CMediaProperties());
  EXPECT_THROW(CFidelity::GetHashCode(other), Result);
}
