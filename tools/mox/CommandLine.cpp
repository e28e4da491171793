// The mox command line: one CLI11 application with a subcommand per command.
// This is the only file that includes CLI11 (it is heavy to compile); it turns
// the arguments into each command's options, checks what CLI11 cannot (WFL
// names, format codes, log levels), and runs the command. Usage errors are one
// line on stderr, "mox: COMMAND: what is wrong (see 'mox COMMAND --help')",
// with exit status 2.
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <Mox.h>

#include "Commands.h"
#include "FourCharacterCode.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

// What a command's help says besides its options: the usage lines head it
// (tests and users read the first line), the text explains it.
struct CommandText {
  const char* name;
  const char* synopsis;  // in the command list of 'mox --help'
  const char* summary;
  const char* usage;
  const char* about;
  const char* exitStatus;
};

const CommandText kCommands[] = {
    {"info", "info [--json]", "print the library's build identification", "usage: mox info [--json]",
     "Prints the library's version, revision, build number, branch and build date.", nullptr},
    {"formats", "formats [--json] [video|audio|subtitle]", "list the media format codes",
     "usage: mox formats [--json] [video|audio|subtitle]",
     "Lists every media format code with its name and parent, of one kind or of all.", nullptr},
    {"run", "run SCRIPT|-e TEXT [options]", "parse and evaluate a WFL script (see 'mox run --help')",
     "usage: mox run SCRIPT [-D NAME=VALUE]... [-v LEVEL] [-q | --progress=MODE]\n"
     "       mox run -e TEXT [-D NAME=VALUE]... [-v LEVEL] [-q | --progress=MODE]",
     "Parses and evaluates a WFL script (SCRIPT '-' reads standard input), builds\n"
     "its topology and, when it reads media, runs it to the end. Ctrl-C stops the\n"
     "job; writers still finish their files.",
     "exit status: 0 success, 1 script or job error, 2 bad usage, 3 the script called\n"
     "die, 130 stopped by Ctrl-C"},
    {"convert", "convert INPUT OUTPUT [options]", "convert a media file with a one-line job (see 'mox convert --help')",
     "usage: mox convert INPUT OUTPUT [--video-format CODE] [--audio-format CODE]\n"
     "                   [--set NAME=VALUE]... [--print-script] [-q | --progress=MODE]",
     "Converts a media file: the reader is chosen by INPUT's content, the writer by\n"
     "OUTPUT's extension. The job is a WFL script (shown by --print-script) run as\n"
     "'mox run' runs scripts. Audio the writer does not take as it is becomes\n"
     "16-bit PCM unless --audio-format names another format.",
     "exit status: 0 success, 1 the job failed, 2 bad usage, 130 stopped by Ctrl-C"},
    {"probe", "probe FILE [--json] [--samples] [--type CODE]", "open a media file, index it and describe its tracks",
     "usage: mox probe FILE [--json] [--samples] [--type CODE]",
     "Opens FILE with the reader that recognises it (or the one --type names),\n"
     "indexes it and describes the container, its tracks and their variances.",
     nullptr},
    {"catalog", "catalog [--json]", "list every component family, code and name, and whether it is available",
     "usage: mox catalog [--json]",
     "Lists every component family, code and display name the library registers,\n"
     "and whether this build can create it.",
     nullptr},
    {"graph", "graph SCRIPT [-D NAME=VALUE]... [-o FILE]", "build a script's topology and write its graph (dot, SVG or PNG)",
     "usage: mox graph SCRIPT [-D NAME=VALUE]... [-o FILE]",
     "Evaluates a WFL script (SCRIPT '-' reads standard input), builds its topology\n"
     "with the converters it needs, without running it, and writes the graph.",
     nullptr},
    {"inspect", "inspect CODE [--family FAMILY] [--json]", "describe a component: family, availability, properties, formats",
     "usage: mox inspect CODE [--family FAMILY] [--json]",
     "Describes every component with the code CODE: its family, availability,\n"
     "documented properties with their defaults, and the formats it takes and makes.",
     nullptr},
};

