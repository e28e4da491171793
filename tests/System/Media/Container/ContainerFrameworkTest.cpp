// What every reader and writer shares: probing, contexts and the names they
// resolve, writer names and templates, extensions, properties forwarded to
// streams, and the reader's duration and size descriptions.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "ContainerTestSupport.h"
#include "System/Collections/List.h"
#include "System/IO/BufferedStream.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerDescription.h"
#include "System/Media/Container/ContainerDirectoryContext.h"
#include "System/Media/Container/ContainerPropertiesExtension.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;

namespace {

// Readers that judge a stream by its first four bytes.
template <unsigned int Code, int Score, char... Magic>
class CMagicReader : public CContainerReader {
 public:
  static constexpr unsigned int ComponentCode = Code;
  CMagicReader() : CContainerReader(Code) {}
  int Validate(CStream* stream) override {
    const char magic[] = {Magic...};
    unsigned char head[4] = {};
    int read = 0;
    stream->Read(head, 4, &read);
    return read == 4 && std::memcmp(head, magic, 4) == 0 ? Score : 0;
  }
};

using CTieFirst = CMagicReader<FourCC("tpa1"), 128, 'T', 'I', 'E', '!'>;
using CTieSecond = CMagicReader<FourCC("tpa2"), 128, 'T', 'I', 'E', '!'>;
using CSettles = CMagicReader<FourCC("tpc1"), 256, 'S', 'T', 'O', 'P'>;
using CWouldWinLater = CMagicReader<FourCC("tpc2"), 400, 'S', 'T', 'O', 'P'>;

// A reader whose every judgement fails with a negative result.
class CFailingReader : public CContainerReader {
 public:
  static constexpr unsigned int ComponentCode = FourCC("tpb1");
  CFailingReader() : CContainerReader(ComponentCode) {}
  int Validate(CStream*) override { return ResultIOError().GetResultCode(); }
};

// A reader with one video track of a given time scale and duration.
class CTimedReader : public CContainerReader {
 public:
  CTimedReader(long long timeScale, long long duration) : CContainerReader(FourCC("tptr")) {
    properties_ = new CVideoProperties();
    properties_->SetTimeScale(timeScale);
    properties_->SetDuration(duration);
  }
  ~CTimedReader() override { properties_->Release(); }
  int GetVideoMediaCount() const override { return 1; }
  CVideoProperties* GetVideoProperties(int) const override { return new CVideoProperties(properties_); }

 private:
  CVideoProperties* properties_;
};

class ContainerFrameworkTest : public LeakCheckedTest {
 protected:
  static void SetUpTestSuite() {
    static const bool registered = [] {
      CFamilyInventory<CContainerReader>::AddComponent<CFailingReader>();
      CFamilyInventory<CContainerReader>::AddComponent<CTieFirst>();
      CFamilyInventory<CContainerReader>::AddComponent<CTieSecond>();
      CFamilyInventory<CContainerReader>::AddComponent<CSettles>();
      CFamilyInventory<CContainerReader>::AddComponent<CWouldWinLater>();
      return true;
    }();
    (void)registered;
  }

  static CContainerReader* Probe(const char* bytes) {
    RObject<CMemoryStream> stream(new CMemoryStream());
    stream->Write(reinterpret_cast<const unsigned char*>(bytes), static_cast<int>(std::strlen(bytes)));
    return CContainerReaderInventory::Create(stream.Get());
  }

