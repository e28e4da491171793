#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "FilesTestSupport.h"
#include "System/IO/ChecksumStream.h"
#include "System/IO/Crc16Stream.h"
#include "System/IO/Crc32Stream.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class ChecksumStreamTest : public LeakCheckedTest {};

const std::vector<unsigned char> CheckInput = Bytes("123456789");

// The reflected CRC-32 of zlib, PNG and Ethernet, computed with the usual
// table; only the update step differs from the stream's own algorithm.
class CReflectedCrc32Stream : public CCrc32Stream {
 public:
  explicit CReflectedCrc32Stream(CStream* inner) : CCrc32Stream(0x04C11DB7, inner) {
    SetCrc(0xFFFFFFFFu);
    for (unsigned int n = 0; n < 256; ++n) {
      unsigned int c = n;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      table_[n] = c;
    }
  }
  unsigned int UpdateCrc(unsigned int crc, unsigned char byte) override {
    return table_[(crc ^ byte) & 0xFF] ^ (crc >> 8);
  }

 private:
  unsigned int table_[256];
};

// A table-driven MSB-first CRC-32, written independently of the stream.
unsigned int TableCrc32(const std::vector<unsigned char>& data, unsigned int polynomial, unsigned int crc) {
  unsigned int table[256];
  for (unsigned int n = 0; n < 256; ++n) {
    unsigned int c = n << 24;
    for (int k = 0; k < 8; ++k) c = (c & 0x80000000u) ? (c << 1) ^ polynomial : c << 1;
    table[n] = c;
  }
  for (unsigned char byte : data) crc = (crc << 8) ^ table[((crc >> 24) ^ byte) & 0xFF];
  return crc;
}

std::vector<unsigned char> RandomBytes(int count, unsigned int seed) {
  std::mt19937 generator(seed);
  std::vector<unsigned char> bytes(static_cast<std::size_t>(count));
  for (auto& b : bytes) b = static_cast<unsigned char>(generator());
  return bytes;
}

}  // namespace

TEST_F(ChecksumStreamTest, Crc16MatchesTheCatalogueCheckValues) {
  // CRC-16/XMODEM (0x1021) and CRC-16/UMTS (0x8005): initial value 0, no reflection.
  RObject<CMemoryStream> sink(new CMemoryStream());
  RObject<CCrc16Stream> xmodem(new CCrc16Stream(0x1021, sink));
  ASSERT_TRUE(xmodem->Write(CheckInput.data(), 9).Succeeded());
  EXPECT_EQ(xmodem->GetCrc(), 0x31C3);
  EXPECT_EQ(Content(sink), CheckInput);  // the bytes passed through unchanged
  RObject<CCrc16Stream> umts(new CCrc16Stream(0x8005, nullptr));
  for (unsigned char byte : CheckInput) umts->ComputeCrc(byte);
  EXPECT_EQ(umts->GetCrc(), 0xFEE8);
  EXPECT_EQ(umts->GetPolynomial(), 0x8005);
}

TEST_F(ChecksumStreamTest, Crc16OverDataAndItsCrcIsZero) {
  std::vector<unsigned char> data = RandomBytes(333, 16);
  RObject<CCrc16Stream> first(new CCrc16Stream(0x1021, nullptr));
  for (unsigned char byte : data) first->ComputeCrc(byte);
  unsigned short crc = first->GetCrc();
  data.push_back(static_cast<unsigned char>(crc >> 8));
  data.push_back(static_cast<unsigned char>(crc));
  RObject<CMemoryStream> source(NewMemoryStream(data));
  RObject<CCrc16Stream> check(new CCrc16Stream(0x1021, source));
  std::vector<unsigned char> buffer(data.size());
  int read = 0;
  ASSERT_TRUE(check->Read(buffer.data(), static_cast<int>(buffer.size()), &read).Succeeded());
  EXPECT_EQ(read, static_cast<int>(data.size()));
  EXPECT_EQ(check->GetCrc(), 0);
}

