#include <gtest/gtest.h>

#include <set>
#include <string>

#include "System/Collections/List.h"
#include "System/PathTemplate/PathTemplateParser.h"
#include "System/PathTemplate/PathTemplateStringLiteral.h"
#include "System/PathTemplate/PathTemplateSyntaxTree.h"
#include "System/PathTemplate/PathTemplateToken.h"
#include "System/PathTemplate/PathTemplateTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::PathTemplateTesting;

namespace {

class PathTemplateParserTest : public LeakCheckedTest {
 protected:
  // The failure of parsing text: kind and details.
  static std::pair<unsigned int, std::string> Failure(const char* text) {
    CPathTemplate::CParser parser;
    try {
      RObject<CPathTemplate::CSyntaxTree> tree(parser.Parse(text));
    } catch (const Result& failure) {
      return {failure.GetType(), failure.GetDetails() ? failure.GetDetails() : ""};
    }
    return {0, "parsed"};
  }
};

TEST_F(PathTemplateParserTest, SplitsLiteralsAndTokensWithAffixesAndFormats) {
  CPathTemplate::CParser parser;
  RObject<CPathTemplate::CSyntaxTree> tree(parser.Parse("$session/$seg$-segment$$directory:/dir%d$\\$x.$extension$"));
  ASSERT_TRUE(tree);
  ASSERT_EQ(tree->GetCount(), 6);
  std::vector<std::string> shapes;
  for (CPathTemplate::CSyntaxElement* element : *tree->GetElements()) {
    if (element->IsType(CPathTemplate::CToken::TypeCode)) {
      auto* token = static_cast<CPathTemplate::CToken*>(element);
      std::string shape = std::string("token ") + token->GetName()->GetChars();
      if (token->GetPrefix()) shape += std::string(" prefix ") + token->GetPrefix();
      if (token->GetSuffix()) shape += std::string(" suffix ") + token->GetSuffix();
      if (token->GetFormat()) shape += std::string(" format ") + token->GetFormat()->GetChars();
      shapes.push_back(shape);
    } else {
      shapes.push_back(std::string("literal ") +
                       static_cast<CPathTemplate::CStringLiteral*>(element)->GetText()->GetChars());
    }
  }
  EXPECT_EQ(shapes, (std::vector<std::string>{"token session suffix /", "literal seg", "token segment prefix -",
                                              "token directory format /dir%d", "literal $x.", "token extension"}));
}

TEST_F(PathTemplateParserTest, EmptyTemplateGivesAnEmptyTree) {
  CPathTemplate::CParser parser;
  RObject<CPathTemplate::CSyntaxTree> tree(parser.Parse(""));
  ASSERT_TRUE(tree);
  EXPECT_EQ(tree->GetCount(), 0);
  RObject<CString> none(tree->Evaluate(nullptr));
  EXPECT_FALSE(none);
}

TEST_F(PathTemplateParserTest, DoubleDollarOpensATokenWithADollarPrefix) {
  RObject<Context> context(new Context());
  context->SetPackage("show");
  EXPECT_EQ(Resolve("cost$$package$", context), "cost$show");
  EXPECT_EQ(Resolve("\\$package\\\\", context), "$package\\");
}

TEST_F(PathTemplateParserTest, UnknownTokensAreNamedWithTheirOffset) {
  auto failure = Failure("$foo$");
  EXPECT_EQ(failure.first, ResultError().GetType());
  EXPECT_EQ(failure.second, "Unknown Token 'foo' at offset 0");
  EXPECT_EQ(Failure("v1/$Package$.m3u8").second, "Unknown Token 'Package' at offset 3");
  EXPECT_EQ(Failure("$$$").second, "Unknown Token '' at offset 0");
}

TEST_F(PathTemplateParserTest, UnclosedTokensAreReportedAtTheEnd) {
  auto failure = Failure("abc$package");
  EXPECT_EQ(failure.first, ResultError().GetType());
  EXPECT_EQ(failure.second, "Closing $ for token 'package' is missing");
  EXPECT_EQ(Failure("$segment:%05d").second, "Closing $ for token 'segment' is missing");
  EXPECT_EQ(Failure("x$").second, "Closing $ for token '' is missing");
}

TEST_F(PathTemplateParserTest, ColonsOutsideTokenNamesAreRefused) {
  auto failure = Failure("a:b");
  EXPECT_EQ(failure.first, ResultNotSupported().GetType());
  EXPECT_EQ(failure.second,
            "invalid char ':' at offset 1, use ':' to separate token from format ($segment:_%d_$");
  EXPECT_EQ(Failure("$segment:%d:$").second,
            "invalid char ':' at offset 11, use ':' to separate token from format ($segment:_%d_$");
  EXPECT_EQ(Failure("a\\:b").second, "parsed");
}

TEST_F(PathTemplateParserTest, BackslashesOnlyBelongToLiteralsAndFormats) {
  auto failure = Failure("$seg\\ment$");
  EXPECT_EQ(failure.first, ResultNotSupported().GetType());
  EXPECT_EQ(failure.second, "invalid char '\\' at offset 4, '' only allowed in format part");
  EXPECT_EQ(Failure("$\\segment$").second, "invalid char '\\' at offset 1, '' only allowed in format part");
  RObject<Context> context(new Context());
  context->SetSegmentIndex(5);
  // Inside a format a backslash escapes the next character, "$" included.
  EXPECT_EQ(Resolve("$segment:\\$%d$", context), "$5");
}

TEST_F(PathTemplateParserTest, VerifyReportsTheFirstSyntaxErrorOfAnyTemplate) {
  RObject<CPathTemplate> pathTemplate(new CPathTemplate());
  pathTemplate->SetMedia("$container$/segment$_segment$.$extension$");
  EXPECT_TRUE(pathTemplate->Verify().Succeeded());
  pathTemplate->SetAudio("$container$/audio$_segmnet$.aac");
  Result result = pathTemplate->Verify();
  EXPECT_EQ(result.GetType(), ResultError().GetType());
  EXPECT_EQ(std::string(result.GetDetails()), "Unknown Token 'segmnet' at offset 17");
  EXPECT_EQ(pathTemplate->Verify(nullptr).GetType(), ResultArgumentNull().GetType());
}

TEST_F(PathTemplateParserTest, EveryValidTokenParsesAndNoOtherDoes) {
  std::set<std::string> names;
  for (const char* token : CPathTemplate::ValidTokens) {
    names.insert(token);
    std::string text = std::string("$") + token + "$";
    EXPECT_EQ(Failure(text.c_str()).second, "parsed") << token;
    std::string upper = std::string("$") + token + "X$";
    EXPECT_NE(Failure(upper.c_str()).second, "parsed") << token;
  }
  EXPECT_EQ(names.size(), 37u);
  EXPECT_TRUE(CPathTemplate::IsValidToken("LANGUAGE3"));
  EXPECT_FALSE(CPathTemplate::IsValidToken("Language3"));
}

}  // namespace
