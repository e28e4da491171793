// The media model's constant tables: channel-assignment layouts and the fixed
// parameters of intra broadcast formats.
#include <gtest/gtest.h>

#include <cstring>

#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

class DataTablesTest : public LeakCheckedTest {};

using Layout = CAudioProperties::ChannelLayout;

// The four-character code of a four-letter text held by pointer.
unsigned int Tag(const char* text) {
  return static_cast<unsigned int>(static_cast<unsigned char>(text[0])) << 24 |
         static_cast<unsigned int>(static_cast<unsigned char>(text[1])) << 16 |
         static_cast<unsigned int>(static_cast<unsigned char>(text[2])) << 8 | static_cast<unsigned char>(text[3]);
}

const Layout* Find(const char (&standard)[5], const char (&layout)[5]) {
  return CAudioProperties::GetChannelLayout(FourCC(standard), FourCC(layout));
}

// The case names of both recommendations, spelled with the tag scheme of
// the table; a row whose tag is not among them is misspelled.
int CountDocumentedRows() {
  static const char* const kR48[] = {"1a", "1b", "1c", "2a", "2b", "2c", "3a", "3b", "4a", "4b", "4c", "5a", "5b",
                                     "6a", "6b", "7a", "7b", "8a", "8b", "8c", "9a", "9b", "10a", "11a", "11b", "11c"};
  static const char* const kR123[] = {"2a",  "4a",  "4b",  "4c",  "8a",  "8b",  "8c",  "8d",  "8e",
                                      "8f",  "8g",  "8h",  "8i",  "12a", "12b", "12c", "12d", "12e",
                                      "12f", "12g", "12h", "16a", "16b", "16c", "16d", "16e", "16f"};
  auto tag = [](const char* name, char carrier) {
    char text[5] = "    ";
    std::memcpy(text, name, std::strlen(name));
    text[std::strlen(name)] = carrier;
    return Tag(text);
  };
  int found = 0;
  for (const char* name : kR48) found += CAudioProperties::GetChannelLayout(FourCC("r48 "), tag(name, 'D')) != nullptr;
  for (const char* name : kR123) found += CAudioProperties::GetChannelLayout(FourCC("r123"), tag(name, 'F')) != nullptr;
  return found;
}

}  // namespace

TEST_F(DataTablesTest, ChannelLayoutsFollowTheRecommendations) {
  // Mono case 1a: complete mix on track 1, international sound on track 2.
  const Layout* mono = Find("r48 ", "1aD ");
  ASSERT_NE(mono, nullptr);
  EXPECT_EQ(mono->channels, 2);
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(mono->assignments[0].label), "M");
  EXPECT_STREQ(CAudioProperties::GetContentType(mono->assignments[0].content), "complete_mix");
  EXPECT_STREQ(CAudioProperties::GetContentType(mono->assignments[1].content), "international_sound");
  EXPECT_NE(mono->assignments[0].program, mono->assignments[1].program);
  // Case 1b moves the international sound to track 3 and mutes tracks 2 and 4.
  const Layout* mono4 = Find("r48 ", "1bD ");
  ASSERT_NE(mono4, nullptr);
  EXPECT_EQ(mono4->channels, 4);
  EXPECT_EQ(mono4->assignments[1].label, 0);
  EXPECT_STREQ(CAudioProperties::GetContentType(mono4->assignments[2].content), "international_sound");
  EXPECT_EQ(mono4->assignments[3].label, 0);
  // A stereo pair: labels 1 and 2 in programme 1.
  const Layout* stereo = Find("r48 ", "2aD ");
  ASSERT_NE(stereo, nullptr);
  EXPECT_EQ(stereo->channels, 2);
  EXPECT_EQ(stereo->assignments[0].label, 1);
  EXPECT_EQ(stereo->assignments[1].label, 2);
  EXPECT_EQ(stereo->assignments[0].program, 1);
  EXPECT_EQ(stereo->assignments[1].program, 1);
  // Sixteen tracks, case 16c: the 5.1 mix takes tracks 5 to 10 as L R C LFE Ls Rs.
  const Layout* sixteen = Find("r123", "16cF");
  ASSERT_NE(sixteen, nullptr);
  EXPECT_EQ(sixteen->channels, 16);
  const char* const surround[] = {"L", "R", "C", "LFE", "Ls", "Rs"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(sixteen->assignments[4 + i].label), surround[i]) << i;
    EXPECT_EQ(sixteen->assignments[4 + i].program, sixteen->assignments[4].program);
  }
  EXPECT_STREQ(CAudioProperties::GetContentType(sixteen->assignments[15].content), "effects");
  // Case 8b puts the 5.1 mix first and the stereo mix on tracks 7 and 8.
  const Layout* eight = Find("r123", "8bF ");
  ASSERT_NE(eight, nullptr);
  EXPECT_EQ(eight->channels, 8);
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(eight->assignments[3].label), "LFE");
  EXPECT_EQ(eight->assignments[6].label, 1);
  EXPECT_EQ(eight->assignments[7].label, 2);
  EXPECT_NE(eight->assignments[6].program, eight->assignments[0].program);
  // Case 12h: three languages, each a stereo mix and an encoded pair.
  const Layout* languages = Find("r123", "12hF");
  ASSERT_NE(languages, nullptr);
  EXPECT_EQ(languages->channels, 12);
  for (int pair = 0; pair < 6; ++pair) {
    EXPECT_EQ(languages->assignments[2 * pair].program, pair + 1) << pair;
    EXPECT_EQ(languages->assignments[2 * pair + 1].program, pair + 1) << pair;
  }
  EXPECT_STREQ(CAudioProperties::GetSpeakerIdentifier(languages->assignments[2].label), "O");  // encoded, no speaker
  // Case 12a leaves its last four tracks unallocated.
  const Layout* twelve = Find("r123", "12aF");
  ASSERT_NE(twelve, nullptr);
  EXPECT_EQ(twelve->assignments[7].label, 6);
  EXPECT_EQ(twelve->assignments[8].label, 0);
  EXPECT_EQ(twelve->assignments[11].program, 0);
}

