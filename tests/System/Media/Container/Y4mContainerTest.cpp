// YUV4MPEG2 through the container framework: header parsing and its
// defaults, frame sizes, the index thread's samples and their bytes, damaged
// files, and the writer's header.
#include <gtest/gtest.h>

#include <string>

#include "ContainerTestSupport.h"
#include "ReaderTestSupport.h"
#include "System/ByteArray.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerPropertiesExtension.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Media/Y4m/Y4mReader.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;

namespace {

class Y4mContainerTest : public LeakCheckedTest {
 protected:
  // A reader over a file holding `bytes`, indexing begun (or failed: result).
  RObject<CContainerReader> Open(const std::string& name, const std::string& bytes, Result* result = nullptr) {
    const std::string path = TempPath(name);
    WriteFile(path, bytes);
    RObject<CString> text(CString::WithString(path.c_str()));
    RObject<CContainerReader> reader(CContainerReader::Create(text, FourCC("y4m ")));
    EXPECT_TRUE(reader);
    if (!reader) return reader;
    Result begun = reader->BeginIndex();
    if (result) *result = begun;
    else EXPECT_TRUE(begun.Succeeded()) << (begun.GetDetails() ? begun.GetDetails() : "");
    return reader;
  }

  static RObject<CVideoProperties> Track(CContainerReader* reader) {
    return RObject<CVideoProperties>(reader->GetVideoProperties(0));
  }

  static std::vector<RObject<CVideoSample>> Drain(CContainerReader* reader) {
    std::vector<RObject<CVideoSample>> samples;
    for (;;) {
      RObject<CVideoSample> sample;
      EXPECT_TRUE(reader->ReadVideoSample(0, sample.Out()).Succeeded());
      if (!sample) return samples;
      samples.push_back(sample);
    }
  }
};

TEST_F(Y4mContainerTest, MissingRateAndAspectTakeThePictureSizesUsualValues) {
  RObject<CContainerReader> pal(Open("pal.y4m", Y4m("YUV4MPEG2 W720 H576 C420jpeg", 0, 0)));
  RObject<CVideoProperties> track(Track(pal));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetFormat(), FourCC("I420"));
  EXPECT_EQ(track->GetTimeScale(), 25);
  EXPECT_EQ(track->GetFrameDuration(), 1);
  EXPECT_EQ(track->GetPixelAspectRatio().numerator, 16);
  EXPECT_EQ(track->GetPixelAspectRatio().denominator, 15);
  pal->EndIndex();

  RObject<CContainerReader> ntsc(Open("ntsc.y4m", Y4m("YUV4MPEG2 W720 H486 F0:0", 0, 0)));
  track = Track(ntsc);
  EXPECT_EQ(track->GetTimeScale(), 30000);  // a zero part counts as missing
  EXPECT_EQ(track->GetFrameDuration(), 1001);
  EXPECT_EQ(track->GetPixelAspectRatio().numerator, 8);
  EXPECT_EQ(track->GetPixelAspectRatio().denominator, 9);
  ntsc->EndIndex();

  RObject<CContainerReader> other(Open("other.y4m", Y4m("YUV4MPEG2 W640 H360", 0, 0)));
  track = Track(other);
  EXPECT_EQ(track->GetTimeScale(), 24000);
  EXPECT_EQ(track->GetFrameDuration(), 1001);
  EXPECT_EQ(track->GetPixelAspectRatio().numerator, 1);
  other->EndIndex();
}

