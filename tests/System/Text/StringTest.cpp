// CString: construction and the two forms, hashing, formatting, appending,
// comparison, substrings, replacement, trimming, case, numbers, four-character
// codes, hexadecimal bytes, splitting and joining.
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "TextTestSupport.h"

namespace Corvane::Mox::Testing {
namespace {

// --- Construction and the UTF-8 / code-point forms --------------------------

using StringFormsTest = TextTest;

// One character of each UTF-8 length: 1, 2, 3 and 4 bytes.
constexpr const char* kMixedUtf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
constexpr const wchar_t kMixedWide[] = {L'a', 0xE9, 0x20AC, 0x1F600, 0};

TEST_F(StringFormsTest, Utf8DecodesToOneCodePointPerCharacter) {
  RString s(new CString(kMixedUtf8));
  EXPECT_EQ(s->GetLength(), 4);
  EXPECT_EQ(Wide(s), std::wstring(kMixedWide));
  EXPECT_EQ(s->GetWChar(3), static_cast<wchar_t>(0x1F600));
  EXPECT_EQ(s->GetWChar(4), 0);
  EXPECT_EQ(s->GetWChar(-1), 0);
}

TEST_F(StringFormsTest, CodePointsEncodeBackToTheSameUtf8) {
  RString s(new CString(kMixedWide));
  EXPECT_EQ(s->GetLength(), 4);
  EXPECT_EQ(Text(s), kMixedUtf8);
  // Byte access works on the UTF-8 form.
  EXPECT_EQ(static_cast<unsigned char>(s->GetChar(1)), 0xC3);
  EXPECT_EQ(s->GetChar(10), 0);
  EXPECT_EQ(s->GetChar(-1), 0);
}

TEST_F(StringFormsTest, InvalidUtf8StopsAtTheOffendingByteAndKeepsTheTextBefore) {
  struct Case {
    const char* input;
    const char* kept;
  };
  const Case cases[] = {
      {"ab\xC3(cd", "ab"},               // lead byte without its continuation
      {"ab\xF0\x9F\x98", "ab"},          // truncated 4-byte sequence
      {"x\xC0\xAFy", "x"},               // overlong encoding of '/'
      {"\xE2\x82\xAC\xED\xA0\x80z", "\xE2\x82\xAC"},  // encoded surrogate
      {"ok\xF4\x90\x80\x80", "ok"},      // above U+10FFFF
      {"\x80tail", ""},                  // stray continuation byte
  };
  for (const Case& c : cases) {
    RString s(new CString(c.input));
    EXPECT_EQ(Text(s), c.kept) << c.input;
    EXPECT_EQ(s->GetLength(), CString::GetLength(c.kept)) << c.input;
  }
}

TEST_F(StringFormsTest, InvalidCodePointsStopTheText) {
  const wchar_t surrogate[] = {L'a', 0xD800, L'b', 0};
  const wchar_t tooLarge[] = {L'a', L'b', 0x110000, L'c', 0};
  RString s1(new CString(surrogate));
  RString s2(new CString(tooLarge));
  EXPECT_EQ(Text(s1), "a");
  EXPECT_EQ(s1->GetLength(), 1);
  EXPECT_EQ(Text(s2), "ab");
  EXPECT_EQ(s2->GetLength(), 2);
}

TEST_F(StringFormsTest, CountedAndConcatenatingConstructors) {
  RString cut(new CString("h\xC3\xA9llo", 2));  // the count splits 'é': it is dropped
  RString negative(new CString("abc", -1));
  RString wideCut(new CString(L"hello", 3));
  RString wideShort(new CString(L"hi", 10));
  RString joined(new CString("ab", "\xC3\xA9"));
  RString joinedWide(new CString(L"ab", L"\u00E9"));
  RString nulls(new CString(static_cast<const char*>(nullptr), static_cast<const char*>(nullptr)));
  RString badFirst(new CString("a\xFF", "b"));
  EXPECT_EQ(Text(cut), "h");
  EXPECT_EQ(Text(negative), "");
  EXPECT_EQ(Text(wideCut), "hel");
  EXPECT_EQ(Text(wideShort), "hi");
  EXPECT_EQ(Text(joined), "ab\xC3\xA9");
  EXPECT_EQ(joined->GetLength(), 3);
  EXPECT_TRUE(joinedWide->Equals(joined.Get()));
  EXPECT_TRUE(nulls->IsEmpty());
  EXPECT_EQ(Text(badFirst), "a");  // conversion stops at the invalid byte
}

TEST_F(StringFormsTest, NullArgumentsCountAsEmptyText) {
  RString fromNull(new CString(static_cast<const char*>(nullptr)));
  RString fromNullWide(new CString(static_cast<const wchar_t*>(nullptr)));
  RString empty(new CString());
  EXPECT_TRUE(fromNull->IsEmpty());
  EXPECT_TRUE(fromNullWide->IsEmpty());
  EXPECT_EQ(Text(empty), "");
  EXPECT_EQ(Wide(empty), L"");
  EXPECT_TRUE(CString::IsNullOrEmpty(nullptr));
  EXPECT_TRUE(CString::IsNullOrEmpty(empty));
  EXPECT_FALSE(CString::IsNullOrEmpty(RString(new CString("x"))));
}

TEST_F(StringFormsTest, StaticConversionsAndLengths) {
  EXPECT_EQ(CString::GetLength(kMixedUtf8), 4);
  EXPECT_EQ(CString::GetLength(kMixedWide), 4);
  EXPECT_EQ(CString::GetLength(static_cast<const char*>(nullptr)), 0);
  wchar_t* wide = CString::GetWChars(kMixedUtf8);
  char* utf8 = CString::GetChars(kMixedWide);
  EXPECT_EQ(std::wstring(wide), std::wstring(kMixedWide));
  EXPECT_STREQ(utf8, kMixedUtf8);
  delete[] wide;
  delete[] utf8;
}

TEST_F(StringFormsTest, CloneIsAnEqualSeparateString) {
  RString s(new CString(kMixedWide));
  RString copy(s->Clone());
  EXPECT_NE(copy.Get(), s.Get());
  EXPECT_TRUE(copy->Equals(s.Get()));
  EXPECT_EQ(copy->GetLength(), 4);
  EXPECT_EQ(copy->GetType(), CString::TypeCode);
}

TEST_F(StringFormsTest, ThreadsBuildingTheSecondFormSeeTheSameText) {
  for (int round = 0; round < 20; ++round) {
    RString s(new CString(kMixedUtf8));
    std::wstring seen[2];
    std::thread a([&] { seen[0] = s->GetWChars(); });
    std::thread b([&] { seen[1] = s->GetWChars(); });
    a.join();
    b.join();
    EXPECT_EQ(seen[0], std::wstring(kMixedWide));
    EXPECT_EQ(seen[1], std::wstring(kMixedWide));
  }
}

// --- Hash ------------------------------------------------------------------

using StringHashTest = TextTest;

// The hash computed independently, byte by byte, as the documented
// recurrence in 64-bit arithmetic reduced to 32 bits at each step.
std::uint32_t ReferenceHash(const std::string& bytes) {
  auto s32 = [](std::int64_t v) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(v)); };
  std::int32_t h = 0;
  for (char c : bytes) {
    h = s32(static_cast<std::int64_t>(h) + static_cast<signed char>(c));
    h = s32(static_cast<std::int64_t>(h) + (static_cast<std::int64_t>(h) * 1024));
    h = h ^ (h >> 6);
  }
  h = s32(static_cast<std::int64_t>(h) + static_cast<std::int64_t>(h) * 8);
  h = h ^ (h >> 11);
  h = s32(static_cast<std::int64_t>(h) + static_cast<std::int64_t>(h) * 32768);
  return static_cast<std::uint32_t>(h);
}

