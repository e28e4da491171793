#include "System/IO/BufferedStream.h"

#include <thread>

#include "System/IO/MemoryStream.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class BufferedStreamTest : public LeakCheckedTest {};

using Calls = std::vector<std::pair<long long, int>>;

TEST_F(BufferedStreamTest, ByteAtATimeReadsEachAlignedWindowOnce) {
  std::vector<unsigned char> bytes = Sequence(10);
  RObject<CRecordingStream> inner(new CRecordingStream(bytes));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 4, 2));
  std::vector<unsigned char> got;
  for (int i = 0; i < 10; ++i) {
    unsigned char byte = 0;
    int read = 0;
    ASSERT_TRUE(buffered->Read(&byte, 1, &read).Succeeded());
    ASSERT_EQ(read, 1);
    got.push_back(byte);
  }
  EXPECT_EQ(got, bytes);
  EXPECT_EQ(inner->reads, (Calls{{0, 4}, {4, 4}, {8, 4}}));
  EXPECT_EQ(buffered->GetPosition(), 10);
}

TEST_F(BufferedStreamTest, KeepsTheMostRecentlyUsedWindows) {
  std::vector<unsigned char> bytes = Sequence(16);
  RObject<CRecordingStream> inner(new CRecordingStream(bytes));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 4, 2));
  for (long long at : {0, 4, 1, 9, 2, 5}) {
    ASSERT_TRUE(buffered->Seek(at, SeekOrigin::Begin, nullptr).Succeeded());
    EXPECT_EQ(buffered->ReadByte(), bytes[static_cast<std::size_t>(at)]);
  }
  // 1 and 2 hit the window at 0; 9 evicts the window at 4, which 5 reads again.
  EXPECT_EQ(inner->reads, (Calls{{0, 4}, {4, 4}, {8, 4}, {4, 4}}));
  // Seeking only moves the buffered position; the inner stream moves once,
  // back from 12 to refill the window at 4.
  EXPECT_EQ(inner->seeks, 1);
}

// Reading straight through a long stream keeps a few windows, not all of
// them; jumping about still keeps every window the cache holds.
TEST_F(BufferedStreamTest, StraightThroughUsesFewWindowsAndJumpsUseThemAll) {
  std::vector<unsigned char> bytes = Sequence(400);
  RObject<CRecordingStream> inner(new CRecordingStream(bytes));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 8, 16));
  std::vector<unsigned char> got(400);
  for (int at = 0; at < 400; at += 3) {
    int read = 0;
    ASSERT_TRUE(buffered->Read(got.data() + at, std::min(3, 400 - at), &read).Succeeded());
  }
  EXPECT_EQ(got, bytes);
  EXPECT_EQ(buffered->GetWindowsInUse(), CBufferedStream::SequentialWindows);
  // The last windows read are still there: reading back costs nothing.
  const size_t readsBefore = inner->reads.size();
  ASSERT_TRUE(buffered->Seek(390, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(buffered->ReadByte(), bytes[390]);
  EXPECT_EQ(inner->reads.size(), readsBefore);

  RObject<CBufferedStream> random(new CBufferedStream(inner, 8, 16));
  for (long long at : {0, 100, 16, 200, 48, 300, 80, 350, 120, 390, 160, 240}) {
    ASSERT_TRUE(random->Seek(at, SeekOrigin::Begin, nullptr).Succeeded());
    EXPECT_EQ(random->ReadByte(), bytes[static_cast<std::size_t>(at)]);
  }
  EXPECT_EQ(random->GetWindowsInUse(), 12);
}

TEST_F(BufferedStreamTest, LargeRequestsBypassTheWindows) {
  std::vector<unsigned char> bytes = Sequence(40);
  RObject<CRecordingStream> inner(new CRecordingStream(bytes));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 8, 2));
  std::vector<unsigned char> got(20);
  ASSERT_TRUE(buffered->Read(got.data(), 3).Succeeded());
  int read = 0;
  ASSERT_TRUE(buffered->Read(got.data() + 3, 17, &read).Succeeded());
  EXPECT_EQ(read, 17);
  EXPECT_EQ(got, Sequence(20));
  // The window at 0 serves bytes 3..7; the 12 bytes left exceed a window.
  EXPECT_EQ(inner->reads, (Calls{{0, 8}, {8, 12}}));
  // Exactly a window's worth still goes through a window.
  ASSERT_TRUE(buffered->Seek(24, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(buffered->Read(got.data(), 8, &read).Succeeded());
  EXPECT_EQ(inner->reads.back(), std::make_pair(24LL, 8));
  EXPECT_EQ(inner->reads.size(), 3u);
}

TEST_F(BufferedStreamTest, ShortReadsAndBadStates) {
  RObject<CRecordingStream> inner(new CRecordingStream(Sequence(6)));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 4, 2));
  unsigned char out[10];
  int read = 0;
  ASSERT_TRUE(buffered->Read(out, 10, &read).Succeeded());
  EXPECT_EQ(read, 6);
  ASSERT_TRUE(buffered->Seek(2, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_TRUE(IsKind<ResultEndOfStream>(buffered->Read(out, 5)));  // no count: short is an error
  EXPECT_EQ(buffered->GetPosition(), 6);
  ASSERT_TRUE(buffered->Seek(-7, SeekOrigin::End, nullptr).Succeeded());
  EXPECT_TRUE(IsKind<ResultEndOfStream>(buffered->Read(out, 1, &read)));
  EXPECT_TRUE(IsKind<ResultNotImplemented>(buffered->Seek(0, static_cast<SeekOrigin>(3), nullptr)));

  RObject<CRecordingStream> writeOnly(new CRecordingStream({}, false, true, true));
  RObject<CBufferedStream> noRead(new CBufferedStream(writeOnly, 4, 1));
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(noRead->Read(out, 1, &read)));
  RObject<CBufferedStream> noStream(new CBufferedStream(nullptr, 4, 1));
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(noStream->Read(out, 1, &read)));
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(noStream->Write(out, 1, &read)));
}

