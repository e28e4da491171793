#include "System/IO/BitStream.h"

#include <climits>

#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class BitStreamTest : public LeakCheckedTest {
 protected:
  // A reading stream over the bits spelled as '0' and '1' (spaces ignored),
  // padded with zeros to whole bytes.
  static RObject<CBitStream> Over(const std::string& spelled) {
    std::vector<unsigned char> bytes;
    int count = 0;
    for (char c : spelled) {
      if (c != '0' && c != '1') continue;
      if (count % 8 == 0) bytes.push_back(0);
      if (c == '1') bytes.back() |= static_cast<unsigned char>(0x80 >> (count % 8));
      ++count;
    }
    RObject<CByteArray> array(new CByteArray(bytes.data(), static_cast<int>(bytes.size())));
    return RObject<CBitStream>(new CBitStream(array));
  }
  // The stream's bits from 0 to its length, as '0' and '1'.
  static std::string Spelled(CBitStream* stream) {
    RObject<CByteArray> bytes(stream->ToByteArray());
    std::string bits;
    for (int i = 0; i < stream->GetLength(); ++i) bits += (bytes->GetData()[i / 8] >> (7 - i % 8)) & 1 ? '1' : '0';
    return bits;
  }
  // Bits of ue(v): 2 * floor(log2(v + 1)) + 1.
  static int UeLength(unsigned long long v) {
    int z = 0;
    while ((v + 1) >> (z + 1)) ++z;
    return 2 * z + 1;
  }
};

TEST_F(BitStreamTest, ExpGolombCodesReadAsDefined) {
  RObject<CBitStream> stream = Over("1 010 011 00100 0001000 010 011 1 00101");
  unsigned int u = 99;
  for (unsigned int expected : {0u, 1u, 2u, 3u, 7u}) {
    ASSERT_TRUE(stream->Read(u).Succeeded());
    EXPECT_EQ(u, expected);
  }
  int s = 99;
  for (int expected : {1, -1, 0, -2}) {
    ASSERT_TRUE(stream->Read(s).Succeeded());
    EXPECT_EQ(s, expected);
  }
}

TEST_F(BitStreamTest, ExpGolombWritesAndRoundTripsTheWholeRange) {
  RObject<CBitStream> four(new CBitStream(16));
  ASSERT_TRUE(four->Write(4u).Succeeded());
  EXPECT_EQ(Spelled(four), "00101");

  const unsigned int unsignedValues[] = {0, 1, 2, 3, 4, 254, 255, 65535, 0x7FFFFFFF, UINT_MAX - 1, UINT_MAX};
  const int signedValues[] = {0, 1, -1, 2, -2, 1000, -1000, INT_MAX, INT_MIN + 1, INT_MIN};
  RObject<CBitStream> stream(new CBitStream(2000));
  int bits = 0;
  for (unsigned int v : unsignedValues) {
    ASSERT_TRUE(stream->Write(v).Succeeded());
    bits += UeLength(v);
    EXPECT_EQ(stream->GetPosition(), bits);
  }
  for (int v : signedValues) {
    ASSERT_TRUE(stream->Write(v).Succeeded());
    long long k = v > 0 ? 2LL * v - 1 : -2LL * v;
    bits += UeLength(static_cast<unsigned long long>(k));
    EXPECT_EQ(stream->GetPosition(), bits);
  }
  EXPECT_EQ(stream->GetLength(), bits);
  RObject<CByteArray> bytes(stream->ToByteArray());
  EXPECT_EQ(bytes->GetLength(), (bits + 7) / 8);
  RObject<CBitStream> reader(new CBitStream(bytes));
  for (unsigned int v : unsignedValues) {
    unsigned int got = 0;
    ASSERT_TRUE(reader->Read(got).Succeeded());
    EXPECT_EQ(got, v);
  }
  for (int v : signedValues) {
    int got = 0;
    ASSERT_TRUE(reader->Read(got).Succeeded());
    EXPECT_EQ(got, v);
  }
}

