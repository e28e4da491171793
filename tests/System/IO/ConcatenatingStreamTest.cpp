#include "System/IO/Base64Decoder.h"
#include "System/IO/ConcatenatingFileStream.h"
#include "System/IO/ConcatenatingStream.h"
#include "System/IO/MemoryStream.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class ConcatenatingStreamTest : public LeakCheckedTest {
 protected:
  // A memory stream holding a copy of bytes.
  static RObject<CMemoryStream> Memory(const std::vector<unsigned char>& bytes) {
    RObject<CMemoryStream> stream(new CMemoryStream());
    stream->Write(bytes.data(), static_cast<int>(bytes.size()), nullptr);
    stream->Seek(0, SeekOrigin::Begin, nullptr);
    return stream;
  }
  // Ten bytes and twenty bytes, joined.
  RObject<CConcatenatingStream> TenAndTwenty() {
    RObject<CConcatenatingStream> joined(new CConcatenatingStream());
    joined->Add(Memory(Sequence(10)));
    joined->Add(Memory(Sequence(20, 10)));
    return joined;
  }
  static std::vector<unsigned char> Read(CStream* stream, int count) {
    std::vector<unsigned char> bytes(static_cast<std::size_t>(count));
    int read = 0;
    EXPECT_TRUE(stream->Read(bytes.data(), count, &read).Succeeded());
    bytes.resize(static_cast<std::size_t>(read));
    return bytes;
  }
};

// A stream whose reads fail.
class CFailingStream : public CStream {
 public:
  long long GetLength() override { return 5; }
  long long GetPosition() override { return 0; }
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char*, int, int*) override { return ResultIOError("broken"); }
  Result Write(const unsigned char*, int, int*) override { return ResultIOError("broken"); }
  Result Flush() override { return ResultIOError("broken"); }
};

TEST_F(ConcatenatingStreamTest, EmptyConcatenationIsAnEmptyStream) {
  RObject<CConcatenatingStream> empty(new CConcatenatingStream());
  EXPECT_TRUE(empty->CanRead());
  EXPECT_TRUE(empty->CanWrite());
  EXPECT_EQ(empty->GetLength(), 0);
  unsigned char byte = 0;
  int read = -1;
  EXPECT_TRUE(empty->Read(&byte, 1, &read).Succeeded());
  EXPECT_EQ(read, 0);
  EXPECT_EQ(empty->ReadByte(), -1);
}

