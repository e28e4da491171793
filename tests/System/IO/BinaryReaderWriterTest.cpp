#include <cstring>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/ByteOrderConverter.h"
#include "System/IO/MemoryStream.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class BinaryReaderWriterTest : public LeakCheckedTest {
 protected:
  RObject<CBinaryReader> ReaderOver(const std::vector<unsigned char>& bytes, CBinary::ByteOrder order) {
    RObject<CByteArray> array(new CByteArray(bytes.data(), static_cast<int>(bytes.size())));
    RObject<CMemoryStream> stream(new CMemoryStream(array));
    return RObject<CBinaryReader>(new CBinaryReader(stream, order));
  }
  static std::vector<unsigned char> Written(CMemoryStream* stream) {
    return {stream->GetData(), stream->GetData() + stream->GetLength()};
  }
};

// The width low bytes of value in the given order, built by shifting.
std::vector<unsigned char> Layout(unsigned long long value, int width, bool bigEndian) {
  std::vector<unsigned char> bytes;
  for (int i = 0; i < width; ++i) {
    int shift = 8 * (bigEndian ? width - 1 - i : i);
    bytes.push_back(static_cast<unsigned char>(value >> shift));
  }
  return bytes;
}

template <class T>
unsigned long long Bits(T value) {
  unsigned long long bits = 0;
  std::memcpy(&bits, &value, sizeof value);
  return bits;
}

TEST_F(BinaryReaderWriterTest, ThreeByteAndAbsentFieldsAndCodes) {
  RObject<CBinaryReader> big = ReaderOver({0x01, 0x02, 0x03}, CBinary::BigEndian);
  int value = -1;
  ASSERT_TRUE(big->ReadInt32(&value, CBinary::FieldThreeBytes, 0).Succeeded());
  EXPECT_EQ(value, 0x010203);
  RObject<CBinaryReader> little = ReaderOver({0x01, 0x02, 0x03}, CBinary::LittleEndian);
  ASSERT_TRUE(little->ReadInt32(&value, CBinary::FieldThreeBytes, 0).Succeeded());
  EXPECT_EQ(value, 0x030201);

  RObject<CBinaryReader> absent = ReaderOver({0x09}, CBinary::BigEndian);
  ASSERT_TRUE(absent->ReadInt32(&value, CBinary::FieldAbsent, 7).Succeeded());
  EXPECT_EQ(value, 7);
  EXPECT_EQ(absent->GetPosition(), 0);
  ASSERT_TRUE(absent->ReadInt32(&value, static_cast<CBinary::FieldType>(9), 7).Succeeded());
  EXPECT_EQ(value, 0);

  for (CBinary::ByteOrder order : {CBinary::LittleEndian, CBinary::BigEndian}) {
    RObject<CBinaryReader> reader = ReaderOver(Bytes("ftyp"), order);
    unsigned int code = 0;
    ASSERT_TRUE(reader->ReadFour(&code).Succeeded());
    EXPECT_EQ(code, 0x66747970u);
  }
}

