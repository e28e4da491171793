// CDirectionalString: character direction classes and the cutting of mixed
// text into runs of one direction.
#include <string>
#include <utility>
#include <vector>

#include "System/Text/DirectionalString.h"
#include "TextTestSupport.h"

namespace Corvane::Mox::Testing {
namespace {

using Run = std::pair<std::wstring, TextDirection>;
using Runs = std::vector<Run>;

constexpr auto LTR = TextDirection::LeftToRight;
constexpr auto RTL = TextDirection::RightToLeft;

Runs BidiRuns(CString* text) {
  RObject<CList<CDirectionalString>> list(CDirectionalString::GetBidiStrings(text));
  Runs runs;
  if (!list) {
    ADD_FAILURE() << "no list";
    return runs;
  }
  for (int i = 0; i < list->GetCount(); ++i) {
    RObject<CDirectionalString> run;
    EXPECT_TRUE(list->Get(i, run.Out()).Succeeded());
    runs.emplace_back(run->GetWChars(), run->GetTextDirection());
  }
  return runs;
}

Runs BidiRuns(const wchar_t* text) { return BidiRuns(RString(new CString(text))); }

using DirectionalClassTest = TextTest;

TEST_F(DirectionalClassTest, RightToLeftRangesAndMarks) {
  const std::pair<wchar_t, wchar_t> ranges[] = {{0x0590, 0x05FF}, {0x0600, 0x06FF}, {0x0750, 0x077F},
                                                {0x08A0, 0x08FF}, {0xFB1D, 0xFB4F}, {0xFB50, 0xFDFF},
                                                {0xFE70, 0xFEFF}};
  for (auto [first, last] : ranges) {
    EXPECT_TRUE(CDirectionalString::IsStrongRTLChar(first)) << std::hex << static_cast<int>(first);
    EXPECT_TRUE(CDirectionalString::IsStrongRTLChar(last)) << std::hex << static_cast<int>(last);
    EXPECT_FALSE(CDirectionalString::IsStrongLTRChar(first)) << std::hex << static_cast<int>(first);
  }
  for (wchar_t outside : {0x058F, 0x0700, 0x074F, 0x0780, 0x089F, 0x0900, 0xFB1C, 0xFF00})
    EXPECT_FALSE(CDirectionalString::IsStrongRTLChar(outside)) << std::hex << static_cast<int>(outside);
  for (wchar_t mark : {0x202B, 0x202E, 0x2067, 0x200F, 0x061C})
    EXPECT_TRUE(CDirectionalString::IsStrongRTLChar(mark)) << std::hex << static_cast<int>(mark);
  for (wchar_t mark : {0x202A, 0x202D, 0x2066, 0x200E}) {
    EXPECT_FALSE(CDirectionalString::IsStrongRTLChar(mark)) << std::hex << static_cast<int>(mark);
    EXPECT_TRUE(CDirectionalString::IsStrongLTRChar(mark)) << std::hex << static_cast<int>(mark);
  }
}

TEST_F(DirectionalClassTest, ExactlyTheAsciiPunctuationSetIsWeak) {
  const std::wstring weak = L" !\"#$%&'()*+,-./:;<=>?@[\\]^_{|}";
  int count = 0;
  for (wchar_t c = 0; c < 0x80; ++c) {
    bool expected = c != 0 && weak.find(c) != std::wstring::npos;
    EXPECT_EQ(CDirectionalString::IsWeakDirectionalChar(c), expected) << static_cast<int>(c);
    if (CDirectionalString::IsWeakDirectionalChar(c)) ++count;
  }
  EXPECT_EQ(count, 31);
  EXPECT_FALSE(CDirectionalString::IsWeakDirectionalChar(L'`'));
  EXPECT_FALSE(CDirectionalString::IsWeakDirectionalChar(L'~'));
  EXPECT_FALSE(CDirectionalString::IsWeakDirectionalChar(0x00A0));
}

TEST_F(DirectionalClassTest, EverythingElseIsStrongLeftToRight) {
  for (wchar_t c : {L'a', L'Z', L'0', L'9', L'~', L'`', wchar_t{0x00C0}, wchar_t{0x02B8}, wchar_t{0x0410},
                    wchar_t{0x4E00}, wchar_t{0x0700}})
    EXPECT_TRUE(CDirectionalString::IsStrongLTRChar(c)) << std::hex << static_cast<int>(c);
  for (wchar_t c : {L' ', L'.', L'}', wchar_t{0x05D0}, wchar_t{0x0627}})
    EXPECT_FALSE(CDirectionalString::IsStrongLTRChar(c)) << std::hex << static_cast<int>(c);
}

using DirectionalRunsTest = TextTest;

TEST_F(DirectionalRunsTest, EmptyOrNullTextGivesNoRuns) {
  EXPECT_TRUE(BidiRuns(static_cast<CString*>(nullptr)).empty());
  EXPECT_TRUE(BidiRuns(L"").empty());
}

TEST_F(DirectionalRunsTest, SingleDirectionIsOneRun) {
  EXPECT_EQ(BidiRuns(L"plain text."), (Runs{{L"plain text.", LTR}}));
  EXPECT_EQ(BidiRuns(L"\u05E9\u05DC\u05D5\u05DD!"), (Runs{{L"\u05E9\u05DC\u05D5\u05DD!", RTL}}));
  EXPECT_EQ(BidiRuns(L"... !?"), (Runs{{L"... !?", LTR}}));  // no strong character at all
}

TEST_F(DirectionalRunsTest, NeutralsStayWithTheRunTheyFollow) {
  EXPECT_EQ(BidiRuns(L"abc \u05D0\u05D1\u05D2 def"),
            (Runs{{L"abc ", LTR}, {L"\u05D0\u05D1\u05D2 ", RTL}, {L"def", LTR}}));
  EXPECT_EQ(BidiRuns(L"\u0627\u0644, 42."), (Runs{{L"\u0627\u0644, ", RTL}, {L"42.", LTR}}));
}

TEST_F(DirectionalRunsTest, LeadingNeutralsTakeTheFirstStrongDirection) {
  EXPECT_EQ(BidiRuns(L" (\u05D0\u05D1) cd"), (Runs{{L" (\u05D0\u05D1) ", RTL}, {L"cd", LTR}}));
  EXPECT_EQ(BidiRuns(L"\u200Fabc"), (Runs{{L"\u200F", RTL}, {L"abc", LTR}}));
}

TEST_F(DirectionalRunsTest, RunsCoverTheWholeText) {
  const wchar_t* text = L"a\u05D0b\u05D1, c \u0645\u0631\u062D\u0628\u0627 x";
  Runs runs = BidiRuns(text);
  std::wstring joined;
  for (std::size_t i = 0; i < runs.size(); ++i) {
    joined += runs[i].first;
    if (i > 0) {
      EXPECT_NE(runs[i].second, runs[i - 1].second) << "neighbouring runs share a direction";
    }
  }
  EXPECT_EQ(joined, text);
  EXPECT_EQ(runs.size(), 7u);  // a, alef, b, bet + ", ", c, the Arabic word, x
}

using DirectionalStringTest = TextTest;

TEST_F(DirectionalStringTest, ConstructionAndDirection) {
  RString source(new CString(L"\u05D0b"));
  RObject<CDirectionalString> a(new CDirectionalString(source.Get(), RTL));
  RObject<CDirectionalString> b(new CDirectionalString(L"xyz", LTR));
  EXPECT_TRUE(a->Equals(source.Get()));
  EXPECT_EQ(a->GetLength(), 2);
  EXPECT_EQ(a->GetTextDirection(), RTL);
  EXPECT_EQ(static_cast<int>(b->GetTextDirection()), 0);
  b->SetTextDirection(RTL);
  EXPECT_EQ(static_cast<int>(b->GetTextDirection()), 1);
  RObject<CDirectionalString> none(new CDirectionalString(static_cast<CString*>(nullptr), LTR));
  EXPECT_TRUE(none->IsEmpty());
}

}  // namespace
}  // namespace Corvane::Mox::Testing