TEST_F(Y4mContainerTest, FrameSizesFollowTheColourSpace) {
  using Space = Y4mColorSpace;
  EXPECT_EQ(CY4mReader::GetFrameSize(1920, 1080, Space::C422p10), 1920LL * 1080 * 4);
  EXPECT_EQ(CY4mReader::GetFrameSize(1920, 1080, Space::C420p10), 1920LL * 1080 * 3);
  EXPECT_EQ(CY4mReader::GetFrameSize(1920, 1080, Space::C420paldv), 1920LL * 1080 * 3 / 2);
  EXPECT_EQ(CY4mReader::GetFrameSize(720, 480, Space::C411), 720LL * 480 * 3 / 2);
  EXPECT_EQ(CY4mReader::GetFrameSize(720, 480, Space::C422), 720LL * 480 * 2);
  EXPECT_EQ(CY4mReader::GetFrameSize(720, 480, Space::C444), 720LL * 480 * 3);
  // Odd sizes: each chroma plane rounds its width and height up.
  EXPECT_EQ(CY4mReader::GetFrameSize(33, 17, Space::C420), 33 * 17 + 2 * 17 * 9);
  EXPECT_EQ(CY4mReader::GetFrameSize(0, 1080, Space::C420), 0);
  EXPECT_EQ(CY4mReader::GetFrameSize(1 << 20, 1 << 20, Space::C444), 0);  // beyond a 32-bit length

  RObject<CContainerReader> reader(Open("p10.y4m", Y4m("YUV4MPEG2 W1920 H1080 F30000:1001 C422p10", 0, 0)));
  RObject<CVideoProperties> track(Track(reader));
  EXPECT_EQ(track->GetFormat(), FourCC("I2AL"));
  EXPECT_EQ(track->GetTimeScale(), 30000);
  reader->EndIndex();
}

TEST_F(Y4mContainerTest, InterlacingGivesTheFieldOrderAndMixedIsRefused) {
  const struct {
    const char* letter;
    int fieldOrder;
  } cases[] = {{"Ip", 1}, {"It", 2}, {"Ib", 3}};
  for (const auto& c : cases) {
    RObject<CContainerReader> reader(Open("interlace.y4m", Y4m(std::string("YUV4MPEG2 W4 H2 ") + c.letter, 0, 0)));
    EXPECT_EQ(Track(reader)->GetFieldOrder(), c.fieldOrder) << c.letter;
    reader->EndIndex();
  }
  Result result;
  RObject<CContainerReader> mixed(Open("mixed.y4m", Y4m("YUV4MPEG2 W4 H2 Im", 0, 0), &result));
  EXPECT_EQ(result.GetResultCode(), ResultNotSupported().GetResultCode());
  EXPECT_EQ(mixed->GetVideoMediaCount(), 0);
}

TEST_F(Y4mContainerTest, UnknownParametersCommentsAndColonRunsAreRead) {
  RObject<CContainerReader> reader(
      Open("params.y4m", Y4m("YUV4MPEG2 W6 Zunknown=1 H4 XYSCSS=420JPEG F30000:::1001 A128::117 C444", 1, 6 * 4 * 3)));
  RObject<CVideoProperties> track(Track(reader));
  EXPECT_EQ(track->GetWidth(), 6);
  EXPECT_EQ(track->GetHeight(), 4);
  EXPECT_EQ(track->GetFormat(), FourCC("I444"));
  EXPECT_EQ(track->GetTimeScale(), 30000);
  EXPECT_EQ(track->GetFrameDuration(), 1001);
  EXPECT_EQ(track->GetPixelAspectRatio().numerator, 128);
  EXPECT_EQ(track->GetPixelAspectRatio().denominator, 117);
  EXPECT_EQ(Drain(reader).size(), 1u);
  reader->EndIndex();
}

TEST_F(Y4mContainerTest, FrameLinesMayCarryLongParameters) {
  const std::string header = "YUV4MPEG2 W4 H2 F25:1";
  const std::string longLine = "FRAME Ip X" + std::string(600, 'c') + "\n";
  const std::string bytes = header + "\n" + longLine + std::string(12, 'a') + "FRAME\n" + std::string(12, 'b');
  RObject<CContainerReader> reader(Open("long-line.y4m", bytes));
  std::vector<RObject<CVideoSample>> samples = Drain(reader);
  ASSERT_EQ(samples.size(), 2u);
  RObject<CDataReference> first(samples[0]->GetDataReference(CContainerDataReference::TypeCode));
  EXPECT_EQ(static_cast<CStorageDataReference*>(first.Get())->GetPosition(),
            static_cast<long long>(header.size() + 1 + longLine.size()));
  reader->EndIndex();
}

