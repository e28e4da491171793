#include <gtest/gtest.h>

#include <string>

#include "System/Diagnostics/StackTrace.h"
#include "System/Result.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

std::string Text(const Result& r, int flags) {
  RObject<CString> s(r.ToString(flags));
  return s->GetChars();
}

Result ReturnsEndOfStream() { return ResultEndOfStream("offset %d", 12); }

}  // namespace

TEST(ResultTest, SuccessValues) {
  Result ok;
  EXPECT_FALSE(ok.Failed());
  EXPECT_TRUE(ok.Succeeded());
  EXPECT_EQ(Text(ok, 1), "SUCCEEDED (0) : Result OK");
  ResultFalse absent;
  EXPECT_TRUE(absent.Succeeded());
  EXPECT_EQ(absent.GetResultCode(), 1);
  EXPECT_EQ(Text(absent, 1), "SUCCEEDED (1) : Result false");
  RObject<CStackTrace> none(ok.GetStackTrace());
  EXPECT_EQ(none.Get(), nullptr);
}

TEST(ResultTest, CodeClassification) {
  EXPECT_FALSE(Result::Failed(1));
  EXPECT_TRUE(Result::Failed(-1));
  EXPECT_FALSE(Result::Succeeded(2));
  EXPECT_TRUE(Result::Succeeded(0));
}

TEST(ResultTest, KindsCarryTypeCodeAndMessage) {
  struct Row {
    Result result;
    int type;
    const char* message;
  };
  const Row rows[] = {
      {ResultError(), -19000, "Error"},
      {ResultNullPointer(), -19001, "Null pointer"},
      {ResultArgumentOutOfRange(), -19003, "Argument out of range"},
      {ResultArgumentNull(), -19004, "Argument null"},
      {ResultArrayFull(), -19008, "Array full"},
      {ResultInvalidOperation(), -19010, "Invalid operation"},
      {ResultNotFound(), -19020, "Not found"},
      {ResultInvalidArgument(), -19021, "Invalid argument"},
      {ResultIOError(), -19100, "IO error"},
      {ResultEndOfStream(), -19101, "End of stream"},
      {ResultFileNotFound(), -19260, "File not found"},
      {ResultFileExists(), -19261, "File already exists"},
      {ResultSymbolicLink(), -19268, "Symbolic link"},
      {ResultBufferTooSmall(), -19801, "Buffer too small"},
      {ResultDataInvalid(), -19802, "Data invalid"},
      {ResultNotAccepting(), -19811, "Not Accepting"},
      {ResultNotAccepting(ResultError(), nullptr), -19811, "Not accepting"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(static_cast<int>(row.result.GetType()), row.type) << row.message;
    EXPECT_EQ(row.result.GetResultCode(), row.type) << row.message;
    EXPECT_STREQ(row.result.GetErrorMessage(), row.message);
    EXPECT_TRUE(row.result.Failed());
  }
}

TEST(ResultTest, ApplicationErrorKeepsItsOwnCode) {
  ResultApplicationError r(42, nullptr);
  EXPECT_EQ(static_cast<int>(r.GetType()), -19022);
  EXPECT_EQ(r.GetResultCode(), 42);
  EXPECT_EQ(static_cast<int>(r), 42);
  EXPECT_EQ(r.GetDetails(), nullptr);
  EXPECT_EQ(Text(r, 1), "FAILED (-19022) : Application error (42)");
}

TEST(ResultTest, InvalidArgumentWithCodeReplacesTheMessage) {
  ResultInvalidArgument r(7, "bad");
  EXPECT_EQ(r.GetType(), 7u);
  EXPECT_EQ(r.GetResultCode(), 7);
  EXPECT_STREQ(r.GetErrorMessage(), "bad");
  RObject<CStackTrace> trace(r.GetStackTrace());
  ASSERT_NE(trace.Get(), nullptr);
  EXPECT_GT(trace->GetFrameCount(), 0);
}

TEST(ResultTest, DetailsAreFormatted) {
  EXPECT_EQ(Text(ResultError("x=%d", 5), 3), "FAILED (-19000) : Error, x=5");
  EXPECT_EQ(Text(ResultError("x=%d", 5), 2), "x=5");
  EXPECT_EQ(Text(ResultError(), 3), "FAILED (-19000) : Error");
}

TEST(ResultTest, InnerChainPrintsDeeperResultsAgain) {
  ResultError root("root");
  ResultIOError middle(root, "middle");
  ResultNotSupported top(middle, "top");
  // Each inner result prints its own chain, so "root" appears twice.
  EXPECT_EQ(Text(top, 0xB),
            "FAILED (-19006) : Not supported, top\n"
            "Inner Result:\n"
            "FAILED (-19100) : IO error, middle\n"
            "Inner Result:\n"
            "FAILED (-19000) : Error, root\n"
            "Inner Result:\n"
            "FAILED (-19000) : Error, root");
}

TEST(ResultTest, CopiesAreDeepAndShareTheTrace) {
  Result original = ResultError(ResultArgumentNull("p"), "outer %s", "text");
  Result copy(original);
  ASSERT_NE(copy.GetInnerResult(), nullptr);
  EXPECT_NE(copy.GetInnerResult(), original.GetInnerResult());
  EXPECT_NE(copy.GetDetails(), original.GetDetails());
  EXPECT_STREQ(copy.GetDetails(), "outer text");
  RObject<CStackTrace> a(original.GetStackTrace());
  RObject<CStackTrace> b(copy.GetStackTrace());
  EXPECT_EQ(a.Get(), b.Get());

  Result moved(std::move(copy));
  EXPECT_EQ(copy.GetInnerResult(), nullptr);
  EXPECT_EQ(copy.GetDetails(), nullptr);
  EXPECT_STREQ(moved.GetInnerResult()->GetDetails(), "p");

  Result assigned;
  assigned = moved;
  EXPECT_STREQ(assigned.GetDetails(), "outer text");
  assigned = ResultOK();
  EXPECT_EQ(assigned.GetDetails(), nullptr);
  EXPECT_TRUE(assigned.Succeeded());
}

TEST(ResultTest, ThrownKindsAreCaughtAsTheirBases) {
  try {
    throw ResultEndOfStream("at %d", 3);
  } catch (const ResultIOError& e) {
    EXPECT_EQ(static_cast<int>(e.GetType()), -19101);
  }
  try {
    throw ResultArgumentOutOfRange();
  } catch (const ResultInvalidArgument& e) {
    EXPECT_EQ(static_cast<int>(e.GetType()), -19003);
  }
  // A result returned as Result keeps its kind when thrown on.
  Result r = ReturnsEndOfStream();
  try {
    r.ThrowIfFailed();
    FAIL() << "a failure must throw";
  } catch (const Result& e) {
    EXPECT_EQ(static_cast<int>(e.GetType()), -19101);
    EXPECT_STREQ(e.GetDetails(), "offset 12");
  }
  EXPECT_NO_THROW(ResultOK().ThrowIfFailed());
}

TEST(ResultTest, StackTraceSymbolicatesThisTest) {
  Result r = ResultError("traced");
  std::string text = Text(r, 0x4);
  // Test bodies are named after their suite and case.
  EXPECT_NE(text.find("ResultTest_StackTraceSymbolicatesThisTest"), std::string::npos) << text;
  std::string full = Text(r, 0x7);
  EXPECT_EQ(full.rfind("FAILED (-19000) : Error, traced @\n", 0), 0u) << full;
}