TEST_F(BufferedStreamTest, ForwardOnlyInnerStreamsReadSequentiallyButCannotJump) {
  std::vector<unsigned char> bytes = Sequence(12);
  RObject<CRecordingStream> inner(new CRecordingStream(bytes, true, false));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 4, 2));
  std::vector<unsigned char> got(6);
  ASSERT_TRUE(buffered->Read(got.data(), 3).Succeeded());
  ASSERT_TRUE(buffered->Read(got.data() + 3, 3).Succeeded());
  EXPECT_EQ(got, Sequence(6));
  ASSERT_TRUE(buffered->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(buffered->ReadByte(), bytes[0]);  // still held in a window
  ASSERT_TRUE(buffered->Seek(1, SeekOrigin::End, nullptr).Succeeded());
  unsigned char byte = 0;
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(buffered->Read(&byte, 1, nullptr)));
}

TEST_F(BufferedStreamTest, WritesStayInWindowsUntilEvictedOrFlushed) {
  RObject<CRecordingStream> inner(new CRecordingStream({}));
  RObject<CBufferedStream> buffered(new CBufferedStream(inner, 4, 2));
  std::vector<unsigned char> bytes = Sequence(10);
  for (unsigned char byte : bytes) ASSERT_TRUE(buffered->WriteByte(byte).Succeeded());
  // Filling the third window wrote back the first.
  EXPECT_EQ(inner->writes, (Calls{{0, 4}}));
  EXPECT_EQ(buffered->GetLength(), 10);
  ASSERT_TRUE(buffered->Flush().Succeeded());
  EXPECT_EQ(inner->writes, (Calls{{0, 4}, {4, 4}, {8, 2}}));
  EXPECT_EQ(inner->Content(), bytes);

  // Rewriting the middle and reading it back goes through the windows.
  ASSERT_TRUE(buffered->Seek(3, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(buffered->Write(Bytes("XYZ").data(), 3).Succeeded());
  ASSERT_TRUE(buffered->Seek(2, SeekOrigin::Begin, nullptr).Succeeded());
  unsigned char middle[5] = {};
  ASSERT_TRUE(buffered->Read(middle, 5).Succeeded());
  EXPECT_EQ(std::vector<unsigned char>(middle, middle + 5),
            (std::vector<unsigned char>{bytes[2], 'X', 'Y', 'Z', bytes[6]}));
  buffered->Close();
  std::vector<unsigned char> expected = bytes;
  expected[3] = 'X';
  expected[4] = 'Y';
  expected[5] = 'Z';
  EXPECT_EQ(inner->Content(), expected);
  EXPECT_EQ(buffered->GetStream(), nullptr);
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(buffered->Read(middle, 1, nullptr)));
}

TEST_F(BufferedStreamTest, LargeWritesGoDirectAndDoNotLeaveStaleWindows) {
  RObject<CMemoryStream> memory(new CMemoryStream());
  ASSERT_TRUE(memory->Write(Sequence(16).data(), 16).Succeeded());
  RObject<CBufferedStream> buffered(new CBufferedStream(memory, 4, 2));
  unsigned char byte = 0;
  ASSERT_TRUE(buffered->Seek(5, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(buffered->Read(&byte, 1).Succeeded());  // loads the window at 4
  ASSERT_TRUE(buffered->Seek(1, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(buffered->WriteByte('a').Succeeded());  // a pending write at 1
  std::vector<unsigned char> block(9, 'B');
  ASSERT_TRUE(buffered->Seek(2, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(buffered->Write(block.data(), 9).Succeeded());
  ASSERT_TRUE(buffered->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  std::vector<unsigned char> got(16);
  ASSERT_TRUE(buffered->Read(got.data(), 16).Succeeded());
  std::vector<unsigned char> expected = Sequence(16);
  expected[1] = 'a';
  std::fill(expected.begin() + 2, expected.begin() + 11, 'B');
  EXPECT_EQ(got, expected);
  ASSERT_TRUE(buffered->Flush().Succeeded());
  EXPECT_EQ(std::vector<unsigned char>(memory->GetData(), memory->GetData() + 16), expected);
}

// A write-only output (a file opened for writing) written the way container
// writers write: a small header, then blocks larger than a window. Windows
// cannot read what large writes put past them, so writing a window back must
// not replace those bytes with the zeros it never read.
TEST_F(BufferedStreamTest, WriteOnlyStreamKeepsBytesWrittenPastItsWindows) {
  RObject<CRecordingStream> file(new CRecordingStream({}, /*canRead=*/false));
  RObject<CBufferedStream> buffered(new CBufferedStream(file, 16, 4));
  std::vector<unsigned char> expected;
  auto put = [&](const std::vector<unsigned char>& bytes) {
    ASSERT_TRUE(buffered->Write(bytes.data(), static_cast<int>(bytes.size())).Succeeded());
    expected.insert(expected.end(), bytes.begin(), bytes.end());
  };
  put(Bytes("HEAD\n"));
  for (int frame = 0; frame < 5; ++frame) {
    put(Bytes("FRAME\n"));
    std::vector<unsigned char> picture(37);
    for (std::size_t i = 0; i < picture.size(); ++i) picture[i] = static_cast<unsigned char>(frame * 40 + i + 1);
    put(picture);
  }
  // Patching an earlier byte (a size field) goes through a window too.
  ASSERT_TRUE(buffered->Seek(2, SeekOrigin::Begin, nullptr).Succeeded());
  put({});
  ASSERT_TRUE(buffered->WriteByte('X').Succeeded());
  expected[2] = 'X';
  ASSERT_TRUE(buffered->Flush().Succeeded());
  EXPECT_EQ(file->Content(), expected);
}

TEST_F(BufferedStreamTest, WrapperSharesTheInnerMonitorAndType) {
  RObject<CMemoryStream> memory(new CMemoryStream());
  RObject<CBufferedStream> buffered(new CBufferedStream(memory, 16, 1));
  EXPECT_TRUE(buffered->IsType(CBufferedStream::TypeCode));
  EXPECT_TRUE(buffered->IsType(CWrappedStream::TypeCode));
  EXPECT_FALSE(buffered->IsType(CMemoryStream::TypeCode));
  ASSERT_TRUE(buffered->Enter().Succeeded());
  bool takenElsewhere = false;
  std::thread([&] {
    takenElsewhere = !memory->TryEnter();
    if (takenElsewhere) memory->Exit();
  }).join();
  EXPECT_FALSE(takenElsewhere);
  ASSERT_TRUE(buffered->Exit().Succeeded());
  std::thread([&] {
    takenElsewhere = !memory->TryEnter();
    if (takenElsewhere) memory->Exit();
  }).join();
  EXPECT_TRUE(takenElsewhere);

  memory->SetType(FourCC("rrst"));
  EXPECT_FALSE(buffered->IsType(CBufferedStream::TypeCode));
  EXPECT_FALSE(buffered->IsType(CWrappedStream::TypeCode));
  RObject<CWrappedStream> empty(new CWrappedStream(nullptr));
  EXPECT_TRUE(IsKind<ResultNullPointer>(empty->Enter()));
  EXPECT_TRUE(IsKind<ResultNullPointer>(empty->NotifyAll()));
  EXPECT_TRUE(empty->TryEnter());
}

TEST_F(BufferedStreamTest, WrappedStreamPassesEverythingThrough) {
  RObject<CMemoryStream> memory(new CMemoryStream());
  RObject<CWrappedStream> wrapped(new CWrappedStream(memory));
  ASSERT_TRUE(wrapped->Write(Bytes("hello").data(), 5).Succeeded());
  EXPECT_EQ(memory->GetLength(), 5);
  EXPECT_EQ(wrapped->GetPosition(), 5);
  ASSERT_TRUE(wrapped->Seek(1, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(wrapped->ReadByte(), 'e');
  RObject<CStream> inner(wrapped->GetStream());
  EXPECT_EQ(inner.Get(), memory.Get());
  EXPECT_TRUE(wrapped->CanRead() && wrapped->CanSeek() && wrapped->CanWrite());
}

}  // namespace