TEST_F(ChecksumStreamTest, Crc32MatchesTheCatalogueCheckValues) {
  RObject<CMemoryStream> source(NewMemoryStream(CheckInput));
  RObject<CCrc32Stream> plain(new CCrc32Stream(0x04C11DB7, source));
  unsigned char buffer[9];
  ASSERT_TRUE(plain->Read(buffer, 9).Succeeded());
  // CRC-32/POSIX is this CRC with a final inversion (check value 0x765E7680).
  EXPECT_EQ(plain->GetCrc(), ~0x765E7680u);
  // Started from all ones it is CRC-32/MPEG-2.
  RObject<CMemoryStream> sink(new CMemoryStream());
  RObject<CCrc32Stream> writer(new CCrc32Stream(0x04C11DB7, sink));
  writer->SetCrc(0xFFFFFFFFu);
  ASSERT_TRUE(writer->Write(CheckInput.data(), 9).Succeeded());
  EXPECT_EQ(writer->GetCrc(), 0x0376E6E7u);
  EXPECT_EQ(writer->GetPolynomial(), 0x04C11DB7u);
}

TEST_F(ChecksumStreamTest, Crc32AgreesWithATableDrivenCrc) {
  std::vector<unsigned char> data = RandomBytes(4099, 32);
  RObject<CMemoryStream> sink(new CMemoryStream());
  RObject<CCrc32Stream> stream(new CCrc32Stream(0x04C11DB7, sink));
  stream->SetCrc(0xFFFFFFFFu);
  // In uneven pieces, one of them a single byte.
  ASSERT_TRUE(stream->Write(data.data(), 1).Succeeded());
  ASSERT_TRUE(stream->Write(data.data() + 1, 1000).Succeeded());
  ASSERT_TRUE(stream->WriteByte(data[1001]).Succeeded());
  ASSERT_TRUE(stream->Write(data.data() + 1002, static_cast<int>(data.size()) - 1002).Succeeded());
  EXPECT_EQ(stream->GetCrc(), TableCrc32(data, 0x04C11DB7, 0xFFFFFFFFu));
  // An MPEG-2 section followed by its CRC checks to zero.
  unsigned int crc = stream->GetCrc();
  unsigned char tail[4] = {static_cast<unsigned char>(crc >> 24), static_cast<unsigned char>(crc >> 16),
                           static_cast<unsigned char>(crc >> 8), static_cast<unsigned char>(crc)};
  ASSERT_TRUE(stream->Write(tail, 4).Succeeded());
  EXPECT_EQ(stream->GetCrc(), 0u);
}

TEST_F(ChecksumStreamTest, SubclassesChangeTheAlgorithmThroughUpdateCrc) {
  RObject<CMemoryStream> source(NewMemoryStream(CheckInput));
  RObject<CReflectedCrc32Stream> png(new CReflectedCrc32Stream(source));
  for (int i = 0; i < 9; ++i) ASSERT_GE(png->ReadByte(), 0);  // the default ReadByte reads through Read
  EXPECT_EQ(~png->GetCrc(), 0xCBF43926u);                   // CRC-32 (ISO-HDLC) check value
}

TEST_F(ChecksumStreamTest, OnlyDeliveredBytesAreFolded) {
  RObject<CMemoryStream> source(NewMemoryStream(CheckInput));
  RObject<CCrc16Stream> stream(new CCrc16Stream(0x1021, source));
  std::vector<unsigned char> buffer(64, 0x55);
  int read = 0;
  ASSERT_TRUE(stream->Read(buffer.data(), 64, &read).Succeeded());
  EXPECT_EQ(read, 9);
  EXPECT_EQ(stream->GetCrc(), 0x31C3);
  // A refused write changes nothing: a fixed stream of 4 bytes takes no 9.
  RObject<CMemoryStream> small(new CMemoryStream(4));
  RObject<CCrc32Stream> crc(new CCrc32Stream(0x04C11DB7, small));
  EXPECT_TRUE(crc->Write(CheckInput.data(), 9).Failed());
  EXPECT_EQ(crc->GetCrc(), 0u);
  // Without an inner stream nothing is read or written.
  RObject<CCrc32Stream> empty(new CCrc32Stream(0x04C11DB7, nullptr));
  EXPECT_TRUE(empty->Write(CheckInput.data(), 9).Failed());
  EXPECT_TRUE(empty->Read(buffer.data(), 9).Failed());
  EXPECT_EQ(empty->GetCrc(), 0u);
}

