// Evaluation: declarations and scopes, control flow, switch, functions with
// dynamic scoping, built-in functions, member and index access.
#include "WflTestHelper.h"

#include "System/Text.h"
#include "wfl/AstNode.h"
#include "wfl/EvaluationBudget.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

TEST_F(WflTest, DeclarationsShadowAndCopy) {
  EXPECT_EQ(Run("var x = 1; { var x = 2; print(x); } print(x);"), "21");
  // "var b = a" copies the value: changing a later leaves b alone.
  EXPECT_EQ(Run("var a = 1; var b = a; a++; print(b); print(a);"), "12");
  // Several declarations in one statement, some without a value.
  EXPECT_EQ(Run("var c = 1, d, e = c + 1; print(d); print(e);"), "(null)2");
}

TEST_F(WflTest, UndeclaredNamesAreCreatedEmpty) {
  EXPECT_EQ(Run("y = 5; print(y);"), "5");
  EXPECT_EQ(Run("print(z);"), "(null)");
  // typeof names a missing value "undefined" and creates the name in the innermost scope.
  EXPECT_EQ(Run("print(typeof undefinedName);"), "undefined");
  EXPECT_STREQ(RunFailing("var undefinedName = 1;").GetTitle(), "Duplicate symbol");
}

TEST_F(WflTest, ScriptVariablesLandInTheCallersScope) {
  Run("var width = 1920; height = 1080;");
  RObject<CSymbol> width(CAstNode::GetSymbolTable()->FindSymbol("width"));
  RObject<CSymbol> height(CAstNode::GetSymbolTable()->FindSymbol("height"));
  ASSERT_TRUE(width && height);
  EXPECT_EQ(width->ToInt64(), 1920);
  EXPECT_EQ(height->ToInt64(), 1080);
}

TEST_F(WflTest, DictionaryEntriesSeeEarlierKeys) {
  EXPECT_EQ(Run("var a = {w: 1920, h: w / 2}; print(a.h);"), "960");
  EXPECT_STREQ(RunFailing("var d = {k: 1, k: 2};").GetTitle(), "Duplicate symbol");
}

TEST_F(WflTest, MemberAndIndexAccess) {
  EXPECT_EQ(Run("var o = {}; o.b = 1; o['c'] = 2; print(o);"), "{ b : 1, c : 2 }");
  // Numeric indices are their text: a[0] and a['0'] are the same member.
  EXPECT_EQ(Run("var a = [5, 6]; a['0'] = 7; print(a[0]);"), "7");
  // Bare names inside an index resolve among the object's members first.
  EXPECT_EQ(Run("var k = 'outer'; var p = {k: 'w', w: 5}; print(p[k]);"), "5");
  // A null object raises; the null-conditional forms answer null instead.
  EXPECT_STREQ(RunFailing("var n; n.x = 1;").GetTitle(), "Null reference");
  EXPECT_EQ(Run("var m; print(m?.x); print(m?[0]); var q = {x: 3}; print(q?.x);"), "(null)(null)3");
  EXPECT_STREQ(RunFailing("var s = 5; print(s?.x);").GetTitle(), "Invalid cast");
}

TEST_F(WflTest, WithResolvesAndCreatesNamesInTheObject) {
  EXPECT_EQ(Run("var o = {a: 1}; with (o) a = 2; with (o) b = 3; print(o.a); print(o.b);"), "23");
  // New bare names belong to the object whatever the body's form; names
  // declared with var inside a block body stay local to it.
  EXPECT_EQ(Run("var o2 = {}; with (o2) { m = 4; } print(o2.m);"), "4");
  EXPECT_EQ(Run("var p = {a: 1}; with (p) { a = 5; var local = 7; c = 3; } print(p.a); print(p.c); print(p.local);"),
            "53(null)");
  EXPECT_EQ(Run("print(typeof local);"), "undefined");
  // A function called from the body keeps its own scoping.
  EXPECT_EQ(Run("function f() { fresh = 1; } var q = {}; with (q) { f(); } print(q.fresh);"), "(null)");
}

