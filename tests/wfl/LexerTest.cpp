// The lexer: token classes, whole-word keywords, number and string forms,
// escape translation, longest-match operators and the error reports.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/LeakCheckedTest.h"
#include "wfl/wfl/wflLexer.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

struct Lexed {
  std::vector<int> types;
  std::vector<std::string> texts;
  std::vector<wflDiagnostic> errors;
};

Lexed Lex(const std::string& text) {
  wflDiagnostics diagnostics(nullptr);
  wflLexer lexer(text.data(), static_cast<int>(text.size()), &diagnostics);
  std::vector<RObject<CToken>> tokens;
  lexer.Tokenize(tokens);
  Lexed result;
  for (auto& token : tokens) {
    if (token->GetTokenType() == TOKEN_EOF) break;
    result.types.push_back(token->GetTokenType());
    result.texts.push_back(token->GetBytes());
  }
  result.errors = diagnostics.GetReports();
  return result;
}

class LexerTest : public LeakCheckedTest {};

}  // namespace

TEST_F(LexerTest, TokenNumberingFollowsTheTable) {
  // Spot checks across the table: the numbering is visible in diagnostics.
  EXPECT_EQ(CharacterEscapeSequence, 4);
  EXPECT_EQ(Identifier, 16);
  EXPECT_EQ(NumericLiteral, 19);
  EXPECT_EQ(StringLiteral, 24);
  EXPECT_EQ(TOK_ABS, 25);
  EXPECT_EQ(TOK_CONNECT, 45);
  EXPECT_EQ(TOK_NEW, 88);
  EXPECT_EQ(TOK_XOR_EQ, 125);
  EXPECT_EQ(WhiteSpace, 133);
  EXPECT_EQ(TOK_LPAREN, 134);
  EXPECT_EQ(TOK_RBRACE, 146);
  EXPECT_STREQ(wflTokenInfo::GetName(TOK_COAL_EQ), "TOK_COAL_EQ");
  EXPECT_STREQ(wflTokenInfo::GetSpelling(TOK_COAL_EQ), "?\?=");
}

TEST_F(LexerTest, KeywordsAreWholeWordsOnly) {
  Lexed lexed = Lex("var v vv var1 logo newer varname log2x log10 log2 new");
  std::vector<int> expected = {TOK_VAR,    Identifier, Identifier, Identifier, Identifier, Identifier,
                               Identifier, Identifier, TOK_LOG10,  TOK_LOG2,   TOK_NEW};
  EXPECT_EQ(lexed.types, expected);
  EXPECT_TRUE(lexed.errors.empty());
}

TEST_F(LexerTest, KeywordsAreCaseSensitive) {
  Lexed lexed = Lex("Var VideoConverter videoconverter");
  EXPECT_EQ(lexed.types, (std::vector<int>{Identifier, TOK_VIDEOCONVERTER, Identifier}));
}

TEST_F(LexerTest, IdentifierCharacters) {
  Lexed lexed = Lex("$in #x1 _a9");
  EXPECT_EQ(lexed.types, (std::vector<int>{Identifier, Identifier, Identifier}));
  EXPECT_EQ(lexed.texts, (std::vector<std::string>{"$in", "#x1", "_a9"}));
  // "$" may only start a name: "a$b" is "a", an error, then "b".
  Lexed split = Lex("a$b");
  EXPECT_EQ(split.texts, (std::vector<std::string>{"a", "b"}));
  ASSERT_EQ(split.errors.size(), 1u);
  EXPECT_EQ(split.errors[0].position, 1);
  EXPECT_EQ(split.errors[0].near, "$");
}

TEST_F(LexerTest, NumberForms) {
  Lexed lexed = Lex("12 12. 12.5 .5 1e3 2.5E-2 010 0X1f 1.e5");
  EXPECT_EQ(lexed.texts, (std::vector<std::string>{"12", "12.", "12.5", ".5", "1e3", "2.5E-2", "010", "0X1f", "1.e5"}));
  for (int type : lexed.types) EXPECT_EQ(type, NumericLiteral);
  EXPECT_TRUE(lexed.errors.empty());
}

TEST_F(LexerTest, NumberFollowedByMemberAccess) {
  Lexed lexed = Lex("5..x");
  EXPECT_EQ(lexed.types, (std::vector<int>{NumericLiteral, TOK_DOT, Identifier}));
  EXPECT_EQ(lexed.texts[0], "5.");
}

TEST_F(LexerTest, MalformedNumbersAreLexicalErrors) {
  Lexed hex = Lex("0x;");
  ASSERT_EQ(hex.errors.size(), 1u);
  EXPECT_EQ(hex.errors[0].position, 2);  // the byte after "0x"
  Lexed exponent = Lex("1e+");
  ASSERT_EQ(exponent.errors.size(), 1u);
  EXPECT_EQ(exponent.errors[0].near, "");  // end of input
  EXPECT_NE(exponent.errors[0].text.find("(end of input)"), std::string::npos);
}

TEST_F(LexerTest, StringEscapesAreTranslatedAsTheLanguageDefines) {
  // \' and \" give quotes, \n a line feed, \7 and \a both BEL.
  EXPECT_EQ(Lex(R"('it\'s')").texts[0], "'it's'");
  EXPECT_EQ(Lex(R"("a\nb")").texts[0], "\"a\nb\"");
  EXPECT_EQ(Lex(R"('\7\a')").texts[0], std::string("'\x07\x07'"));
  // \x uses only its first digit: "\x41" is the byte 4, not "A".
  EXPECT_EQ(Lex(R"("\x41")").texts[0], std::string("\"\x04\""));
  // Any other escaped character (a backslash, 8, 9, unlisted letters) is a lone backslash.
  EXPECT_EQ(Lex(R"('\q')").texts[0], "'\\'");
  EXPECT_EQ(Lex(R"('\\')").texts[0], "'\\'");
  EXPECT_EQ(Lex(R"('\9')").texts[0], "'\\'");
  // \u makes one character from four hexadecimal digits.
  EXPECT_EQ(Lex(R"('\u00e9')").texts[0], "'\xC3\xA9'");
}

