// The format vocabularies: table sizes, the walks of the forest, the rules
// for aliases and repeated codes, and the Avid identifier table.
#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/Formats/AvidCompression.h"
#include "System/Media/Formats/SubtitleFormat.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Types.h"

using namespace Corvane::Mox;

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

TEST(FormatTables, RowCountsIncludeRepeatedCodes) {
  // Video lists six codes twice (avc1, jpeg, 3VID, 3vid, DVX1, DVX3), audio two (atrc, "spx ").
  EXPECT_EQ(VideoFormat::GetRowCount(), 692);
  EXPECT_EQ(VideoFormat::GetFormatCount(), 686);
  EXPECT_EQ(AudioFormat::GetRowCount(), 190);
  EXPECT_EQ(AudioFormat::GetFormatCount(), 188);
  EXPECT_EQ(SubtitleFormat::GetRowCount(), 23);
  EXPECT_EQ(SubtitleFormat::GetFormatCount(), 23);
  EXPECT_EQ(AvidCompression::GetCount(), 68);
}

TEST(FormatTables, EveryParentIsInItsTableAndNoWalkCycles) {
  for (int i = 0; i < VideoFormat::GetRowCount(); ++i) {
    const FormatEntry* row = VideoFormat::GetRow(i);
    ASSERT_NE(row, nullptr);
    if (row->parent) {
      EXPECT_TRUE(VideoFormat::IsKnownFormat(row->parent)) << i;
    }
    // A cycle would make the root unreachable.
    EXPECT_NE(VideoFormat::GetCanonicalFormat(row->code), 0u) << i;
  }
  for (int i = 0; i < AudioFormat::GetRowCount(); ++i) {
    const FormatEntry* row = AudioFormat::GetRow(i);
    if (row->parent) {
      EXPECT_TRUE(AudioFormat::IsKnownFormat(row->parent)) << i;
    }
    EXPECT_NE(AudioFormat::GetCanonicalFormat(row->code), 0u) << i;
  }
  EXPECT_EQ(VideoFormat::GetRow(-1), nullptr);
  EXPECT_EQ(VideoFormat::GetRow(VideoFormat::GetRowCount()), nullptr);
}

TEST(FormatTables, AliasesStandForTheNamedCodeAbove) {
  EXPECT_EQ(VideoFormat::GetEquivalentFormat(F("AVC1")), F("avc1"));
  EXPECT_EQ(VideoFormat::GetName(F("AVC1")), std::string("AVC"));
  EXPECT_EQ(VideoFormat::GetCategoricalFormat(F("AVC1")), 0u);  // "avc1" is a root
  EXPECT_EQ(VideoFormat::GetCategoricalFormat(F("ai5q")), F("ai5 "));
  EXPECT_STREQ(AudioFormat::GetName(F("s16l")), "PCM, 16-Bit Little-Endian Signed Integer");
  EXPECT_EQ(AudioFormat::GetEquivalentFormat(F("s16l")), F("sowt"));
  // An alias has no name of its own but answers its named code's.
  const FormatEntry* row = nullptr;
  for (int i = 0; i < VideoFormat::GetRowCount() && !row; ++i)
    if (VideoFormat::GetRow(i)->code == F("R10g")) row = VideoFormat::GetRow(i);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->name, nullptr);
  EXPECT_STREQ(VideoFormat::GetName(F("R10g")), "AJA Kona 10-bit RGB");
}

TEST(FormatTables, IsFormatWalksToTheRoot) {
  EXPECT_TRUE(VideoFormat::IsFormat(F("ai5q"), F("AVCI")));
  EXPECT_TRUE(VideoFormat::IsFormat(F("ai5q"), F("h264")));
  EXPECT_TRUE(VideoFormat::IsFormat(F("ai5q"), F("ai5q")));
  EXPECT_FALSE(VideoFormat::IsFormat(F("ai5q"), F("ai1 ")));
  EXPECT_FALSE(VideoFormat::IsFormat(F("avc1"), F("ai5q")));  // only upwards
  EXPECT_EQ(VideoFormat::GetCanonicalFormat(F("ai5q")), VideoFormat::GetCanonicalFormat(F("h264")));
  EXPECT_EQ(VideoFormat::GetParentFormat(F("ai5q")), F("ai5 "));
}

TEST(FormatTables, UnknownCodesGiveTheEmptyAnswers) {
  EXPECT_EQ(VideoFormat::GetParentFormat(F("zzzz")), 0u);
  EXPECT_EQ(VideoFormat::GetName(F("zzzz")), nullptr);
  EXPECT_EQ(VideoFormat::GetEquivalentFormat(F("zzzz")), 0u);
  EXPECT_EQ(VideoFormat::GetCanonicalFormat(F("zzzz")), 0u);
  EXPECT_EQ(VideoFormat::GetCategoricalFormat(F("zzzz")), 0u);
  EXPECT_FALSE(VideoFormat::IsIntraFormat(F("zzzz")));
  EXPECT_TRUE(VideoFormat::IsFormat(F("zzzz"), F("zzzz")));
  EXPECT_FALSE(VideoFormat::IsFormat(F("zzzz"), F("avc1")));
  EXPECT_EQ(AudioFormat::GetName(0), nullptr);
}