const CommandText* FindCommand(const std::string& name) {
  for (const CommandText& command : kCommands)
    if (name == command.name) return &command;
  return nullptr;
}

void PrintUsage(FILE* out) {
  std::fprintf(out,
               "usage: mox [--help] [--version] <command> [arguments]\n"
               "\n"
               "mox runs media workflows with libMox.\n"
               "\n"
               "commands:\n");
  for (const CommandText& c : kCommands) {
    // A synopsis too long for its column puts the summary on the next line.
    if (std::strlen(c.synopsis) > 28) {
      std::fprintf(out, "  %s\n  %-28s %s\n", c.synopsis, "", c.summary);
    } else {
      std::fprintf(out, "  %-28s %s\n", c.synopsis, c.summary);
    }
  }
  std::fprintf(out,
               "\n"
               "'mox COMMAND --help' describes a command and its options.\n"
               "\n"
               "options:\n"
               "  -h, --help                   show this help and exit\n"
               "  -V, --version                show the library's version and build and exit\n"
               "\n"
               "exit status: 0 success, 1 failure, 2 bad usage, 3 a script called die\n");
}

void PrintVersion() {
  std::printf("mox %s (revision %s, branch %s, build %s, %s %s)\n", MoxVersion::GetVersion(),
              MoxVersion::GetRevision(), MoxVersion::GetBranch(), MoxVersion::GetBuildNumber(),
              MoxVersion::GetDate(), MoxVersion::GetTime());
}

// A command's help: its usage lines first, then what it does, the options
// CLI11 knows of, and the exit statuses where they say more than 0/1/2.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() {
    label("Positionals", "arguments");
    column_width(24);
  }
  std::string make_help(const CLI::App* app, std::string, CLI::AppFormatMode) const override {
    const CommandText* text = FindCommand(app->get_name());
    if (!text) return CLI::Formatter::make_help(app, app->get_name(), CLI::AppFormatMode::Normal);
    std::string help = std::string(text->usage) + "\n\n" + text->about + "\n";
    help += make_positionals(app) + make_groups(app, CLI::AppFormatMode::Normal);
    if (text->exitStatus) help += std::string("\n") + text->exitStatus + "\n";
    return help;
  }
};

// The usage error of a command (or of mox itself when command is empty).
int UsageError(const std::string& command, const std::string& what) {
  if (command.empty()) {
    PrintError("%s (see 'mox --help')", what.c_str());
  } else {
    PrintError("%s: %s (see 'mox %s --help')", command.c_str(), what.c_str(), command.c_str());
  }
  return ExitUsage;
}

bool ParseProgress(const std::string& text, ProgressMode& mode) {
  if (text == "bar") mode = ProgressMode::Bar;
  else if (text == "json") mode = ProgressMode::Json;
  else if (text == "none") mode = ProgressMode::None;
  else return false;
  return true;
}

bool ParseLevel(const std::string& text, int& level) {
  static const char* const kNames[] = {"none", "error", "warning", "info", "verbose", "debug"};
  for (int i = 0; i < 6; ++i) {
    if (text == kNames[i] || text == std::to_string(i)) {
      level = i;
      return true;
    }
  }
  if (text == "information") {
    level = Console::Information;
    return true;
  }
  return false;
}

// What a parsed command line runs: each subcommand's check of what CLI11
// cannot check, and then its work. Answers the exit status.
using Runner = std::function<int()>;

struct ProgressChoice {
  std::string progress;  // the text of --progress, empty when not given
  bool quiet = false;
  double stallSeconds = 10.0;
};

// The progress option shared by run and convert: -q wins over --progress.
int ResolveProgress(const char* command, const ProgressChoice& parsed, ProgressMode& mode) {
  mode = isatty(STDERR_FILENO) ? ProgressMode::Bar : ProgressMode::None;
  if (!parsed.progress.empty() && !ParseProgress(parsed.progress, mode))
    return UsageError(command, "unknown progress mode '" + parsed.progress + "' (bar, json or none)");
  if (parsed.quiet) mode = ProgressMode::None;
  return ExitSuccess;
}

