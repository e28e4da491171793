// mox convert: a one-line job. It writes the WFL script a user would write
// for the conversion (a reader, its tracks joined to the writer, a converter
// for each requested format, the writer's properties) and runs it exactly as
// mox run does, so the script documents what happened.
#include <cstdio>
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

// A WFL string literal for text.
std::string Quote(const std::string& text) {
  std::string literal = "'";
  for (char c : text) {
    if (c == '\'' || c == '\\') literal += '\\';
    literal += c;
  }
  return literal + "'";
}

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

}  // namespace

int RunConvert(const ConvertOptions& options) {
  ScriptInput input;
  input.script = MakeScript(options);
  input.inlineText = input.haveScript = true;
  if (options.printScript) {
    std::fputs(input.script.c_str(), stdout);
    std::fflush(stdout);
  }
  const ProgressMode progress = options.progress;
  const double stallSeconds = options.stallSeconds;
  return WithScript(input, Console::Warning,
                    [progress, stallSeconds](WFL::CTopology* topology) { return RunWorkflow(topology, progress, stallSeconds); });
}

}  // namespace MoxTool
