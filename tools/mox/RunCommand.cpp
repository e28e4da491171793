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
#include "ScriptInput.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

const char kRunUsage[] =
    "usage: mox run SCRIPT [-D NAME=VALUE]... [-v LEVEL]\n"
    "       mox run -e TEXT [-D NAME=VALUE]... [-v LEVEL]\n"
    "\n"
    "Parses and evaluates a WFL script (SCRIPT '-' reads standard input).\n"
    "\n"
    "options:\n"
    "  -e TEXT          evaluate TEXT instead of a script file\n"
    "  -D NAME=VALUE    declare a host variable; VALUE is inserted as WFL source:\n"
    "                   -D width=1920 is a number, -D \"name='clip'\" a string\n"
    "  -v LEVEL         log level: none, error, warning (default), info, verbose,\n"
    "                   debug, or 0 to 5; log lines go to standard error\n"
    "  -h, --help       show this help\n"
    "\n"
    "exit status: 0 success, 1 script error, 2 bad usage, 3 the script called die\n";

struct RunOptions : ScriptInput {
  Console::LogLevel level = Console::Warning;
};

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
  return WithScript(options, options.level, [](WFL::CTopology*) { return ExitSuccess; });
}

}  // namespace MoxTool
