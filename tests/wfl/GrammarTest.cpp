// The grammar: precedence and associativity, disambiguation, literal forms,
// and how syntax errors are recovered or rejected.
#include "WflTestHelper.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

TEST_F(WflTest, ArithmeticPrecedenceAndAssociativity) {
  EXPECT_EQ(Print("1 + 2 * 3"), "7");
  EXPECT_EQ(Print("10 - 4 - 3"), "3");         // left-associative
  EXPECT_EQ(Print("1 << 2 + 1"), "8");         // shift is looser than +
  EXPECT_EQ(Print("1 | 6 & 3"), "3");          // & before |
  EXPECT_EQ(Print("1 ^ 3 & 1"), "0");          // & before ^
  EXPECT_EQ(Print("6 ^ 3 | 8"), "13");         // ^ before |
  EXPECT_EQ(Print("1 < 2 == true"), "true");   // relational before equality
  EXPECT_EQ(Print("-2 * -3"), "6");
  EXPECT_EQ(Print("!false && false"), "false");
  EXPECT_EQ(Print("true || false && false"), "true");  // && before ||
  EXPECT_EQ(Print("1 and 0 or 1"), "true");
}

TEST_F(WflTest, NullCoalescingBindsTighterThanArithmetic) {
  // "a ?? b * c" is "(a ?? b) * c": with a = 1 that is 3, not 1.
  EXPECT_EQ(Run("var a = 1; var b = 2; var c = 3; print(a ?? b * c);"), "3");
  EXPECT_EQ(Run("var n = null; print(n ?? 2 * 3);"), "6");
  // Right-associative: x ?? (y ?? z).
  EXPECT_EQ(Run("var x; var y; print(x ?? y ?? 'z');"), "z");
}

TEST_F(WflTest, ConditionalTakesFullExpressionBranches) {
  EXPECT_EQ(Print("1 > 2 ? 'a' : 'b'"), "b");
  EXPECT_EQ(Run("var v; v = true ? 1 : 2; print(v);"), "1");
  EXPECT_EQ(Run("var w; var r = false ? 1 : w = 5; print(w);"), "5");
}

TEST_F(WflTest, AssignmentIsRightAssociative) {
  EXPECT_EQ(Run("var a; var b; a = b = 4; print(a + b);"), "8");
  EXPECT_EQ(Run("var p = 1; (p) = 3; print(p);"), "3");
  // a += (a -= 4): the inner assignment changes a in place to 6, then 6 + 6.
  EXPECT_EQ(Run("var q = 10; q += q -= 4; print(q);"), "12");
}

TEST_F(WflTest, ElseBindsToTheNearestIf) {
  EXPECT_EQ(Run("if (false) if (true) print('a'); else print('b');"), "");
  EXPECT_EQ(Run("if (true) if (false) print('a'); else print('b');"), "b");
  EXPECT_EQ(Run("var x = 2; if (x == 1) print(1); else if (x == 2) print(2); else print(3);"), "2");
}

TEST_F(WflTest, BraceStartsABlockUnlessOnlyADictionaryFits) {
  EXPECT_EQ(Run("{ print(1); print(2); }"), "12");
  EXPECT_EQ(Run("{}"), "");
  // Not a block: an expression statement holding a dictionary literal.
  EXPECT_EQ(Run("{a: 1}; print('ok');"), "ok");
  EXPECT_EQ(runner_.GetErrorCount(), 0);
}

