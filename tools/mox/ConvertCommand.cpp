// mox convert: a one-line job. It writes the WFL script a user would write
// for the conversion (a reader, its tracks joined to the writer, a converter
// for each requested format, the writer's properties) and runs it exactly as
// mox run does, so the script documents what happened.
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <Mox.h>

#include "Commands.h"
#include "ScriptInput.h"
#include "WorkflowRunner.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

const char kConvertUsage[] =
    "usage: mox convert INPUT OUTPUT [--video-format CODE] [--audio-format CODE]\n"
    "                   [--set NAME=VALUE]... [--print-script] [-q | --progress=MODE]\n"
    "\n"
    "Converts a media file: the reader is chosen by INPUT's content, the writer by\n"
    "OUTPUT's extension. The job is a WFL script (shown by --print-script) run as\n"
    "'mox run' runs scripts.\n"
    "\n"
    "options:\n"
    "  --video-format CODE  convert every video track to CODE (a format code such\n"
    "                       as UYVY) through a video format converter\n"
    "  --audio-format CODE  convert every audio track to CODE through an audio\n"
    "                       format converter\n"
    "  --set NAME=VALUE     set a writer property; VALUE is WFL source (numbers as\n"
    "                       they are, strings quoted: --set \"Template='x'\")\n"
    "  --print-script       print the job's script on standard output first\n"
    "  --progress=MODE      bar (the default on a terminal), json or none\n"
    "  -q                   show no progress\n"
    "  -h, --help           show this help\n"
    "\n"
    "exit status: 0 success, 1 the job failed, 2 bad usage, 130 stopped by Ctrl-C\n";

struct ConvertOptions {
  std::string input, output, videoFormat, audioFormat;
  std::vector<std::pair<std::string, std::string>> properties;
  bool printScript = false;
  ProgressMode progress = isatty(STDERR_FILENO) ? ProgressMode::Bar : ProgressMode::None;
};

// A WFL string literal for text.
std::string Quote(const std::string& text) {
  std::string literal = "'";
  for (char c : text) {
    if (c == '\'' || c == '\\') literal += '\\';
    literal += c;
  }
  return literal + "'";
}

bool IsFormatCode(const std::string& code) { return !code.empty() && code.size() <= 4; }

// The tracks of one kind joined to the writer, through a converter when a
// format was asked for.
void AppendTracks(std::string& script, const char* kind, const char* keyword, const char* converterCode,
                  const std::string& format) {
  script += std::string("for (var t in reader.tracks.") + kind + ") {\n";
  if (format.empty()) {
    script += std::string("  reader.tracks.") + kind + "[t] -> writer;\n";
  } else {
    std::string padded = format;
    padded.resize(4, ' ');
    script += std::string("  var converter = new ") + keyword + "(" + Quote(converterCode) + ");\n";
    script += "  converter.OutputFormat = " + Quote(padded) + ";\n";
    script += std::string("  reader.tracks.") + kind + "[t] -> converter;\n";
    script += "  converter -> writer;\n";
  }
  script += "}\n";
}

std::string MakeScript(const ConvertOptions& options) {
  std::string script = "// mox convert " + options.input + " " + options.output + "\n";
  script += "var reader = new ContainerReader(" + Quote(options.input) + ");\n";
  script += "var writer = new ContainerWriter(" + Quote(options.output) + ");\n";
  for (const auto& [name, value] : options.properties) script += "writer." + name + " = " + value + ";\n";
  AppendTracks(script, "video", "VideoConverter", "vfc ", options.videoFormat);
  AppendTracks(script, "audio", "AudioConverter", "afc ", options.audioFormat);
  return script;
}

int Usage(const char* format, const char* argument) {
  std::string message = std::string("convert: ") + format + " (see 'mox convert --help')";
  PrintError(message.c_str(), argument);
  return ExitUsage;
}

// Returns ExitSuccess, or the usage status after printing why.
int ParseArguments(int argc, char** argv, ConvertOptions& options, bool& help) {
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    auto value = [&]() -> const char* { return i + 1 < argc ? argv[++i] : nullptr; };
    if (arg == "-h" || arg == "--help") {
      help = true;
      return ExitSuccess;
    } else if (arg == "--video-format" || arg == "--audio-format") {
      const char* code = value();
      if (!code || !IsFormatCode(code)) return Usage("%s needs a format code of one to four characters", arg.c_str());
      (arg == "--video-format" ? options.videoFormat : options.audioFormat) = code;
    } else if (arg == "--set") {
      const char* definition = value();
      const char* equals = definition ? std::strchr(definition, '=') : nullptr;
      if (!equals || equals == definition) return Usage("--set expects NAME=VALUE, not '%s'", definition ? definition : "");
      options.properties.emplace_back(std::string(definition, equals), equals + 1);
    } else if (arg == "--print-script") {
      options.printScript = true;
    } else if (arg == "-q") {
      options.progress = ProgressMode::None;
    } else if (arg.rfind("--progress=", 0) == 0) {
      const std::string mode = arg.substr(11);
      if (mode == "bar") options.progress = ProgressMode::Bar;
      else if (mode == "json") options.progress = ProgressMode::Json;
      else if (mode == "none") options.progress = ProgressMode::None;
      else return Usage("unknown progress mode '%s' (bar, json or none)", mode.c_str());
    } else if (arg.size() > 1 && arg[0] == '-') {
      return Usage("unknown option '%s'", arg.c_str());
    } else {
      files.push_back(arg);
    }
  }
  if (files.size() != 2) return Usage("give INPUT and OUTPUT%s", "");
  options.input = files[0];
  options.output = files[1];
  return ExitSuccess;
}

}  // namespace

int RunConvert(int argc, char** argv) {
  ConvertOptions options;
  bool help = false;
  const int usage = ParseArguments(argc, argv, options, help);
  if (usage != ExitSuccess) return usage;
  if (help) {
    std::fputs(kConvertUsage, stdout);
    return ExitSuccess;
  }
  ScriptInput input;
  input.script = MakeScript(options);
  input.inlineText = input.haveScript = true;
  if (options.printScript) {
    std::fputs(input.script.c_str(), stdout);
    std::fflush(stdout);
  }
  const ProgressMode progress = options.progress;
  return WithScript(input, Console::Warning,
                    [progress](WFL::CTopology* topology) { return RunWorkflow(topology, progress); });
}

}  // namespace MoxTool