void AddProgressOptions(CLI::App* sub, ProgressChoice& parsed) {
  sub->add_option("--progress", parsed.progress,
                  "bar (redrawn in place; the default on a terminal), json\n"
                  "(one line a second: progress, time, duration, heartbeat)\n"
                  "or none (the default otherwise); on standard error")
      ->type_name("MODE");
  sub->add_flag("-q", parsed.quiet, "show no progress");
  sub->add_option("--stall-warning", parsed.stallSeconds,
                  "warn once when a reader or filter has delivered nothing\n"
                  "for SECONDS (default 10; 0 turns the warning off)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber);
}

// Takes every -D definition into input; false after printing why one is bad.
bool AddVariables(const char* command, const std::vector<std::string>& definitions, ScriptInput& input) {
  for (const std::string& definition : definitions)
    if (!AddVariable(command, definition.c_str(), input)) return false;
  return true;
}

CLI::Option* AddDefines(CLI::App* sub, std::vector<std::string>& definitions, const char* help) {
  // One value per -D, so that "-D a=1 script.wfl" leaves the script alone.
  return sub->add_option("-D", definitions, help)->type_name("NAME=VALUE")->allow_extra_args(false);
}

// A subcommand whose help lists its own help flag among its options.
CLI::App* AddCommand(CLI::App& app, const char* name) {
  CLI::App* sub = app.add_subcommand(name);
  sub->get_help_ptr()->group("options")->description("show this help and exit");
  return sub;
}

Runner AddInfo(CLI::App& app) {
  auto options = std::make_shared<InfoOptions>();
  CLI::App* sub = AddCommand(app, "info");
  sub->add_flag("--json", options->json, "print the identification as one JSON object");
  return [options] { return RunInfo(*options); };
}

Runner AddFormats(CLI::App& app) {
  auto options = std::make_shared<FormatsOptions>();
  CLI::App* sub = AddCommand(app, "formats");
  sub->add_flag("--json", options->json, "print a JSON array");
  sub->add_option("KIND", options->kind, "video, audio or subtitle: list only that kind")->type_name("");
  return [options] {
    const std::string& kind = options->kind;
    if (!kind.empty() && kind != "video" && kind != "audio" && kind != "subtitle")
      return UsageError("formats", "unknown kind '" + kind + "' (video, audio or subtitle)");
    return RunFormats(*options);
  };
}

Runner AddCatalog(CLI::App& app) {
  auto options = std::make_shared<CatalogOptions>();
  CLI::App* sub = AddCommand(app, "catalog");
  sub->add_flag("--json", options->json, "print a JSON array");
  return [options] { return RunCatalog(*options); };
}

Runner AddRun(CLI::App& app) {
  struct State {
    RunOptions options;
    std::string file, level;
    std::vector<std::string> texts;  // more than one -e is a usage error
    std::vector<std::string> definitions;
    ProgressChoice progress;
  };
  auto state = std::make_shared<State>();
  CLI::App* sub = AddCommand(app, "run");
  sub->add_option("SCRIPT", state->file, "the script file; '-' reads standard input")->type_name("");
  sub->add_option("-e", state->texts, "evaluate TEXT instead of a script file")->type_name("TEXT")->allow_extra_args(false);
  AddDefines(sub, state->definitions,
             "declare a host variable; VALUE is inserted as WFL source:\n"
             "-D width=1920 is a number, -D \"name='clip'\" a string");
  sub->add_option("-v", state->level,
                  "log level: none, error, warning (default), info, verbose,\n"
                  "debug, or 0 to 5; log lines go to standard error")
      ->type_name("LEVEL");
  AddProgressOptions(sub, state->progress);
  return [state, sub] {
    RunOptions& options = state->options;
    const size_t files = sub->count("SCRIPT"), texts = state->texts.size();
    if (files + texts > 1) return UsageError("run", "give one script: a file or -e TEXT");
    const bool haveText = texts == 1;
    if (files + texts == 0) return UsageError("run", "no script given");
    options.script = haveText ? state->texts.front() : state->file;
    options.inlineText = haveText;
    options.haveScript = true;
    if (!AddVariables("run", state->definitions, options)) return int(ExitUsage);
    if (!state->level.empty() && !ParseLevel(state->level, options.level))
      return UsageError("run", "unknown log level '" + state->level +
                                   "' (none, error, warning, info, verbose, debug or 0-5)");
    if (int status = ResolveProgress("run", state->progress, options.progress); status != ExitSuccess) return status;
    options.stallSeconds = state->progress.stallSeconds;
    return RunRun(options);
  };
}

Runner AddConvert(CLI::App& app) {
  struct State {
    ConvertOptions options;
    std::vector<std::string> files, properties;
    ProgressChoice progress;
  };
  auto state = std::make_shared<State>();
  CLI::App* sub = AddCommand(app, "convert");
  sub->add_option("FILES", state->files, "INPUT, the media file to read, then OUTPUT, the file to write")
      ->type_name("");
  sub->add_option("--video-format", state->options.videoFormat,
                  "convert every video track to CODE (a format code such\n"
                  "as UYVY) through a video format converter")
      ->type_name("CODE");
  sub->add_option("--audio-format", state->options.audioFormat,
                  "convert every audio track to CODE through an audio\nformat converter (two where its table has no single\nstep from the track's format)")
      ->type_name("CODE");
  sub->add_option("--set", state->properties,
                  "set a writer property; VALUE is WFL source (numbers as\n"
                  "they are, strings quoted: --set \"Template='x'\")")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  sub->add_flag("--print-script", state->options.printScript, "print the job's script on standard output first");
  AddProgressOptions(sub, state->progress);
  return [state, sub] {
    ConvertOptions& options = state->options;
    for (const char* name : {"--video-format", "--audio-format"}) {
      const std::string& code = name[2] == 'v' ? options.videoFormat : options.audioFormat;
      if (sub->count(name) && (code.empty() || code.size() > 4))
        return UsageError("convert", std::string(name) + " needs a format code of one to four characters");
    }
    for (const std::string& definition : state->properties) {
      const size_t equals = definition.find('=');
      if (equals == std::string::npos || equals == 0)
        return UsageError("convert", "--set expects NAME=VALUE, not '" + definition + "'");
      options.properties.emplace_back(definition.substr(0, equals), definition.substr(equals + 1));
    }
    if (state->files.size() != 2) return UsageError("convert", "give INPUT and OUTPUT");
    options.input = state->files[0];
    options.output = state->files[1];
    if (int status = ResolveProgress("convert", state->progress, options.progress); status != ExitSuccess)
      return status;
    options.stallSeconds = state->progress.stallSeconds;
    return RunConvert(options);
  };
}

Runner AddProbe(CLI::App& app) {
  struct State {
    ProbeOptions options;
    std::string type;
  };
  auto state = std::make_shared<State>();
  CLI::App* sub = AddCommand(app, "probe");
  sub->add_option("FILE", state->options.path, "the media file")->type_name("");
  sub->add_flag("--json", state->options.json, "print one JSON object");
  sub->add_flag("--samples", state->options.samples, "describe every sample of every track too");
  sub->add_option("--type", state->type, "open the file with the reader of this code (as 'y4m')")->type_name("CODE");
  return [state, sub] {
    if (sub->count("--type") && !ParseCode(state->type, state->options.type))
      return UsageError("probe", "--type needs a code of one to four characters");
    if (state->options.path.empty()) return UsageError("probe", "no file");
    return RunProbe(state->options);
  };
}

Runner AddGraph(CLI::App& app) {
  struct State {
    GraphOptions options;
    std::vector<std::string> definitions;
  };
  auto state = std::make_shared<State>();
  CLI::App* sub = AddCommand(app, "graph");
  sub->add_option("SCRIPT", state->options.script, "the script file; '-' reads standard input")->type_name("");
  AddDefines(sub, state->definitions, "declare a host variable (as for 'mox run')");
  sub->add_option("-o", state->options.output,
                  "write to FILE instead of standard output; a name ending in\n"
                  ".svg or .png is rendered as a picture, any other gets dot text")
      ->type_name("FILE");
  return [state, sub] {
    GraphOptions& options = state->options;
    if (!sub->count("SCRIPT")) return UsageError("graph", "no script given");
    options.haveScript = true;
    if (!AddVariables("graph", state->definitions, options)) return int(ExitUsage);
    return RunGraph(options);
  };
}

Runner AddInspect(CLI::App& app) {
  auto options = std::make_shared<InspectOptions>();
  CLI::App* sub = AddCommand(app, "inspect");
  sub->add_option("CODE", options->code, "the component's code, as 'vfc' or 'vfc '")->type_name("");
  sub->add_option("--family", options->family,
                  "only this family, by category (\"Video Converters\") or class\n(\"VideoConverter\")")
      ->type_name("FAMILY");
  sub->add_flag("--json", options->json, "print a JSON array");
  return [options, sub] {
    if (!sub->count("CODE")) return UsageError("inspect", "no component code given");
    return RunInspect(*options);
  };
}

// The one-line message for what CLI11 rejected. Arguments it could not place
// are named as unknown options or unexpected arguments.
std::string Describe(const CLI::ParseError& error, const CLI::App& app, const CLI::App* command) {
  if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
    const std::vector<std::string> left = (command ? command : &app)->remaining();
    if (!left.empty()) {
      const std::string& first = left.front();
      if (first.size() > 1 && first[0] == '-') return "unknown option '" + first + "'";
      return "unexpected argument '" + first + "'";
    }
  }
  std::string text = error.what();
  // "-e: 1 required TEXT missing" is an option given without its value.
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) && text.find(" required ") != std::string::npos &&
      text.find(" missing") != std::string::npos) {
    return "option " + text.substr(0, text.find(':')) + " needs a value";
  }
  for (char& c : text)
    if (c == '\n') c = ' ';
  return text;
}