TEST_F(WflTest, LiteralForms) {
  EXPECT_EQ(Print("0X1f"), "31");
  EXPECT_EQ(Print("010"), "10");
  EXPECT_EQ(Print("1.e5"), "100000");
  EXPECT_EQ(Print(".5"), "0.5");
  EXPECT_EQ(Print("2.5E-2"), "0.025");
  EXPECT_EQ(Print("'it\\'s'"), "it's");
  EXPECT_EQ(Print("@'C:\\path\\n'"), "C:\\path\\n");
  EXPECT_EQ(Print("\"\\x41\""), "\x04");
  EXPECT_EQ(Print("'\\q'"), "\\");
  EXPECT_EQ(Print("\"say 'hi'\""), "say 'hi'");
  EXPECT_EQ(Print("[1, 2, ]"), "[ 1, 2 ]");
  EXPECT_EQ(Print("{a: 1, }"), "{ a : 1 }");
  EXPECT_EQ(Print("{'quoted key': 1, 7: 2}"), "{ quoted key : 1, 7 : 2 }");
}

TEST_F(WflTest, TimeCodeLiterals) {
  EXPECT_EQ(Print("01:00:00:00@25"), "01:00:00:00");
  EXPECT_EQ(Print("00:59:59;28@29.97"), "00:59:59;28");
  EXPECT_EQ(Print("typeof 01:00:00:00@25"), "timecode");
  // The rate part is required.
  ResultParserError error = RunFailing("var t = 01:02:03:04;");
  EXPECT_STREQ(error.GetTitle(), "Failed to recover");
  EXPECT_GT(runner_.GetErrorCount(), 0);
}

TEST_F(WflTest, CallsAndMemberSuffixes) {
  EXPECT_EQ(Run("function f() { return {w: 5, list: [7, 8]}; } print(f().w); print(f().list[1]);"), "58");
  EXPECT_EQ(Print("sqrt(16)"), "4");
  // "a.b(x)" is no method call: a syntax error is reported.
  Run("var a = {b: 1}; var x; a.b(x);");
  EXPECT_GT(runner_.GetErrorCount(), 0);
}

TEST_F(WflTest, ForLoopForms) {
  EXPECT_EQ(Run("for (;;) { print('once'); break; }"), "once");
  EXPECT_EQ(Run("var list = [4, 5]; for (var i in list) print(i);"), "01");
  EXPECT_EQ(Run("var dict = {p: 'x', q: 'y'}; var k; for (k of dict) print(k);"), "xy");
  EXPECT_EQ(Run("for (var i = 0; i < 3; i++) print(i);"), "012");
  EXPECT_STREQ(RunFailing("var x = [1]; for (var i = 0 in x) print(i);").GetTitle(), "Failed to recover");
}

TEST_F(WflTest, MissingOrExtraneousTokenIsRecovered) {
  // One missing ";" is made up and the repaired script runs.
  EXPECT_EQ(Run("print(1) print(2);"), "12");
  ASSERT_EQ(runner_.GetErrorCount(), 1);
  EXPECT_NE(runner_.GetDiagnostics()[0].text.find("Missing ';'"), std::string::npos);
  EXPECT_EQ(runner_.GetDiagnostics()[0].position, 9);
  // A single stray token before the end of input is dropped.
  EXPECT_EQ(Run("print(4); )"), "4");
  EXPECT_EQ(runner_.GetErrorCount(), 1);
  // A missing name is made up too.
  Run("var = 3;");
  ASSERT_EQ(runner_.GetErrorCount(), 1);
  EXPECT_NE(runner_.GetDiagnostics()[0].text.find("Missing Identifier"), std::string::npos);
  // One extraneous token is dropped.
  EXPECT_EQ(Run("print(3));"), "3");
  ASSERT_EQ(runner_.GetErrorCount(), 1);
  EXPECT_NE(runner_.GetDiagnostics()[0].text.find("Extraneous input - expected ';'"), std::string::npos);
  EXPECT_EQ(runner_.GetDiagnostics()[0].near, ")");
  // "do ... while (...)" needs its final ";": reported, then supplied.
  EXPECT_EQ(Run("var x = 0; do x++; while (x < 3)\nprint(x);"), "3");
  EXPECT_EQ(runner_.GetErrorCount(), 1);
  EXPECT_EQ(runner_.GetDiagnostics()[0].line, 2);
}