TEST(FormatTables, TheFirstRowOfARepeatedCodeWins) {
  // "avc1" is a root first and its own child second; the walk must end.
  EXPECT_EQ(VideoFormat::GetParentFormat(F("avc1")), 0u);
  EXPECT_EQ(VideoFormat::GetCanonicalFormat(F("avc2")), F("avc1"));
  // "jpeg" is "Photo JPEG" first and an alias of "mjpg" second.
  EXPECT_STREQ(VideoFormat::GetName(F("jpeg")), "Photo JPEG");
  EXPECT_EQ(VideoFormat::GetParentFormat(F("jpeg")), 0u);
  EXPECT_FALSE(VideoFormat::IsFormat(F("jpeg"), F("mjpg")));
}

TEST(FormatTables, TrailingSpacesAndNumericCodesAreKept) {
  EXPECT_STREQ(VideoFormat::GetName(F("A8  ")), "Alpha 8-bit");
  EXPECT_EQ(VideoFormat::GetName(F("A8\0\0")), nullptr);
  EXPECT_NE(VideoFormat::GetName(F("ai5 ")), nullptr);
  EXPECT_EQ(VideoFormat::GetName(F("ai5\0")), nullptr);
  EXPECT_STREQ(VideoFormat::GetName(0x00000018u), "Packed RGB");
  EXPECT_EQ(VideoFormat::GetParentFormat(0x00000018u), F("RGB "));
  EXPECT_STREQ(VideoFormat::GetName(0x01000000u), "Microsoft RLE");
}

TEST(FormatTables, IntraFlagsFollowNamedCodesOnThePath) {
  EXPECT_TRUE(VideoFormat::IsIntraFormat(F("ai5q")));
  EXPECT_TRUE(VideoFormat::IsIntraFormat(F("AVCI")));
  EXPECT_FALSE(VideoFormat::IsIntraFormat(F("h264")));
  EXPECT_FALSE(VideoFormat::IsIntraFormat(F("avc1")));
  EXPECT_TRUE(VideoFormat::IsIntraFormat(F("dnxh")));  // alias of the intra "AVdn"
  EXPECT_TRUE(VideoFormat::IsIntraFormat(F("2vuy")));
}

TEST(FormatTables, NamesAndAliasesLookUp) {
  EXPECT_EQ(VideoFormat::FindFormat("AVC-Intra Class 50"), F("ai5 "));
  EXPECT_EQ(VideoFormat::FindFormat("no such format"), 0u);
  EXPECT_EQ(VideoFormat::FindFormat(nullptr), 0u);
  std::vector<unsigned int> aliases = VideoFormat::GetAliases(F("UYVY"));
  std::set<unsigned int> set(aliases.begin(), aliases.end());
  EXPECT_TRUE(set.count(F("2vuy")));
  EXPECT_TRUE(set.count(F("HDYC")));
  EXPECT_FALSE(set.count(F("UYVY")));
  EXPECT_FALSE(set.count(F("CYUV")));  // named: a format of its own
  EXPECT_EQ(set.size(), aliases.size());
  // The repeated row of "avc1" is not an alias of itself.
  for (unsigned int code : VideoFormat::GetAliases(F("avc1"))) EXPECT_NE(code, F("avc1"));
}

TEST(FormatTables, SubtitleVocabularyWalks) {
  for (int i = 0; i < SubtitleFormat::GetRowCount(); ++i) {
    const FormatEntry* row = SubtitleFormat::GetRow(i);
    EXPECT_TRUE(SubtitleFormat::IsFormat(row->code, SubtitleFormat::GetCanonicalFormat(row->code)));
    EXPECT_NE(SubtitleFormat::GetName(row->code), nullptr);
  }
}

TEST(FormatTables, AvidIdentifiersMapToFamilyAndEquivalent) {
  EXPECT_EQ(AvidCompression::GetFormat(1235), F("AVdn"));
  EXPECT_EQ(AvidCompression::GetEquivalentFormat(1235), F("dn10"));
  EXPECT_STREQ(AvidCompression::GetDetail(1235), "HD HQX 1080p");
  EXPECT_EQ(AvidCompression::GetEquivalentFormat(3400), F("ai5q"));
  EXPECT_EQ(AvidCompression::GetFormat(1), 0u);
  EXPECT_EQ(AvidCompression::GetEquivalentFormat(1), 0u);
  EXPECT_EQ(AvidCompression::GetDetail(1), nullptr);
  // Every equivalent is a code of the video vocabulary.
  for (int id : {75, 140, 151, 160, 1270, 2400, 3400}) EXPECT_TRUE(VideoFormat::IsKnownFormat(AvidCompression::GetEquivalentFormat(id))) << id;
}

}  // namespace
