// Following a file that another writer is still appending to. The writer
// learns that the reader is waiting from the reader's own log line and wakes
// it through the stream's monitor, so no test depends on timing; the long
// timeouts only bound a broken build.

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <thread>

#include "System/IO/BufferedStream.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/IO/StandardFileStream.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

constexpr int SafetyTimeout = 20000;  // milliseconds

// Signals when a reader logs that it starts waiting.
struct WaitSignal {
  std::mutex mutex;
  std::condition_variable changed;
  int waits = 0;

  static WaitSignal& Instance() {
    static WaitSignal signal;
    return signal;
  }
  static void OnLine(const std::string& line) {
    if (line.find("waiting for") == std::string::npos) return;
    WaitSignal& signal = Instance();
    std::lock_guard<std::mutex> lock(signal.mutex);
    ++signal.waits;
    signal.changed.notify_all();
  }
  void Reset() {
    std::lock_guard<std::mutex> lock(mutex);
    waits = 0;
  }
  bool AwaitWaits(int count) {
    std::unique_lock<std::mutex> lock(mutex);
    return changed.wait_for(lock, std::chrono::milliseconds(SafetyTimeout), [&] { return waits >= count; });
  }
};

class GrowingFileTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    WaitSignal::Instance().Reset();
    path = folder.Write("growing.bin", Sequence(10));
  }
  // Appends bytes through a descriptor of its own, like another process would.
  void Append(const std::vector<unsigned char>& bytes) {
    int descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND);
    ASSERT_GE(descriptor, 0);
    ASSERT_EQ(::write(descriptor, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(descriptor);
  }
  static void Wake(CStream* stream) {
    CObject::CAutoLock lock(stream);
    stream->NotifyAll();
  }
  static void SetTimeout(CStream* stream, int milliseconds) {
    ASSERT_TRUE(stream->Control(CFileStream::SetReadTimeoutCode, 4, reinterpret_cast<unsigned char*>(&milliseconds))
                    .Succeeded());
  }

  TemporaryFolder folder;
  std::string path;
};