TEST_F(DataTablesTest, ChannelLayoutRowsAreWellFormed) {
  int count = CAudioProperties::GetChannelLayoutCount();
  EXPECT_GT(count, 0);
  // Every row is reachable under a documented case name; a misspelled tag
  // would leave the documented count short of the table's.
  EXPECT_EQ(CountDocumentedRows(), count);
  EXPECT_EQ(CountDocumentedRows(), 33);  // R 48 cases 1a to 2c, and all 27 of R 123
  for (int index = 0; index < count; ++index) {
    const Layout* layout = CAudioProperties::GetChannelLayoutAt(index);
    ASSERT_NE(layout, nullptr);
    ASSERT_LE(layout->channels, CAudioProperties::MaximumLayoutChannels);
    for (int i = 0; i < layout->channels; ++i) {
      const auto& a = layout->assignments[i];
      // A track is either mute through and through or fully described.
      if (a.label == 0) {
        EXPECT_EQ(a.program + a.content, 0) << index << ":" << i;
      } else {
        EXPECT_STRNE(CAudioProperties::GetSpeakerIdentifier(a.label), "") << index << ":" << i;
        EXPECT_STRNE(CAudioProperties::GetContentType(a.content), "") << index << ":" << i;
        EXPECT_GT(a.program, 0) << index << ":" << i;
      }
    }
  }
}

TEST_F(DataTablesTest, ChannelLayoutLookupNeedsBothTags) {
  EXPECT_EQ(Find("r48 ", "99zD"), nullptr);
  EXPECT_EQ(Find("r123", "1aD "), nullptr);  // an R 48 case under the other standard
  EXPECT_EQ(Find("2035", "2aD "), nullptr);
  EXPECT_EQ(CAudioProperties::GetChannelLayout(0, 0), nullptr);  // the end marker is not a row
  // The same tags find the same row every time; the description takes it over.
  const Layout* layout = Find("r123", "16cF");
  EXPECT_EQ(Find("r123", "16cF"), layout);
  RObject<CAudioProperties> audio(new CAudioProperties());
  ASSERT_TRUE(audio->SetChannelLayout(layout).Succeeded());
  EXPECT_EQ(audio->GetChannels(), 16);
  EXPECT_EQ(audio->GetChannelLabel(7), 4);  // LFE of the 5.1 mix
  EXPECT_EQ(audio->GetChannelContent(2), 4);  // the stereo effects pair
}

