#include <gtest/gtest.h>

#include <string>

#include "System/LeakCheckedTest.h"
#include "System/Text.h"
#include "System/Version.h"

using namespace Corvane::Mox;

namespace {

class VersionTest : public LeakCheckedTest {};

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

std::string Text(const CVersion* version) {
  char buffer[CVersion::MaxStringLength];
  return version->ToString(buffer);
}

}  // namespace

TEST_F(VersionTest, TwoToFourNumbers) {
  RObject<CVersion> version(new CVersion(0, 0));
  ASSERT_TRUE(version->Parse("1.2").Succeeded());
  EXPECT_EQ(version->GetMajor(), 1);
  EXPECT_EQ(version->GetMinor(), 2);
  EXPECT_EQ(version->GetBuild(), -1);
  EXPECT_EQ(version->GetRevision(), -1);
  EXPECT_EQ(Text(version), "1.2");
  ASSERT_TRUE(version->Parse("10.20.30").Succeeded());
  EXPECT_EQ(version->GetBuild(), 30);
  EXPECT_EQ(version->GetRevision(), -1);
  EXPECT_EQ(Text(version), "10.20.30");
  ASSERT_TRUE(version->Parse("4.3.2.1").Succeeded());
  EXPECT_EQ(version->GetRevision(), 1);
  EXPECT_EQ(Text(version), "4.3.2.1");
  // White space may follow the revision, and only the revision.
  EXPECT_TRUE(version->Parse("4.3.2.1 \t").Succeeded());
  RObject<CString> text(version->ToString());
  EXPECT_STREQ(text->GetChars(), "4.3.2.1");
}

TEST_F(VersionTest, AnythingElseFailsAndChangesNothing) {
  RObject<CVersion> version(new CVersion(7, 8));
  EXPECT_TRUE(version->IsType(FourCC("vers")));
  const char* bad[] = {"1.2.x", "1", "1.", ".1", "1.2.", "1.2 ", "1.2.3 ", "1.2.3.4.5", "a.b", "1,2", "-1.2",
                       "99999999999.1", ""};
  for (const char* text : bad) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(IsKind<ResultError>(version->Parse(text)));
  }
  EXPECT_TRUE(IsKind<ResultArgumentNull>(version->Parse(static_cast<const char*>(nullptr))));
  EXPECT_EQ(Text(version), "7.8");
  EXPECT_EQ(version->GetBuild(), -1);
}

TEST_F(VersionTest, StaticParseMakesANewVersion) {
  RObject<CVersion> parsed;
  ASSERT_TRUE(CVersion::Parse("2.0.1", parsed.Out()).Succeeded());
  ASSERT_TRUE(parsed);
  EXPECT_EQ(Text(parsed), "2.0.1");
  EXPECT_TRUE(IsKind<ResultError>(CVersion::Parse("2.x", parsed.Out())));
  EXPECT_FALSE(parsed);
  RObject<CString> text(new CString("3.1.4.1"));
  ASSERT_TRUE(CVersion::Parse(text, parsed.Out()).Succeeded());
  EXPECT_EQ(parsed->GetRevision(), 1);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CVersion::Parse(static_cast<CString*>(nullptr), parsed.Out())));
  EXPECT_FALSE(parsed);
}