TEST_F(StringHashTest, KnownValues) {
  EXPECT_EQ(static_cast<std::uint32_t>(RString(new CString(""))->GetHashCode()), 0u);
  EXPECT_EQ(static_cast<std::uint32_t>(RString(new CString("a"))->GetHashCode()), 0xCA2E9442u);
  EXPECT_EQ(static_cast<std::uint32_t>(RString(new CString("abc"))->GetHashCode()), 0xED131F5Bu);
  // Bytes above 0x7F are taken as negative values.
  EXPECT_EQ(static_cast<std::uint32_t>(RString(new CString(L"\u00E9"))->GetHashCode()), 0xF5ACA6AEu);
}

TEST_F(StringHashTest, MatchesTheRecurrenceForMixedText) {
  for (const char* text : {"hello, world", kMixedUtf8, "\xD7\x90\xD7\x91", "The quick brown fox"}) {
    RString s(new CString(text));
    EXPECT_EQ(static_cast<std::uint32_t>(s->GetHashCode()), ReferenceHash(text)) << text;
  }
  // Either form gives the same hash.
  RString wide(new CString(kMixedWide));
  EXPECT_EQ(static_cast<std::uint32_t>(wide->GetHashCode()), ReferenceHash(kMixedUtf8));
}

// --- Formatting --------------------------------------------------------------

