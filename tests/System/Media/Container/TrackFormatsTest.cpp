// The formats each reader and writer lists per track kind, held against
// what they really read and write, and the file identifiers of readers and
// writers.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ContainerTestSupport.h"
#include "ReaderTestSupport.h"
#include "System/Collections/Value.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"
#include "WavTestSupport.h"

using namespace Corvane::Mox;
using namespace ContainerTest;
using namespace WavTest;

namespace {

class TrackFormatsTest : public LeakCheckedTest {
 protected:
  static std::vector<unsigned int> Values(CFormatList* list) {
    std::vector<unsigned int> values;
    for (int i = 0; list && i < list->GetCount(); ++i) {
      unsigned int value = 0;
      EXPECT_TRUE(list->GetValue(i, value).Succeeded());
      values.push_back(value);
    }
    return values;
  }

  static std::string Chars(CString* text) { return text ? text->GetChars() : "<null>"; }

  static RObject<CContainerReader> Begin(const std::string& path) {
    RObject<CContainerReader> reader(CContainerReader::Create(path.c_str()));
    EXPECT_TRUE(reader) << path;
    if (reader) {
      EXPECT_TRUE(reader->BeginIndex().Succeeded()) << path;
    }
    return reader;
  }
};

TEST_F(TrackFormatsTest, TheBaseHasNoTracksOfAnyKindAndNoFileIdentifier) {
  RObject<CContainerReader> bare(new CContainerReader(FourCC("tbas")));
  EXPECT_FALSE(RObject<CFormatList>(bare->GetVideoFormats()));
  EXPECT_FALSE(RObject<CFormatList>(bare->GetAudioFormats()));
  EXPECT_FALSE(RObject<CFormatList>(bare->GetSubtitleFormats()));
  EXPECT_FALSE(RObject<CString>(bare->GetFileIdentifier(nullptr)));
}

TEST_F(TrackFormatsTest, EveryFormatTheY4mWriterListsComesBackFromTheY4mReader) {
  RObject<CContainerWriter> lister(CContainerWriter::Create(
      RObject<CString>(CString::WithString(TempPath("lister.y4m").c_str())), FourCC("y4m ")));
  ASSERT_TRUE(lister);
  const std::vector<unsigned int> written = Values(RObject<CFormatList>(lister->GetVideoFormats()));
  ASSERT_EQ(written.size(), 6u);
  EXPECT_FALSE(RObject<CFormatList>(lister->GetAudioFormats()));
  for (unsigned int format : written) {
    const std::string path = TempPath("format-" + std::to_string(format) + ".y4m");
    RObject<CContainerWriter> writer(
        CContainerWriter::Create(RObject<CString>(CString::WithString(path.c_str())), FourCC("y4m ")));
    ASSERT_TRUE(writer->AddVideoMedia(TinyPicture(format)).Succeeded());
    ASSERT_TRUE(writer->BeginIndex().Succeeded()) << format;
    writer->EndIndex();
    RObject<CContainerReader> reader(Begin(path));
    ASSERT_TRUE(reader);
    RObject<CVideoProperties> track(reader->GetVideoProperties(0));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->GetFormat(), format);
    const std::vector<unsigned int> read = Values(RObject<CFormatList>(reader->GetVideoFormats()));
    EXPECT_NE(std::find(read.begin(), read.end(), format), read.end()) << format;
    EXPECT_FALSE(RObject<CFormatList>(reader->GetSubtitleFormats()));
    reader->EndIndex();
  }
}

TEST_F(TrackFormatsTest, EveryFormatTheWavWriterListsIsWrittenAndReadBackAsAListedFormat) {
  RObject<CContainerWriter> lister(CContainerWriter::Create(
      RObject<CString>(CString::WithString(TempPath("lister.wav").c_str())), FourCC("wav ")));
  ASSERT_TRUE(lister);
  const std::vector<unsigned int> written = Values(RObject<CFormatList>(lister->GetAudioFormats()));
  ASSERT_FALSE(written.empty());
  EXPECT_FALSE(RObject<CFormatList>(lister->GetVideoFormats()));
  for (unsigned int format : written) {
    const std::string path = TempPath("format-" + std::to_string(format) + ".wav");
    RObject<CContainerWriter> writer(
        CContainerWriter::Create(RObject<CString>(CString::WithString(path.c_str())), FourCC("wav ")));
    RObject<CAudioProperties> audio(new CAudioProperties());
    audio->SetFormat(format);
    audio->SetChannels(2);
    audio->SetSampleRate(48000);
    audio->SetBitsPerSample(24);  // the word size of Dolby E; the others know theirs
    audio->SetSampleDuration(1);
    Result added = writer->AddAudioMedia(audio);
    ASSERT_TRUE(added.Succeeded()) << format << ": " << (added.GetDetails() ? added.GetDetails() : "");
    ASSERT_TRUE(writer->BeginIndex().Succeeded());
    RObject<CAudioSample> sample(new CAudioSample(1));
    RObject<CBufferDataReference> data(new CBufferDataReference(96));  // whole frames of every width
    sample->SetDataReference(data);
    ASSERT_TRUE(writer->WriteAudioSample(0, sample).Succeeded());
    ASSERT_TRUE(writer->EndIndex().Succeeded());
    RObject<CContainerReader> reader(Begin(path));
    ASSERT_TRUE(reader);
    RObject<CAudioProperties> track(reader->GetAudioProperties(0));
    ASSERT_TRUE(track);
    const std::vector<unsigned int> read = Values(RObject<CFormatList>(reader->GetAudioFormats()));
    EXPECT_NE(std::find(read.begin(), read.end(), track->GetFormat()), read.end()) << format;
    reader->EndIndex();
  }
}

