#include "System/IO/MemoryStream.h"

#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class MemoryStreamTest : public LeakCheckedTest {};

std::vector<unsigned char> Content(CMemoryStream* stream) {
  return {stream->GetData(), stream->GetData() + stream->GetLength()};
}

TEST_F(MemoryStreamTest, DefaultStreamGrowsFixedStreamRefusesTheByteTooMany) {
  RObject<CMemoryStream> growing(new CMemoryStream());
  RObject<CByteArray> initial(growing->GetBuffer());
  EXPECT_EQ(initial->GetLength(), 32);
  std::vector<unsigned char> hundred = Sequence(100);
  int written = 0;
  ASSERT_TRUE(growing->Write(hundred.data(), 100, &written).Succeeded());
  EXPECT_EQ(written, 100);
  RObject<CByteArray> grown(growing->GetBuffer());
  EXPECT_EQ(grown->GetLength(), 200);  // twice the size the write needed
  EXPECT_EQ(Content(growing), hundred);

  RObject<CMemoryStream> fixed(new CMemoryStream(10));
  std::vector<unsigned char> ten = Sequence(10);
  ASSERT_TRUE(fixed->Write(ten.data(), 10).Succeeded());
  EXPECT_TRUE(IsKind<ResultEndOfStream>(fixed->WriteByte(0xAA)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(fixed->Write(ten.data(), 1)));
  EXPECT_EQ(fixed->GetLength(), 10);
  EXPECT_EQ(Content(fixed), ten);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(fixed->Write(ten.data(), -1)));
}

TEST_F(MemoryStreamTest, SeekRulesAndReadingPastTheEnd) {
  std::vector<unsigned char> bytes = Sequence(8);
  RObject<CByteArray> array(new CByteArray(bytes.data(), 8));
  RObject<CMemoryStream> stream(new CMemoryStream(array));
  long long position = 99;
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Seek(-1, SeekOrigin::Begin, &position)));
  EXPECT_EQ(stream->GetPosition(), 0);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Seek(0x80000000LL, SeekOrigin::Begin, &position)));
  ASSERT_TRUE(stream->Seek(5, SeekOrigin::End, &position).Succeeded());
  EXPECT_EQ(position, 13);
  unsigned char out[4];
  int read = -1;
  ASSERT_TRUE(stream->Read(out, 4, &read).Succeeded());
  EXPECT_EQ(read, 0);
  EXPECT_EQ(stream->ReadByte(), -1);
  ASSERT_TRUE(stream->Seek(-3, SeekOrigin::End, &position).Succeeded());
  ASSERT_TRUE(stream->Seek(1, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 6);
  EXPECT_EQ(stream->ReadByte(), bytes[6]);
  // An unknown origin leaves the position alone.
  ASSERT_TRUE(stream->Seek(2, static_cast<SeekOrigin>(7), &position).Succeeded());
  EXPECT_EQ(position, 7);
}

TEST_F(MemoryStreamTest, WindowExposesOnlyItsBytes) {
  std::vector<unsigned char> bytes = Sequence(10);
  RObject<CByteArray> array(new CByteArray(bytes.data(), 10));
  RObject<CMemoryStream> window(new CMemoryStream(array, 8, 4));
  EXPECT_EQ(window->GetLength(), 2);
  unsigned char out[4] = {};
  int read = 0;
  ASSERT_TRUE(window->Read(out, 4, &read).Succeeded());
  ASSERT_EQ(read, 2);
  EXPECT_EQ(out[0], bytes[8]);
  EXPECT_EQ(out[1], bytes[9]);
  // An offset outside the array counts as its length: an empty window.
  RObject<CMemoryStream> outside(new CMemoryStream(array, 11, 3));
  EXPECT_EQ(outside->GetLength(), 0);
  RObject<CMemoryStream> negative(new CMemoryStream(array, 4, -5));
  EXPECT_EQ(negative->GetLength(), 0);
  // Writes stay inside the window and the array sees them.
  ASSERT_TRUE(window->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_TRUE(window->WriteByte(0xEE).Succeeded());
  EXPECT_EQ(array->GetData()[8], 0xEE);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(window->Write(bytes.data(), 2)));
}

TEST_F(MemoryStreamTest, NullArrayAndExternalMemory) {
  RObject<CMemoryStream> empty(new CMemoryStream(static_cast<CByteArray*>(nullptr)));
  unsigned char byte = 0;
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(empty->Read(&byte, 1, nullptr)));
  EXPECT_TRUE(IsKind<ResultEndOfStream>(empty->WriteByte(1)));
  unsigned char memory[6] = {1, 2, 3, 4, 5, 6};
  RObject<CMemoryStream> external(new CMemoryStream(6, memory));
  EXPECT_EQ(external->GetLength(), 6);
  ASSERT_TRUE(external->Seek(2, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(external->Write(static_cast<unsigned char>(9), 3, nullptr).Succeeded());
  EXPECT_EQ(memory[1], 2);
  EXPECT_EQ(memory[2], 9);
  EXPECT_EQ(memory[4], 9);
  EXPECT_EQ(memory[5], 6);
  ASSERT_TRUE(external->WriteByte(7).Succeeded());
  EXPECT_TRUE(IsKind<ResultEndOfStream>(external->WriteByte(1)));
}

TEST_F(MemoryStreamTest, SetLengthCopiesAndGapsAfterSeekingPastTheEnd) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  ASSERT_TRUE(stream->Write(Bytes("abc").data(), 3).Succeeded());
  ASSERT_TRUE(stream->Seek(6, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(stream->WriteByte('z').Succeeded());
  RObject<CByteArray> copy(stream->ToByteArray());
  ASSERT_EQ(copy->GetLength(), 7);
  EXPECT_TRUE(copy->Equals(reinterpret_cast<const unsigned char*>("abc\0\0\0z"), 7));
  EXPECT_NE(copy->GetData(), stream->GetData());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->SetLength(-1)));
  RObject<CByteArray> buffer(stream->GetBuffer());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->SetLength(buffer->GetLength() + 1)));
  ASSERT_TRUE(stream->SetLength(2).Succeeded());
  EXPECT_EQ(stream->GetLength(), 2);
  ASSERT_TRUE(stream->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(ReadAll(stream), Bytes("ab"));
}

TEST_F(MemoryStreamTest, ExpandIsForGrowingStreamsBelowTwoGigabytes) {
  RObject<CMemoryStream> fixed(new CMemoryStream(4));
  fixed->Expand(100);
  RObject<CByteArray> fixedBuffer(fixed->GetBuffer());
  EXPECT_EQ(fixedBuffer->GetLength(), 4);
  RObject<CMemoryStream> growing(new CMemoryStream());
  growing->Expand(0x80000000LL);
  growing->Expand(20);  // not beyond the 32 bytes it has
  RObject<CByteArray> unchanged(growing->GetBuffer());
  EXPECT_EQ(unchanged->GetLength(), 32);
  growing->Expand(40);
  RObject<CByteArray> grown(growing->GetBuffer());
  EXPECT_EQ(grown->GetLength(), 80);
}

}  // namespace