TEST_F(WflTest, UnrecoverableSyntaxErrorYieldsNoTree) {
  // print takes exactly one expression; nothing runs, not even the first statement.
  ResultParserError error = RunFailing("print('before');\nprint(a, b);");
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(Format(error), "Failed to recover: line 1:0; could not recover input stream at 'print', resulting in an invalid AST");
  ASSERT_GE(runner_.GetErrorCount(), 1);
  const wflDiagnostic& report = runner_.GetDiagnostics()[0];
  EXPECT_EQ(report.line, 2);
  EXPECT_EQ(report.position, 7);
  EXPECT_EQ(report.near, ",");
  EXPECT_NE(report.text.find("-unknown source-(2) : error : at offset 7, near ','"), std::string::npos);
}

TEST_F(WflTest, StrayTokensAndFunctionsInsideBlocksAreRejected) {
  EXPECT_STREQ(RunFailing("print(1); ) )").GetTitle(), "Failed to recover");
  EXPECT_STREQ(RunFailing("{ function f() {} }").GetTitle(), "Failed to recover");
  EXPECT_STREQ(RunFailing("x = new Nothing();").GetTitle(), "Failed to recover");
  // A component expression takes no member suffix without parentheses.
  EXPECT_STREQ(RunFailing("new VideoConverter('x').y = 1;").GetTitle(), "Failed to recover");
}

TEST_F(WflTest, DeepNestingIsRefusedNotACrash) {
  std::string deep(400, '(');
  deep += "1" + std::string(400, ')') + ";";
  EXPECT_STREQ(RunFailing(deep.c_str()).GetTitle(), "Failed to recover");
  std::string blocks(400, '{');
  blocks += std::string(400, '}');
  EXPECT_STREQ(RunFailing(blocks.c_str()).GetTitle(), "Failed to recover");
  // Moderate nesting is fine.
  EXPECT_EQ(Print("((((((((((1))))))))))"), "1");
}

TEST_F(WflTest, LongOperatorChainsAreNotNesting) {
  // A chain is parsed in a loop: hundreds of terms are an ordinary script,
  // while the tree it builds stays bounded.
  std::string sum = "1";
  for (int i = 2; i <= 600; ++i) sum += " + " + std::to_string(i);
  EXPECT_EQ(Print(sum.c_str()), "180300");
  std::string members = "var o = {}; o.next = o; print(o";
  for (int i = 0; i < 300; ++i) members += ".next";
  EXPECT_EQ(Run((members + " == o);").c_str()), "true");
  std::string endless = "1";
  for (int i = 0; i < 1500; ++i) endless += " + 1";
  EXPECT_STREQ(RunFailing(("print(" + endless + ");").c_str()).GetTitle(), "Failed to recover");
}

TEST_F(WflTest, LexicalErrorsAreReportedAndSkipped) {
  EXPECT_EQ(Run("print(1 ` + 2);"), "3");
  ASSERT_EQ(runner_.GetErrorCount(), 1);
  EXPECT_EQ(runner_.GetDiagnostics()[0].near, "`");
  EXPECT_EQ(runner_.GetDiagnostics()[0].position, 8);
}

TEST_F(WflTest, LongOperatorChainsCountAsNesting) {
  std::string shortChain = "print(1";
  for (int i = 0; i < 50; ++i) shortChain += " + 1";
  EXPECT_EQ(Run((shortChain + ");").c_str()), "51");
  std::string longChain = "1";
  for (int i = 0; i < 5000; ++i) longChain += " ?? 1";
  EXPECT_STREQ(RunFailing((longChain + ";").c_str()).GetTitle(), "Failed to recover");
  std::string members = "var o = {}; o";
  for (int i = 0; i < 5000; ++i) members += ".a";
  EXPECT_STREQ(RunFailing((members + ";").c_str()).GetTitle(), "Failed to recover");
}