TEST_F(TrackFormatsTest, TheWavReadersListTheirFormatsInTheirOrder) {
  const std::string wav = TempPath("listed.wav");
  WriteFile(wav, Riff(Chunk("fmt ", Format(1, 1, 8000, 16)) + Chunk("data", Essence(16))));
  RObject<CContainerReader> riff(Begin(wav));
  ASSERT_TRUE(riff);
  const std::vector<unsigned int> formats = Values(RObject<CFormatList>(riff->GetAudioFormats()));
  ASSERT_EQ(formats.size(), 20u);
  // The block codecs by their WAVE tag first, MPEG audio last.
  EXPECT_EQ(formats.front() & 0xFFFF, 0x0006u);
  EXPECT_EQ(formats[4] & 0xFFFF, 0x0045u);
  EXPECT_EQ(formats[5], FourCC("gsm "));
  EXPECT_EQ(formats.back(), FourCC("mpga"));
  riff->EndIndex();

  const std::string w64 = TempPath("listed.w64");
  WriteFile(w64, Wave64(Wave64Chunk(Guid64("fmt "), Format(3, 1, 8000, 32)) + Wave64Chunk(Guid64("data"), Essence(16))));
  RObject<CContainerReader> wave64(Begin(w64));
  ASSERT_TRUE(wave64);
  RObject<CAudioProperties> track(wave64->GetAudioProperties(0));
  ASSERT_TRUE(track);
  const std::vector<unsigned int> listed = Values(RObject<CFormatList>(wave64->GetAudioFormats()));
  EXPECT_EQ(listed.size(), 5u);
  EXPECT_NE(std::find(listed.begin(), listed.end(), track->GetFormat()), listed.end());
  EXPECT_FALSE(RObject<CFormatList>(wave64->GetVideoFormats()));
  wave64->EndIndex();
}

TEST_F(TrackFormatsTest, TheElementaryVideoWriterListsEveryVideoFormatOnce) {
  RObject<CContainerWriter> writer(CContainerWriter::Create(
      RObject<CString>(CString::WithString(TempPath("raw.raw").c_str())), FourCC("vide")));
  ASSERT_TRUE(writer);
  const std::vector<unsigned int> formats = Values(RObject<CFormatList>(writer->GetVideoFormats()));
  EXPECT_EQ(static_cast<int>(formats.size()), VideoFormat::GetFormatCount());
  for (unsigned int format : {FourCC("I420"), FourCC("v210"), FourCC("avc1")})
    EXPECT_NE(std::find(formats.begin(), formats.end(), format), formats.end()) << format;
  std::vector<unsigned int> sorted = formats;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());
  EXPECT_FALSE(RObject<CFormatList>(writer->GetAudioFormats()));
}

TEST_F(TrackFormatsTest, FilesAreIdentifiedByTheirNameWhereverTheyAreOpenedFrom) {
  const std::string path = TempPath("identified.y4m");
  WriteFile(path, Y4m("YUV4MPEG2 W4 H2 F25:1", 1, 12));
  RObject<CContainerReader> reader(CContainerReader::Create(path.c_str()));
  ASSERT_TRUE(reader);
  EXPECT_EQ(Chars(RObject<CString>(reader->GetFileIdentifier(nullptr))), "identified.y4m");
  // The same file named relative to the directory, or by its full path.
  RObject<CString> relative(CString::WithString("identified.y4m"));
  EXPECT_EQ(Chars(RObject<CString>(reader->GetFileIdentifier(relative))), "identified.y4m");
  RObject<CString> full(CString::WithString(path.c_str()));
  EXPECT_EQ(Chars(RObject<CString>(reader->GetFileIdentifier(full))), "identified.y4m");

  const std::string wav = TempPath("identified.wav");
  WriteFile(wav, Riff(Chunk("fmt ", Format(1, 1, 8000, 16)) + Chunk("data", Essence(16))));
  RObject<CContainerReader> audio(CContainerReader::Create(wav.c_str()));
  ASSERT_TRUE(audio);
  EXPECT_EQ(Chars(RObject<CString>(audio->GetFileIdentifier(nullptr))), "identified.wav");

  // A writer's output: the path it was created for, or its name and extension.
  RObject<CContainerWriter> named(CContainerWriter::Create(
      RObject<CString>(CString::WithString(TempPath("out/take.Y4M").c_str())), FourCC("y4m ")));
  ASSERT_TRUE(named);
  EXPECT_EQ(Chars(RObject<CString>(named->GetFileIdentifier(nullptr))), "take.Y4M");
  RObject<CContainerWriter> bare(CContainerWriterInventory::Create(FourCC("wav ")));
  ASSERT_TRUE(bare);
  EXPECT_FALSE(RObject<CString>(bare->GetFileIdentifier(nullptr)));
  bare->SetName(RObject<CString>(CString::WithString("mix")));
  EXPECT_EQ(Chars(RObject<CString>(bare->GetFileIdentifier(nullptr))), "mix.wav");

  // A caller's stream has no file name to go by.
  RObject<CMemoryStream> stream(new CMemoryStream());
  const std::string bytes = Y4m("YUV4MPEG2 W4 H2", 1, 12);
  stream->Write(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
  RObject<CContainerStreamContext> context(new CContainerStreamContext(stream));
  RObject<CContainerReader> streamed(CContainerReader::Create(context));
  ASSERT_TRUE(streamed);
  EXPECT_FALSE(RObject<CString>(streamed->GetFileIdentifier(nullptr)));
}

}  // namespace
