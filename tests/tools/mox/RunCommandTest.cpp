#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

#include "ToolRunner.h"

namespace {

// A script file that removes itself at the end of the test.
class ScriptFile {
 public:
  explicit ScriptFile(const std::string& text) : path_("/tmp/mox-run-test-" + std::to_string(getpid()) + ".wfl") {
    std::ofstream(path_) << text;
  }
  ~ScriptFile() { std::remove(path_.c_str()); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

int Lines(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

}  // namespace

TEST(MoxRun, StandardOutputCarriesOnlyWhatTheScriptPrints) {
  ScriptFile script("var w = width; println(w / 2); print('done');");
  const ToolRun run = RunMox({"run", script.Path(), "-D", "width=1920"});
  EXPECT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out, "960\ndone");
  EXPECT_EQ(run.err, "");
}

TEST(MoxRun, HostVariablesAreWflSource) {
  const ToolRun quoted = RunMox({"run", "-e", "println(typeof name + ':' + name);", "-D", "name='clip'"});
  EXPECT_EQ(quoted.out, "string:clip\n");
  const ToolRun bare = RunMox({"run", "-e", "println(typeof name);", "-D", "name=clip"});
  EXPECT_EQ(bare.out, "undefined\n");
  // A later definition of the same name wins.
  const ToolRun twice = RunMox({"run", "-e", "println(n);", "-D", "n=1", "-D", "n=2"});
  EXPECT_EQ(twice.out, "2\n");
}

TEST(MoxRun, ScriptErrorsAreOneLineAndExitOne) {
  const ToolRun run = RunMox({"run", "-e", "var a = 1;\n\n        foo();"});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.err, "Unknown function exception: line 3:8; 'foo' is not a recognized function\n");
  const ToolRun missing = RunMox({"run", "/nonexistent/dir/script.wfl"});
  EXPECT_EQ(missing.exitStatus, 1);
  EXPECT_EQ(Lines(missing.err), 1);
  EXPECT_NE(missing.err.find("/nonexistent/dir/script.wfl"), std::string::npos);
  const ToolRun component = RunMox({"run", "-e", "new VideoConverter('vcsc');"});
  EXPECT_EQ(component.exitStatus, 1);
  EXPECT_NE(component.err.find("Video converter factory of type 'vcsc' is unavailable."), std::string::npos);
}

TEST(MoxRun, RepairedSyntaxErrorsStillFail) {
  const ToolRun run = RunMox({"run", "-e", "println(1)"});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.out, "1\n");
  EXPECT_NE(run.err.find("Missing ';'"), std::string::npos);
  EXPECT_NE(run.err.find("1 syntax error"), std::string::npos);
}

TEST(MoxRun, DieExitsThreeWithItsMessage) {
  const ToolRun run = RunMox({"run", "-e", "print('before'); die('stop ' + 42);"});
  EXPECT_EQ(run.exitStatus, 3);
  EXPECT_EQ(run.out, "before");
  EXPECT_EQ(run.err, "stop 42\n");
}

TEST(MoxRun, LogLevelSendsLogLinesToStandardError) {
  const ToolRun quiet = RunMox({"run", "-e", "println(1);"});
  EXPECT_EQ(quiet.err, "");
  const ToolRun verbose = RunMox({"run", "-v", "info", "-e", "println(1);"});
  EXPECT_EQ(verbose.exitStatus, 0);
  EXPECT_EQ(verbose.out, "1\n");
  EXPECT_NE(verbose.err.find("Component graph contains 0 nodes, 0 edges"), std::string::npos);
  const ToolRun numeric = RunMox({"run", "-v", "4", "-e", "println(1);"});
  EXPECT_NE(numeric.err.find("Parsing string"), std::string::npos);
}

TEST(MoxRun, BadUsageExitsTwo) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"run"}, {"run", "-v", "loud", "-e", "1;"}, {"run", "-D", "noequals", "-e", "1;"},
           {"run", "-D", "1x=2", "-e", "1;"}, {"run", "a.wfl", "b.wfl"}, {"run", "-e"}, {"run", "--frobnicate"}}) {
    const ToolRun run = RunMox(arguments);
    EXPECT_EQ(run.exitStatus, 2) << arguments.back();
    EXPECT_EQ(Lines(run.err), 1) << run.err;
    EXPECT_EQ(run.out, "");
  }
  const ToolRun help = RunMox({"run", "--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_NE(help.out.find("usage: mox run"), std::string::npos);
}