TEST_F(BitStreamTest, BadExpGolombCodesLeaveThePositionAlone) {
  // 33 zeros and a 1 need 33 more bits for a value that no longer fits.
  RObject<CBitStream> tooLong = Over(std::string(33, '0') + "1" + std::string(40, '1'));
  unsigned int u = 0;
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(tooLong->Read(u)));
  EXPECT_EQ(tooLong->GetPosition(), 0);
  // A signed code whose value lies below the smallest int.
  RObject<CBitStream> tooSmall = Over(std::string(32, '0') + "1" + "00000100000000000000000000000011");
  int s = 0;
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(tooSmall->Read(s)));
  EXPECT_EQ(tooSmall->GetPosition(), 0);
  RObject<CBitStream> truncated = Over("0000 0001");
  ASSERT_TRUE(truncated->Skip(4).Succeeded());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(truncated->Read(u)));
  EXPECT_EQ(truncated->GetPosition(), 4);
  RObject<CBitStream> zeros = Over("00000000");
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(zeros->Read(s)));
  EXPECT_EQ(zeros->GetPosition(), 0);
}

TEST_F(BitStreamTest, FixedWidthReadsAcrossBytesWithPrefixAndLimits) {
  RObject<CBitStream> stream = Over("101 11001010 1111000011110000 0110");
  bool bit = false;
  ASSERT_TRUE(stream->Read(bit).Succeeded());
  EXPECT_TRUE(bit);
  unsigned int value = 0;
  ASSERT_TRUE(stream->Read(2, value, 0b110u).Succeeded());
  EXPECT_EQ(value, 0b11001u);
  unsigned char byte = 0;
  ASSERT_TRUE(stream->Read(byte).Succeeded());
  EXPECT_EQ(byte, 0b11001010);
  unsigned short half = 0;
  ASSERT_TRUE(stream->Read(half).Succeeded());
  EXPECT_EQ(half, 0b1111000011110000);
  ASSERT_TRUE(stream->Read(4, byte).Succeeded());
  EXPECT_EQ(byte, 0b0110);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Read(9, byte)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Read(17, half)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Read(33, value, 0)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Read(5, byte)));  // only 1 bit is left
  EXPECT_EQ(stream->GetPosition(), 31);

  RObject<CBitStream> signedBits = Over("11111110 1000000000000001");
  signed char small = 0;
  short medium = 0;
  ASSERT_TRUE(signedBits->Read(small).Succeeded());
  ASSERT_TRUE(signedBits->Read(medium).Succeeded());
  EXPECT_EQ(small, -2);
  EXPECT_EQ(medium, -32767);

  std::string pattern;
  for (int i = 0; i < 80; ++i) pattern += (i * 37 + i / 3) % 5 < 2 ? '1' : '0';
  RObject<CBitStream> wide = Over(pattern);
  ASSERT_TRUE(wide->Skip(5).Succeeded());
  unsigned long long all = 0;
  ASSERT_TRUE(wide->Read(64, all).Succeeded());
  unsigned long long expected = 0;
  for (int i = 5; i < 69; ++i) expected = expected << 1 | static_cast<unsigned long long>(pattern[static_cast<std::size_t>(i)] - '0');
  EXPECT_EQ(all, expected);
}

