// CString: searching, prefix and suffix tests, regular expressions and
// character classes. Positions are characters, so the texts mix one- and
// multi-byte characters to tell character positions from byte offsets.
#include <regex>

#include "TextTestSupport.h"

namespace Corvane::Mox::Testing {
namespace {

// h0 é1 l2 l3 o4 _5 w6 ö7 r8 l9 d10
constexpr const wchar_t* kHelloWorld = L"h\u00E9llo w\u00F6rld";

class StringSearchTest : public TextTest {
 protected:
  void SetUp() override {
    TextTest::SetUp();
    text_ = new CString(kHelloWorld);
    // Built from UTF-8 instead, so both starting forms are searched.
    utf8_ = new CString("h\xC3\xA9llo w\xC3\xB6rld");
  }
  void TearDown() override {
    text_.Clear();
    utf8_.Clear();
    TextTest::TearDown();
  }
  RString text_;
  RString utf8_;
};

TEST_F(StringSearchTest, IndexOfCharacter) {
  for (CString* s : {text_.Get(), utf8_.Get()}) {
    EXPECT_EQ(s->IndexOf('l'), 2);
    EXPECT_EQ(s->IndexOf(L'l'), 2);
    EXPECT_EQ(s->IndexOf('l', 3), 3);
    EXPECT_EQ(s->IndexOf('l', 4), 9);
    EXPECT_EQ(s->IndexOf(static_cast<wchar_t>(0xF6)), 7);
    EXPECT_EQ(s->IndexOf(static_cast<char>(0xF6)), 7);  // a byte is a Latin-1 character
    EXPECT_EQ(s->IndexOf('z'), -1);
    EXPECT_EQ(s->IndexOf('d', 10), 10);
    EXPECT_EQ(s->IndexOf('d', 11), -1);
    EXPECT_EQ(s->IndexOf('h', -1), -1);
    EXPECT_EQ(s->IndexOf('\0'), -1);
  }
}

TEST_F(StringSearchTest, IndexOfText) {
  for (CString* s : {text_.Get(), utf8_.Get()}) {
    EXPECT_EQ(s->IndexOf("w\xC3\xB6r"), 6);
    EXPECT_EQ(s->IndexOf(L"w\u00F6r"), 6);
    EXPECT_EQ(s->IndexOf("ld"), 9);
    EXPECT_EQ(s->IndexOf("l"), 2);
    EXPECT_EQ(s->IndexOf(""), 0);
    EXPECT_EQ(s->IndexOf("World"), -1);
    EXPECT_EQ(s->IndexOf("o w\xFF"), 4);  // the needle ends at its invalid byte
    EXPECT_EQ(s->IndexOf(static_cast<const char*>(nullptr)), -1);
    EXPECT_EQ(s->IndexOf(static_cast<const wchar_t*>(nullptr)), -1);
    EXPECT_EQ(s->IndexOf(RString(new CString("o w")).Get()), 4);
    EXPECT_EQ(s->IndexOf(static_cast<CString*>(nullptr)), -1);
    EXPECT_TRUE(s->Contains("llo"));
    EXPECT_TRUE(s->Contains(L"\u00E9ll"));
    EXPECT_FALSE(s->Contains("LLO"));
    EXPECT_FALSE(s->Contains(static_cast<const char*>(nullptr)));
  }
  RString ascii(new CString("abcabc"));
  EXPECT_EQ(ascii->IndexOf("cab"), 2);
  EXPECT_EQ(ascii->IndexOf("abcabcd"), -1);
}

TEST_F(StringSearchTest, IgnoringCase) {
  EXPECT_EQ(text_->IndexOfIgnoreCase("W\xC3\x96R"), 6);
  EXPECT_EQ(text_->IndexOfIgnoreCase(L"H\u00C9L"), 0);
  EXPECT_EQ(text_->IndexOfIgnoreCase(L"LD"), 9);
  EXPECT_EQ(text_->IndexOfIgnoreCase(L"lds"), -1);
  EXPECT_EQ(text_->IndexOfIgnoreCase(static_cast<const char*>(nullptr)), -1);
  EXPECT_TRUE(text_->ContainsIgnoreCase("O W"));
  EXPECT_TRUE(text_->ContainsIgnoreCase(L"\u00D6RLD"));
  EXPECT_FALSE(text_->ContainsIgnoreCase(L"xyz"));
}

TEST_F(StringSearchTest, IndexOfAny) {
  EXPECT_EQ(text_->IndexOfAny("r\xC3\xB6", 0), 7);
  EXPECT_EQ(text_->IndexOfAny(L"dw", 0), 6);
  EXPECT_EQ(text_->IndexOfAny(L"dw", 7), 10);
  EXPECT_EQ(text_->IndexOfAny(L"xyz", 0), -1);
  EXPECT_EQ(text_->IndexOfAny(L"h", 11), -1);
  EXPECT_EQ(text_->IndexOfAny(L"h", -1), -1);
  EXPECT_EQ(text_->IndexOfAny(static_cast<const wchar_t*>(nullptr), 0), -1);
}

TEST_F(StringSearchTest, LastIndexOf) {
  EXPECT_EQ(text_->LastIndexOf('l'), 9);
  EXPECT_EQ(text_->LastIndexOf('l', 8), 3);
  EXPECT_EQ(text_->LastIndexOf(L'l', 2), 2);
  EXPECT_EQ(text_->LastIndexOf(L'l', 1), -1);
  EXPECT_EQ(text_->LastIndexOf(static_cast<wchar_t>(0xE9)), 1);
  EXPECT_EQ(text_->LastIndexOf('h', 0), 0);
  EXPECT_EQ(text_->LastIndexOf('l', 11), -1);
  EXPECT_EQ(text_->LastIndexOf('l', -1), -1);
  EXPECT_EQ(RString(new CString(""))->LastIndexOf('a'), -1);
}

TEST_F(StringSearchTest, StartsWithAndEndsWith) {
  EXPECT_TRUE(text_->StartsWith("h\xC3\xA9"));
  EXPECT_FALSE(text_->StartsWith("H\xC3\x89"));
  EXPECT_TRUE(text_->StartsWith("H\xC3\x89", false));
  EXPECT_TRUE(text_->StartsWith(L"h\u00E9llo"));
  EXPECT_TRUE(text_->StartsWith(L"H\u00C9LLO", false));
  EXPECT_TRUE(text_->StartsWith(""));
  EXPECT_FALSE(text_->StartsWith(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(text_->StartsWith(static_cast<const wchar_t*>(nullptr)));
  EXPECT_FALSE(text_->StartsWith(L"h\u00E9llo w\u00F6rlds"));
  EXPECT_TRUE(text_->EndsWith("w\xC3\xB6rld"));
  EXPECT_FALSE(text_->EndsWith("W\xC3\x96RLD"));
  EXPECT_TRUE(text_->EndsWith("W\xC3\x96RLD", false));
  EXPECT_TRUE(text_->EndsWith(""));
  EXPECT_FALSE(text_->EndsWith(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(text_->EndsWith("xh\xC3\xA9llo w\xC3\xB6rld"));
  EXPECT_FALSE(text_->EndsWith("rl"));
}

TEST_F(StringSearchTest, MatchesTheWholeStringOnly) {
  RString s(new CString("abc123"));
  EXPECT_TRUE(s->Matches("[a-z]+\\d+"));
  EXPECT_FALSE(s->Matches("[a-z]+"));  // a search would find this; a whole match does not
  EXPECT_FALSE(s->Matches("\\d+"));
  EXPECT_TRUE(s->Matches(RString(new CString("a.c\\d{3}")).Get()));
  EXPECT_FALSE(s->Matches(static_cast<CString*>(nullptr)));
  EXPECT_FALSE(s->Matches(static_cast<const char*>(nullptr)));
  // "." takes one character, however many bytes it has.
  EXPECT_TRUE(text_->Matches("h.llo w.rld"));
  EXPECT_TRUE(text_->Matches("h\xC3\xA9.{9}"));
}

TEST_F(StringSearchTest, InvalidPatternRaisesRegexError) {
  RString s(new CString("abc"));
  EXPECT_THROW(s->Matches("(ab"), std::regex_error);
  EXPECT_THROW(s->Matches("a{2,1}"), std::regex_error);
}

using StringClassTest = TextTest;

TEST_F(StringClassTest, WhiteSpace) {
  EXPECT_TRUE(RString(new CString(""))->IsWhiteSpace());
  EXPECT_TRUE(RString(new CString(L" \t\r\n\u3000"))->IsWhiteSpace());
  EXPECT_FALSE(RString(new CString(" a "))->IsWhiteSpace());
  EXPECT_TRUE(CString::IsNullOrWhiteSpace(nullptr));
  EXPECT_TRUE(CString::IsNullOrWhiteSpace(RString(new CString("\t "))));
  EXPECT_FALSE(CString::IsNullOrWhiteSpace(RString(new CString(" x"))));
  RString s(new CString(L" a\u3000"));
  EXPECT_TRUE(s->IsWhiteSpace(0));
  EXPECT_FALSE(s->IsWhiteSpace(1));
  EXPECT_TRUE(s->IsWhiteSpace(2));
  // Outside the string the answer is the one for character 0.
  EXPECT_FALSE(s->IsWhiteSpace(3));
  EXPECT_FALSE(s->IsWhiteSpace(-1));
}

TEST_F(StringClassTest, Digits) {
  RString s(new CString(L"a7\u0661\uFF15"));
  EXPECT_FALSE(s->IsDigit(0));
  EXPECT_TRUE(s->IsDigit(1));
  EXPECT_FALSE(s->IsDigit(2));  // ARABIC-INDIC DIGIT ONE: above 255
  EXPECT_FALSE(s->IsDigit(3));  // FULLWIDTH DIGIT FIVE: above 255
  EXPECT_FALSE(s->IsDigit(4));
  EXPECT_FALSE(s->IsDigit(-1));
  RString digits(new CString("0123456789"));
  for (int i = 0; i < digits->GetLength(); ++i) EXPECT_TRUE(digits->IsDigit(i)) << i;
}

}  // namespace
}  // namespace Corvane::Mox::Testing