TEST_F(WflTest, LoopsHonourBreakAndContinue) {
  EXPECT_EQ(Run("var i = 0; while (i < 5) { i++; if (i == 2) continue; if (i == 4) break; print(i); }"), "13");
  EXPECT_EQ(Run("var j = 5; do { print(j); } while (j < 3);"), "5");
  EXPECT_EQ(Run("for (var k = 0; k < 10; k += 3) print(k);"), "0369");
  // The loop variable of for is local to the loop.
  EXPECT_EQ(Run("for (var n = 0; n < 1; n++) {} print(typeof n);"), "undefined");
}

TEST_F(WflTest, ForInYieldsKeysAndForOfYieldsValues) {
  EXPECT_EQ(Run("for (var k in [10, 20]) print(k);"), "01");
  EXPECT_EQ(Run("for (v of [10, 20]) print(v);"), "1020");
  EXPECT_EQ(Run("for (var key in {x: 1, y: 2}) print(key);"), "xy");
  EXPECT_STREQ(RunFailing("var nothing; for (var e of nothing) {}").GetTitle(), "Null reference");
  // for-of shares the values: changing the loop variable in place changes the item.
  EXPECT_EQ(Run("var list = [1, 2]; for (var item of list) item++; print(list);"), "[ 2, 3 ]");
}

TEST_F(WflTest, SwitchFallsThroughAndHandlesDefaultLate) {
  EXPECT_EQ(Run("switch (2) { default: print(0); case 1: print(1); }"), "0");
  EXPECT_EQ(Run("switch (1) { case 1: print(1); default: print(0); }"), "10");
  EXPECT_EQ(Run("switch (1) { case 1: print(1); case 2: print(2); break; case 3: print(3); }"), "12");
  EXPECT_EQ(Run("switch ('b') { case 'a': print('A'); case 'b': print('B'); }"), "B");
  EXPECT_EQ(Run("switch (9) { case 1: print(1); }"), "");
  EXPECT_EQ(Run("var none; switch (none) { case 1: print(1); case null: print('null'); }"), "null");
  // A default that is not last runs alone when nothing matched: it does not fall into later clauses.
  EXPECT_EQ(Run("switch (5) { case 1: print(1); default: print('d'); case 2: print(2); }"), "d");
  // A matching clause falls through a default that follows it.
  EXPECT_EQ(Run("switch (1) { case 1: print(1); default: print('d'); case 2: print(2); }"), "1d2");
  // continue inside a switch reaches the enclosing loop.
  EXPECT_EQ(Run("for (var i = 0; i < 3; i++) { switch (i) { case 1: continue; } print(i); }"), "02");
}

TEST_F(WflTest, FunctionsUseDynamicScope) {
  const char* script =
      "function show() { println(x); }\n"
      "function caller() { var x = 'inner'; show(); }\n"
      "var x = 'outer';\n"
      "caller(); show();";
  EXPECT_EQ(Run(script), "inner\nouter\n");
}

TEST_F(WflTest, FunctionCalls) {
  EXPECT_EQ(Run("function add(a, b) { return a + b; } print(add(2, 3));"), "5");
  EXPECT_EQ(Run("function nothing() { return; } print(nothing());"), "(null)");
  EXPECT_EQ(Run("function fact(n) { if (n <= 1) return 1; return n * fact(n - 1); } print(fact(5));"), "120");
  // Arguments are evaluated inside the parameter scope: b's argument "a" sees parameter a.
  EXPECT_EQ(Run("function second(a, b) { return b; } var a = 1; print(second(10, a));"), "10");
  // Parameters are the argument slots themselves.
  EXPECT_EQ(Run("function set(p) { p = 7; } var target = 1; set(target); print(target);"), "7");
  // A function exists once its declaration has been evaluated; a later one replaces it.
  EXPECT_STREQ(RunFailing("early(); function early() {}").GetTitle(), "Unknown function exception");
  EXPECT_EQ(Run("function g() { return 1; } function g() { return 2; } print(g());"), "2");
  EXPECT_STREQ(RunFailing("function two(a, b) {} two(1);").GetTitle(), "Bad arguments");
}

