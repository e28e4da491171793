// Media samples: timing rules, payload references, the binary form byte by
// byte, reading damaged forms, and reclaiming for reuse.
#include <gtest/gtest.h>

#include "System/Media/MediaTestSupport.h"
#include "System/ByteArray.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Analysis.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Metadata/Metadata.h"
#include "System/Media/MultipleDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoSample.h"

using namespace Corvane::Mox;
using namespace MediaTest;

namespace {

class MediaSampleTest : public LeakCheckedTest {};

CBufferDataReference* BufferOf(const char* text) {
  RObject<CByteArray> bytes(new CByteArray(reinterpret_cast<const unsigned char*>(text), static_cast<int>(std::strlen(text))));
  return new CBufferDataReference(bytes.Get());
}

TEST_F(MediaSampleTest, FactoriesKnowTheThreeSampleTags) {
  RObject<CMediaSample> video(CMediaSample::New(FourCC("vid#")));
  RObject<CMediaSample> audio(CMediaSample::New(FourCC("aud#")));
  RObject<CMediaSample> subtitle(CMediaSample::New(FourCC("sub#")));
  ASSERT_TRUE(video && audio && subtitle);
  EXPECT_TRUE(video->IsType(CVideoSample::TypeCode));
  EXPECT_TRUE(audio->IsType(CAudioSample::TypeCode));
  EXPECT_TRUE(subtitle->IsType(CSubtitleSample::TypeCode));
  EXPECT_EQ(CMediaSample::New(FourCC("xyz#")), nullptr);
  EXPECT_EQ(CMediaSample::Clone(nullptr), nullptr);
  RObject<CMediaSample> odd(new CMediaSample(FourCC("odd#"), 5));
  EXPECT_EQ(CMediaSample::Clone(odd.Get()), nullptr);
}

TEST_F(MediaSampleTest, TrimAndExclusionShapeTheCompositionWindow) {
  RObject<CAudioSample> sample(new CAudioSample(100LL));
  sample->SetTime(1000);
  sample->SetTrim(10, 5);
  EXPECT_EQ(sample->GetCompositionDuration(), 85);
  EXPECT_TRUE(sample->ContainsCompositionTime(1000));
  EXPECT_TRUE(sample->ContainsCompositionTime(1084));
  EXPECT_FALSE(sample->ContainsCompositionTime(1085));
  EXPECT_FALSE(sample->ContainsCompositionTime(999));
  sample->SetHint(-1);
  EXPECT_TRUE(sample->IsExcluded());
  EXPECT_EQ(sample->GetCompositionDuration(), 0);
  EXPECT_FALSE(sample->ContainsCompositionTime(1000));
  int head = 0, tail = 0;
  sample->GetTrim(head, tail);
  EXPECT_EQ(head, 10);
  EXPECT_EQ(tail, 5);
}

TEST_F(MediaSampleTest, VideoFieldsValidateAndAdjustKeepsCompositionTime) {
  RObject<CVideoSample> sample(new CVideoSample(7, 1001, 1));
  sample->SetTime(5000);
  sample->SetCompositionOffset(2002);
  EXPECT_EQ(sample->GetCompositionTime(), 7002);
  sample->AdjustTime(-1001);
  EXPECT_EQ(sample->GetTime(), 3999);
  EXPECT_EQ(sample->GetCompositionTime(), 7002);
  EXPECT_EQ(sample->SetPictureType(3).GetType(), ResultNotSupported().GetType());
  EXPECT_EQ(sample->SetPictureType(-1).GetType(), ResultNotSupported().GetType());
  EXPECT_EQ(sample->GetPictureType(), 1);
  EXPECT_TRUE(sample->SetPictureStructure(2).Succeeded());
  EXPECT_FALSE(sample->SetPictureStructure(3).Succeeded());
  EXPECT_EQ(sample->GetPictureStructure(), 2);
}

TEST_F(MediaSampleTest, CopiesShareThePayloadAndCopyTheVideoFields) {
  RObject<CVideoSample> sample(new CVideoSample(3, 40, 2));
  RObject<CBufferDataReference> data(BufferOf("abc"));
  sample->SetDataReference(data.Get());
  sample->SetProperty("origin", "camera");
  sample->SetPictureStructure(1);
  RObject<CMediaSample> copy(CMediaSample::Clone(sample.Get()));
  ASSERT_TRUE(copy && copy->IsType(CVideoSample::TypeCode));
  auto* video = static_cast<CVideoSample*>(copy.Get());
  EXPECT_EQ(video->GetFrameNumber(), 3);
  EXPECT_EQ(video->GetPictureType(), 2);
  EXPECT_EQ(video->GetPictureStructure(), 1);
  EXPECT_EQ(video->GetDuration(), 40);
  RObject<CDataReference> shared(copy->GetDataReference());
  EXPECT_EQ(shared.Get(), data.Get());
  EXPECT_TRUE(copy->ContainsProperty("origin"));
}

TEST_F(MediaSampleTest, MultipleReferencesCollectAlternatives) {
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  RObject<CStorageDataReference> disk(new CStorageDataReference(100, 20));
  RObject<CBufferDataReference> memory(BufferOf("frame"));
  EXPECT_TRUE(sample->AddDataReference(disk.Get()).Succeeded());
  EXPECT_TRUE(sample->AddDataReference(memory.Get()).Succeeded());
  RObject<CDataReference> found(sample->GetDataReference(FourCC("dram")));
  EXPECT_EQ(found.Get(), memory.Get());
  found = sample->GetDataReference(FourCC("disk"));
  EXPECT_EQ(found.Get(), disk.Get());
  found = sample->GetDataReference(FourCC("many"));
  EXPECT_TRUE(found && found->IsType(FourCC("many")));
  EXPECT_EQ(found->GetLength(), 5);  // the memory member's

  RObject<CVideoSample> single(new CVideoSample(0, 1, 0));
  single->SetDataReference(disk.Get());
  EXPECT_EQ(single->AddDataReference(memory.Get()).GetType(), ResultArrayFull().GetType());
  found = single->GetDataReference();
  EXPECT_EQ(found.Get(), disk.Get());
  EXPECT_EQ(single->GetDataReference(FourCC("dram")), nullptr);
}

TEST_F(MediaSampleTest, LockedReferenceHoldsTheMemoryMember) {
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  EXPECT_EQ(sample->GetLockedDataReference(CDataReference::LockShared), nullptr);
  RObject<CBufferDataReference> memory(BufferOf("pixels"));
  sample->AddDataReference(memory.Get());
  RObject<CLockedDataReference> locked(sample->GetLockedDataReference(CDataReference::LockExclusive));
  ASSERT_TRUE(locked);
  EXPECT_EQ(locked->GetTarget(), memory.Get());
  EXPECT_EQ(locked->GetLength(), 6);
  EXPECT_EQ(std::memcmp(locked->GetData(), "pixels", 6), 0);
  EXPECT_TRUE(locked->SetLength(3).Succeeded());
  EXPECT_EQ(memory->GetLength(), 3);
  EXPECT_TRUE(locked->IsType(FourCC("lock")));
}

TEST_F(MediaSampleTest, AnEmptySampleWritesFiftyTwoBytes) {
  RObject<CAudioSample> sample(new CAudioSample(1024LL));
  sample->SetTime(-5);
  sample->SetHint(0x11);
  sample->SetTrim(2, 3);
  EXPECT_EQ(sample->GetSize(), 44);
  Bytes bytes = Capture([&](CBinaryWriter* w) { return sample->Write(w, 7); });
  Bytes expected;
  PutFour(expected, "aud#");
  Put32(expected, 44);
  Put32(expected, 7);
  Put64(expected, 1024);
  Put32(expected, 0x11);
  Put64(expected, static_cast<unsigned long long>(-5LL));
  Put32(expected, 2);
  Put32(expected, 3);
  Put32(expected, 0);  // no data reference
  Put32(expected, 0);  // no metadata
  Put32(expected, 0);  // no analysis
  EXPECT_EQ(bytes.size(), 52u);
  EXPECT_EQ(bytes, expected);
}

TEST_F(MediaSampleTest, VideoSampleWithBufferAnalysisAndMetadataRoundTrips) {
  RObject<CVideoSample> sample(new CVideoSample(12, 1001, 2));
  sample->SetTime(90090);
  sample->SetPictureStructure(1);
  sample->SetCompositionOffset(-3);
  RObject<CBufferDataReference> data(BufferOf("hello"));
  sample->SetDataReference(data.Get());
  RObject<CByteArray> results(new CByteArray(reinterpret_cast<const unsigned char*>("xy"), 2));
  RObject<CAnalysis> analysis(new CAnalysis(results.Get()));
  sample->SetAnalysis(analysis.Get());
  RObject<CMetadata> metadata(sample->AddMetadata());
  // Counted by hand: version, duration, hint, time, trim (32); the buffer
  // reference's tag, size, length and 5 bytes (17); the metadata's tag,
  // length and its empty form (12); the analysis's tag, length and 2 bytes
  // (10); the four video fields (16).
  EXPECT_EQ(sample->GetSize(), 32 + 17 + 12 + 10 + 16);
  Bytes bytes = Capture([&](CBinaryWriter* w) { return sample->Write(w, 1); });
  EXPECT_EQ(bytes.size(), static_cast<size_t>(sample->GetSize()) + 8);
  // The video fields close the form.
  Bytes tail(bytes.end() - 16, bytes.end());
  Bytes expectedTail;
  Put32(expectedTail, 12);
  Put32(expectedTail, 2);
  Put32(expectedTail, 1);
  Put32(expectedTail, static_cast<unsigned int>(-3));
  EXPECT_EQ(tail, expectedTail);

  RObject<CBinaryReader> reader(ReaderOver(bytes));
  RObject<CMediaSample> back;
  int version = 0;
  ASSERT_TRUE(CMediaSample::ReadSample(reader.Get(), back.Out(), version).Succeeded());
  EXPECT_EQ(version, 1);
  ASSERT_TRUE(back->IsType(CVideoSample::TypeCode));
  auto* video = static_cast<CVideoSample*>(back.Get());
  EXPECT_EQ(video->GetFrameNumber(), 12);
  EXPECT_EQ(video->GetCompositionOffset(), -3);
  EXPECT_EQ(video->GetTime(), 90090);
  RObject<CDataReference> payload(back->GetDataReference());
  ASSERT_TRUE(payload && payload->IsType(FourCC("byte")));
  EXPECT_EQ(payload->GetLength(), 5);
  EXPECT_EQ(std::memcmp(payload->GetData(), "hello", 5), 0);
  RObject<CAnalysis> analysisBack(back->GetAnalysis());
  ASSERT_TRUE(analysisBack);
  EXPECT_EQ(analysisBack->GetLength(), 2);
  EXPECT_TRUE(back->HasMetadata());
  // Writing again gives the same bytes.
  EXPECT_EQ(Capture([&](CBinaryWriter* w) { return back->Write(w, 1); }), bytes);
}

TEST_F(MediaSampleTest, StorageReferenceWritesPositionAndLength) {
  RObject<CSubtitleSample> sample(new CSubtitleSample(10LL));
  RObject<CStorageDataReference> disk(new CStorageDataReference(0x0102030405LL, 77));
  sample->SetDataReference(disk.Get());
  EXPECT_EQ(sample->GetSize(), 12 + 44 + 4);  // the reference, then no metadata and no analysis
  Bytes bytes = Capture([&](CBinaryWriter* w) { return sample->Write(w, 0); });
  Bytes reference(bytes.begin() + 40, bytes.begin() + 60);
  Bytes expected;
  PutFour(expected, "disk");
  Put32(expected, 12);
  Put64(expected, 0x0102030405ULL);
  Put32(expected, 77);
  EXPECT_EQ(reference, expected);
}

TEST_F(MediaSampleTest, BigEndianWritersSwapEveryNumber) {
  RObject<CAudioSample> sample(new CAudioSample(1LL));
  Bytes bytes = Capture([&](CBinaryWriter* w) { return sample->Write(w, 0); }, CBinary::BigEndian);
  ASSERT_EQ(bytes.size(), 52u);
  EXPECT_EQ(std::memcmp(bytes.data(), "aud#", 4), 0);
  EXPECT_EQ(bytes[7], 44);                 // size, most significant byte first
  EXPECT_EQ(bytes[12 + 7], 1);             // duration
}

TEST_F(MediaSampleTest, DamagedFormsFailWithAResult) {
  RObject<CVideoSample> sample(new CVideoSample(1, 2, 0));
  RObject<CBufferDataReference> data(BufferOf("payload"));
  sample->SetDataReference(data.Get());
  Bytes bytes = Capture([&](CBinaryWriter* w) { return sample->Write(w, 0); });
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    Bytes truncated(bytes.begin(), bytes.begin() + static_cast<long>(cut));
    RObject<CBinaryReader> reader(ReaderOver(truncated));
    RObject<CMediaSample> back;
    int version = 0;
    EXPECT_TRUE(CMediaSample::ReadSample(reader.Get(), back.Out(), version).Failed()) << cut;
    EXPECT_EQ(back.Get(), nullptr);
  }
  // A buffer length far beyond the bytes present fails before allocating.
  Bytes huge = bytes;
  huge[48] = 0xFF;
  huge[49] = 0xFF;
  huge[50] = 0xFF;
  huge[51] = 0x7F;
  RObject<CBinaryReader> reader(ReaderOver(huge));
  RObject<CMediaSample> back;
  int version = 0;
  EXPECT_EQ(CMediaSample::ReadSample(reader.Get(), back.Out(), version).GetType(), ResultEndOfStream().GetType());
  // An unknown reference tag names itself.
  Bytes unknown = bytes;
  std::memcpy(unknown.data() + 40, "zzzz", 4);
  reader = ReaderOver(unknown);
  Result r = CMediaSample::ReadSample(reader.Get(), back.Out(), version);
  EXPECT_EQ(r.GetType(), ResultNullPointer().GetType());
  ASSERT_NE(r.GetDetails(), nullptr);
  EXPECT_STREQ(r.GetDetails(), "failed to create new data reference 'zzzz'");
}

