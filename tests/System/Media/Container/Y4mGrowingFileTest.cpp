// A YUV4MPEG2 file that is still being written while it is indexed: with a
// ReadTimeout the index thread waits at the end of what has been written,
// says so through IsIndexAtEnd, picks up the frames appended meanwhile and
// ends at the last whole frame once the file stops growing (its duration
// estimated from the grown length); without one a finished file ends where
// it ends. The file is appended to by a thread of the test; every wait is on
// a condition with a deadline.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <fstream>
#include <future>
#include <mutex>
#include <string>
#include <thread>

#include "ContainerTestSupport.h"
#include "ReaderTestSupport.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;
using namespace ContainerTest;
using namespace std::chrono_literals;

namespace {

constexpr int FrameSize = 12;  // 4x2 4:2:0
const std::string Header = "YUV4MPEG2 W4 H2 F25:1 C420";

// The bytes of frame f, line included, as Y4m() lays them out.
std::string Frame(int f) { return Y4m("", f + 1, FrameSize).substr(1 + static_cast<size_t>(f) * (6 + FrameSize)); }

// A thread that appends to a file when asked and says when it is done.
class Appender {
 public:
  explicit Appender(std::string path) : path_(std::move(path)), thread_([this] { Run(); }) {}
  ~Appender() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

  // Has the thread append `bytes` and waits (at most 10 s) until it has.
  bool Append(const std::string& bytes) {
    std::unique_lock<std::mutex> lock(mutex_);
    pending_ = bytes;
    ++requested_;
    changed_.notify_all();
    return changed_.wait_for(lock, 10s, [this] { return done_ == requested_; });
  }

 private:
  void Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return stop_ || done_ != requested_; });
      if (stop_) return;
      std::ofstream out(path_, std::ios::binary | std::ios::app);
      out.write(pending_.data(), static_cast<std::streamsize>(pending_.size()));
      out.close();
      ++done_;
      changed_.notify_all();
    }
  }

  std::string path_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::string pending_;
  int requested_ = 0;
  int done_ = 0;
  bool stop_ = false;
  std::thread thread_;
};

class Y4mGrowingFileTest : public LeakCheckedTest {
 protected:
  // A reader of the file with the given ReadTimeout, indexing begun.
  static RObject<CContainerReader> Begin(const std::string& path, int readTimeout) {
    RObject<CString> text(CString::WithString(path.c_str()));
    RObject<CContainerReader> reader(CContainerReader::Create(text, FourCC("y4m ")));
    EXPECT_TRUE(reader);
    if (!reader) return reader;
    if (readTimeout) {
      EXPECT_TRUE(reader->SetProperty(ContainerProperty::ContainerReader::ReadTimeout, readTimeout).Succeeded());
    }
    EXPECT_TRUE(reader->BeginIndex().Succeeded());
    return reader;
  }

  // IsIndexAtEnd: 1 true, 0 false, -1 unset.
  static int IndexAtEnd(CContainerReader* reader) {
    bool value = false;
    if (reader->GetProperty(ContainerProperty::ContainerReader::IsIndexAtEnd, value).GetResultCode() != 0) return -1;
    return value ? 1 : 0;
  }

  // Waits on the reader (at most 10 s) until its index thread has waited at
  // the end of the file.
  static bool WaitForIndexAtEnd(CContainerReader* reader) {
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (IndexAtEnd(reader) != 1) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      reader->WaitForMedia(100);
    }
    return true;
  }

  // The next sample's picture, its bytes read; "" at the end of the track.
  static std::string NextPicture(CContainerReader* reader) {
    RObject<CVideoSample> sample;
    EXPECT_TRUE(reader->ReadVideoSample(0, sample.Out()).Succeeded());
    if (!sample) return "";
    EXPECT_TRUE(reader->ReadVideoData(0, sample).Succeeded());
    RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
    if (!data) return "(no data)";
    return std::string(reinterpret_cast<const char*>(data->GetData()), static_cast<size_t>(data->GetLength()));
  }
};

TEST_F(Y4mGrowingFileTest, FramesAppendedWhileIndexingAreFollowedUntilTheFileStopsGrowing) {
  const std::string path = TempPath("growing.y4m");
  WriteFile(path, Y4m(Header, 2, FrameSize));
  Appender appender(path);
  RObject<CContainerReader> reader(Begin(path, 60000));
  ASSERT_TRUE(reader);
  EXPECT_EQ(NextPicture(reader), Frame(0).substr(6));
  EXPECT_EQ(NextPicture(reader), Frame(1).substr(6));
  // The index has reached the end of what is written and waits for more.
  ASSERT_TRUE(WaitForIndexAtEnd(reader));
  // A frame written in two parts (line and half a picture, then the rest)
  // is taken once it is whole; two more come in one piece.
  const std::string third = Frame(2);
  ASSERT_TRUE(appender.Append(third.substr(0, 12)));
  ASSERT_TRUE(appender.Append(third.substr(12) + Frame(3) + Frame(4)));
  for (int f = 2; f < 5; ++f) EXPECT_EQ(NextPicture(reader), Frame(f).substr(6)) << "frame " << f;
  // The duration is estimated again from the grown length, as it was from
  // the length at the start (header and frame lines included).
  const long long grown = static_cast<long long>(ReadFile(path).size());
  RObject<CVideoProperties> track(reader->GetVideoProperties(0));
  ASSERT_TRUE(track);
  EXPECT_EQ(track->GetDuration(), grown / FrameSize);
  // Half a frame more, then the writer stops: once the (shortened) timeout
  // passes without growth the track ends at the last whole frame.
  ASSERT_TRUE(appender.Append(Frame(5).substr(0, 10)));
  ASSERT_TRUE(reader->SetProperty(ContainerProperty::ContainerReader::ReadTimeout, 50).Succeeded());
  auto last = std::async(std::launch::async, [&reader] { return NextPicture(reader); });
  ASSERT_EQ(last.wait_for(10s), std::future_status::ready);
  EXPECT_EQ(last.get(), "");
  EXPECT_EQ(IndexAtEnd(reader), 1);
  reader->EndIndex();
  // The half frame is reported like any truncated last frame.
  EXPECT_TRUE(reader->ContainsExtension(FourCC("vrcp")));
}

TEST_F(Y4mGrowingFileTest, AFinishedFileWithoutReadTimeoutEndsWithoutWaiting) {
  const std::string path = TempPath("finished.y4m");
  WriteFile(path, Y4m(Header, 3, FrameSize));
  RObject<CContainerReader> reader(Begin(path, 0));
  ASSERT_TRUE(reader);
  for (int f = 0; f < 3; ++f) EXPECT_EQ(NextPicture(reader), Frame(f).substr(6));
  EXPECT_EQ(NextPicture(reader), "");
  // The index thread never waited for the file to grow.
  EXPECT_EQ(IndexAtEnd(reader), -1);
  reader->EndIndex();
  EXPECT_FALSE(reader->ContainsExtension(FourCC("vrcp")));
}

TEST_F(Y4mGrowingFileTest, EndingTheIndexWhileItWaitsForGrowthReturnsAtOnce) {
  const std::string path = TempPath("waiting.y4m");
  WriteFile(path, Y4m(Header, 1, FrameSize));
  // A timeout far longer than the test may take.
  RObject<CContainerReader> reader(Begin(path, 3600000));
  ASSERT_TRUE(reader);
  EXPECT_EQ(NextPicture(reader), Frame(0).substr(6));
  ASSERT_TRUE(WaitForIndexAtEnd(reader));
  ExpectEndIndexStopsReading(reader);
}

}  // namespace