TEST_F(WflTest, RunawayRecursionIsStopped) {
  Result result = RunRaising("function f() { f(); } f();");
  EXPECT_EQ(result.GetType(), ResultOverflow().GetType());
}

TEST_F(WflTest, EvaluationBudgetStopsEndlessLoops) {
  CEvaluationBudget::SetLimit(1000);
  CEvaluationBudget::Reset();
  Result result = RunRaising("while (true) {}");
  CEvaluationBudget::SetLimit(0);
  EXPECT_EQ(result.GetType(), ResultInvalidOperation().GetType());
  EXPECT_GT(CEvaluationBudget::GetSpent(), 1000);
}

TEST_F(WflTest, MathBuiltIns) {
  EXPECT_EQ(Print("abs(-2.5)"), "2.5");
  EXPECT_EQ(Print("ceil(1.2)"), "2");
  EXPECT_EQ(Print("floor(-1.2)"), "-2");
  EXPECT_EQ(Print("sqrt(2) * sqrt(2) > 1.99"), "true");
  EXPECT_EQ(Print("exp(0)"), "1");
  EXPECT_EQ(Print("log(exp(2))"), "2");
  EXPECT_EQ(Print("log10(1000)"), "3");
  EXPECT_EQ(Print("log2(8)"), "3");
  EXPECT_EQ(Print("sin(0) + cos(0) + tan(0)"), "1");
  // pow raises the first argument to its own power; the second is evaluated but unused.
  EXPECT_EQ(Print("pow(2, 10)"), "4");
  EXPECT_EQ(Print("pow(3, 2)"), "27");
  EXPECT_EQ(Run("var hits = 0; function hit() { hits++; return 0; } pow(1, hit()); print(hits);"), "1");
  EXPECT_STREQ(RunFailing("sqrt();").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("pow(2);").GetTitle(), "Bad arguments");
  EXPECT_STREQ(RunFailing("abs(1, 2);").GetTitle(), "Bad arguments");
}

TEST_F(WflTest, PrintAndPrintln) {
  EXPECT_EQ(Run("println(1); print(2); println('');"), "1\n2\n");
}

TEST_F(WflTest, DieEndsTheScript) {
  ResultParserError stop = RunFailing("print('a'); die('stop'); print('b');");
  EXPECT_EQ(printed_, "a");
  EXPECT_EQ(stop.GetType(), ResultExit::Code);
  EXPECT_STREQ(stop.GetDetails(), "stop");
  ResultParserError plain = RunFailing("die();");
  EXPECT_STREQ(plain.GetErrorMessage(), "Exit");
  EXPECT_EQ(plain.GetDetails(), nullptr);
  EXPECT_STREQ(RunFailing("die(1, 2);").GetTitle(), "Bad arguments");
}

TEST_F(WflTest, ScriptsRunFromFiles) {
  const char* path = "/tmp/wfl-script-test.wfl";
  FILE* file = std::fopen(path, "wb");
  ASSERT_NE(file, nullptr);
  std::fputs("var fromFile = 6;\nprint(fromFile * 7);", file);
  std::fclose(file);
  runner_.RunFile(path);
  EXPECT_EQ(printed_, "42");
  std::remove(path);
  EXPECT_THROW(runner_.RunFile("/tmp/wfl-no-such-script.wfl"), Result);
}

TEST_F(WflTest, LongChainsOfNestedObjectsAreFreedWithoutRecursing) {
  EXPECT_EQ(Run("{ var o = {}; for (var i = 0; i < 20000; i++) o = {a: o}; print(typeof o.a.a); }"), "object");
}
