#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "System/Console.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

std::vector<std::pair<int, std::string>> g_lines;

void Capture(Console::LogLevel level, CString* text) { g_lines.emplace_back(level, text->GetChars()); }

// Restores the process-wide console state after each test.
class ConsoleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_lines.clear();
    Console::SetLogCallback(&Capture);
  }
  void TearDown() override {
    Console::SetLogLevel(Console::None);
    Console::SetDebugChannelMask(Console::AllChannels);
    Console::SetLogCallback(&Console::DefaultLog);
  }
};

struct Emitter {
  void Emit() { MOX_LOG(Console::Warning, "value %d", 7); }
};

}  // namespace

TEST_F(ConsoleTest, LevelZeroWritesNothing) {
  EXPECT_EQ(Console::GetLogLevel(), Console::None);
  Console::Log(Console::Error, "lost %d", 1);
  EXPECT_TRUE(g_lines.empty());
}

TEST_F(ConsoleTest, LevelFiltersMessages) {
  Console::SetLogLevel(Console::Warning);
  EXPECT_TRUE(Console::IsAtLevel(Console::Error));
  EXPECT_FALSE(Console::IsAtLevel(Console::Information));
  Console::Log(Console::Error, "e\n");
  Console::Log(Console::Warning, "w%d\n", 2);
  Console::Log(Console::Information, "i\n");
  ASSERT_EQ(g_lines.size(), 2u);
  EXPECT_EQ(g_lines[0], std::make_pair(1, std::string("e\n")));
  EXPECT_EQ(g_lines[1], std::make_pair(2, std::string("w2\n")));
}

TEST_F(ConsoleTest, DebugNeedsLevelFiveAndAChannelBit) {
  Console::SetLogLevel(Console::Verbose);
  Console::LogDebug(Console::WorkflowRuntime, "too quiet");
  Console::SetLogLevel(Console::Debug);
  Console::SetDebugChannelMask(Console::AudioDecompression);
  Console::LogDebug(Console::WorkflowRuntime, "masked out");
  Console::LogDebug(Console::AudioDecompression, "heard");
  ASSERT_EQ(g_lines.size(), 1u);
  EXPECT_EQ(g_lines[0], std::make_pair(5, std::string("heard")));
}

TEST_F(ConsoleTest, NullCallbackIsNeverCalled) {
  Console::SetLogLevel(Console::Debug);
  Console::SetLogCallback(nullptr);
  Console::Log(Console::Error, "nowhere");
  MOX_LOG(Console::Error, "nowhere %d", 1);
  SUCCEED() << "no crash with a null callback";
  Console::SetLogCallback(&Capture);
  EXPECT_TRUE(g_lines.empty());
}

TEST_F(ConsoleTest, StandardLineNamesFileLineAndClassMethod) {
  Console::SetLogLevel(Console::Warning);
  Emitter().Emit();
  ASSERT_EQ(g_lines.size(), 1u);
  const std::string& line = g_lines[0].second;
  EXPECT_EQ(line.rfind("tests/System/ConsoleTest.cpp(", 0), 0u) << line;
  EXPECT_NE(line.find("): Emitter::Emit: value 7\n"), std::string::npos) << line;
}

TEST_F(ConsoleTest, FunctionLabelKeepsClassAndMethod) {
  const char* start = nullptr;
  int length = 0;
  Console::FunctionLabel("Corvane::Mox::Result Corvane::Mox::CLock::Enter()", start, length);
  EXPECT_EQ(std::string(start, length), "CLock::Enter");
  Console::FunctionLabel("void Corvane::Mox::CList<T>::Add(T*) [with T = CString]", start, length);
  EXPECT_EQ(std::string(start, length), "CList<T>::Add");
  Console::FunctionLabel("int main(int, char**)", start, length);
  EXPECT_EQ(std::string(start, length), "main");
}

TEST_F(ConsoleTest, DefaultLogColoursErrorsAndWarnings) {
  Console::DefaultLog(Console::Error, nullptr);  // null text: nothing, no crash
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  RObject<CString> error(new CString("bad\n"));
  RObject<CString> warning(new CString("careful\n"));
  RObject<CString> info(new CString("fyi\n"));
  Console::DefaultLog(Console::Error, error);
  Console::DefaultLog(Console::Warning, warning);
  Console::DefaultLog(Console::Information, info);
  std::string out = testing::internal::GetCapturedStdout();
  std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err, "\x1b[31mbad\n\x1b[0m");
  EXPECT_EQ(out, "\x1b[33mcareful\n\x1b[0mfyi\n");
}
