#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "System/ByteArray.h"
#include "System/Guid.h"
#include "System/LeakCheckedTest.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

class GuidTest : public LeakCheckedTest {};

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

std::string Format(const Guid& guid, char format) {
  char buffer[Guid::MaxStringLength];
  return guid.ToString(format, buffer);
}

const Guid Sample(0x00112233, 0x4455, 0x6677, 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF);

}  // namespace

TEST_F(GuidTest, ParsesEveryCommonForm) {
  const char* forms[] = {"{00112233-4455-6677-8899-AABBCCDDEEFF}", "(00112233-4455-6677-8899-aabbccddeeff)",
                         "00112233-4455-6677-8899-AABBCCDDEEFF", "00112233445566778899aabbccddeeff",
                         "00112233 4455 6677 8899 AABBCCDDEEFF", "[00112233_4455_6677_8899_aabbccddeeff]"};
  for (const char* form : forms) {
    SCOPED_TRACE(form);
    Guid guid;
    ASSERT_TRUE(guid.Parse(form).Succeeded());
    EXPECT_EQ(guid, Sample);
  }
  Guid fields;
  ASSERT_TRUE(fields.Parse("{00112233-4455-6677-8899-AABBCCDDEEFF}").Succeeded());
  EXPECT_EQ(fields.GetData1(), 0x00112233u);
  EXPECT_EQ(fields.GetData2(), 0x4455);
  EXPECT_EQ(fields.GetData3(), 0x6677);
  EXPECT_EQ(fields.GetData4()[0], 0x88);
  EXPECT_EQ(fields.GetData4()[7], 0xFF);
}

TEST_F(GuidTest, RefusesLongOrIncompleteText) {
  Guid guid = Sample;
  // 39 characters still parse; 40 do not, whatever they hold.
  std::string text = "{00112233-4455-6677-8899-AABBCCDDEEFF}";
  EXPECT_TRUE(guid.Parse((text + " ").c_str()).Succeeded());
  EXPECT_TRUE(IsKind<ResultError>(guid.Parse((text + "  ").c_str())));
  EXPECT_TRUE(IsKind<ResultError>(guid.Parse("00112233-4455-6677-8899-AABBCCDDEE")));  // ten of eleven fields
  EXPECT_TRUE(IsKind<ResultError>(guid.Parse("")));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(guid.Parse(static_cast<const char*>(nullptr))));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(guid.Parse(static_cast<CString*>(nullptr))));
  EXPECT_EQ(guid, Sample);  // failures change nothing
  RObject<CString> braced(new CString("{ffeeddcc-bbaa-9988-7766-554433221100}"));
  ASSERT_TRUE(guid.Parse(braced).Succeeded());
  EXPECT_EQ(guid.GetData1(), 0xffeeddccu);
}

TEST_F(GuidTest, TextFormsInLowerCase) {
  EXPECT_EQ(Format(Sample, 'B'), "{00112233-4455-6677-8899-aabbccddeeff}");
  EXPECT_EQ(Format(Sample, 'N'), "00112233445566778899aabbccddeeff");
  EXPECT_EQ(Format(Sample, 'P'), "(00112233-4455-6677-8899-aabbccddeeff)");
  EXPECT_EQ(Format(Sample, 'D'), "00112233-4455-6677-8899-aabbccddeeff");
  EXPECT_EQ(Format(Sample, 'x'), "00112233-4455-6677-8899-aabbccddeeff");
  const std::pair<unsigned int, const char*> styles[] = {{FourCC("brac"), "{00112233-4455-6677-8899-aabbccddeeff}"},
                                                         {FourCC("numb"), "00112233445566778899aabbccddeeff"},
                                                         {FourCC("pare"), "(00112233-4455-6677-8899-aabbccddeeff)"},
                                                         {FourCC("dash"), "00112233-4455-6677-8899-aabbccddeeff"}};
  for (const auto& [style, expected] : styles) {
    RObject<CString> text(Sample.ToString(style));
    EXPECT_STREQ(text->GetChars(), expected);
  }
  // Every form parses back to the same value.
  for (char format : {'B', 'N', 'P', 'D'}) {
    Guid back;
    ASSERT_TRUE(back.Parse(Format(Sample, format).c_str()).Succeeded());
    EXPECT_EQ(back, Sample);
  }
}

TEST_F(GuidTest, BytesFollowTheMemoryLayout) {
  unsigned char bytes[16];
  Sample.ToByteArray(bytes);
  // Host order (little-endian here) for the three fields, then the byte string.
  const unsigned char expected[16] = {0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66,
                                      0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
  EXPECT_EQ(std::memcmp(bytes, expected, 16), 0);
  EXPECT_EQ(Guid(bytes), Sample);
  RObject<CByteArray> array(Sample.ToByteArray());
  ASSERT_EQ(array->GetLength(), 16);
  EXPECT_TRUE(array->Equals(expected, 16));
  EXPECT_EQ(Guid(array.Get()), Sample);
  RObject<CByteArray> out;
  ASSERT_TRUE(Sample.ToByteArray(out.Out()).Succeeded());
  EXPECT_TRUE(out->Equals(expected, 16));
  RObject<CByteArray> tooShort(new CByteArray(expected, 15));
  EXPECT_THROW(Guid{tooShort.Get()}, ResultArgumentOutOfRange);
  EXPECT_THROW(Guid{static_cast<const CByteArray*>(nullptr)}, ResultArgumentNull);
}

TEST_F(GuidTest, SwapReversesTheLeadingFields) {
  Guid guid = Sample;
  guid.Swap();
  EXPECT_EQ(guid.GetData1(), 0x33221100u);
  EXPECT_EQ(guid.GetData2(), 0x5544);
  EXPECT_EQ(guid.GetData3(), 0x7766);
  EXPECT_EQ(guid.GetData4()[0], 0x88);  // the byte string keeps its order
  unsigned char bytes[16];
  guid.ToByteArray(bytes);
  const unsigned char network[8] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77};
  EXPECT_EQ(std::memcmp(bytes, network, 8), 0);
  guid.Swap();
  EXPECT_EQ(guid, Sample);
}

TEST_F(GuidTest, NewGuidsAreRandomVersion4) {
  std::set<std::string> seen;
  for (int i = 0; i < 64; ++i) {
    Guid guid = i % 2 ? Guid::NewGuid(4) : Guid::NewPseudoRandom();
    EXPECT_EQ(guid.GetData3() >> 12, 4);
    EXPECT_EQ(guid.GetData4()[0] & 0xC0, 0x80);
    std::string text = Format(guid, 'D');
    EXPECT_EQ(text[14], '4');
    seen.insert(text);
  }
  EXPECT_EQ(seen.size(), 64u);
  EXPECT_TRUE(Guid::NewGuid(1).IsEmpty());
  EXPECT_TRUE(Guid::NewGuid(5).IsEmpty());
  EXPECT_TRUE(Guid().IsEmpty());
  EXPECT_FALSE(Sample.IsEmpty());
}

TEST_F(GuidTest, EqualityLooksAtEveryByte) {
  for (int i = 0; i < 16; ++i) {
    unsigned char bytes[16];
    Sample.ToByteArray(bytes);
    bytes[i] ^= 0x01;
    Guid other(bytes);
    EXPECT_FALSE(other.Equals(Sample)) << "byte " << i;
    EXPECT_TRUE(other != Sample);
  }
  EXPECT_TRUE(Guid(Sample).Equals(Sample));
}