TEST_F(MediaSampleTest, ReclaimKeepsMemoryAndAnalysisAndDropsTheRest) {
  RObject<CVideoSample> sample(new CVideoSample(1, 2, 0));
  RObject<CBufferDataReference> data(BufferOf("keep"));
  RObject<CAnalysis> analysis(new CAnalysis());
  sample->SetDataReference(data.Get());
  sample->SetAnalysis(analysis.Get());
  RObject<CMetadata> metadata(sample->AddMetadata());
  sample->SetUserData(analysis.Get());
  sample->SetProperty("x", 1);
  sample->SetTime(5);
  sample->SetTrim(1, 1);
  sample->ReclaimCleanUp();
  RObject<CDataReference> kept(sample->GetDataReference());
  EXPECT_EQ(kept.Get(), data.Get());
  EXPECT_EQ(data->GetLength(), 0);
  EXPECT_EQ(data->GetAvailableLength(), 4);
  RObject<CAnalysis> analysisKept(sample->GetAnalysis());
  EXPECT_EQ(analysisKept.Get(), analysis.Get());
  EXPECT_FALSE(sample->HasMetadata());
  EXPECT_EQ(sample->GetUserData(), nullptr);
  EXPECT_EQ(sample->GetPropertyCount(), 0);
  EXPECT_EQ(sample->GetTime(), 0);
  EXPECT_EQ(sample->GetDuration(), 0);
  EXPECT_EQ(sample->GetTrim(), Range<int>(0, 0));

  RObject<CStorageDataReference> disk(new CStorageDataReference(0, 1));
  sample->SetDataReference(disk.Get());
  sample->ReclaimCleanUp();
  EXPECT_FALSE(sample->HasDataReference());
}