TEST_F(BitStreamTest, PositionsAndStopBit) {
  RObject<CBitStream> stream = Over("00000001 10100000");
  EXPECT_EQ(stream->GetLength(), 16);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->SetPosition(16)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->SetPosition(-1)));
  ASSERT_TRUE(stream->SetPosition(15).Succeeded());
  ASSERT_TRUE(stream->Skip(1).Succeeded());
  EXPECT_EQ(stream->GetPosition(), 16);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Skip(1)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Skip(-17)));
  int stop = -1;
  ASSERT_TRUE(stream->GetStopPosition(stop).Succeeded());
  EXPECT_EQ(stop, 10);
  RObject<CBitStream> early = Over("10000000 00000000");
  ASSERT_TRUE(early->GetStopPosition(stop).Succeeded());
  EXPECT_EQ(stop, 0);
  RObject<CBitStream> none = Over("00000000");
  EXPECT_TRUE(IsKind<ResultError>(none->GetStopPosition(stop)));
  // Bits beyond the written length do not count as stop bits.
  RObject<CBitStream> written(new CBitStream(16));
  ASSERT_TRUE(written->Write(3, 0b100ULL).Succeeded());
  ASSERT_TRUE(written->Write(3, 0ULL).Succeeded());
  ASSERT_TRUE(written->GetStopPosition(stop).Succeeded());
  EXPECT_EQ(stop, 0);

  RObject<CBitStream> empty(new CBitStream(static_cast<CByteArray*>(nullptr)));
  bool bit = false;
  EXPECT_TRUE(IsKind<ResultNullPointer>(empty->Read(bit)));
  EXPECT_TRUE(IsKind<ResultNullPointer>(empty->Write(true)));
  EXPECT_TRUE(IsKind<ResultNullPointer>(empty->Skip(0)));
}

TEST_F(BitStreamTest, PrefixTablesDecodeInOrderOfLength) {
  const CBitStream::PrefixCode codes[] = {{'a', 0b0, 1}, {'b', 0b10, 2}, {'c', 0b110, 3}, {'d', 0b111, 3}};
  const CBitStream::PrefixTable table = {4, codes};
  RObject<CBitStream> stream = Over("0 10 110 111 0 10 111 0");
  std::string decoded;
  int value = 0;
  while (stream->Read(&table, value).Succeeded()) decoded += static_cast<char>(value);
  EXPECT_EQ(decoded, "abcdabda");
  EXPECT_EQ(stream->GetPosition(), 16);
  const CBitStream::PrefixTable partial = {3, codes};
  RObject<CBitStream> unknown = Over("10 111");
  ASSERT_TRUE(unknown->Read(&partial, value).Succeeded());
  EXPECT_EQ(value, 'b');
  EXPECT_TRUE(IsKind<ResultError>(unknown->Read(&partial, value)));
  EXPECT_EQ(unknown->GetPosition(), 2);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(unknown->Read(nullptr, value)));
}

TEST_F(BitStreamTest, WritesReplaceBitsInPlaceAndStopAtTheBuffer) {
  std::vector<unsigned char> ones = {0xFF, 0xFF};
  RObject<CByteArray> array(new CByteArray(ones.data(), 2));
  RObject<CBitStream> stream(new CBitStream(array));
  ASSERT_TRUE(stream->SetPosition(3).Succeeded());
  ASSERT_TRUE(stream->Write(2, 0ULL).Succeeded());
  ASSERT_TRUE(stream->SetPosition(7).Succeeded());
  ASSERT_TRUE(stream->Write(3, 0b010ULL).Succeeded());
  EXPECT_EQ(Spelled(stream), "1110011010111111");
  EXPECT_EQ(stream->GetLength(), 16);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Write(7, 0ULL)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Write(65, 0ULL)));

  RObject<CBitStream> fresh(new CBitStream(20));
  EXPECT_EQ(fresh->GetLength(), 0);
  ASSERT_TRUE(fresh->Write(true).Succeeded());
  ASSERT_TRUE(fresh->Write(static_cast<unsigned char>(0x5A)).Succeeded());
  ASSERT_TRUE(fresh->Write(11, 0x7FFULL).Succeeded());
  EXPECT_EQ(Spelled(fresh), "10101101011111111111");
  // Room for 20 bits is three bytes: 4 more fit, the 25th does not.
  ASSERT_TRUE(fresh->Write(4, 0ULL).Succeeded());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(fresh->Write(true)));
  EXPECT_EQ(fresh->GetLength(), 24);
}

}  // namespace
