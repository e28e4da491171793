// The index front: per-track media indexers filled from a reader, waiting
// for entries, rebuilt samples, and an End that always returns.
#include <gtest/gtest.h>

#include <chrono>
#include <future>

#include "ContainerTestSupport.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Container/MediaIndexer.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;
using namespace std::chrono_literals;

namespace {

class IndexerTest : public LeakCheckedTest {
 protected:
  static RObject<CContainerReader> Reader(const std::string& name, int frames) {
    const std::string path = TempPath(name);
    if (!std::filesystem::exists(path)) WriteFile(path, Y4m("YUV4MPEG2 W4 H2 F30:1", frames, 12));
    RObject<CString> text(CString::WithString(path.c_str()));
    return RObject<CContainerReader>(CContainerReader::Create(text));
  }
};

TEST_F(IndexerTest, AnUnthreadedBeginIndexesEveryTrackToTheEnd) {
  RObject<CContainerReader> reader(Reader("five.y4m", 5));
  ASSERT_TRUE(reader);
  RObject<CIndexer> indexer(new CIndexer(reader));
  ASSERT_TRUE(indexer->Begin(false).Succeeded());
  EXPECT_EQ(indexer->Begin(false).GetResultCode(), ResultFalse().GetResultCode());
  ASSERT_EQ(indexer->GetVideoMediaIndexerCount(), 1);
  EXPECT_EQ(indexer->GetAudioMediaIndexerCount(), 0);
  EXPECT_EQ(indexer->GetAudioMediaIndexer(0), nullptr);
  CMediaIndexer* video = indexer->GetVideoMediaIndexer(0);
  EXPECT_TRUE(video->IsComplete());
  EXPECT_TRUE(indexer->IsComplete());
  ASSERT_EQ(video->GetSampleCount(), 5);
  RObject<CMediaProperties> properties(video->GetProperties());
  EXPECT_EQ(properties->GetTimeScale(), 30);
  const long long header = static_cast<long long>(std::string("YUV4MPEG2 W4 H2 F30:1\n").size());
  for (int i = 0; i < 5; ++i) {
    RObject<CMediaSample> sample(video->GetSample(i));
    ASSERT_TRUE(sample);
    ASSERT_TRUE(sample->IsType(CVideoSample::TypeCode));
    EXPECT_EQ(static_cast<CVideoSample*>(sample.Get())->GetFrameNumber(), i);
    EXPECT_EQ(sample->GetTime(), i);
    EXPECT_EQ(sample->GetDuration(), 1);
    RObject<CDataReference> reference(sample->GetDataReference(CContainerDataReference::TypeCode));
    ASSERT_TRUE(reference);
    auto* stored = static_cast<CContainerDataReference*>(reference.Get());
    EXPECT_EQ(stored->GetPosition(), header + i * 18 + 6);
    EXPECT_EQ(stored->GetLength(), 12);
  }
  EXPECT_EQ(video->GetSample(5), nullptr);
  EXPECT_EQ(video->GetSample(-1), nullptr);
  EXPECT_TRUE(video->WaitForSample(0));  // complete: nothing to wait for
  EXPECT_FALSE(video->WaitForSample(5, 0));
  EXPECT_TRUE(indexer->End().Succeeded());
  EXPECT_EQ(indexer->End().GetResultCode(), ResultFalse().GetResultCode());
}

TEST_F(IndexerTest, AThreadedBeginKnowsTheTracksAtOnceAndFillsThemLater) {
  RObject<CContainerReader> reader(Reader("threaded.y4m", 300));
  reader->SetProperty(ContainerProperty::Container::QueueSize, 4);
  RObject<CIndexer> indexer(new CIndexer(reader));
  ASSERT_TRUE(indexer->Begin(true).Succeeded());
  ASSERT_EQ(indexer->GetVideoMediaIndexerCount(), 1);
  CMediaIndexer* video = indexer->GetVideoMediaIndexer(0);
  ASSERT_TRUE(video->WaitForSample(299, 10000));
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (!video->IsComplete() && std::chrono::steady_clock::now() < deadline) video->WaitForSample(100);
  EXPECT_TRUE(video->IsComplete());
  EXPECT_EQ(video->GetSampleCount(), 300);
  EXPECT_TRUE(video->GetResult().Succeeded());
  indexer->End();
}

TEST_F(IndexerTest, EndReturnsWhileTheReaderIsStillIndexing) {
  RObject<CContainerReader> reader(Reader("long.y4m", 20000));
  reader->SetProperty(ContainerProperty::Container::QueueSize, 1);
  RObject<CIndexer> indexer(new CIndexer(reader));
  ASSERT_TRUE(indexer->Begin(true).Succeeded());
  auto ended = std::async(std::launch::async, [&indexer] { return indexer->End().Succeeded(); });
  ASSERT_EQ(ended.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(ended.get());
  EXPECT_TRUE(indexer->GetVideoMediaIndexer(0)->IsComplete());
  EXPECT_LE(indexer->GetVideoMediaIndexer(0)->GetSampleCount(), 20000);
}

TEST_F(IndexerTest, AFailedBeginLeavesTheIndexerStopped) {
  const std::string path = TempPath("headless.y4m");
  WriteFile(path, "YUV4MPEG2 W4 H2");
  RObject<CString> text(CString::WithString(path.c_str()));
  RObject<CContainerReader> reader(CContainerReader::Create(text));
  ASSERT_TRUE(reader);
  RObject<CIndexer> indexer(new CIndexer(reader));
  EXPECT_TRUE(indexer->Begin(true).Failed());
  EXPECT_FALSE(indexer->IsStarted());
  EXPECT_EQ(indexer->GetVideoMediaIndexerCount(), 0);
  RObject<CIndexer> empty(new CIndexer(nullptr));
  EXPECT_EQ(empty->Begin(true).GetResultCode(), ResultNullPointer().GetResultCode());
}

}  // namespace