TEST_F(MediaSampleTest, AudioPacketsCountWholePackets) {
  RObject<CAudioSample> sample(new CAudioSample(3000LL));
  RObject<CAudioProperties> properties(new CAudioProperties());
  properties->SetFormat(FourCC("ac-3"));
  EXPECT_EQ(sample->GetPackets(properties.Get()), 1);  // 3000 / 1536
  properties->SetFormat(FourCC("zzzz"));
  EXPECT_EQ(sample->GetPackets(properties.Get()), 0);  // no frames per packet stored
  EXPECT_EQ(sample->GetPackets(nullptr), 0);
}

TEST_F(MediaSampleTest, SubtitleSplitCutsAtTheOffset) {
  RObject<CSubtitleSample> event(new CSubtitleSample(100LL));
  event->SetTime(1000);
  RObject<CSubtitleSample> first, second;
  Result r = CSubtitleSample::SplitSample(event.Get(), 0, 0, first.Out(), second.Out());
  EXPECT_STREQ(r.GetDetails(), "split offset must be positive");
  r = CSubtitleSample::SplitSample(event.Get(), 100, 0, first.Out(), second.Out());
  EXPECT_STREQ(r.GetDetails(), "split offset must be less than the sample duration");
  ASSERT_TRUE(CSubtitleSample::SplitSample(event.Get(), 30, 0, first.Out(), second.Out()).Succeeded());
  EXPECT_EQ(first->GetTime(), 1000);
  EXPECT_EQ(first->GetDuration(), 30);
  EXPECT_EQ(second->GetTime(), 1030);
  EXPECT_EQ(second->GetDuration(), 70);
}

TEST_F(MediaSampleTest, MergedFieldsSumDurationAndConcatenateBytes) {
  RObject<CVideoSample> upper(new CVideoSample(4, 500, 0));
  RObject<CVideoSample> lower(new CVideoSample(4, 501, 0));
  upper->SetTime(2000);
  RObject<CBufferDataReference> a(BufferOf("ab"));
  RObject<CBufferDataReference> b(BufferOf("cd"));
  upper->SetDataReference(a.Get());
  lower->SetDataReference(b.Get());
  RObject<CVideoSample> frame;
  ASSERT_TRUE(CVideoSample::MergeFields(nullptr, upper.Get(), lower.Get(), frame.Out()).Succeeded());
  EXPECT_EQ(frame->GetDuration(), 1001);
  EXPECT_EQ(frame->GetTime(), 2000);
  RObject<CDataReference> data(frame->GetDataReference());
  ASSERT_TRUE(data);
  EXPECT_EQ(data->GetLength(), 4);
  EXPECT_EQ(std::memcmp(data->GetData(), "abcd", 4), 0);
}

}  // namespace