// The subcommand the command line named, or null.
CLI::App* ChosenCommand(const CLI::App& app) {
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  return chosen.empty() ? nullptr : chosen.front();
}

}  // namespace

int RunCommandLine(int argc, char** argv) {
  if (argc < 2) {
    PrintUsage(stderr);
    return ExitUsage;
  }
  const std::string first = argv[1];
  if (first == "help") {
    PrintUsage(stdout);
    return ExitSuccess;
  }
  // An unknown command is named as such, not as an argument CLI11 cannot place.
  if (first[0] != '-' && !FindCommand(first)) return UsageError("", "unknown command '" + first + "'");

  CLI::App app("mox runs media workflows with libMox.", "mox");
  app.require_subcommand(0, 1);
  app.formatter(std::make_shared<HelpFormatter>());
  // Subcommands take these defaults: a single-valued option given twice keeps
  // its last value, as it always has.
  app.option_defaults()->group("options")->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  bool version = false;
  app.add_flag("-V,--version", version, "show the library's version and build and exit");
  const std::vector<std::pair<std::string, Runner>> runners = {
      {"info", AddInfo(app)},         {"formats", AddFormats(app)}, {"run", AddRun(app)},
      {"convert", AddConvert(app)},   {"probe", AddProbe(app)},     {"catalog", AddCatalog(app)},
      {"graph", AddGraph(app)},       {"inspect", AddInspect(app)},
  };
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    if (ChosenCommand(app)) {
      std::fputs(app.help().c_str(), stdout);  // the chosen command's help
      return ExitSuccess;
    }
    PrintUsage(stdout);
    return ExitSuccess;
  } catch (const CLI::ParseError& error) {
    const CLI::App* command = ChosenCommand(app);
    return UsageError(command ? command->get_name() : "", Describe(error, app, command));
  }
  if (version) {
    PrintVersion();
    return ExitSuccess;
  }
  const CLI::App* command = ChosenCommand(app);
  if (!command) {
    PrintUsage(stderr);
    return ExitUsage;
  }
  for (const auto& [name, runner] : runners)
    if (name == command->get_name()) return runner();
  return UsageError("", "unknown command '" + command->get_name() + "'");
}

}  // namespace MoxTool
