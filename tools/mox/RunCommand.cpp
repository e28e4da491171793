// mox run: parse and evaluate a WFL script from a file, standard input or the
// command line, with host variables. stdout carries only what the script
// prints; log lines and errors go to stderr.
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <Mox.h>

#include "Commands.h"
#include "WorkflowRunner.h"
#include "ScriptInput.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

const char kRunUsage[] =
    "usage: mox run SCRIPT [-D NAME=VALUE]... [-v LEVEL] [-q | --progress=MODE]\n"
    "       mox run -e TEXT [-D NAME=VALUE]... [-v LEVEL] [-q | --progress=MODE]\n"
    "\n"
    "Parses and evaluates a WFL script (SCRIPT '-' reads standard input), builds\n"
    "its topology and, when it reads media, runs it to the end. Ctrl-C stops the\n"
    "job; writers still finish their files.\n"
    "\n"
    "options:\n"
    "  -e TEXT          evaluate TEXT instead of a script file\n"
    "  -D NAME=VALUE    declare a host variable; VALUE is inserted as WFL source:\n"
    "                   -D width=1920 is a number, -D \"name='clip'\" a string\n"
    "  -v LEVEL         log level: none, error, warning (default), info, verbose,\n"
    "                   debug, or 0 to 5; log lines go to standard error\n"
    "  --progress=MODE  bar (redrawn in place; the default on a terminal), json\n"
    "                   (one line a second: progress, time, duration, heartbeat)\n"
    "                   or none (the default otherwise); on standard error\n"
    "  -q               show no progress\n"
    "  -h, --help       show this help\n"
    "\n"
    "exit status: 0 success, 1 script or job error, 2 bad usage, 3 the script called\n"
    "die, 130 stopped by Ctrl-C\n";

struct RunOptions : ScriptInput {
  Console::LogLevel level = Console::Warning;
  ProgressMode progress = isatty(STDERR_FILENO) ? ProgressMode::Bar : ProgressMode::None;
};

bool ParseProgress(const char* text, ProgressMode& mode) {
  if (!std::strcmp(text, "bar")) mode = ProgressMode::Bar;
  else if (!std::strcmp(text, "json")) mode = ProgressMode::Json;
  else if (!std::strcmp(text, "none")) mode = ProgressMode::None;
  else return false;
  return true;
}

bool ParseLevel(const char* text, Console::LogLevel& level) {
  static const char* const kNames[] = {"none", "error", "warning", "info", "verbose", "debug"};
  for (int i = 0; i < 6; ++i) {
    if (!std::strcmp(text, kNames[i]) || (text[0] == '0' + i && !text[1])) {
      level = static_cast<Console::LogLevel>(i);
      return true;
    }
  }
  if (!std::strcmp(text, "information")) {
    level = Console::Information;
    return true;
  }
  return false;
}

// Returns ExitSuccess, or the usage status after printing why.
int ParseArguments(int argc, char** argv, RunOptions& options, bool& help) {
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    const bool option = !optionsEnded && arg[0] == '-' && arg[1];
    auto value = [&](const char* name) -> const char* {
      if (i + 1 >= argc) {
        PrintError("run: option %s needs a value (see 'mox run --help')", name);
        return nullptr;
      }
      return argv[++i];
    };
    if (option && (!std::strcmp(arg, "-h") || !std::strcmp(arg, "--help"))) {
      help = true;
      return ExitSuccess;
    } else if (option && !std::strcmp(arg, "--")) {
      optionsEnded = true;
    } else if (option && !std::strcmp(arg, "-e")) {
      const char* text = value("-e");
      if (!text) return ExitUsage;
      if (options.haveScript) {
        PrintError("run: give one script: a file or -e TEXT");
        return ExitUsage;
      }
      options.script = text;
      options.inlineText = options.haveScript = true;
    } else if (option && !std::strcmp(arg, "-D")) {
      const char* definition = value("-D");
      if (!definition || !AddVariable("run", definition, options)) return ExitUsage;
    } else if (option && !std::strcmp(arg, "-v")) {
      const char* level = value("-v");
      if (!level) return ExitUsage;
      if (!ParseLevel(level, options.level)) {
        PrintError("run: unknown log level '%s' (none, error, warning, info, verbose, debug or 0-5)", level);
        return ExitUsage;
      }
    } else if (option && !std::strcmp(arg, "-q")) {
      options.progress = ProgressMode::None;
    } else if (option && !std::strncmp(arg, "--progress=", 11)) {
      if (!ParseProgress(arg + 11, options.progress)) {
        PrintError("run: unknown progress mode '%s' (bar, json or none)", arg + 11);
        return ExitUsage;
      }
    } else if (option) {
      PrintError("run: unknown option '%s' (see 'mox run --help')", arg);
      return ExitUsage;
    } else if (options.haveScript) {
      PrintError("run: unexpected argument '%s': give one script", arg);
      return ExitUsage;
    } else {
      options.script = arg;
      options.haveScript = true;
    }
  }
  if (!options.haveScript) {
    PrintError("run: no script given (see 'mox run --help')");
    return ExitUsage;
  }
  return ExitSuccess;
}

}  // namespace

int RunRun(int argc, char** argv) {
  RunOptions options;
  bool help = false;
  const int usage = ParseArguments(argc, argv, options, help);
  if (usage != ExitSuccess) return usage;
  if (help) {
    std::fputs(kRunUsage, stdout);
    return ExitSuccess;
  }
  const ProgressMode progress = options.progress;
  return WithScript(options, options.level,
                    [progress](WFL::CTopology* topology) { return RunWorkflow(topology, progress); });
}

}  // namespace MoxTool