TEST_F(Y4mContainerTest, SamplesPointAtEachPictureAndReadItsBytes) {
  const std::string header = "YUV4MPEG2 W4 H2 F25:1 C420";
  const int frameSize = 4 * 2 + 2 * 2 * 1;  // 12
  const std::string bytes = Y4m(header, 3, frameSize);
  RObject<CContainerReader> reader(Open("three.y4m", bytes));
  // The duration estimates the frame count from the whole length.
  EXPECT_EQ(Track(reader)->GetDuration(), static_cast<long long>(bytes.size()) / frameSize);
  std::vector<RObject<CVideoSample>> samples = Drain(reader);
  ASSERT_EQ(samples.size(), 3u);
  for (int f = 0; f < 3; ++f) {
    CVideoSample* sample = samples[f];
    EXPECT_EQ(sample->GetTime(), f);
    EXPECT_EQ(sample->GetDuration(), 1);
    EXPECT_EQ(sample->GetPictureType(), 0);
    RObject<CDataReference> reference(sample->GetDataReference(CContainerDataReference::TypeCode));
    ASSERT_TRUE(reference);
    auto* stored = static_cast<CContainerDataReference*>(reference.Get());
    const long long position = static_cast<long long>(header.size() + 1) + f * (6 + frameSize) + 6;
    EXPECT_EQ(stored->GetPosition(), position);
    EXPECT_EQ(stored->GetLength(), frameSize);
    ASSERT_TRUE(reader->ReadVideoData(0, sample).Succeeded());
    EXPECT_FALSE(RObject<CDataReference>(sample->GetDataReference(CContainerDataReference::TypeCode)));
    RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
    ASSERT_TRUE(data);
    ASSERT_EQ(data->GetLength(), frameSize);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(data->GetData()), frameSize), bytes.substr(position, frameSize));
  }
  RObject<CVideoSample> beyond;
  EXPECT_EQ(reader->ReadVideoSample(1, beyond.Out()).GetResultCode(), ResultIndexOutOfRange().GetResultCode());
  RObject<CProperties> description(reader->GetDescriptiveRepresentation());
  long long size = 0;
  description->GetProperty("size", size);
  EXPECT_EQ(size, static_cast<long long>(bytes.size()));
  reader->EndIndex();
}

TEST_F(Y4mContainerTest, ATruncatedFrameEndsTheTrackAndIsReported) {
  std::string bytes = Y4m("YUV4MPEG2 W4 H2 F25:1", 3, 12);
  const long long lastFrame = static_cast<long long>(bytes.size()) - 18;
  bytes.resize(bytes.size() - 5);
  RObject<CContainerReader> reader(Open("truncated.y4m", bytes));
  EXPECT_EQ(Drain(reader).size(), 2u);
  reader->EndIndex();  // joins the index thread, which has reported by then
  RObject<CContainerPropertiesExtension> variances(reader->GetExtension(FourCC("vrcp")));
  ASSERT_TRUE(variances);
  RObject<CProperties> description(variances->GetDescriptiveRepresentation());
  RObject<CVariantArray> elements;
  ASSERT_TRUE(description->GetProperty("CVariance", elements.Out()).Succeeded());
  ASSERT_EQ(elements->GetCount(), 1);
  RObject<CVariant> element;
  elements->Get(0, element.Out());
  RObject<CProperties> variance(element->ToProperties());
  ASSERT_TRUE(variance);
  int severity = -1;
  long long position = -1;
  variance->GetProperty("severity", severity);
  variance->GetProperty("position", position);
  EXPECT_EQ(severity, CVariance::Major);
  EXPECT_EQ(position, lastFrame);
}