TEST_F(DataTablesTest, FixedFormatsCarryTheirStandardParameters) {
  using C = CVideoProperties::Configuration;
  const C* dvPal = CVideoProperties::GetConfiguration(FourCC("dvcp"));
  ASSERT_NE(dvPal, nullptr);
  EXPECT_EQ(dvPal->width, 720);
  EXPECT_EQ(dvPal->height, 576);
  EXPECT_EQ(dvPal->subsampling, 0x22);  // 625-line consumer DV is 4:2:0
  EXPECT_EQ(dvPal->fieldOrder, 3);      // bottom field first
  const C* dvcproPal = CVideoProperties::GetConfiguration(FourCC("dvpp"));
  ASSERT_NE(dvcproPal, nullptr);
  EXPECT_EQ(dvcproPal->subsampling, 0x41);  // DVCPRO 25 is 4:1:1 on both systems
  const C* dv50 = CVideoProperties::GetConfiguration(FourCC("dv5n"));
  ASSERT_NE(dv50, nullptr);
  EXPECT_EQ(dv50->subsampling, 0x21);
  EXPECT_EQ(dv50->bitRate, 2 * CVideoProperties::GetConfiguration(FourCC("dvpn"))->bitRate);
  EXPECT_EQ(dv50->frameRate.numerator, 30000);
  EXPECT_EQ(dv50->frameRate.denominator, 1001);
  // D-10 codes the vertical interval: 608 lines at 625/50, 512 at 525/60,
  // top field first, and the three bit rates differ only in rate.
  for (const char* code : {"mx3p", "mx4p", "mx5p"}) {
    const C* imx = CVideoProperties::GetConfiguration(Tag(code));
    ASSERT_NE(imx, nullptr) << code;
    EXPECT_EQ(imx->height, 608) << code;
    EXPECT_EQ(imx->fieldOrder, 2) << code;
  }
  EXPECT_EQ(CVideoProperties::GetConfiguration(FourCC("mx3n"))->height, 512);
  EXPECT_EQ(CVideoProperties::GetConfiguration(FourCC("mx4n"))->bitRate, 40000000);
  // XDCAM HD squeezes 1080 lines onto 1440 samples; HD422 uses the full raster in 4:2:2.
  const C* xdcam = CVideoProperties::GetConfiguration(FourCC("xdv3"));
  ASSERT_NE(xdcam, nullptr);
  EXPECT_EQ(xdcam->width * xdcam->pixelAspectRatio.numerator / xdcam->pixelAspectRatio.denominator, 1920);
  EXPECT_EQ(xdcam->subsampling, 0x22);
  const C* hd422 = CVideoProperties::GetConfiguration(FourCC("xd5c"));
  ASSERT_NE(hd422, nullptr);
  EXPECT_EQ(hd422->width, 1920);
  EXPECT_EQ(hd422->subsampling, 0x21);
  EXPECT_EQ(hd422->frameRate.numerator, 25);
  // A family code names no single raster and so has no configuration.
  for (const char* family : {"mx5 ", "xd  ", "dvh1", "dv50"}) {
    EXPECT_EQ(CVideoProperties::GetConfiguration(Tag(family)), nullptr) << family;
  }
}

TEST_F(DataTablesTest, StandardDefinitionColourAgreesWithTheHeightDefaults) {
  // The colour of every fixed SD raster is what the height rule gives, an
  // independent statement of ITU-R BT.601 for 525 and 625 lines.
  for (const char* code : {"dvc ", "dvcp", "dvpn", "dvpp", "dv5n", "dv5p", "mx3n", "mx4n", "mx5n", "mx3p", "mx4p",
                           "mx5p"}) {
    const auto* c = CVideoProperties::GetConfiguration(Tag(code));
    ASSERT_NE(c, nullptr) << code;
    EXPECT_EQ(c->colorSpace, CVideoProperties::GetDefaultColorSpace(c->height)) << code;
  }
}

TEST_F(DataTablesTest, ConfigurationWinsOverOwnValues) {
  RObject<CVideoProperties> video(new CVideoProperties());
  ASSERT_TRUE(video->SetFormat(FourCC("mx5p")).Succeeded());
  ASSERT_TRUE(video->SetWidth(1920).Succeeded());
  ASSERT_TRUE(video->SetHeight(1080).Succeeded());
  EXPECT_EQ(video->GetWidth(), 720);
  EXPECT_EQ(video->GetHeight(), 608);
  EXPECT_EQ(video->GetSubsampling(), 0x21);
  // The aspect ratio is open in the configuration, so the own one stands.
  ASSERT_TRUE(video->SetPixelAspectRatio(Rational<int>(16, 15)).Succeeded());
  EXPECT_EQ(video->GetPixelAspectRatio().numerator, 16);
  // Without an own time scale the frame rate is the format's.
  EXPECT_EQ(video->GetFrameRate().numerator, 25);
  EXPECT_TRUE(video->IsInterlaced());
  // Leaving the fixed format brings the own width back.
  ASSERT_TRUE(video->SetFormat(FourCC("mp2v")).Succeeded());
  EXPECT_EQ(video->GetWidth(), 1920);
}