TEST_F(BinaryReaderWriterTest, EveryWidthInBothOrdersRoundTrips) {
  for (CBinary::ByteOrder order : {CBinary::LittleEndian, CBinary::BigEndian}) {
    SCOPED_TRACE(order);
    bool big = order == CBinary::BigEndian;
    RObject<CMemoryStream> stream(new CMemoryStream());
    RObject<CBinaryWriter> writer(new CBinaryWriter(stream, order));
    const unsigned char byte = 0xA5;
    const short half = static_cast<short>(0xBEEF);
    const int word = static_cast<int>(0x89ABCDEF);
    const long long wide = static_cast<long long>(0xF123456789ABCDE0ULL);
    const float single = -1.5e-3f;
    const double dual = 6.02214076e23;
    ASSERT_TRUE(writer->WriteByte(byte).Succeeded());
    ASSERT_TRUE(writer->WriteInt16(half).Succeeded());
    ASSERT_TRUE(writer->WriteInt32(word).Succeeded());
    ASSERT_TRUE(writer->WriteInt64(wide).Succeeded());
    ASSERT_TRUE(writer->WriteFloat32(single).Succeeded());
    ASSERT_TRUE(writer->WriteFloat64(dual).Succeeded());
    ASSERT_TRUE(writer->WriteFour(FourCC("moov")).Succeeded());
    for (CBinary::FieldType type : {CBinary::FieldAbsent, CBinary::FieldOneByte, CBinary::FieldTwoBytes,
                                    CBinary::FieldFourBytes, CBinary::FieldThreeBytes})
      ASSERT_TRUE(writer->WriteInt32(word, type).Succeeded());
    EXPECT_TRUE(IsKind<ResultNotSupported>(writer->WriteInt32(word, static_cast<CBinary::FieldType>(5))));

    std::vector<unsigned char> expected = {byte};
    for (auto [value, width] : std::vector<std::pair<unsigned long long, int>>{
             {static_cast<unsigned short>(half), 2},
             {static_cast<unsigned int>(word), 4},
             {static_cast<unsigned long long>(wide), 8},
             {Bits(single), 4},
             {Bits(dual), 8}}) {
      std::vector<unsigned char> part = Layout(value, width, big);
      expected.insert(expected.end(), part.begin(), part.end());
    }
    for (char c : std::string("moov")) expected.push_back(static_cast<unsigned char>(c));
    for (int width : {1, 2, 4, 3}) {
      std::vector<unsigned char> part = Layout(static_cast<unsigned int>(word), width, big);
      expected.insert(expected.end(), part.begin(), part.end());
    }
    EXPECT_EQ(Written(stream), expected);

    RObject<CBinaryReader> reader = ReaderOver(expected, order);
    unsigned char b = 0;
    short h = 0;
    int w = 0;
    long long l = 0;
    float f = 0;
    double d = 0;
    unsigned int code = 0;
    ASSERT_TRUE(reader->ReadByte(&b).Succeeded());
    ASSERT_TRUE(reader->ReadInt16(&h).Succeeded());
    ASSERT_TRUE(reader->ReadInt32(&w).Succeeded());
    ASSERT_TRUE(reader->ReadInt64(&l).Succeeded());
    ASSERT_TRUE(reader->ReadFloat32(&f).Succeeded());
    ASSERT_TRUE(reader->ReadFloat64(&d).Succeeded());
    ASSERT_TRUE(reader->ReadFour(&code).Succeeded());
    EXPECT_EQ(b, byte);
    EXPECT_EQ(h, half);
    EXPECT_EQ(w, word);
    EXPECT_EQ(l, wide);
    EXPECT_EQ(f, single);
    EXPECT_EQ(d, dual);
    EXPECT_EQ(code, FourCC("moov"));
    // Field forms come back zero-extended from their low bytes.
    const int fields[] = {static_cast<int>(0xEF), static_cast<int>(0xCDEF), word, static_cast<int>(0xABCDEF)};
    const CBinary::FieldType types[] = {CBinary::FieldOneByte, CBinary::FieldTwoBytes, CBinary::FieldFourBytes,
                                        CBinary::FieldThreeBytes};
    for (int i = 0; i < 4; ++i) {
      ASSERT_TRUE(reader->ReadInt32(&w, types[i], 0).Succeeded());
      EXPECT_EQ(w, fields[i]);
    }
    EXPECT_EQ(reader->GetPosition(), reader->GetLength());
  }
}

TEST_F(BinaryReaderWriterTest, GuidLeadingFieldsSwapInBigEndianOrder) {
  std::vector<unsigned char> bytes = Sequence(16);
  auto field = [&](int at, int width, bool big) {
    unsigned int value = 0;
    for (int i = 0; i < width; ++i) value |= static_cast<unsigned int>(bytes[static_cast<std::size_t>(at + i)]) << (8 * (big ? width - 1 - i : i));
    return value;
  };
  for (CBinary::ByteOrder order : {CBinary::LittleEndian, CBinary::BigEndian}) {
    bool big = order == CBinary::BigEndian;
    Guid guid;
    RObject<CBinaryReader> reader = ReaderOver(bytes, order);
    ASSERT_TRUE(reader->ReadGuid(&guid).Succeeded());
    EXPECT_EQ(guid.GetData1(), field(0, 4, big));
    EXPECT_EQ(guid.GetData2(), field(4, 2, big));
    EXPECT_EQ(guid.GetData3(), field(6, 2, big));
    EXPECT_TRUE(std::equal(bytes.begin() + 8, bytes.end(), guid.GetData4()));
    // Writing it in the same order gives the bytes back.
    RObject<CMemoryStream> stream(new CMemoryStream());
    RObject<CBinaryWriter> writer(new CBinaryWriter(stream, order));
    ASSERT_TRUE(writer->WriteGuid(guid).Succeeded());
    EXPECT_EQ(Written(stream), bytes);
  }
  RObject<CBinaryReader> reader = ReaderOver(bytes, CBinary::LittleEndian);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(reader->ReadGuid(nullptr)));
}

