// Every WFL error kind, provoked by a script: code, title, line, position and
// detail, and the rendering "Title: line L:P; detail".
#include "WflTestHelper.h"

#include "System/Text.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

unsigned int Code(const char (&text)[5]) { return FourCC(text) | 0x80000000u; }

}  // namespace

TEST_F(WflTest, NullReference) {
  ResultParserError error = RunFailing("var a;\nvar b = 1 + a;");
  EXPECT_EQ(error.GetType(), Code("null"));
  EXPECT_EQ(error.GetLine(), 2);
  EXPECT_EQ(error.GetPosition(), 12);
  EXPECT_EQ(Format(error), "Null reference: line 2:12; 'a' is null");
}

TEST_F(WflTest, UnknownFunction) {
  ResultParserError error = RunFailing("\n\n        foo();");
  EXPECT_EQ(error.GetType(), Code("unkf"));
  EXPECT_EQ(Format(error), "Unknown function exception: line 3:8; 'foo' is not a recognized function");
}

TEST_F(WflTest, InvalidExpression) {
  ResultParserError error = RunFailing("var x = 1; delete x;");
  EXPECT_EQ(error.GetType(), Code("expr"));
  EXPECT_EQ(Format(error), "Invalid expression: line 1:11; 'delete' is invalid");
}

TEST_F(WflTest, InvalidArgs) {
  ResultParserError error = RunFailing("  sqrt();");
  EXPECT_EQ(error.GetType(), Code("args"));
  EXPECT_EQ(Format(error), "Bad arguments: line 1:2; incorrect or wrong number of arguments to 'sqrt'");
}

TEST_F(WflTest, InvalidComponentType) {
  // No writer exists for the type: the creation fails.
  ResultParserError error = RunFailing("var w = new ContainerWriter('out.zzz', 'zzzz');");
  EXPECT_EQ(error.GetType(), Code("comp"));
  EXPECT_EQ(Format(error), "Component unavailable: line 1:12; 'ContainerWriter' could not be created, check the type fcc");
}

TEST_F(WflTest, InvalidCast) {
  ResultParserError error = RunFailing("var o = {};\n  o * 2;");
  EXPECT_EQ(error.GetType(), Code("cast"));
  EXPECT_EQ(Format(error), "Invalid cast: line 2:4; '*' cannot be converted to the required type");
}

TEST_F(WflTest, DuplicateSymbol) {
  ResultParserError error = RunFailing("var x = 1; var x = 2;");
  EXPECT_EQ(error.GetType(), Code("dup "));
  EXPECT_EQ(Format(error), "Duplicate symbol: line 1:15; 'x' has already been declared");
}

TEST_F(WflTest, InvalidAST) {
  ResultParserError error = RunFailing("\n  print(a, b);");
  EXPECT_EQ(error.GetType(), Code("!ast"));
  EXPECT_EQ(Format(error), "Failed to recover: line 2:2; could not recover input stream at 'print', resulting in an invalid AST");
}

TEST_F(WflTest, Exit) {
  ResultParserError error = RunFailing("die('stop');");
  EXPECT_EQ(error.GetType(), Code("exit"));
  EXPECT_EQ(Format(error), "Exit: line 1:0; stop");
}

TEST_F(WflTest, GenericParserError) {
  ResultParserError error = RunFailing("var c = new VideoConverter('abcd');");
  EXPECT_EQ(error.GetType(), Code("!WFL"));
  EXPECT_EQ(error.GetType(), ResultParserError::Code);
  EXPECT_EQ(Format(error), "Parser error: line 1:12; No video converter factory of type 'abcd'.");
}

TEST_F(WflTest, ErrorsWithoutTokenHaveNoPosition) {
  ResultNullReference error(nullptr);
  EXPECT_EQ(error.GetLine(), -1);
  EXPECT_EQ(error.GetPosition(), -1);
  EXPECT_EQ(Format(error), "Null reference: line -1:-1; '(null)' is null");
  ResultParserError custom(0x1234, nullptr, "Custom", "value %d", 7);
  EXPECT_EQ(custom.GetType(), 0x80001234u);
  EXPECT_EQ(Format(custom), "Custom: line -1:-1; value 7");
  // Caught as a plain Result, the rendering is still the WFL one.
  try {
    throw ResultInvalidArgs(nullptr);
  } catch (const Result& result) {
    EXPECT_EQ(Format(result), "Bad arguments: line -1:-1; incorrect or wrong number of arguments to '(null)'");
  }
}
