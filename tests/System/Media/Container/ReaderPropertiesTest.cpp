// Reader property classes (values per context, the one in force, range
// checks), the elementary writer extension and the sidecar index.
#include <gtest/gtest.h>

#include <string>

#include "ContainerTestSupport.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Container/AudioReaderProperties.h"
#include "System/Media/Container/ContainerIndex.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/ElementaryWriterProperties.h"
#include "System/Media/Container/IndexedContainerWriter.h"
#include "System/Media/Container/SubtitleReaderProperties.h"
#include "System/Media/Container/VideoReaderProperties.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;

namespace {

class ReaderPropertiesTest : public LeakCheckedTest {};

TEST_F(ReaderPropertiesTest, ContextsHaveTheirTexts) {
  EXPECT_STREQ(CMediaReader::GetPropertyContextName(0), "unspecified");
  EXPECT_STREQ(CMediaReader::GetPropertyContextName(1), "container");
  EXPECT_STREQ(CMediaReader::GetPropertyContextName(2), "essence");
  EXPECT_EQ(CMediaReader::GetPropertyContextName(3), nullptr);
  EXPECT_EQ(CMediaReader::GetPropertyContextName(-1), nullptr);
}

TEST_F(ReaderPropertiesTest, EachContextKeepsItsValueAndTheEssenceOutranksTheContainer) {
  RObject<CVideoReaderProperties> video(new CVideoReaderProperties());
  ASSERT_TRUE(video->SetWidth(CMediaReader::Essence, 1920).Succeeded());
  ASSERT_TRUE(video->SetWidth(CMediaReader::Container, 1440).Succeeded());
  EXPECT_EQ(video->GetWidth(), 1920);  // the container's claim does not hide the essence
  EXPECT_EQ(video->GetWidth(CMediaReader::Container), 1440);
  EXPECT_EQ(video->GetWidth(CMediaReader::Essence), 1920);
  EXPECT_FALSE(video->IsWidthSet(CMediaReader::Unspecified));
  ASSERT_TRUE(video->SetHeight(1080).Succeeded());  // unspecified
  ASSERT_TRUE(video->SetHeight(CMediaReader::Container, 1088).Succeeded());
  EXPECT_EQ(video->GetHeight(), 1088);
  RObject<CVideoReaderProperties> copy(new CVideoReaderProperties(video.Get()));
  EXPECT_EQ(copy->GetWidth(CMediaReader::Container), 1440);
  EXPECT_EQ(copy->GetWidth(), 1920);
}

TEST_F(ReaderPropertiesTest, BadContextsAndTimeScalesAreThrown) {
  RObject<CVideoReaderProperties> video(new CVideoReaderProperties());
  EXPECT_THROW(video->SetWidth(3, 10), Result);
  EXPECT_THROW(video->GetWidth(3), Result);
  EXPECT_THROW(video->SetTimeScale(CMediaReader::Container, 0), Result);
  EXPECT_THROW(video->SetTimeScale(2000000001LL), Result);
  EXPECT_TRUE(video->SetTimeScale(CMediaReader::Container, 2000000000LL).Succeeded());
  EXPECT_EQ(video->GetTimeScale(), 2000000000LL);
  RObject<CAudioReaderProperties> audio(new CAudioReaderProperties());
  EXPECT_THROW(audio->SetChannels(5, 2), Result);
  ASSERT_TRUE(audio->SetChannels(CMediaReader::Container, 6).Succeeded());
  EXPECT_EQ(audio->GetChannels(), 6);
  RObject<CSubtitleReaderProperties> subtitle(new CSubtitleReaderProperties());
  EXPECT_THROW(subtitle->SetTimeScale(-1), Result);
  // A failure of the description's own check comes back as its result.
  EXPECT_TRUE(video->SetWidth(CMediaReader::Essence, -5).Failed());
}

TEST_F(ReaderPropertiesTest, ChannelPropertiesKeepAValuePerContextForEachChannel) {
  RObject<CAudioReaderProperties> audio(new CAudioReaderProperties());
  ASSERT_TRUE(audio->SetChannels(CMediaReader::Container, 4).Succeeded());
  ASSERT_TRUE(audio->SetChannelLabel(CMediaReader::Container, 0, 1).Succeeded());
  ASSERT_TRUE(audio->SetChannelLabel(CMediaReader::Essence, 1, 5).Succeeded());
  ASSERT_TRUE(audio->SetChannelLabel(CMediaReader::Container, 1, 3).Succeeded());
  // The essence outranks the container on channel 1 only.
  EXPECT_EQ(audio->GetChannelLabel(1), 5);
  EXPECT_EQ(audio->GetChannelLabel(CMediaReader::Container, 1), 3);
  EXPECT_EQ(audio->GetChannelLabel(CMediaReader::Essence, 1), 5);
  ASSERT_TRUE(audio->SetChannelLabel(CMediaReader::Container, 0, 7).Succeeded());
  EXPECT_EQ(audio->GetChannelLabel(0), 7);
  EXPECT_TRUE(audio->IsChannelLabelSet(CMediaReader::Container, 0));
  EXPECT_FALSE(audio->IsChannelLabelSet(CMediaReader::Essence, 0));
  EXPECT_FALSE(audio->IsChannelLabelSet(CMediaReader::Container, 2));
  // The plain form records the unspecified context, which both outrank.
  ASSERT_TRUE(audio->SetChannelCoding(2, FourCC("ac-3")).Succeeded());
  EXPECT_EQ(audio->GetChannelCoding(CMediaReader::Unspecified, 2), FourCC("ac-3"));
  EXPECT_EQ(audio->GetChannelCoding(2), FourCC("ac-3"));
  ASSERT_TRUE(audio->SetChannelCoding(CMediaReader::Essence, 2, FourCC("dlbe")).Succeeded());
  ASSERT_TRUE(audio->SetChannelCoding(3, FourCC("ac-3")).Succeeded());
  EXPECT_EQ(audio->GetChannelCoding(2), FourCC("dlbe"));
  ASSERT_TRUE(audio->SetChannelProgram(CMediaReader::Container, 3, 2).Succeeded());
  ASSERT_TRUE(audio->SetChannelContent(CMediaReader::Essence, 3, 9).Succeeded());
  EXPECT_EQ(audio->GetChannelProgram(3), 2);
  EXPECT_EQ(audio->GetChannelContent(3), 9);
  EXPECT_EQ(audio->GetChannelContent(CMediaReader::Container, 3), 0);
  // Channels beyond the description's 128 are refused; a bad context throws.
  EXPECT_EQ(audio->SetChannelProgram(CMediaReader::Container, 128, 1).GetResultCode(),
            ResultArgumentOutOfRange().GetResultCode());
  EXPECT_EQ(audio->SetChannelLabel(-1, 1).GetResultCode(), ResultArgumentOutOfRange().GetResultCode());
  EXPECT_EQ(audio->GetChannelProgram(CMediaReader::Container, 128), 0);
  EXPECT_EQ(audio->GetChannelProgram(CMediaReader::Container, 127), 0);
  EXPECT_THROW(audio->SetChannelContent(static_cast<CMediaReader::PropertyContext>(3), 0, 1), Result);
  EXPECT_THROW(audio->GetChannelCoding(static_cast<CMediaReader::PropertyContext>(3), 0), Result);
  // A copy keeps the record: the container is still outranked on channel 1.
  RObject<CAudioReaderProperties> copy(new CAudioReaderProperties(audio.Get()));
  EXPECT_EQ(copy->GetChannelLabel(CMediaReader::Container, 1), 3);
  ASSERT_TRUE(copy->SetChannelLabel(CMediaReader::Container, 1, 9).Succeeded());
  EXPECT_EQ(copy->GetChannelLabel(1), 5);
  EXPECT_EQ(copy->GetChannelCoding(CMediaReader::Essence, 2), FourCC("dlbe"));
  // A plain description copied from the reader's carries the values in force.
  RObject<CAudioProperties> plain(new CAudioProperties(audio.Get()));
  EXPECT_EQ(plain->GetChannelLabel(1), 5);
  EXPECT_EQ(plain->GetChannelCoding(3), FourCC("ac-3"));
}

TEST_F(ReaderPropertiesTest, LanguagesAreSetAsThreeLettersAndRegionsAsTwoPerContext) {
  RObject<CSubtitleReaderProperties> subtitle(new CSubtitleReaderProperties());
  ASSERT_TRUE(subtitle->SetLanguage(CMediaReader::Container, 'e', 'n', 'g').Succeeded());
  ASSERT_TRUE(subtitle->SetLanguage(CMediaReader::Essence, 'f', 'r', 'a').Succeeded());
  char a = 0, b = 0, c = 0;
  subtitle->GetLanguage(CMediaReader::Container, a, b, c);
  EXPECT_EQ(std::string({a, b, c}), "eng");
  subtitle->GetLanguage(a, b, c);  // the value in force
  EXPECT_EQ(std::string({a, b, c}), "fra");
  EXPECT_EQ(subtitle->GetLanguage(), CMediaProperties::PackLanguageCode('f', 'r', 'a'));
  // A region is kept as its three-letter code and read back as two letters.
  RObject<CVideoReaderProperties> video(new CVideoReaderProperties());
  ASSERT_TRUE(video->SetRegion(CMediaReader::Container, 'U', 'S').Succeeded());
  EXPECT_EQ(video->GetRegion(), CMediaProperties::PackRegionCode('u', 's', 'a'));
  video->GetRegion(CMediaReader::Container, a, b);
  EXPECT_EQ(std::string({a, b}), "US");
  video->GetRegion(CMediaReader::Essence, a, b);
  EXPECT_EQ(a, 0);
  EXPECT_EQ(video->SetRegion(CMediaReader::Essence, 'Q', 'Q').GetResultCode(), ResultInvalidArgument().GetResultCode());
  EXPECT_FALSE(video->IsRegionSet(CMediaReader::Essence));
  EXPECT_THROW(video->SetRegion(3, 'U', 'S'), Result);
  RObject<CAudioReaderProperties> audio(new CAudioReaderProperties());
  ASSERT_TRUE(audio->SetLanguage('d', 'e', 'u').Succeeded());
  EXPECT_TRUE(audio->IsLanguageSet(CMediaReader::Unspecified));
  ASSERT_TRUE(audio->SetRegion('D', 'E').Succeeded());
  audio->GetRegion(CMediaReader::Unspecified, a, b);
  EXPECT_EQ(std::string({a, b}), "DE");
}

TEST_F(ReaderPropertiesTest, ElementaryWritersAreChosenByKindAndFormat) {
  RObject<CVideoProperties> avc(new CVideoProperties());
  avc->SetFormat(FourCC("avc1"));
  EXPECT_EQ(CElementaryWriterProperties::ChooseWriterType(avc), FourCC("h264"));
  RObject<CVideoProperties> planar(new CVideoProperties());
  planar->SetFormat(FourCC("I420"));
  EXPECT_EQ(CElementaryWriterProperties::ChooseWriterType(planar), FourCC("vide"));
  planar->SetProperty(ContainerProperty::ContainerWriter::ContainerFormat, static_cast<int>(FourCC("y4m ")));
  EXPECT_EQ(CElementaryWriterProperties::ChooseWriterType(planar), FourCC("y4m "));
  RObject<CAudioProperties> pcm(new CAudioProperties());
  pcm->SetFormat(FourCC("lpcm"));
  EXPECT_EQ(CElementaryWriterProperties::ChooseWriterType(pcm), FourCC("wav "));
}

TEST_F(ReaderPropertiesTest, AnElementaryWriterPlacesEachSampleAfterTheLast) {
  RObject<CVideoProperties> video(new CVideoProperties());
  video->SetFormat(FourCC("I420"));
  video->SetWidth(4);
  video->SetHeight(2);
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CElementaryWriterProperties> elementary(new CElementaryWriterProperties(FourCC("elwr")));
  ASSERT_TRUE(elementary->Begin(stream, video).Succeeded());
  for (int frame = 0; frame < 2; ++frame) {
    RObject<CVideoSample> sample(new CVideoSample(frame, 1, 0));
    RObject<CBufferDataReference> bytes(new CBufferDataReference(12));
    for (int i = 0; i < 12; ++i) bytes->GetData()[i] = static_cast<unsigned char>(frame * 16 + i);
    sample->SetDataReference(bytes);
    RObject<CStreamDataReference> placed;
    ASSERT_TRUE(elementary->Resolve(sample, placed.Out()).Succeeded());
    EXPECT_EQ(placed->GetPosition(), frame * 12);
    EXPECT_EQ(placed->GetLength(), 12);
  }
  EXPECT_EQ(stream->GetLength(), 24);
  EXPECT_TRUE(elementary->End().Succeeded());
  RObject<CAudioProperties> audio(new CAudioProperties());
  audio->SetFormat(FourCC("lpcm"));
  // The WAV writer is chosen, and it refuses PCM of no known layout.
  EXPECT_EQ(elementary->Begin(stream, audio).GetResultCode(), ResultNotSupported().GetResultCode());
}

TEST_F(ReaderPropertiesTest, TheSidecarIndexSerialisesEverySampleAndTotalsDurations) {
  const std::string path = TempPath("sidecar.~index");
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerIndex> index(new CContainerIndex());
  ASSERT_TRUE(index->Save(text).Succeeded());
  for (int i = 0; i < 10; ++i) {
    RObject<CVideoSample> sample(new CVideoSample(i, 1001, 0));
    RObject<CStorageDataReference> where(new CStorageDataReference(i * 100LL, 100));
    ASSERT_TRUE(index->WriteVideoSample(1, sample, where).Succeeded());
  }
  EXPECT_EQ(index->WriteVideoSample(32, nullptr, nullptr).GetResultCode(), ResultArgumentNull().GetResultCode());
  RObject<CVideoSample> outside(new CVideoSample(0, 1, 0));
  EXPECT_EQ(index->WriteVideoSample(32, outside, nullptr).GetResultCode(), ResultIndexOutOfRange().GetResultCode());
  EXPECT_EQ(index->GetVideoDuration(1), 10010);
  EXPECT_EQ(index->GetAudioDuration(1), 0);
  ASSERT_TRUE(index->End().Succeeded());
  const std::string bytes = ReadFile(path);
  // Each record: the slot number, then the sample's own serialisation.
  ASSERT_GE(bytes.size(), 40u);
  EXPECT_EQ(bytes.substr(0, 4), std::string("\x01\x00\x00\x00", 4));
  size_t records = 0;
  for (size_t at = bytes.find("vid#"); at != std::string::npos; at = bytes.find("vid#", at + 1)) ++records;
  EXPECT_EQ(records, 10u);  // type codes keep their byte order
}

}  // namespace