TEST_F(ConcatenatingStreamTest, ReadsAcrossStreamsAndSeeksFromTheBeginning) {
  RObject<CConcatenatingStream> joined = TenAndTwenty();
  EXPECT_EQ(joined->GetLength(), 30);
  EXPECT_EQ(Read(joined, 30), Sequence(30));
  EXPECT_EQ(joined->GetPosition(), 30);
  long long position = -1;
  ASSERT_TRUE(joined->Seek(10, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, 10);
  EXPECT_EQ(joined->GetCurrentIndex(), 0);  // at the end of the first, not the start of the second
  EXPECT_EQ(Read(joined, 5), Sequence(5, 10));
  EXPECT_EQ(joined->GetCurrentIndex(), 1);
  ASSERT_TRUE(joined->Seek(25, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, 25);
  EXPECT_EQ(joined->GetPosition(), 25);
  EXPECT_EQ(Read(joined, 100), Sequence(5, 25));
  ASSERT_TRUE(joined->Seek(31, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(joined->GetCurrentIndex(), 2);
  EXPECT_EQ(joined->GetPosition(), 30);
  EXPECT_TRUE(IsKind<ResultUnexpected>(joined->Seek(0, static_cast<SeekOrigin>(3), &position)));
}

TEST_F(ConcatenatingStreamTest, RelativeAndEndSeeksReportPositionsWithinTheirWalk) {
  RObject<CConcatenatingStream> joined = TenAndTwenty();
  long long position = -1;
  ASSERT_TRUE(joined->Seek(15, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 15);
  EXPECT_EQ(joined->GetCurrentIndex(), 1);
  // Backwards only within the current stream, reported from where the walk began.
  ASSERT_TRUE(joined->Seek(-3, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 2);
  EXPECT_EQ(joined->GetPosition(), 12);
  EXPECT_EQ(Read(joined, 2), Sequence(2, 12));

  ASSERT_TRUE(joined->Seek(-10, SeekOrigin::End, &position).Succeeded());
  EXPECT_EQ(position, 10);  // 20 - 10 within the last stream
  EXPECT_EQ(joined->GetPosition(), 20);
  EXPECT_EQ(Read(joined, 50), Sequence(10, 20));
  // An end offset beyond the last stream walks back into the one before and
  // goes the rest of the way past that stream's end.
  ASSERT_TRUE(joined->Seek(25, SeekOrigin::End, &position).Succeeded());
  EXPECT_EQ(joined->GetCurrentIndex(), 0);
  EXPECT_EQ(position, 20 + (10 + 5));
}

TEST_F(ConcatenatingStreamTest, WritesGoToTheCurrentStreamAndFailuresPassThrough) {
  RObject<CConcatenatingStream> joined = TenAndTwenty();
  ASSERT_TRUE(joined->Seek(12, SeekOrigin::Begin, nullptr).Succeeded());
  int written = 0;
  ASSERT_TRUE(joined->Write(Bytes("ABCDEFGHIJKL").data(), 12, &written).Succeeded());
  EXPECT_EQ(written, 12);
  EXPECT_EQ(joined->GetCurrentIndex(), 1);
  ASSERT_TRUE(joined->Seek(12, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(Read(joined, 12), Bytes("ABCDEFGHIJKL"));

  RObject<CBase64Decoder> readOnly(new CBase64Decoder("TWFu", nullptr));
  joined->Add(readOnly);
  EXPECT_FALSE(joined->CanWrite());
  EXPECT_TRUE(IsKind<ResultIOError>(joined->Write(Bytes("x").data(), 1, nullptr)));

  RObject<CConcatenatingStream> broken(new CConcatenatingStream());
  broken->Add(Memory(Sequence(3)));
  RObject<CFailingStream> failing(new CFailingStream());
  broken->Add(failing);
  EXPECT_EQ(Details(broken->Flush()), "broken");
  unsigned char bytes[8];
  int read = -7;
  EXPECT_EQ(Details(broken->Read(bytes, 8, &read)), "broken");
  EXPECT_EQ(read, -7);
  EXPECT_THROW(broken->ReadByte(), Result);
}

class ConcatenatingFileStreamTest : public ConcatenatingStreamTest {
 protected:
  RObject<CConcatenatingFileStream> Files(std::initializer_list<int> sizes) {
    RObject<CConcatenatingFileStream> joined(new CConcatenatingFileStream());
    int start = 0;
    int index = 0;
    for (int size : sizes) {
      std::string path = folder.Write("part" + std::to_string(index++) + ".ts", Sequence(size, start));
      EXPECT_TRUE(joined->Add(path.c_str()).Succeeded());
      start += size;
    }
    return joined;
  }
  TemporaryFolder folder;
};

TEST_F(ConcatenatingFileStreamTest, SeeksFromTheBeginningOpenTheFileHoldingTheOffset) {
  RObject<CConcatenatingFileStream> joined = Files({100, 50});
  EXPECT_EQ(joined->GetCount(), 2);
  EXPECT_EQ(joined->GetLength(), 150);
  long long position = -1;
  ASSERT_TRUE(joined->Seek(100, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, 100);
  EXPECT_EQ(joined->GetCurrentIndex(), 1);
  EXPECT_EQ(Read(joined, 3), Sequence(3, 100));
  ASSERT_TRUE(joined->Seek(150, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, 150);
  EXPECT_EQ(joined->GetCurrentIndex(), 1);
  EXPECT_TRUE(Read(joined, 10).empty());
  ASSERT_TRUE(joined->Seek(42, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, 42);
  EXPECT_EQ(joined->GetPosition(), 42);
  EXPECT_EQ(Read(joined, 58), Sequence(58, 42));

  ASSERT_TRUE(joined->Seek(-10, SeekOrigin::End, &position).Succeeded());
  EXPECT_EQ(position, 40);  // within the last file
  EXPECT_EQ(joined->GetPosition(), 140);
  EXPECT_EQ(Read(joined, 10), Sequence(10, 140));
  EXPECT_TRUE(IsKind<ResultUnexpected>(joined->Seek(0, static_cast<SeekOrigin>(9), &position)));
}

TEST_F(ConcatenatingFileStreamTest, ReadsCrossingAFileBoundarySkipTheNextFile) {
  RObject<CConcatenatingFileStream> joined = Files({188, 188, 188});
  for (int file = 0; file < 3; ++file) EXPECT_EQ(Read(joined, 188), Sequence(188, 188 * file));
  EXPECT_TRUE(Read(joined, 188).empty());

  ASSERT_TRUE(joined->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  std::vector<unsigned char> expected = Sequence(188);
  std::vector<unsigned char> third = Sequence(112, 376);
  expected.insert(expected.end(), third.begin(), third.end());
  EXPECT_EQ(Read(joined, 300), expected);
  EXPECT_EQ(joined->GetCurrentIndex(), 2);
}

TEST_F(ConcatenatingFileStreamTest, RelativeSeekPastAFileMeasuresThatFileAgain) {
  RObject<CConcatenatingFileStream> joined = Files({100, 50, 30});
  long long position = -1;
  ASSERT_TRUE(joined->Seek(120, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 120);
  EXPECT_EQ(joined->GetCurrentIndex(), 1);
  // The first file is still the open one, moved by the 20 left over.
  EXPECT_EQ(Read(joined, 5), Sequence(5, 20));
  ASSERT_TRUE(joined->Seek(5, SeekOrigin::Begin, &position).Succeeded());
  ASSERT_TRUE(joined->Seek(10, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 15);
  EXPECT_EQ(Read(joined, 5), Sequence(5, 15));
}

TEST_F(ConcatenatingFileStreamTest, MissingFilesWritesAndLengthsMeasuredOnce) {
  RObject<CConcatenatingFileStream> joined = Files({20, 30});
  EXPECT_TRUE(joined->CanRead());
  EXPECT_TRUE(joined->CanSeek());
  EXPECT_FALSE(joined->CanWrite());
  EXPECT_TRUE(IsKind<ResultNotSupported>(joined->Write(Bytes("x").data(), 1, nullptr)));
  EXPECT_TRUE(IsKind<ResultNotSupported>(joined->WriteByte('x', nullptr)));

  // A file that grows later keeps its measured length; the available length sees it.
  folder.Write("part1.ts", Sequence(45, 20));
  EXPECT_EQ(joined->GetLength(), 50);
  EXPECT_EQ(joined->GetAvailableLength(), 65);

  std::string missing = folder.File("gone.ts");
  ASSERT_TRUE(joined->Add(missing.c_str()).Succeeded());
  EXPECT_EQ(joined->GetLength(), 50);
  EXPECT_FALSE(joined->CanRead());
  EXPECT_EQ(joined->GetAvailableLength(), 65);
  ASSERT_TRUE(joined->Seek(20, SeekOrigin::Begin, nullptr).Succeeded());
  // The open file reads to its current end; the next read needs the missing
  // file and fails without reporting a count.
  EXPECT_EQ(Read(joined, 45), Sequence(45, 20));
  unsigned char byte = 0;
  int read = -3;
  EXPECT_TRUE(IsKind<ResultPathDoesNotExist>(joined->Read(&byte, 1, &read)));
  EXPECT_EQ(read, -3);
  EXPECT_THROW(joined->ReadByte(), Result);
}

}  // namespace