TEST_F(Y4mContainerTest, ADamagedFrameLineEndsTheTrackThere) {
  std::string bytes = Y4m("YUV4MPEG2 W4 H2", 3, 12);
  bytes.replace(bytes.size() - 18, 5, "FRAMX");
  RObject<CContainerReader> reader(Open("damaged.y4m", bytes));
  EXPECT_EQ(Drain(reader).size(), 2u);
  reader->EndIndex();
  EXPECT_TRUE(reader->ContainsExtension(FourCC("vrcp")));
}

TEST_F(Y4mContainerTest, BadSignaturesAndHeadersFailToBegin) {
  Result result;
  RObject<CContainerReader> wrong(Open("wrong.y4m", "YUV4MPEGX W4 H2\n", &result));
  EXPECT_EQ(result.GetResultCode(), ResultUnexpected().GetResultCode());
  RObject<CContainerReader> open(Open("unended.y4m", "YUV4MPEG2 W4 H2", &result));
  EXPECT_EQ(result.GetResultCode(), ResultUnexpected().GetResultCode());
  RObject<CContainerReader> sizeless(Open("sizeless.y4m", "YUV4MPEG2 F25:1\n", &result));
  EXPECT_EQ(result.GetResultCode(), ResultFormatError().GetResultCode());
  // Probing looks at the first eight bytes only: "YUV4MPEGX" is taken (and
  // then fails to begin), "YUV4MPXG2" is not.
  RObject<CString> taken(CString::WithString(TempPath("wrong.y4m").c_str()));
  EXPECT_TRUE(RObject<CContainerReader>(CContainerReader::Create(taken)));
  WriteFile(TempPath("other.bin"), "YUV4MPXG2 W4 H2\n");
  RObject<CString> other(CString::WithString(TempPath("other.bin").c_str()));
  EXPECT_FALSE(RObject<CContainerReader>(CContainerReader::Create(other)));
}

TEST_F(Y4mContainerTest, EndingWhileTheIndexThreadWaitsOnAFullQueueReturns) {
  const std::string path = TempPath("many.y4m");
  WriteFile(path, Y4m("YUV4MPEG2 W2 H2", 500, 6));
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerReader> reader(CContainerReader::Create(text));
  ASSERT_TRUE(reader);
  reader->SetProperty(ContainerProperty::Container::QueueSize, 2);
  ASSERT_TRUE(reader->BeginIndex().Succeeded());
  ASSERT_TRUE(reader->WaitForMedia(10000));
  ExpectEndIndexStopsReading(reader);
}

// Writes one frame of 4x2 (24 bytes: enough for I444) through the writer and returns the file.
std::string WriteOneFrame(const char* name, unsigned int format, int fieldOrder, Result& result) {
  const std::string path = TempPath(name);
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerWriter> writer(CContainerWriter::Create(text, FourCC("y4m ")));
  RObject<CVideoProperties> video(TinyPicture(format));
  video->SetFieldOrder(fieldOrder);
  video->SetPixelAspectRatio(Rational<int>(1, 1));
  writer->AddVideoMedia(video);
  result = writer->BeginIndex();
  if (result.Failed()) return "";
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  RObject<CBufferDataReference> data(new CBufferDataReference(24));
  for (int i = 0; i < 24; ++i) data->GetData()[i] = static_cast<unsigned char>('a' + i);
  sample->SetDataReference(data);
  result = writer->WriteVideoSample(0, sample);
  writer->WriteVideoSample(0, nullptr);  // ignored
  writer->EndIndex();
  return ReadFile(path);
}

TEST_F(Y4mContainerTest, TheWriterNamesTheColourSpaceOfTheFormat) {
  Result result;
  EXPECT_EQ(WriteOneFrame("i444.y4m", FourCC("I444"), 2, result),
            "YUV4MPEG2 W4 H2 F25:1 C444 It A1:1\nFRAME\nabcdefghijklmnopqrstuvwx");
  EXPECT_TRUE(result.Succeeded());
  WriteOneFrame("rgb.y4m", FourCC("RGBA"), 1, result);
  EXPECT_EQ(result.GetResultCode(), ResultNotSupported().GetResultCode());
}

}  // namespace
