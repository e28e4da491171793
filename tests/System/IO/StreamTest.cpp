#include "System/IO/Stream.h"

#include "System/IO/MemoryStream.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class StreamTest : public LeakCheckedTest {};

// A stream that defines only the two required operations.
class CBareStream : public CStream {
 public:
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override {
    for (int i = 0; i < count; ++i) buffer[i] = static_cast<unsigned char>('a' + i);
    if (read) *read = count;
    return Result();
  }
  Result Write(const unsigned char* buffer, int count, int* written) override {
    received.assign(buffer, buffer + count);
    if (written) *written = count;
    return Result();
  }
  std::vector<unsigned char> received;
};

TEST_F(StreamTest, DefaultsOfTheBaseClass) {
  RObject<CBareStream> stream(new CBareStream());
  EXPECT_TRUE(stream->IsDataAvailable());
  EXPECT_FALSE(stream->CanRead() || stream->CanSeek() || stream->CanWrite());
  EXPECT_EQ(stream->GetLength(), -1);
  EXPECT_EQ(stream->GetAvailableLength(), -1);
  EXPECT_EQ(stream->GetPosition(), -1);
  EXPECT_TRUE(IsKind<ResultNotImplemented>(stream->SetLength(5)));
  EXPECT_TRUE(IsKind<ResultNotSupported>(stream->Control(FourCC("srto"), 4, nullptr)));
  EXPECT_TRUE(stream->Flush().Succeeded());
  EXPECT_EQ(stream->ReadByte(), 'a');
}

TEST_F(StreamTest, ByteArrayFormsCheckTheirArguments) {
  RObject<CBareStream> stream(new CBareStream());
  RObject<CByteArray> array(new CByteArray(reinterpret_cast<const unsigned char*>("012345"), 6));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(stream->Read(static_cast<CByteArray*>(nullptr))));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(stream->Write(static_cast<CByteArray*>(nullptr))));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(stream->Write(nullptr, 0, 1)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Write(array, -1, 2)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Write(array, 1, -2)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Write(array, 4, 3)));
  int written = 0;
  ASSERT_TRUE(stream->Write(array, 4, 2, &written).Succeeded());
  EXPECT_EQ(written, 2);
  EXPECT_EQ(stream->received, Bytes("45"));
  ASSERT_TRUE(stream->Write(array).Succeeded());
  EXPECT_EQ(stream->received, Bytes("012345"));
  int read = 0;
  ASSERT_TRUE(stream->Read(array, &read).Succeeded());
  EXPECT_EQ(read, 6);
  EXPECT_TRUE(array->Equals(reinterpret_cast<const unsigned char*>("abcdef"), 6));
}

TEST_F(StreamTest, BaseSeekReadsForwardInScratchSizedPasses) {
  RObject<CRecordingStream> stream(new CRecordingStream(Sequence(300000), true, false));
  long long position = 0;
  EXPECT_TRUE(IsKind<ResultNotImplemented>(stream->Seek(0, SeekOrigin::Begin, &position)));
  EXPECT_TRUE(IsKind<ResultNotImplemented>(stream->Seek(-1, SeekOrigin::Current, &position)));
  EXPECT_TRUE(IsKind<ResultNotImplemented>(stream->Seek(0, SeekOrigin::End, &position)));
  EXPECT_TRUE(stream->reads.empty());
  // More than a scratch area remains: the whole remainder is asked for at once.
  ASSERT_TRUE(stream->Seek(100000, SeekOrigin::Current, &position).Succeeded());
  ASSERT_EQ(stream->reads.size(), 1u);
  EXPECT_EQ(stream->reads[0], std::make_pair(0LL, 100000));
  EXPECT_EQ(position, 100000);
  // A short distance still reads a whole scratch area and overshoots.
  ASSERT_TRUE(stream->Seek(10, SeekOrigin::Current, &position).Succeeded());
  ASSERT_EQ(stream->reads.size(), 2u);
  EXPECT_EQ(stream->reads[1], std::make_pair(100000LL, CStream::ScratchSize));
  EXPECT_EQ(position, 100000 + CStream::ScratchSize);
  // At the end, the pass that reads nothing stops the loop.
  ASSERT_TRUE(stream->Seek(200000, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 300000);
  EXPECT_EQ(stream->reads.back().first, 300000);
}

TEST_F(StreamTest, ContainsFindsConsumesAndLogs) {
  LogCapture log(Console::Information);
  std::vector<unsigned char> text = Bytes("xxhelloyyhello");
  RObject<CRecordingStream> stream(new CRecordingStream(text));
  const auto* hello = reinterpret_cast<const unsigned char*>("hello");
  EXPECT_EQ(stream->Contains(hello, 5, 100), 2);
  EXPECT_EQ(stream->GetPosition(), 7);
  // From the new position the second occurrence is 2 further on.
  EXPECT_EQ(stream->Contains(hello, 5, 100), 2);
  ASSERT_TRUE(stream->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(stream->Contains(hello, 5, 6), -1);  // the match ends after 7 bytes
  ASSERT_TRUE(stream->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(stream->Contains(hello, 5, 7), 2);
  ASSERT_TRUE(stream->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(stream->Contains(reinterpret_cast<const unsigned char*>("zz"), 2, 100), -1);
  EXPECT_EQ(stream->GetPosition(), 14);
  ASSERT_TRUE(stream->Seek(11, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(stream->Contains(hello, 5, 100), -1);
  EXPECT_TRUE(log.HasLineEndingWith("CStream::Contains: search pattern larger than bytes available 5 > 3"));
  std::vector<unsigned char> huge(CStream::ScratchSize + 1, 'x');
  EXPECT_EQ(stream->Contains(huge.data(), CStream::ScratchSize + 1, 100), -1);
  EXPECT_TRUE(log.HasLineEndingWith("CStream::Contains: search pattern too large given 65537 max is 65536 "));
  // A failing read hands back its result code.
  RObject<CMemoryStream> broken(new CMemoryStream(static_cast<CByteArray*>(nullptr)));
  EXPECT_EQ(broken->Contains(hello, 5, 100), ResultInvalidOperation().GetResultCode());
}

}  // namespace
