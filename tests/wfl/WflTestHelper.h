#pragma once
// Shared fixture of the WFL tests: runs scripts through the lexer, parser and
// evaluator within one scope, captures what print and println write, and
// releases the whole interpreter state after each test (leak-checked).

#include <gtest/gtest.h>

#include <string>

#include "System/LeakCheckedTest.h"
#include "System/Result.h"
#include "wfl/ResultParserError.h"
#include "wfl/ScriptRunner.h"

class WflTest : public LeakCheckedTest {
 protected:
  static void SetUpTestSuite();
  void SetUp() override;
  void TearDown() override;

  // Runs the script and answers everything it printed; a raised Result fails the test.
  std::string Run(const char* script);
  // Runs a script that must fail with a WFL error and answers that error.
  Corvane::Mox::WFL::ResultParserError RunFailing(const char* script);
  // Runs a script that must raise a Result (of any kind) and answers it.
  Corvane::Mox::Result RunRaising(const char* script);
  // The printed text of an expression: Run("print(<expression>);").
  std::string Print(const char* expression);
  // "Title: line L:P; detail" of an error.
  static std::string Format(const Corvane::Mox::Result& result);

  Corvane::Mox::WFL::CScriptRunner runner_;
  static std::string printed_;

 private:
  static void Capture(Corvane::Mox::CString* text);
  void* scope_ = nullptr;
};