using StringFormatTest = TextTest;

TEST_F(StringFormatTest, PrintfRulesAndCodePointLength) {
  RString s(CString::WithFormat("%d-%s-%04.1f", 42, "\xC3\xA9t\xC3\xA9", 2.5));
  ASSERT_TRUE(s);
  EXPECT_EQ(Text(s), "42-\xC3\xA9t\xC3\xA9-02.5");
  EXPECT_EQ(s->GetLength(), 11);
}

TEST_F(StringFormatTest, LongResultsAreFormattedCompletely) {
  std::string filler(1000, 'x');
  filler += "\xE2\x82\xAC";
  RString s(CString::WithFormat("[%s]", filler.c_str()));
  ASSERT_TRUE(s);
  EXPECT_EQ(Text(s), "[" + filler + "]");
  EXPECT_EQ(s->GetLength(), 1003);
}

TEST_F(StringFormatTest, FailuresGiveNull) {
  // In the C locale a non-ASCII wide character cannot be formatted with %ls.
  RString failed(CString::WithFormat("%ls", L"\u00E9"));
  EXPECT_FALSE(failed);
  RString noFormat(CString::WithFormat(nullptr));
  EXPECT_FALSE(noFormat);
  RString plain(CString::WithString("plain"));
  EXPECT_EQ(Text(plain), "plain");
}

// --- Appending ----------------------------------------------------------------

using StringAppendTest = TextTest;

