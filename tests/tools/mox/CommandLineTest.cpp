// The command line as a whole: every command's help, the one-line usage
// errors with exit status 2, and the parsing rules the commands share.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "ToolRunner.h"

namespace {

struct CommandCase {
  const char* name;
  const char* option;  // an option the command's help must list
};

const CommandCase kCommands[] = {
    {"info", "--json"},   {"formats", "--json"},         {"run", "--progress"},  {"convert", "--video-format"},
    {"probe", "--type"},  {"catalog", "--json"},         {"graph", "-o"},        {"inspect", "--family"},
};

size_t Lines(const std::string& text) { return static_cast<size_t>(std::count(text.begin(), text.end(), '\n')); }

bool StartsWith(const std::string& text, const std::string& prefix) { return text.rfind(prefix, 0) == 0; }

TEST(MoxCommandLine, EveryCommandAnswersHelpWithItsUsageOnStandardOutput) {
  for (const CommandCase& command : kCommands) {
    for (const char* flag : {"--help", "-h"}) {
      const ToolRun run = RunMox({command.name, flag});
      EXPECT_EQ(run.exitStatus, 0) << command.name << " " << flag;
      EXPECT_EQ(run.err, "") << command.name;
      EXPECT_TRUE(StartsWith(run.out, std::string("usage: mox ") + command.name + " ")) << run.out;
      EXPECT_NE(run.out.find(command.option), std::string::npos) << command.name << " lists " << command.option;
    }
  }
}

TEST(MoxCommandLine, HelpComesBeforeAnyUsageErrorOfTheCommand) {
  // The script is missing and the option unknown, yet help is what was asked.
  const ToolRun run = RunMox({"convert", "--bogus", "--help"});
  EXPECT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_TRUE(StartsWith(run.out, "usage: mox convert INPUT OUTPUT")) << run.out;
}

TEST(MoxCommandLine, AnUnknownOptionOfEachCommandIsOneLineWithExitTwo) {
  for (const CommandCase& command : kCommands) {
    const ToolRun run = RunMox({command.name, "--bogus"});
    const std::string name = command.name;
    EXPECT_EQ(run.exitStatus, 2) << name;
    EXPECT_EQ(run.out, "") << name;
    EXPECT_EQ(run.err, "mox: " + name + ": unknown option '--bogus' (see 'mox " + name + " --help')\n");
  }
}

TEST(MoxCommandLine, AnOptionWithoutItsValueIsNamed) {
  const ToolRun run = RunMox({"probe", "file.y4m", "--type"});
  EXPECT_EQ(run.exitStatus, 2);
  EXPECT_EQ(run.err, "mox: probe: option --type needs a value (see 'mox probe --help')\n");
  const ToolRun graph = RunMox({"graph", "script.wfl", "-o"});
  EXPECT_EQ(graph.exitStatus, 2);
  EXPECT_EQ(Lines(graph.err), 1u) << graph.err;
  EXPECT_NE(graph.err.find("-o needs a value"), std::string::npos) << graph.err;
}

TEST(MoxCommandLine, AnUnknownCommandIsOneLineWithExitTwo) {
  const ToolRun run = RunMox({"frobnicate", "--json"});
  EXPECT_EQ(run.exitStatus, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "mox: unknown command 'frobnicate' (see 'mox --help')\n");
  const ToolRun option = RunMox({"--frobnicate"});
  EXPECT_EQ(option.exitStatus, 2);
  EXPECT_EQ(option.err, "mox: unknown option '--frobnicate' (see 'mox --help')\n");
}

TEST(MoxCommandLine, TheOverviewListsEveryCommandAndNoCommandIsAUsageError) {
  const ToolRun help = RunMox({"--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_TRUE(StartsWith(help.out, "usage: mox ")) << help.out;
  for (const CommandCase& command : kCommands)
    EXPECT_NE(help.out.find(std::string("\n  ") + command.name), std::string::npos) << command.name;
  EXPECT_NE(help.out.find("describe a component"), std::string::npos) << "summaries are listed";
  const ToolRun none = RunMox({});
  EXPECT_EQ(none.exitStatus, 2);
  EXPECT_EQ(none.out, "");
  EXPECT_TRUE(StartsWith(none.err, "usage: mox ")) << none.err;
}

TEST(MoxCommandLine, VersionNamesTheTool) {
  for (const char* flag : {"--version", "-V"}) {
    const ToolRun run = RunMox({flag});
    EXPECT_EQ(run.exitStatus, 0) << flag;
    EXPECT_TRUE(StartsWith(run.out, "mox ")) << run.out;
    EXPECT_EQ(Lines(run.out), 1u) << run.out;
    EXPECT_NE(run.out.find("revision "), std::string::npos) << run.out;
  }
}

// A script file in /tmp named for this process, removed at the end.
class ScriptFile {
 public:
  explicit ScriptFile(const std::string& name, const std::string& text)
      : path_("/tmp/mox-cli-" + std::to_string(getpid()) + "-" + name) {
    std::ofstream(path_) << text;
  }
  ~ScriptFile() { std::remove(path_.c_str()); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

TEST(MoxCommandLine, EachDefinitionTakesOneValueSoTheScriptStaysPositional) {
  ScriptFile script("defines.wfl", "println(a + b);");
  const ToolRun run = RunMox({"run", "-D", "a=1", "-D", "b=2", script.Path()});
  EXPECT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out, "3\n");
}

TEST(MoxCommandLine, ArgumentsAfterDoubleDashArePositional) {
  // A script named like an option is read as a file once options have ended.
  const ToolRun run = RunMox({"run", "--", "--not-an-option.wfl"});
  EXPECT_EQ(run.exitStatus, 1) << run.err;
  EXPECT_NE(run.err.find("--not-an-option.wfl"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find("mox: run:"), std::string::npos) << "not a usage error: " << run.err;
}

TEST(MoxCommandLine, ACommandNameAfterTheCommandIsAnArgumentNotASecondCommand) {
  ScriptFile script("graph.wfl", "println(1);");
  const ToolRun run = RunMox({"run", script.Path(), "graph"});
  EXPECT_EQ(run.exitStatus, 2);
  EXPECT_EQ(run.err, "mox: run: unexpected argument 'graph' (see 'mox run --help')\n");
  EXPECT_EQ(run.out, "");
}

TEST(MoxCommandLine, AProgressModeIsCheckedWhetherJoinedOrSeparate) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"convert", "in.y4m", "out.y4m", "--progress", "loud"}, {"convert", "in.y4m", "out.y4m", "--progress=loud"}}) {
    const ToolRun bad = RunMox(arguments);
    EXPECT_EQ(bad.exitStatus, 2);
    EXPECT_EQ(bad.err, "mox: convert: unknown progress mode 'loud' (bar, json or none) (see 'mox convert --help')\n");
  }
}

TEST(MoxCommandLine, ARepeatedOptionKeepsItsLastValue) {
  const ToolRun quiet = RunMox({"run", "-v", "debug", "-v", "none", "-e", "println(1);"});
  EXPECT_EQ(quiet.exitStatus, 0) << quiet.err;
  EXPECT_EQ(quiet.err, "");
  const ToolRun loud = RunMox({"run", "-v", "none", "-v", "debug", "-e", "println(1);"});
  EXPECT_EQ(loud.exitStatus, 0) << loud.err;
  EXPECT_NE(loud.err.find("Parsing string"), std::string::npos) << loud.err;
}

TEST(MoxCommandLine, RunTakesOneScript) {
  const ToolRun twice = RunMox({"run", "-e", "println(1);", "-e", "println(2);"});
  EXPECT_EQ(twice.exitStatus, 2);
  EXPECT_EQ(twice.out, "");
  EXPECT_EQ(twice.err, "mox: run: give one script: a file or -e TEXT (see 'mox run --help')\n");
  ScriptFile script("one.wfl", "println(1);");
  const ToolRun both = RunMox({"run", script.Path(), "-e", "println(2);"});
  EXPECT_EQ(both.exitStatus, 2);
  EXPECT_EQ(both.out, "");
}

}  // namespace