TEST_F(LexerTest, VerbatimStringsKeepBackslashes) {
  Lexed lexed = Lex(R"(@'C:\path\n' @"x\y")");
  ASSERT_EQ(lexed.types, (std::vector<int>{StringLiteral, StringLiteral}));
  EXPECT_EQ(lexed.texts[0], R"(@'C:\path\n')");
  EXPECT_EQ(lexed.texts[1], R"(@"x\y")");
}

TEST_F(LexerTest, StringsCannotSpanLines) {
  Lexed lexed = Lex("'abc\nx");
  ASSERT_EQ(lexed.errors.size(), 1u);
  EXPECT_EQ(lexed.errors[0].line, 1);
  EXPECT_EQ(lexed.errors[0].position, 4);
  EXPECT_EQ(lexed.texts, (std::vector<std::string>{"x"}));
}

TEST_F(LexerTest, MalformedEscapesAreLexicalErrors) {
  // The first report names the byte that broke the escape; lexing goes on after it.
  Lexed hex = Lex(R"('\xg1')");
  ASSERT_GE(hex.errors.size(), 1u);
  EXPECT_EQ(hex.errors[0].position, 3);
  EXPECT_EQ(hex.errors[0].near, "g");
  Lexed unicode = Lex(R"('\u12' x)");
  ASSERT_GE(unicode.errors.size(), 1u);
  EXPECT_EQ(unicode.errors[0].position, 5);
}

TEST_F(LexerTest, OperatorsMatchLongestFirst) {
  Lexed lexed = Lex("?\?= ?? ?. ?[ ? <<= << <= < >>= >> >= > -> -= -- - || |= | &&");
  std::vector<int> expected = {TOK_COAL_EQ, TOK_COAL,   TOK_NULL_DOT, TOK_NULL_INDEX, TOK_CND,    TOK_LSH_EQ,
                               TOK_LSHIFT,  TOK_LEQ,    TOK_LESS,     TOK_RSH_EQ,     TOK_RSHIFT, TOK_GEQ,
                               TOK_GRTR,    TOK_CONNECT, TOK_SUB_EQ,  TOK_DEC,        TOK_SUB,    TOK_LOGICAL_OR,
                               TOK_OR_EQ,   TOK_BITWISE_OR, TOK_LOGICAL_AND};
  EXPECT_EQ(lexed.types, expected);
  // Without spaces the longest match still decides: "a->b" is a, ->, b.
  EXPECT_EQ(Lex("a->b").types, (std::vector<int>{Identifier, TOK_CONNECT, Identifier}));
  EXPECT_EQ(Lex("a--b").types, (std::vector<int>{Identifier, TOK_DEC, Identifier}));
}

TEST_F(LexerTest, CommentsAndWhiteSpaceAreDropped) {
  Lexed lexed = Lex("a /* b \n c */ d // e\r f\xA0g");
  EXPECT_EQ(lexed.texts, (std::vector<std::string>{"a", "d", "f", "g"}));
  EXPECT_TRUE(lexed.errors.empty());
}

TEST_F(LexerTest, UnterminatedCommentIsReportedAtEndOfInput) {
  Lexed lexed = Lex("a /* never closed");
  EXPECT_EQ(lexed.texts, (std::vector<std::string>{"a"}));
  ASSERT_EQ(lexed.errors.size(), 1u);
  EXPECT_NE(lexed.errors[0].text.find("(end of input)"), std::string::npos);
}

TEST_F(LexerTest, UnexpectedBytesAreReportedAndSkipped) {
  // Vertical tab, a backquote and a byte above 127 begin no token.
  Lexed lexed = Lex("a\x0B b\n  `c \xC3");
  EXPECT_EQ(lexed.texts, (std::vector<std::string>{"a", "b", "c"}));
  ASSERT_EQ(lexed.errors.size(), 3u);
  EXPECT_EQ(lexed.errors[0].line, 1);
  EXPECT_EQ(lexed.errors[0].position, 1);
  EXPECT_NE(lexed.errors[0].text.find("0x0B"), std::string::npos);
  EXPECT_EQ(lexed.errors[1].line, 2);
  EXPECT_EQ(lexed.errors[1].position, 2);
  EXPECT_EQ(lexed.errors[1].near, "`");
  EXPECT_NE(lexed.errors[1].text.find("-unknown source-(2) : lexer error"), std::string::npos);
  EXPECT_NE(lexed.errors[2].text.find("0xC3"), std::string::npos);
}

TEST_F(LexerTest, TokensRecordLineAndPosition) {
  std::string text = "a\n  bc = 'x';";
  wflLexer lexer(text.data(), static_cast<int>(text.size()), nullptr);
  std::vector<RObject<CToken>> tokens;
  lexer.Tokenize(tokens);
  ASSERT_EQ(tokens.size(), 6u);
  EXPECT_EQ(tokens[1]->GetLine(), 2);
  EXPECT_EQ(tokens[1]->GetCharPositionInLine(), 2);
  EXPECT_EQ(tokens[3]->GetCharPositionInLine(), 7);
  EXPECT_EQ(tokens[5]->GetTokenType(), TOKEN_EOF);
}