TEST_F(GrowingFileTest, ReaderWaitsAtTheEndUntilTheWriterAppends) {
  LogCapture log(Console::Verbose, &WaitSignal::OnLine);
  RObject<CFileDescriptorStream> reader(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(reader->Open(path.c_str()).Succeeded());
  SetTimeout(reader, SafetyTimeout);
  std::vector<unsigned char> got(30);
  int read = 0;
  Result result;
  std::thread thread([&] { result = reader->Read(got.data(), 30, &read); });
  ASSERT_TRUE(WaitSignal::Instance().AwaitWaits(1));
  Append(Sequence(20, 10));
  Wake(reader);
  thread.join();
  ASSERT_TRUE(result.Succeeded());
  EXPECT_EQ(read, 30);
  EXPECT_EQ(got, Sequence(30));
  EXPECT_EQ(reader->GetLength(), 30);
  EXPECT_TRUE(log.HasLineEndingWith("CFileStream::WaitForGrowth: waiting for " + std::to_string(SafetyTimeout) +
                                    " ms at position 10 ..."));
  EXPECT_TRUE(log.HasLineEndingWith("CFileStream::WaitForGrowth: file length increased to 30"));
}

TEST_F(GrowingFileTest, ClearingTheTimeoutReleasesAWaitingReader) {
  LogCapture log(Console::Verbose, &WaitSignal::OnLine);
  RObject<CFileDescriptorStream> reader(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(reader->Open(path.c_str()).Succeeded());
  SetTimeout(reader, CFileStream::MaximumReadTimeout);
  std::vector<unsigned char> got(100);
  int read = 0;
  Result result;
  std::thread thread([&] { result = reader->Read(got.data(), 100, &read); });
  ASSERT_TRUE(WaitSignal::Instance().AwaitWaits(1));
  SetTimeout(reader, 0);
  thread.join();
  EXPECT_TRUE(result.Succeeded());
  EXPECT_EQ(read, 10);
}

TEST_F(GrowingFileTest, WaitForDataHoldsBackUntilTheMarginIsWritten) {
  RObject<CFileDescriptorStream> reader(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(reader->Open(path.c_str()).Succeeded());
  ASSERT_TRUE(reader->SetReadMargin(5).Succeeded());
  ASSERT_TRUE(reader->SetReadTimeout(SafetyTimeout).Succeeded());
  ASSERT_TRUE(reader->Seek(2, SeekOrigin::Begin, nullptr).Succeeded());
  // 10 bytes wanted at 2 with a margin of 5: the file must exceed 17 bytes.
  int timeout = SafetyTimeout;
  Result result;
  std::thread thread([&] { result = reader->WaitForData(10, timeout); });
  Append(Sequence(5, 10));
  Wake(reader);
  Append(Sequence(5, 15));
  Wake(reader);
  thread.join();
  ASSERT_TRUE(result.Succeeded());
  EXPECT_GT(timeout, 0);
  EXPECT_GT(reader->GetAvailableLength(), 17);
  EXPECT_EQ(reader->GetPosition(), 2);
  // With the margin already there it returns without waiting or counting down.
  timeout = 300;
  ASSERT_TRUE(reader->WaitForData(1, timeout).Succeeded());
  EXPECT_EQ(timeout, 300);
}

TEST_F(GrowingFileTest, ChangingTheTimeoutEndsWaitForData) {
  RObject<CFileDescriptorStream> reader(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(reader->Open(path.c_str()).Succeeded());
  ASSERT_TRUE(reader->SetReadMargin(1000).Succeeded());
  ASSERT_TRUE(reader->SetReadTimeout(CFileStream::MaximumReadTimeout).Succeeded());
  int timeout = CFileStream::MaximumReadTimeout;
  std::thread thread([&] { reader->WaitForData(10, timeout); });
  SetTimeout(reader, 0);
  thread.join();
  EXPECT_LE(timeout, 0);
  // Without a timeout nothing waits at all.
  timeout = 0;
  EXPECT_TRUE(reader->WaitForData(10, timeout).Succeeded());
}

TEST_F(GrowingFileTest, StandardStreamAndBufferedViewFollowToo) {
  RObject<CStandardFileStream> standard(new CStandardFileStream(FileMode::Read));
  ASSERT_TRUE(standard->Open(path.c_str()).Succeeded());
  SetTimeout(standard, SafetyTimeout);
  std::vector<unsigned char> got(25);
  int read = 0;
  std::thread thread([&] { standard->Read(got.data(), 25, &read); });
  Append(Sequence(15, 10));
  Wake(standard);
  thread.join();
  EXPECT_EQ(read, 25);
  EXPECT_EQ(got, Sequence(25));

  // A buffered view re-reads a window that ended early once the file grew.
  RObject<CFileDescriptorStream> inner(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(inner->Open(path.c_str()).Succeeded());
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 64, 2));
  std::vector<unsigned char> first(25);
  ASSERT_TRUE(buffered->Read(first.data(), 25).Succeeded());
  EXPECT_EQ(buffered->ReadByte(), -1);
  Append(Sequence(5, 25));
  std::vector<unsigned char> rest(5);
  ASSERT_TRUE(buffered->Read(rest.data(), 5).Succeeded());
  EXPECT_EQ(rest, Sequence(5, 25));
}

TEST_F(GrowingFileTest, ABufferedViewWaitsOnlyForTheBytesAskedFor) {
  LogCapture log(Console::Verbose, &WaitSignal::OnLine);
  RObject<CFileDescriptorStream> inner(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(inner->Open(path.c_str()).Succeeded());
  SetTimeout(inner, SafetyTimeout);
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 64, 2));
  // The window holds 64 bytes, the file 10: what is there is read at once.
  std::vector<unsigned char> head(5);
  ASSERT_TRUE(buffered->Read(head.data(), 5).Succeeded());
  EXPECT_EQ(head, Sequence(5));
  for (const std::string& line : log.Taken()) EXPECT_EQ(line.find("waiting for"), std::string::npos) << line;
  // Bytes not written yet are waited for, and only those.
  std::vector<unsigned char> rest(15);
  int read = 0;
  Result result;
  std::thread thread([&] { result = buffered->Read(rest.data(), 15, &read); });
  ASSERT_TRUE(WaitSignal::Instance().AwaitWaits(1));
  Append(Sequence(10, 10));
  Wake(inner);
  thread.join();
  ASSERT_TRUE(result.Succeeded());
  EXPECT_EQ(read, 15);
  EXPECT_EQ(rest, Sequence(15, 5));
}

}  // namespace