  static std::string Chars(CString* text) { return text ? text->GetChars() : "<null>"; }
};

TEST_F(ContainerFrameworkTest, ProbingPrefersTheEarlierOfEqualScoresAndStopsAt256) {
  RObject<CContainerReader> tie(Probe("TIE! and more"));
  ASSERT_TRUE(tie);
  EXPECT_EQ(tie->GetType(), FourCC("tpa1"));
  RObject<CContainerReader> settled(Probe("STOP"));
  ASSERT_TRUE(settled);
  EXPECT_EQ(settled->GetType(), FourCC("tpc1"));  // the later 400 is never asked
  RObject<CContainerReader> nothing(Probe("nothing knows this"));
  EXPECT_FALSE(nothing);  // negative scores never win
  RObject<CContainerReader> y4m(Probe("YUV4MPEG2 W2 H2\n"));
  ASSERT_TRUE(y4m);
  EXPECT_EQ(y4m->GetType(), FourCC("y4m "));
  EXPECT_EQ(CContainerReaderInventory::Create(static_cast<CStream*>(nullptr)), nullptr);
}

TEST_F(ContainerFrameworkTest, ProbingAFileGivesTheReaderItsContext) {
  const std::string path = TempPath("probe-me.tie");
  WriteFile(path, "TIE!");
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerReader> reader(CContainerReader::Create(text));
  ASSERT_TRUE(reader);
  ASSERT_TRUE(reader->GetContext());
  EXPECT_TRUE(reader->GetContext()->IsType(CContainerDirectoryContext::TypeCode));
  RObject<CString> name(reader->GetContext()->GetDefaultFileName());
  EXPECT_EQ(Chars(name), "probe-me.tie");
  RObject<CString> missing(CString::WithString(TempPath("absent.tie").c_str()));
  EXPECT_FALSE(RObject<CContainerReader>(CContainerReader::Create(missing)));
  RObject<CString> remote(CString::WithString("https://example.com/clip.y4m"));
  EXPECT_FALSE(RObject<CContainerReader>(CContainerReader::Create(remote)));  // not taken for a local file
  EXPECT_FALSE(RObject<CContainerReader>(CContainerReader::Create(remote, FourCC("y4m "))));
}

TEST_F(ContainerFrameworkTest, DirectoryContextsJoinNamesAsPathsDo) {
  RObject<CContainerDirectoryContext> plain(new CContainerDirectoryContext("media"));
  RObject<CContainerDirectoryContext> slashed(new CContainerDirectoryContext("media/"));
  RObject<CContainerDirectoryContext> drive(new CContainerDirectoryContext("C:"));
  RObject<CString> name(CString::WithString("clip.y4m"));
  RObject<CString> rooted(CString::WithString("/abs/clip.y4m"));
  EXPECT_EQ(Chars(RObject<CString>(plain->GetFilePath(name))), "media/clip.y4m");
  EXPECT_EQ(Chars(RObject<CString>(slashed->GetFilePath(name))), "media/clip.y4m");
  EXPECT_EQ(Chars(RObject<CString>(drive->GetFilePath(name))), "C:clip.y4m");
  EXPECT_EQ(Chars(RObject<CString>(plain->GetFilePath(rooted))), "/abs/clip.y4m");
  RObject<CString> longName(CString::WithString(std::string(1020, 'n').c_str()));
  EXPECT_FALSE(RObject<CString>(plain->GetFilePath(longName)));  // would reach 1024 characters

  RObject<CString> path(CString::WithString("a/b/c.y4m"));
  RObject<CContainerDirectoryContext> split(CContainerDirectoryContext::Create(path));
  ASSERT_TRUE(split);
  EXPECT_EQ(Chars(RObject<CString>(split->GetDirectory())), "a/b");
  EXPECT_EQ(Chars(RObject<CString>(split->GetDefaultFileName())), "c.y4m");
  RObject<CString> directoryOnly(CString::WithString("a/b/"));
  EXPECT_FALSE(RObject<CContainerDirectoryContext>(CContainerDirectoryContext::Create(directoryOnly)));

  EXPECT_TRUE(plain->AddFileName(name, false).Succeeded());
  RObject<CString> upper(CString::WithString("CLIP.Y4M"));
  EXPECT_EQ(plain->AddFileName(upper, false).GetResultCode(), ResultFalse().GetResultCode());
  EXPECT_EQ(plain->GetFileNameCount(), 1);
  EXPECT_TRUE(plain->AddFileName(upper, true).Succeeded());
  EXPECT_EQ(plain->GetFileNameCount(), 2);
  EXPECT_EQ(plain->AddStream(nullptr).GetResultCode(), ResultArgumentNull().GetResultCode());
}

TEST_F(ContainerFrameworkTest, AStreamBecomesADirectoryContextWhenItIsAFile) {
  const std::string path = TempPath("context-source.bin");
  WriteFile(path, "bytes");
  RObject<CStream> file;
  ASSERT_TRUE(CFileDescriptorStream::Open(path.c_str(), FileMode::Read, file.Out()).Succeeded());
  RObject<CStream> buffered(new CBufferedStream(file, 4096, 2));
  RObject<CContainerContext> fromFile(CContainerContext::Create(buffered.Get()));
  ASSERT_TRUE(fromFile);
  EXPECT_TRUE(fromFile->IsType(CContainerDirectoryContext::TypeCode));
  EXPECT_EQ(Chars(RObject<CString>(fromFile->GetDefaultFileName())), "context-source.bin");
  RObject<CStream> memory(new CMemoryStream());
  RObject<CContainerContext> fromMemory(CContainerContext::Create(memory.Get()));
  ASSERT_TRUE(fromMemory);
  ASSERT_TRUE(fromMemory->IsType(CContainerStreamContext::TypeCode));
  EXPECT_EQ(static_cast<CContainerStreamContext*>(fromMemory.Get())->GetStream(), memory.Get());
}

TEST_F(ContainerFrameworkTest, WritersTakeNameAndExtensionFromTheirPath) {
  const std::string path = TempPath("out/CLIP.MOV");
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerWriter> writer(CContainerWriter::Create(text, FourCC("vide")));
  ASSERT_TRUE(writer);
  EXPECT_EQ(Chars(RObject<CString>(writer->GetFileExtension())), "MOV");
  EXPECT_EQ(Chars(RObject<CString>(writer->GetName())), "CLIP");
  RObject<CContainerDirectoryContext> context(new CContainerDirectoryContext(TempDirectory().c_str()));
  RObject<CContainerWriter> bare(CContainerWriter::Create(context.Get(), FourCC("vide")));
  ASSERT_TRUE(bare);
  EXPECT_EQ(Chars(RObject<CString>(bare->GetFileExtension())), "raw");
  EXPECT_FALSE(RObject<CContainerWriter>(CContainerWriter::Create(text, FourCC("mp4 "))));  // unavailable
}

// A writer's output name after opening, for a given default file name.
std::string OpenedName(const char* defaultName) {
  RObject<CContainerDirectoryContext> context(new CContainerDirectoryContext(TempDirectory().c_str()));
  RObject<CString> name(CString::WithString(defaultName));
  context->SetDefaultFileName(name);
  RObject<CContainerWriter> writer(CContainerWriter::Create(context.Get(), FourCC("vide")));
  RObject<CVideoProperties> video(new CVideoProperties());
  video->SetFormat(FourCC("I420"));
  video->SetWidth(176);
  video->SetHeight(144);
  writer->AddVideoMedia(video);
  if (writer->BeginIndex().Failed()) return "<failed>";
  writer->EndIndex();
  RObject<CString> opened(context->GetDefaultFileName());
  return opened->GetChars();
}

TEST_F(ContainerFrameworkTest, TwoDollarSignsMakeTheNameATemplate) {
  EXPECT_EQ(OpenedName("clip_$width$x$height$.raw"), "clip_176x144.raw");
  EXPECT_TRUE(std::filesystem::exists(TempPath("clip_176x144.raw")));
  EXPECT_EQ(OpenedName("price$5.raw"), "price$5.raw");  // a single "$" is an ordinary character
  EXPECT_TRUE(std::filesystem::exists(TempPath("price$5.raw")));
}

TEST_F(ContainerFrameworkTest, AWriterDescribesItsNameManifestAndTracks) {
  const std::string path = TempPath("described.y4m");
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerWriter> writer(CContainerWriter::Create(text, FourCC("y4m ")));
  RObject<CVideoProperties> video(new CVideoProperties());
  video->SetFormat(FourCC("I420"));
  video->SetWidth(4);
  video->SetHeight(2);
  ASSERT_TRUE(writer->AddVideoMedia(video).Succeeded());
  EXPECT_EQ(writer->AddVideoMedia(video).GetResultCode(), ResultNotSupported().GetResultCode());
  ASSERT_TRUE(writer->BeginIndex().Succeeded());
  RObject<CProperties> description(writer->GetDescriptiveRepresentation());
  unsigned int type = 0;
  ASSERT_TRUE(description->GetFourProperty("type", type).Succeeded());
  EXPECT_EQ(type, FourCC("y4m "));
  RObject<CString> typeName;
  description->GetPropertyDescription("type", typeName.Out());
  EXPECT_EQ(Chars(typeName), "YUV4MPEG");
  RObject<CString> name;
  description->GetProperty("name", name.Out());
  EXPECT_EQ(Chars(name), "described");
  RObject<CVariantArray> manifest;
  ASSERT_TRUE(description->GetProperty("manifest", manifest.Out()).Succeeded());
  ASSERT_EQ(manifest->GetCount(), 1);
  RObject<CVariant> first;
  manifest->Get(0, first.Out());
  RObject<CString> firstPath(first->ToString());
  EXPECT_EQ(Chars(firstPath), path);
  RObject<CVariantArray> tracks;
  ASSERT_TRUE(description->GetProperty("video", tracks.Out()).Succeeded());
  EXPECT_EQ(tracks->GetCount(), 1);
  EXPECT_FALSE(description->ContainsProperty("audio"));
  writer->EndIndex();
}

TEST_F(ContainerFrameworkTest, BaseWritersNameTheMediaTheyRefuse) {
  RObject<CContainerWriter> writer(CContainerWriterInventory::Create(FourCC("y4m ")));
  ASSERT_TRUE(writer);
  // The Y4M writer takes video only: audio and subtitles reach the base.
  const Result audio = writer->AddAudioMedia(nullptr);
  EXPECT_EQ(audio.GetResultCode(), ResultNotSupported().GetResultCode());
  EXPECT_STREQ(audio.GetDetails(), "audio media is not supported");
  EXPECT_STREQ(writer->AddSubtitleMedia(nullptr).GetDetails(), "subtitle media is not supported");
}

TEST_F(ContainerFrameworkTest, ExtensionsAreOnePerType) {
  RObject<CTimedReader> reader(new CTimedReader(1000, 0));
  RObject<CContainerPropertiesExtension> first(new CContainerPropertiesExtension(FourCC("tex1")));
  RObject<CContainerPropertiesExtension> again(new CContainerPropertiesExtension(FourCC("tex1")));
  ASSERT_TRUE(reader->AddExtension(first).Succeeded());
  const Result duplicate = reader->AddExtension(again);
  EXPECT_TRUE(duplicate.Failed());
  EXPECT_STREQ(duplicate.GetDetails(), "extension already exists");
  EXPECT_EQ(reader->GetExtensionCount(), 1);
  EXPECT_EQ(RObject<CContainerPropertiesExtension>(reader->GetExtension(FourCC("tex1"))).Get(), first.Get());
  EXPECT_TRUE(reader->RemoveExtension(FourCC("tex1")).Succeeded());
  EXPECT_FALSE(reader->ContainsExtension(FourCC("tex1")));
  EXPECT_TRUE(reader->AddExtension(again).Succeeded());
}

TEST_F(ContainerFrameworkTest, DurationInMillisecondsSkipsTracksWithoutATimeScale) {
  RObject<CTimedReader> untimed(new CTimedReader(0, 100));
  EXPECT_EQ(untimed->GetDurationInMilliseconds(), 0);
  RObject<CTimedReader> timed(new CTimedReader(30000, 30001));
  EXPECT_EQ(timed->GetDurationInMilliseconds(), 1000);  // integer division
}

TEST_F(ContainerFrameworkTest, SizesAreDescribedInDecimalUnits) {
  EXPECT_EQ(Chars(RObject<CString>(DescribeByteSize(999))), "999 B");
  EXPECT_EQ(Chars(RObject<CString>(DescribeByteSize(1000))), "1.000 kB");
  EXPECT_EQ(Chars(RObject<CString>(DescribeByteSize(1500000))), "1.500 MB");
  EXPECT_EQ(Chars(RObject<CString>(DescribeByteSize(2000000000))), "2.000 GB");
}

TEST_F(ContainerFrameworkTest, ReadTimeoutReachesTheStreamsAlreadyOpen) {
  const std::string path = TempPath("timeout.y4m");
  WriteFile(path, Y4m("YUV4MPEG2 W2 H2 F1:1", 1, 6));
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerReader> reader(CContainerReader::Create(text));
  ASSERT_TRUE(reader);
  ASSERT_TRUE(reader->BeginIndex().Succeeded());
  ASSERT_TRUE(reader->SetProperty(ContainerProperty::ContainerReader::ReadTimeout, 250).Succeeded());
  int timeout = 0;
  ASSERT_TRUE(reader->GetProperty(ContainerProperty::ContainerReader::ReadTimeout, timeout).Succeeded());
  EXPECT_EQ(timeout, 250);
  RObject<CList<CStream>> streams(reader->GetContext()->GetStreams());
  ASSERT_EQ(streams->GetCount(), 1);
  RObject<CStream> opened;
  streams->Get(0, opened.Out());
  ASSERT_TRUE(opened->IsType(CBufferedStream::TypeCode));
  RObject<CStream> base(static_cast<CBufferedStream*>(opened.Get())->GetStream());
  auto* file = static_cast<CFileStream*>(base.Get());
  int seen = 0;
  file->GetReadTimeout(seen);
  EXPECT_EQ(seen, 250);
  EXPECT_EQ(reader->SetProperty(ContainerProperty::ContainerReader::ReadMargin, static_cast<CVariant*>(nullptr)).GetResultCode(),
            ResultNullPointer().GetResultCode());
  reader->EndIndex();
}

}  // namespace
