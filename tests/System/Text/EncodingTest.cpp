// CEncoding: the factory, encodings over the platform's converter, and the
// built-in ISO/IEC 6937 encoding (checked against its rules and against the C
// library's own ISO_6937 converter).
#include <set>
#include <string>
#include <vector>

#include "System/Text/CharacterSetEncoding.h"
#include "System/Text/Iso6937Encoding.h"
#include "TextTestSupport.h"

namespace Corvane::Mox::Testing {
namespace {

using ByteVector = std::vector<unsigned char>;

std::vector<unsigned char> Encode(const CEncoding* encoding, const wchar_t* text) {
  RObject<CByteArray> bytes(encoding->GetBytes(text));
  EXPECT_TRUE(bytes) << "no bytes for the text";
  return Bytes(bytes);
}

std::wstring Decode(const CEncoding* encoding, const ByteVector& bytes) {
  RString text(encoding->GetString(bytes.data(), static_cast<int>(bytes.size())));
  EXPECT_TRUE(text) << "no text for the bytes";
  return Wide(text);
}

// --- Factory and forwarding ------------------------------------------------------

using EncodingFactoryTest = TextTest;

TEST_F(EncodingFactoryTest, CreateChoosesTheImplementationByName) {
  RObject<CEncoding> iso6937(CEncoding::Create("ISO-6937"));
  RObject<CEncoding> latin1(CEncoding::Create("ISO-8859-1"));
  EXPECT_NE(dynamic_cast<CIso6937Encoding*>(iso6937.Get()), nullptr);
  EXPECT_NE(dynamic_cast<CCharacterSetEncoding*>(latin1.Get()), nullptr);
  RString name(latin1->GetEncodingType());
  EXPECT_EQ(Text(name), "ISO-8859-1");
  EXPECT_EQ(Text(RString(iso6937->GetEncodingType())), "ISO-6937");
  EXPECT_EQ(latin1->GetType(), CEncoding::TypeCode);
}

TEST_F(EncodingFactoryTest, NonVirtualFormsForwardStringAndArray) {
  RObject<CEncoding> latin1(CEncoding::Create("ISO-8859-1"));
  RString text(new CString(L"na\u00EFve"));
  EXPECT_EQ(latin1->GetByteCount(text.Get()), 5);
  RObject<CByteArray> bytes(latin1->GetBytes(text.Get()));
  EXPECT_EQ(Bytes(bytes), (ByteVector{'n', 'a', 0xEF, 'v', 'e'}));
  RString back(latin1->GetString(bytes.Get()));
  EXPECT_TRUE(back->Equals(text.Get()));
  EXPECT_EQ(latin1->GetByteCount(static_cast<CString*>(nullptr)), 0);
  EXPECT_FALSE(RObject<CByteArray>(latin1->GetBytes(static_cast<CString*>(nullptr))));
  EXPECT_FALSE(RString(latin1->GetString(static_cast<CByteArray*>(nullptr))));
}

// --- Character sets of the platform converter ----------------------------------

using CharacterSetEncodingTest = TextTest;

TEST_F(CharacterSetEncodingTest, Latin1BothWays) {
  RObject<CEncoding> latin1(new CCharacterSetEncoding("ISO-8859-1"));
  EXPECT_EQ(Encode(latin1, L"a\u00E9\u00FF"), (ByteVector{'a', 0xE9, 0xFF}));
  EXPECT_EQ(Decode(latin1, {'a', 0xE9, 0xFF}), L"a\u00E9\u00FF");
  EXPECT_EQ(latin1->GetCharCount(ByteVector{'a', 0xE9}.data(), 2), 2);
  EXPECT_EQ(latin1->GetByteCount(L"abc"), 3);
}

TEST_F(CharacterSetEncodingTest, UnrepresentableCharacterStopsTheConversion) {
  RObject<CEncoding> latin1(CEncoding::Create("ISO-8859-1"));
  EXPECT_EQ(Encode(latin1, L"ab\u20ACcd"), (ByteVector{'a', 'b'}));
  EXPECT_EQ(latin1->GetByteCount(L"ab\u20ACcd"), 2);
}

TEST_F(CharacterSetEncodingTest, Windows1252EuroSign) {
  RObject<CEncoding> cp1252(CEncoding::Create("WINDOWS-1252"));
  EXPECT_EQ(Encode(cp1252, L"\u20AC5"), (ByteVector{0x80, '5'}));
  EXPECT_EQ(Decode(cp1252, {0x93, 'q', 0x94}), L"\u201Cq\u201D");
}

TEST_F(CharacterSetEncodingTest, Utf16WithSurrogatesAndByteOrderMark) {
  RObject<CEncoding> utf16le(CEncoding::Create("UTF-16LE"));
  EXPECT_EQ(Encode(utf16le, L"a\U0001F600"), (ByteVector{'a', 0, 0x3D, 0xD8, 0x00, 0xDE}));
  EXPECT_EQ(Decode(utf16le, {'a', 0, 0x3D, 0xD8, 0x00, 0xDE}), L"a\U0001F600");
  EXPECT_EQ(utf16le->GetCharCount(ByteVector{'a', 0, 0x3D, 0xD8, 0x00, 0xDE}.data(), 6), 2);
  // With a byte-order mark, astral characters need more than four bytes per
  // character: the output buffer has to grow.
  RObject<CEncoding> utf16(CEncoding::Create("UTF-16"));
  ByteVector bom = Encode(utf16, L"\U0001F600\U0001F600");
  EXPECT_EQ(bom.size(), 10u);
  EXPECT_EQ(Decode(utf16, bom), L"\U0001F600\U0001F600");
}

TEST_F(CharacterSetEncodingTest, ShiftJisAndTruncatedInput) {
  RObject<CEncoding> sjis(CEncoding::Create("SHIFT_JIS"));
  EXPECT_EQ(Encode(sjis, L"\u65E5\u672Ca"), (ByteVector{0x93, 0xFA, 0x96, 0x7B, 'a'}));
  EXPECT_EQ(Decode(sjis, {0x93, 0xFA, 0x96, 0x7B, 'a'}), L"\u65E5\u672Ca");
  // A lead byte without its trail byte ends the text; what came before stays.
  EXPECT_EQ(Decode(sjis, {'x', 0x93}), L"x");
  EXPECT_EQ(sjis->GetCharCount(ByteVector{'x', 0x93}.data(), 2), 1);
}

TEST_F(CharacterSetEncodingTest, StatefulEncodingIsResetForEveryCall) {
  RObject<CEncoding> jis(CEncoding::Create("ISO-2022-JP"));
  // The output ends with the escape back to ASCII.
  const ByteVector expected{'a', 0x1B, '$', 'B', 0x46, 0x7C, 0x1B, '(', 'B'};
  EXPECT_EQ(Encode(jis, L"a\u65E5"), expected);
  EXPECT_EQ(Encode(jis, L"a\u65E5"), expected);
  // Input that leaves the decoder in the two-byte state must not affect the
  // next call: "F|" alone is plain ASCII.
  EXPECT_EQ(Decode(jis, {0x1B, '$', 'B', 0x46, 0x7C}), L"\u65E5");
  EXPECT_EQ(Decode(jis, {'F', '|'}), L"F|");
}

TEST_F(CharacterSetEncodingTest, UnknownCharacterSetFailsWithoutCrashing) {
  RObject<CCharacterSetEncoding> unknown(new CCharacterSetEncoding("NO-SUCH-CHARSET"));
  EXPECT_FALSE(unknown->IsAvailable());
  EXPECT_EQ(unknown->GetByteCount(L"abc"), -1);
  EXPECT_FALSE(RObject<CByteArray>(unknown->GetBytes(L"abc")));
  const unsigned char bytes[] = {'a', 'b'};
  EXPECT_EQ(unknown->GetCharCount(bytes, 2), -1);
  EXPECT_FALSE(RString(unknown->GetString(bytes, 2)));
  RObject<CEncoding> created(CEncoding::Create("NO-SUCH-CHARSET"));
  EXPECT_FALSE(RObject<CByteArray>(created->GetBytes(RString(new CString("abc")).Get())));
  RObject<CCharacterSetEncoding> known(new CCharacterSetEncoding("UTF-8"));
  EXPECT_TRUE(known->IsAvailable());
}

TEST_F(CharacterSetEncodingTest, EmptyInput) {
  RObject<CEncoding> utf8(CEncoding::Create("UTF-8"));
  RObject<CByteArray> none(utf8->GetBytes(L""));
  ASSERT_TRUE(none);
  EXPECT_EQ(none->GetLength(), 0);
  RString empty(utf8->GetString(nullptr, 0));
  ASSERT_TRUE(empty);
  EXPECT_TRUE(empty->IsEmpty());
}

// --- ISO/IEC 6937 -------------------------------------------------------------------

class Iso6937Test : public TextTest {
 protected:
  void SetUp() override {
    TextTest::SetUp();
    iso_ = new CIso6937Encoding();
  }
  void TearDown() override {
    iso_.Clear();
    TextTest::TearDown();
  }
  RObject<CIso6937Encoding> iso_;
};

TEST_F(Iso6937Test, DiacriticPrefixComposesWithTheNextByte) {
  EXPECT_EQ(Decode(iso_, {0xC2, 'e'}), L"\u00E9");
  EXPECT_EQ(Decode(iso_, {'c', 'a', 'f', 0xC2, 'e'}), L"caf\u00E9");
  EXPECT_EQ(Decode(iso_, {0xCF, 'S', 0xC8, 'u', 0xCA, 'A', 0xCB, 'c', 0xCD, 'o', 0xCE, 'e'}),
            L"\u0160\u00FC\u00C5\u00E7\u0151\u0119");
  // A diacritic followed by a space is the spacing diacritic.
  EXPECT_EQ(Decode(iso_, {0xC8, ' '}), L"\u00A8");
  EXPECT_EQ(iso_->GetCharCount(ByteVector{0xC2, 'e', 'x'}.data(), 3), 2);
}

TEST_F(Iso6937Test, ReservedPrefixesEndTheDecoding) {
  EXPECT_EQ(Decode(iso_, {'a', 0xC9}), L"a");
  EXPECT_EQ(Decode(iso_, {'a', 0xC9, 'b', 'c'}), L"a");
  EXPECT_EQ(Decode(iso_, {'a', 0xC0, 'b'}), L"a");
  EXPECT_EQ(Decode(iso_, {'a', 0xCC, 'b'}), L"a");
  EXPECT_EQ(Decode(iso_, {0xC9}), L"");
}

TEST_F(Iso6937Test, UnknownCombinationIsSkippedWithBothBytes) {
  EXPECT_EQ(Decode(iso_, {0xC2, 'B', 'x'}), L"x");  // there is no B with acute
  EXPECT_EQ(Decode(iso_, {0xCA, 0xE1, 'y'}), L"y");
  EXPECT_EQ(iso_->GetCharCount(ByteVector{0xC2, 'B', 'x'}.data(), 3), 1);
}

TEST_F(Iso6937Test, CountAndZeroByteLimitTheInput) {
  const ByteVector bytes{'a', 'b', 0, 'c'};
  RString two(iso_->GetString(bytes.data(), 1));
  EXPECT_EQ(Wide(two), L"a");
  EXPECT_EQ(Decode(iso_, bytes), L"ab");
  EXPECT_EQ(Decode(iso_, {'a', 0xC2}), L"a");  // a prefix with nothing after it
}

TEST_F(Iso6937Test, CurrencyAndDollarSignsAreSwapped) {
  EXPECT_EQ(Decode(iso_, {0x24, 0xA4, 0xA8, 0xA6}), L"\u00A4$\u00A4#");
  EXPECT_EQ(Encode(iso_, L"$\u00A4#"), (ByteVector{0xA4, 0x24, 0x23}));
}

TEST_F(Iso6937Test, EncodingUsesTheTableThenComposesAndDropsTheRest) {
  EXPECT_EQ(Encode(iso_, L"\u00E9\u0152\u00DF\u2126"), (ByteVector{0xC2, 'e', 0xEA, 0xFB, 0xE0}));
  EXPECT_EQ(Encode(iso_, L"a\u65E5b\U0001F600"), (ByteVector{'a', 'b'}));
  EXPECT_EQ(iso_->GetByteCount(L"\u00E9a\u0160"), 5);
  EXPECT_EQ(iso_->GetByteCount(L"\u65E5"), 0);
}

// Every byte and every prefix-plus-byte pair that decodes to a character
// encodes back to the same bytes. The exceptions are the characters with two
// codings: U+00A4 (0x24 and 0xA8) and '#' (0x23 and 0xA6), which encode to
// their 7-bit positions.
TEST_F(Iso6937Test, EveryCharacterOfTheRepertoireRoundTrips) {
  int characters = 0;
  for (int first = 0x20; first <= 0xFF; ++first) {
    bool prefix = first >= 0xC1 && first <= 0xCF;
    for (int second = prefix ? 0x20 : -1; second <= (prefix ? 0x7F : -1); ++second) {
      ByteVector bytes{static_cast<unsigned char>(first)};
      if (prefix) bytes.push_back(static_cast<unsigned char>(second));
      std::wstring text = Decode(iso_, bytes);
      if (text.empty()) continue;
      ASSERT_EQ(text.size(), 1u) << std::hex << first << " " << second;
      ++characters;
      ByteVector expected = first == 0xA8 ? ByteVector{0x24} : first == 0xA6 ? ByteVector{0x23} : bytes;
      EXPECT_EQ(Encode(iso_, text.c_str()), expected) << std::hex << first << " " << second;
    }
  }
  // 96 bytes 0x20-0x7F, 32 C1 controls, 75 assigned bytes 0xA0-0xFF and 165
  // composed letters and spacing diacritics.
  EXPECT_EQ(characters, 96 + 32 + 75 + 165);
}

// The C library's converter knows the same character set (without the swapped
// signs). Every single byte and every prefix pair must decode alike, apart
// from the documented differences: the dollar and currency signs and '#' at
// 0xA6, which the C library leaves out, and two letters where it chose
// look-alike characters: EM DASH instead of HORIZONTAL BAR at 0xD0 and
// capital ETH instead of capital D WITH STROKE at 0xE2.
TEST_F(Iso6937Test, AgreesWithThePlatformConverter) {
  RObject<CCharacterSetEncoding> platform(new CCharacterSetEncoding("ISO_6937"));
  if (!platform->IsAvailable()) GTEST_SKIP() << "the platform converter has no ISO_6937";
  const std::set<int> differences{0x24, 0xA4, 0xA6, 0xD0, 0xE2};
  int compared = 0;
  for (int first = 0x01; first <= 0xFF; ++first) {
    if (differences.count(first)) continue;
    bool prefix = first >= 0xC1 && first <= 0xCF;
    for (int second = prefix ? 0x01 : -1; second <= (prefix ? 0xFF : -1); ++second) {
      ByteVector bytes{static_cast<unsigned char>(first)};
      if (prefix) bytes.push_back(static_cast<unsigned char>(second));
      RString theirs(platform->GetString(bytes.data(), static_cast<int>(bytes.size())));
      EXPECT_EQ(Decode(iso_, bytes), Wide(theirs)) << std::hex << first << " " << second;
      ++compared;
    }
  }
  EXPECT_EQ(compared, 255 - 15 - 5 + 15 * 255);
  EXPECT_EQ(Decode(iso_, {0xD0, 0xE2}), L"\u2015\u0110");
}

}  // namespace
}  // namespace Corvane::Mox::Testing