// A stream that takes at most a few bytes in all.
class CShortStream : public CRecordingStream {
 public:
  CShortStream() : CRecordingStream({}) {}
  using CRecordingStream::Write;
  Result Write(const unsigned char* buffer, int count, int* written) override {
    return CRecordingStream::Write(buffer, std::min(count, 3), written);
  }
};

TEST_F(BinaryReaderWriterTest, TruncatedStreamsNullPointersAndClosedReaders) {
  RObject<CBinaryReader> reader = ReaderOver({1, 2, 3}, CBinary::LittleEndian);
  int value = 0;
  EXPECT_TRUE(IsKind<ResultArgumentNull>(reader->ReadInt32(nullptr)));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(reader->ReadInt32(nullptr, CBinary::FieldOneByte, 0)));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(reader->ReadBytes(static_cast<CByteArray*>(nullptr))));
  EXPECT_TRUE(IsKind<ResultEndOfStream>(reader->ReadInt32(&value)));
  RObject<CBinaryReader> failing(new CBinaryReader(RObject<CMemoryStream>(new CMemoryStream(static_cast<CByteArray*>(nullptr)))));
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(failing->ReadInt32(&value)));

  RObject<CBinaryReader> bytes = ReaderOver(Sequence(10), CBinary::BigEndian);
  ASSERT_TRUE(bytes->Skip(2).Succeeded());
  RObject<CByteArray> array(new CByteArray(4, 1));
  ASSERT_TRUE(bytes->ReadBytes(array).Succeeded());
  EXPECT_TRUE(array->Equals(Sequence(6).data() + 2, 4));
  unsigned char rest[5];
  EXPECT_TRUE(IsKind<ResultEndOfStream>(bytes->ReadBytes(rest, 5)));
  bytes->Close();
  RObject<CStream> none(bytes->GetStream());
  EXPECT_EQ(none.Get(), nullptr);
  EXPECT_TRUE(IsKind<ResultNullPointer>(bytes->ReadInt32(&value)));

  RObject<CShortStream> shortStream(new CShortStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(shortStream, CBinary::LittleEndian));
  EXPECT_TRUE(IsKind<ResultEndOfStream>(writer->WriteInt64(1)));
  shortStream->writes.clear();
  EXPECT_TRUE(writer->WriteBytes(nullptr, 0).Succeeded());
  EXPECT_TRUE(shortStream->writes.empty());
  RObject<CByteArray> source(new CByteArray(Sequence(5).data(), 5));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(writer->WriteBytes(source, 3, 3)));
  EXPECT_TRUE(writer->WriteBytes(source, 1, 3).Succeeded());
  EXPECT_EQ(shortStream->writes.back().second, 3);
}

TEST_F(BinaryReaderWriterTest, FieldTypesAndSingleValueConversion) {
  const int sizes[] = {0, 1, 2, 3, 4};
  const CBinary::FieldType types[] = {CBinary::FieldAbsent, CBinary::FieldOneByte, CBinary::FieldTwoBytes,
                                      CBinary::FieldThreeBytes, CBinary::FieldFourBytes};
  for (int i = 0; i < 5; ++i) {
    CBinary::FieldType type = CBinary::FieldAbsent;
    ASSERT_TRUE(CBinary::ToFieldType(sizes[i], type).Succeeded());
    EXPECT_EQ(type, types[i]);
  }
  CBinary::FieldType type = CBinary::FieldAbsent;
  EXPECT_TRUE(IsKind<ResultNotSupported>(CBinary::ToFieldType(5, type)));

  unsigned char out[4];
  CByteOrderConverter::BigEndian.GetBytes(0x01020304, out);
  EXPECT_EQ(std::vector<unsigned char>(out, out + 4), Layout(0x01020304, 4, true));
  EXPECT_EQ(CByteOrderConverter::BigEndian.ToInt32(out), 0x01020304);
  CByteOrderConverter::LittleEndian.GetBytes(0x01020304, out);
  EXPECT_EQ(std::vector<unsigned char>(out, out + 4), Layout(0x01020304, 4, false));
  EXPECT_EQ(CByteOrderConverter::LittleEndian.GetByteOrder(), CBinary::LittleEndian);
}

}  // namespace