TEST_F(ChecksumStreamTest, StreamOperationsForwardToTheInnerStream) {
  RObject<CMemoryStream> source(NewMemoryStream(CheckInput));
  RObject<CCrc16Stream> stream(new CCrc16Stream(0x1021, source));
  EXPECT_TRUE(stream->IsType(FourCC("cr16")));
  EXPECT_TRUE(stream->CanRead());
  EXPECT_TRUE(stream->CanSeek());
  EXPECT_TRUE(stream->CanWrite());
  EXPECT_EQ(stream->GetLength(), 9);
  EXPECT_EQ(stream->GetAvailableLength(), 9);
  long long position = -1;
  ASSERT_TRUE(stream->Seek(5, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, 5);
  EXPECT_EQ(source->GetPosition(), 5);
  EXPECT_EQ(stream->ReadByte(), '6');
  EXPECT_EQ(stream->GetPosition(), 6);
  // Only the byte that was read counts: the CRC of "6" alone.
  RObject<CCrc16Stream> reference(new CCrc16Stream(0x1021, nullptr));
  reference->ComputeCrc('6');
  EXPECT_EQ(stream->GetCrc(), reference->GetCrc());
  EXPECT_TRUE(stream->Flush().Succeeded());
  RObject<CForwardOnlyStream> forward(new CForwardOnlyStream(CheckInput));
  RObject<CCrc32Stream> wrapped(new CCrc32Stream(0x04C11DB7, forward));
  EXPECT_FALSE(wrapped->CanSeek());
}

TEST_F(ChecksumStreamTest, ChecksumSumsWrittenBytes) {
  RObject<CMemoryStream> sink(new CMemoryStream());
  RObject<CChecksumStream> stream(new CChecksumStream(sink));
  EXPECT_TRUE(stream->IsType(FourCC("cksm")));
  std::vector<unsigned char> data = RandomBytes(1000, 8);
  ASSERT_TRUE(stream->Write(data.data(), 1000).Succeeded());
  unsigned int sum = 0;
  for (unsigned char byte : data) sum += byte;
  EXPECT_EQ(stream->GetChecksum(), static_cast<unsigned char>(sum));
  // A caption packet closes with the byte that brings the sum to zero.
  unsigned char closing = static_cast<unsigned char>(256 - stream->GetChecksum());
  ASSERT_TRUE(stream->WriteByte(closing).Succeeded());
  EXPECT_EQ(stream->GetChecksum(), 0);
  EXPECT_EQ(sink->GetLength(), 1001);
  // The sum is taken before forwarding: a refused write still counts.
  RObject<CMemoryStream> small(new CMemoryStream(2));
  RObject<CChecksumStream> refused(new CChecksumStream(small));
  const unsigned char three[3] = {1, 2, 3};
  EXPECT_TRUE(refused->Write(three, 3).Failed());
  EXPECT_EQ(refused->GetChecksum(), 6);
}

TEST_F(ChecksumStreamTest, ChecksumSumsTheRequestedCountOnReads) {
  const unsigned char three[3] = {1, 2, 3};
  RObject<CMemoryStream> source(NewMemoryStream({three, three + 3}));
  RObject<CChecksumStream> stream(new CChecksumStream(source));
  // Eight bytes asked for, three delivered: the five stale bytes count too.
  unsigned char buffer[8] = {0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10};
  int read = 0;
  ASSERT_TRUE(stream->Read(buffer, 8, &read).Succeeded());
  EXPECT_EQ(read, 3);
  EXPECT_EQ(stream->GetChecksum(), 6 + 5 * 0x10);
  // ReadByte counts only the byte it returns, and nothing at the end.
  stream->SetChecksum(0);
  ASSERT_TRUE(stream->Seek(1, SeekOrigin::Begin, nullptr).Succeeded());
  EXPECT_EQ(stream->ReadByte(), 2);
  EXPECT_EQ(stream->ReadByte(), 3);
  EXPECT_EQ(stream->ReadByte(), -1);
  EXPECT_EQ(stream->GetChecksum(), 5);
}
