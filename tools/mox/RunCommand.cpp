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

struct RunOptions {
  std::string script;  // a path, "-", or the inline text
  bool inlineText = false;
  bool haveScript = false;
  std::vector<std::pair<std::string, std::string>> variables;
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

bool IsVariableName(const std::string& name) {
  if (name.empty() || !(std::isalpha(static_cast<unsigned char>(name[0])) || name[0] == '_' || name[0] == '$'))
    return false;
  for (char c : name) {
    if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$')) return false;
  }
  return true;
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
      if (!definition) return ExitUsage;
      const char* equals = std::strchr(definition, '=');
      std::string name = equals ? std::string(definition, equals) : std::string(definition);
      if (!equals || !IsVariableName(name)) {
        PrintError("run: -D expects NAME=VALUE with a WFL name, not '%s'", definition);
        return ExitUsage;
      }
      options.variables.emplace_back(name, equals + 1);
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

void LogToStandardError(Console::LogLevel, CString* text) {
  if (!text) return;
  std::fputs(text->GetChars(), stderr);
  std::fflush(stderr);
}

bool ReadStandardInput(std::string& text) {
  char buffer[65536];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) text.append(buffer, n);
  return !std::ferror(stdin);
}

// A one-line message for a failure that is not a script error.
void PrintResult(const Result& result) {
  const char* details = result.GetDetails();
  if (details && *details) {
    std::fprintf(stderr, "%s: %s\n", result.GetErrorMessage(), details);
  } else {
    std::fprintf(stderr, "%s\n", result.GetErrorMessage());
  }
}

CDictionary<CString, CVariant>* MakeVariables(const RunOptions& options) {
  RObject<CDictionary<CString, CVariant>> variables(new CDictionary<CString, CVariant>());
  for (const auto& [name, text] : options.variables) {
    RObject<CString> key(CString::WithString(name.c_str()));
    RObject<CVariant> value(new CVariant(text.c_str()));
    // A later -D of the same name replaces the earlier one.
    variables->SetItem(key, value).ThrowIfFailed();
  }
  return variables.Detach();
}

int Evaluate(const RunOptions& options) {
  RObject<WFL::CParser> parser(new WFL::CParser());
  RObject<CDictionary<CString, CVariant>> variables(MakeVariables(options));
  RObject<WFL::CTopology> topology;
  if (options.inlineText || options.script == "-") {
    std::string text = options.script;
    if (!options.inlineText && !ReadStandardInput(text)) {
      PrintError("run: cannot read the script from standard input");
      return ExitFailure;
    }
    RObject<CString> source(CString::WithString(text.c_str()));
    topology = parser->ParseString(source, variables);
  } else {
    RObject<CString> path(CString::WithString(options.script.c_str()));
    topology = parser->ParseFile(path, variables);
  }
  // Recovery let the script run, but what was written is not what ran.
  const int repaired = parser->GetDiagnosticCount();
  if (repaired > 0) {
    std::fprintf(stderr, "%s: %d syntax error%s (repaired and run; see above)\n",
                 options.inlineText ? "script" : options.script.c_str(), repaired, repaired == 1 ? "" : "s");
    return ExitFailure;
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
  Console::SetLogCallback(&LogToStandardError);
  Console::SetLogLevel(options.level);
  try {
    return Evaluate(options);
  } catch (const WFL::ResultExit& exit) {
    const char* message = exit.GetDetails();
    std::fprintf(stderr, "%s\n", message && *message ? message : exit.GetErrorMessage());
    return ExitScriptDied;
  } catch (const WFL::ResultParserError& error) {
    RObject<CString> text(error.FormatErrorMessage());
    std::fprintf(stderr, "%s\n", text ? text->GetChars() : error.GetErrorMessage());
    return ExitFailure;
  } catch (const Result& result) {
    PrintResult(result);
    return ExitFailure;
  }
}

}  // namespace MoxTool