TEST_F(StringAppendTest, EveryFormAppendsAndCountsCharacters) {
  RString base(new CString("\xC3\xA9"));
  RString other(new CString(L"\U0001F600x"));
  RString a(base->Append('a'));
  RString b(base->Append(static_cast<wchar_t>(0x20AC)));
  RString c(base->Append("bc"));
  RString d(base->Append(L"\u00FCd"));
  RString e(base->Append(other.Get()));
  RString f(*base + "z");
  EXPECT_EQ(Text(a), "\xC3\xA9" "a");
  EXPECT_EQ(a->GetLength(), 2);
  EXPECT_EQ(Text(b), "\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(b->GetLength(), 2);
  EXPECT_EQ(c->GetLength(), 3);
  EXPECT_EQ(Wide(d), L"\u00E9\u00FCd");
  EXPECT_EQ(Wide(e), L"\u00E9\U0001F600x");
  EXPECT_EQ(e->GetLength(), 3);
  EXPECT_EQ(Text(f), "\xC3\xA9z");
  EXPECT_EQ(Text(base), "\xC3\xA9");  // the receiver never changes
}

TEST_F(StringAppendTest, LatinOneCharAndInvalidInput) {
  RString base(new CString("x"));
  RString latin(base->Append(static_cast<char>(0xE9)));        // a byte is a Latin-1 character
  RString invalid(base->Append("y\xFFz"));                      // appended text stops at the bad byte
  RString surrogate(base->Append(static_cast<wchar_t>(0xDC00)));  // not a character: nothing appended
  RString none(base->Append(static_cast<const char*>(nullptr)));
  EXPECT_EQ(Wide(latin), L"x\u00E9");
  EXPECT_EQ(latin->GetLength(), 2);
  EXPECT_EQ(Text(invalid), "xy");
  EXPECT_EQ(invalid->GetLength(), 2);
  EXPECT_EQ(Text(surrogate), "x");
  EXPECT_EQ(surrogate->GetLength(), 1);
  EXPECT_EQ(Text(none), "x");
}

TEST_F(StringAppendTest, ConcatAcceptsNulls) {
  RString a(new CString("ab"));
  RString b(new CString(L"\u00E9"));
  RString both(CString::Concat(a, b));
  RString firstNull(CString::Concat(nullptr, b.Get()));
  RString allNull(CString::Concat(static_cast<CString*>(nullptr), static_cast<CString*>(nullptr)));
  RString narrow(CString::Concat(a, "cd"));
  RString wide(CString::Concat(a, L"\u00FC"));
  EXPECT_EQ(Wide(both), L"ab\u00E9");
  EXPECT_EQ(both->GetLength(), 3);
  EXPECT_EQ(Wide(firstNull), L"\u00E9");
  EXPECT_TRUE(allNull->IsEmpty());
  EXPECT_EQ(Text(narrow), "abcd");
  EXPECT_EQ(Wide(wide), L"ab\u00FC");
}

// --- Equality and comparison ---------------------------------------------------

using StringCompareTest = TextTest;

TEST_F(StringCompareTest, CompareIsCaseInsensitiveWithNullsOrdered) {
  RString abc(new CString("abc"));
  RString abd(new CString("ABD"));
  RString upper(new CString("ABC"));
  RString ab(new CString("ab"));
  EXPECT_LT(CString::Compare(abc, abd), 0);
  EXPECT_GT(CString::Compare(abd, abc), 0);
  EXPECT_EQ(CString::Compare(abc, upper), 0);
  EXPECT_EQ(CString::Compare(nullptr, nullptr), 0);
  EXPECT_EQ(CString::Compare(abc, nullptr), 1);
  EXPECT_EQ(CString::Compare(nullptr, abc), -1);
  // The end of the shorter text counts as 0: the difference is 0 - 'c'.
  EXPECT_EQ(CString::Compare(ab, abc), -'c');
  EXPECT_EQ(CString::Compare(abc, ab), 'c');
}

TEST_F(StringCompareTest, CompareLowerCasesBeyondAscii) {
  RString upper(new CString(L"\u00C9COLE"));
  RString lower(new CString(L"\u00E9cole"));
  RString other(new CString(L"\u00E8cole"));
  EXPECT_EQ(CString::Compare(upper, lower), 0);
  EXPECT_EQ(CString::Compare(lower, other), 0xE9 - 0xE8);
}

TEST_F(StringCompareTest, EqualsComparesTextExactly) {
  RString s(new CString(L"h\u00E9"));
  RString same(new CString("h\xC3\xA9"));
  RString longer(new CString("h\xC3\xA9!"));
  EXPECT_TRUE(s->Equals("h\xC3\xA9"));
  EXPECT_TRUE(s->Equals(L"h\u00E9"));
  EXPECT_TRUE(s->Equals(same.Get()));
  EXPECT_TRUE(s->Equals(s.Get()));
  EXPECT_FALSE(s->Equals(longer.Get()));
  EXPECT_FALSE(s->Equals("H\xC3\xA9"));
  EXPECT_FALSE(s->Equals(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(s->Equals(static_cast<CString*>(nullptr)));
  RString mixed(new CString("MiXeD"));
  EXPECT_TRUE(mixed->EqualsIgnoreCase("mixed"));
  EXPECT_TRUE(mixed->EqualsIgnoreCase(RString(new CString("MIXED")).Get()));
  EXPECT_FALSE(mixed->EqualsIgnoreCase("mixes"));
  EXPECT_FALSE(mixed->EqualsIgnoreCase(static_cast<const char*>(nullptr)));
}

// --- Substrings, replacement, trimming, case ---------------------------------

using StringTransformTest = TextTest;

TEST_F(StringTransformTest, SubstringBounds) {
  RString abc(new CString("abc"));
  EXPECT_EQ(Text(RString(abc->Substring(3))), "");
  EXPECT_FALSE(RString(abc->Substring(4)));
  EXPECT_FALSE(RString(abc->Substring(-1)));
  EXPECT_EQ(Text(RString(abc->Substring(1))), "bc");
  EXPECT_EQ(Text(RString(abc->Substring(1, 2))), "bc");
  EXPECT_EQ(Text(RString(abc->Substring(3, 0))), "");
  EXPECT_FALSE(RString(abc->Substring(2, 2)));
  EXPECT_FALSE(RString(abc->Substring(0, -1)));
  EXPECT_FALSE(RString(abc->Substring(-1, 1)));
  EXPECT_FALSE(RString(abc->Substring(1, std::numeric_limits<int>::max())));
}

TEST_F(StringTransformTest, SubstringCountsCharactersNotBytes) {
  RString s(new CString(kMixedUtf8));
  RString emoji(s->Substring(3, 1));
  RString tail(s->Substring(1));
  EXPECT_EQ(Wide(emoji), L"\U0001F600");
  EXPECT_EQ(emoji->GetLength(), 1);
  EXPECT_EQ(Text(tail), kMixedUtf8 + 1);
  EXPECT_EQ(tail->GetLength(), 3);
}

TEST_F(StringTransformTest, ReplaceCharacters) {
  RString s(new CString(L"a.b.c\u00E9"));
  EXPECT_EQ(Wide(RString(s->Replace('.', '/'))), L"a/b/c\u00E9");
  EXPECT_EQ(Wide(RString(s->Replace(static_cast<wchar_t>(0xE9), L'e'))), L"a.b.ce");
  // A byte above 0x7F is the Latin-1 character, not a UTF-8 byte.
  EXPECT_EQ(Wide(RString(s->Replace(static_cast<char>(0xE9), 'E'))), L"a.b.cE");
  EXPECT_EQ(Wide(RString(s->Replace('.', static_cast<char>(0xFC)))), L"a\u00FCb\u00FCc\u00E9");
  EXPECT_EQ(Wide(RString(s->Replace('x', 'y'))), L"a.b.c\u00E9");
  EXPECT_EQ(Wide(s), L"a.b.c\u00E9");
}

TEST_F(StringTransformTest, ReplaceTextIsLeftToRightAndNonOverlapping) {
  RString four(new CString("aaaa"));
  RString three(new CString("aaa"));
  EXPECT_EQ(Text(RString(four->Replace("aa", "b"))), "bb");
  EXPECT_EQ(Text(RString(three->Replace("aa", "b"))), "ba");
  EXPECT_EQ(Text(RString(three->Replace(L"aa", L"b"))), "ba");
  RString words(new CString(L"caf\u00E9 au caf\u00E9"));
  RString replaced(words->Replace("caf\xC3\xA9", "th\xC3\xA9\xC3\xA9"));
  EXPECT_EQ(Wide(replaced), L"th\u00E9\u00E9 au th\u00E9\u00E9");
  EXPECT_EQ(replaced->GetLength(), 12);
  RString removed(words->Replace(L" au ", static_cast<const wchar_t*>(nullptr)));
  EXPECT_EQ(Wide(removed), L"caf\u00E9caf\u00E9");
  EXPECT_EQ(removed->GetLength(), 8);
}

TEST_F(StringTransformTest, ReplaceWithEmptyOldTextCopies) {
  RString s(new CString("abc"));
  RString a(s->Replace("", "x"));
  RString b(s->Replace(L"", L"x"));
  RString c(s->Replace(static_cast<const char*>(nullptr), "x"));
  EXPECT_EQ(Text(a), "abc");
  EXPECT_EQ(Text(b), "abc");
  EXPECT_EQ(Text(c), "abc");
  EXPECT_NE(a.Get(), s.Get());
}

TEST_F(StringTransformTest, TrimFamily) {
  RString s(new CString(L" \t\u3000a b\n\r "));
  EXPECT_EQ(Wide(RString(s->Trim())), L"a b");
  EXPECT_EQ(Wide(RString(s->TrimLeft())), L"a b\n\r ");
  EXPECT_EQ(Wide(RString(s->TrimRight())), L" \t\u3000a b");
  RString blank(new CString(" \t "));
  EXPECT_EQ(Text(RString(blank->Trim())), "");
  EXPECT_EQ(Text(RString(blank->TrimLeft())), "");
  RString set(new CString("xyaxbyx"));
  EXPECT_EQ(Text(RString(set->Trim(L"xy"))), "axb");
  EXPECT_EQ(Text(RString(set->Trim(L"q"))), "xyaxbyx");
  EXPECT_EQ(Text(RString(set->Trim(static_cast<const wchar_t*>(nullptr)))), "xyaxbyx");
}

TEST_F(StringTransformTest, CaseMappingUsesUnicodeTables) {
  RString s(new CString(L"Ab\u00C9\u00E9\u03A3z1"));
  EXPECT_EQ(Wide(RString(s->ToLower())), L"ab\u00E9\u00E9\u03C3z1");
  EXPECT_EQ(Wide(RString(s->ToUpper())), L"AB\u00C9\u00C9\u03A3Z1");
  EXPECT_EQ(Wide(s), L"Ab\u00C9\u00E9\u03A3z1");
}

// --- Numbers and codes ---------------------------------------------------------

using StringConversionTest = TextTest;

TEST_F(StringConversionTest, IntegersFollowBaseZeroRules) {
  auto toInt = [](const char* text) { return RString(new CString(text))->ToInt(); };
  EXPECT_EQ(toInt("42abc"), 42);
  EXPECT_EQ(toInt("  -17"), -17);
  EXPECT_EQ(toInt("0x1F"), 31);
  EXPECT_EQ(toInt("017"), 15);
  EXPECT_EQ(toInt(""), 0);
  EXPECT_EQ(toInt("text"), 0);
  RString s(new CString("zz"));
  EXPECT_EQ(s->ToInt(36), 35 * 36 + 35);
  RString ten(new CString("010"));
  EXPECT_EQ(ten->ToInt(10), 10);
}

TEST_F(StringConversionTest, WideRangeIntegersAndDoubles) {
  EXPECT_EQ(RString(new CString("4294967295"))->ToUInt(), 4294967295u);
  EXPECT_EQ(RString(new CString("ff"))->ToUInt(16), 255u);
  EXPECT_EQ(RString(new CString("-9007199254740993"))->ToInt64(), -9007199254740993LL);
  EXPECT_EQ(RString(new CString("777"))->ToInt64(8), 511);
  EXPECT_EQ(RString(new CString("0xFFFFFFFFFFFFFFFF"))->ToUInt64(), std::numeric_limits<unsigned long long>::max());
  EXPECT_EQ(RString(new CString("11"))->ToUInt64(2), 3u);
  EXPECT_DOUBLE_EQ(RString(new CString("3.25e2 seconds"))->ToDouble(), 325.0);
  EXPECT_DOUBLE_EQ(RString(new CString("-0.5"))->ToDouble(), -0.5);
  EXPECT_DOUBLE_EQ(RString(new CString(""))->ToDouble(), 0.0);
}

TEST_F(StringConversionTest, ToFourPacksCharactersAndEscapes) {
  auto four = [](const char* text) { return RString(new CString(text))->ToFour(); };
  EXPECT_EQ(four("vcon"), FourCC("vcon"));
  EXPECT_EQ(four("ab"), 0x61620000u);
  EXPECT_EQ(four(""), 0u);
  EXPECT_EQ(four("abcdef"), FourCC("abcd"));
  EXPECT_EQ(four("%00%01ab"), 0x00016162u);
  EXPECT_EQ(four("a%7eb"), 0x617E6200u);
  EXPECT_EQ(four("mp4%20"), FourCC("mp4 "));
  // A '%' without two hexadecimal digits is a plain character.
  EXPECT_EQ(four("a%2"), 0x61253200u);
  EXPECT_EQ(four("%zz1"), 0x257A7A31u);
}

TEST_F(StringConversionTest, ToBytesPadsCutsAndRejects) {
  RObject<CByteArray> padded(RString(new CString("abc"))->ToBytes(2));
  ASSERT_TRUE(padded);
  EXPECT_EQ(Bytes(padded), (std::vector<unsigned char>{0x0A, 0xBC}));
  EXPECT_FALSE(RObject<CByteArray>(RString(new CString("xz"))->ToBytes(2)));
  EXPECT_FALSE(RObject<CByteArray>(RString(new CString("12g4"))->ToBytes(2)));
  RObject<CByteArray> cut(RString(new CString("ABCDEF"))->ToBytes(1));
  EXPECT_EQ(Bytes(cut), (std::vector<unsigned char>{0xAB}));
  RObject<CByteArray> wide(RString(new CString("ff"))->ToBytes(3));
  EXPECT_EQ(Bytes(wide), (std::vector<unsigned char>{0x00, 0x00, 0xFF}));
  RObject<CByteArray> none(RString(new CString("ff"))->ToBytes(0));
  ASSERT_TRUE(none);
  EXPECT_EQ(none->GetLength(), 0);
  EXPECT_FALSE(RObject<CByteArray>(RString(new CString("ff"))->ToBytes(-1)));
}

TEST_F(StringConversionTest, FromBytesWritesLowerCaseHexAndRoundTrips) {
  RObject<CByteArray> bytes(NewBytes({0xA0, 0x0F}));
  RString hex(CString::FromBytes(bytes));
  EXPECT_EQ(Text(hex), "a00f");
  EXPECT_EQ(hex->GetLength(), 4);
  std::vector<unsigned char> all(256);
  for (int i = 0; i < 256; ++i) all[static_cast<std::size_t>(i)] = static_cast<unsigned char>(i);
  RObject<CByteArray> source(NewBytes(all));
  RString text(CString::FromBytes(source));
  RObject<CByteArray> back(text->ToBytes(256));
  EXPECT_EQ(Bytes(back), all);
  EXPECT_EQ(Text(RString(CString::FromBytes(nullptr))), "");
}

// --- Splitting and joining -------------------------------------------------------

using StringSplitTest = TextTest;
using Pieces = std::vector<std::string>;

TEST_F(StringSplitTest, SplitOnCharacterKeepsEmptyPieces) {
  RString s(new CString("a,,b,"));
  RObject<CArray<CString>> pieces(s->Split(L','));
  EXPECT_EQ(Texts(pieces), (Pieces{"a", "", "b", ""}));
  RObject<CArray<CString>> none(RString(new CString("abc"))->Split(L','));
  EXPECT_EQ(Texts(none), (Pieces{"abc"}));
  RObject<CArray<CString>> empty(RString(new CString(""))->Split(L','));
  EXPECT_EQ(Texts(empty), (Pieces{""}));
  RObject<CArray<CString>> wide(RString(new CString(L"\u00E9\u2192x\u2192"))->Split(static_cast<wchar_t>(0x2192)));
  EXPECT_EQ(Texts(wide), (Pieces{"\xC3\xA9", "x", ""}));
}

TEST_F(StringSplitTest, SplitOnSeparatorSetDropsEmptyPiecesButKeepsTheRemainder) {
  RObject<CList<CString>> a(RString(new CString(",a;;b"))->Split(",;"));
  EXPECT_EQ(Texts(a), (Pieces{"a", "b"}));
  RObject<CList<CString>> b(RString(new CString("a,"))->Split(",;"));
  EXPECT_EQ(Texts(b), (Pieces{"a", ""}));
  RObject<CList<CString>> c(RString(new CString("one two  three"))->Split(" "));
  EXPECT_EQ(Texts(c), (Pieces{"one", "two", "three"}));
  RObject<CList<CString>> d(RString(new CString("x,y"))->Split(static_cast<const char*>(nullptr)));
  EXPECT_EQ(Texts(d), (Pieces{"x,y"}));
  RObject<CList<CString>> e(RString(new CString(L"\u00E9|\u00FC"))->Split("|"));
  EXPECT_EQ(Texts(e), (Pieces{"\xC3\xA9", "\xC3\xBC"}));
}

TEST_F(StringSplitTest, JoinPutsTheSeparatorBetweenElements) {
  RObject<CArray<CString>> array(new CArray<CString>(3));
  array->Set(0, RString(new CString("a")));
  array->Set(2, RString(new CString(L"\u00E9")));  // element 1 stays null: empty text
  RString joined(CString::Join(L", ", array));
  EXPECT_EQ(Wide(joined), L"a, , \u00E9");
  EXPECT_EQ(joined->GetLength(), 6);
  RObject<CArray<CString>> empty(new CArray<CString>(0));
  EXPECT_EQ(Text(RString(CString::Join(L",", empty))), "");
  EXPECT_EQ(Text(RString(CString::Join(nullptr, array))), "");
  EXPECT_EQ(Text(RString(CString::Join(L",", nullptr))), "");
}

TEST_F(StringSplitTest, JoinReversesSplit) {
  RString s(new CString(L"x\u2192\u00E9\u2192\u2192z"));
  RObject<CArray<CString>> pieces(s->Split(static_cast<wchar_t>(0x2192)));
  RString back(CString::Join(L"\u2192", pieces));
  EXPECT_TRUE(back->Equals(s.Get()));
  EXPECT_EQ(back->GetLength(), s->GetLength());
}

}  // namespace
}  // namespace Corvane::Mox::Testing
