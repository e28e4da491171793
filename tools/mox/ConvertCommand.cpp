// mox convert: a one-line job. It writes the WFL script a user would write
// for the conversion (a reader, its tracks joined to the writer, a converter
// for each requested format, the writer's properties) and runs it exactly as
// mox run does, so the script documents what happened.
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <Mox.h>

#include "AudioChainPlan.h"
#include "Commands.h"
#include "FourCharacterCode.h"
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

// An argument that names something mox cannot use: one line, and the
// listing that shows what it can.
int BadArgument(const std::string& what) {
  PrintError("convert: %s", what.c_str());
  return ExitUsage;
}

std::string PaddedCode(const std::string& text) {
  std::string padded = text;
  padded.resize(4, ' ');
  return padded;
}

// The code of a format option (checked for one to four characters already).
unsigned int CodeOf(const std::string& text) {
  unsigned int code = 0;
  ParseCode(text, code);
  return code;
}

// The tracks of one kind joined to the writer, through a converter when a
// format was asked for.
void AppendTracks(std::string& script, const char* kind, const char* keyword, const char* converterCode,
                  const std::string& format) {
  script += std::string("for (var t in reader.tracks.") + kind + ") {\n";
  if (format.empty()) {
    script += std::string("  reader.tracks.") + kind + "[t] -> writer;\n";
  } else {
    const std::string padded = PaddedCode(format);
    script += std::string("  var converter = new ") + keyword + "(" + Quote(converterCode) + ");\n";
    script += "  converter.OutputFormat = " + Quote(padded) + ";\n";
    script += std::string("  reader.tracks.") + kind + "[t] -> converter;\n";
    script += "  converter -> writer;\n";
  }
  script += "}\n";
}

// A format asked for on the command line must be a code of the kind's
// vocabulary that the kind's format converter produces. An alias ("2vuy")
// becomes the format it stands for, since converters list only formats
// themselves; the script then shows that code.
template <class Converter, class KindFilter>
int CheckRequestedFormat(const char* kind, unsigned int (*equivalent)(unsigned int), unsigned int converterCode,
                         std::string& format) {
  if (format.empty()) return ExitSuccess;
  const unsigned int named = equivalent(CodeOf(format));
  const char* article = kind[0] == 'a' ? "an " : "a ";
  if (!named)
    return BadArgument("'" + format + "' is not " + article + kind + " format (see 'mox formats " + kind + "')");
  RObject<Converter> converter(CFamilyInventory<Converter>::CreateAvailable(converterCode));
  auto* filter = dynamic_cast<KindFilter*>(converter.Get());
  RObject<CFormatList> outputs(filter ? filter->GetTableOutputFormats() : nullptr);
  bool produced = false;
  if (outputs)
    for (CValue<unsigned int>* output : *outputs) produced = produced || output->GetValue() == named;
  if (!produced)
    return BadArgument(std::string("the ") + kind + " format converter cannot produce '" +
                       TrimmedCodeText(named) + "' (see 'mox inspect " + TrimmedCodeText(converterCode) + "')");
  format = TrimmedCodeText(named);
  return ExitSuccess;
}

// The job's ends, checked before anything runs: OUTPUT's extension must name
// a container that some writer makes, and a local INPUT must be readable.
int CheckFiles(const ConvertOptions& options) {
  RObject<CString> output(CString::WithString(options.output.c_str()));
  if (!GetContainerWriterType(output)) {
    const size_t dot = options.output.rfind('.');
    const size_t slash = options.output.rfind('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
      return BadArgument("OUTPUT needs an extension that names its container, such as .y4m, .wav or .raw");
    return BadArgument("no container writer makes '" + options.output.substr(dot) + "' files (see 'mox catalog')");
  }
  if (options.input.find("://") == std::string::npos && access(options.input.c_str(), R_OK) != 0) {
    PrintError("convert: cannot read '%s': %s", options.input.c_str(), std::strerror(errno));
    return ExitFailure;
  }
  return ExitSuccess;
}

// Audio tracks whose format has no single step to the target, one by one:
// each through its converters in order ("reader.tracks.audio['0']" is the
// first audio track).
void AppendAudioChains(std::string& script, const std::vector<std::vector<unsigned int>>& chains) {
  for (size_t track = 0; track < chains.size(); ++track) {
    const std::string number = std::to_string(track);
    std::string from = "reader.tracks.audio['" + number + "']";
    for (size_t step = 0; step < chains[track].size(); ++step) {
      std::string name = "audio" + number + "_";
      for (char c : TrimmedCodeText(chains[track][step]))
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
      script += "var " + name + " = new AudioConverter('afc ');\n";
      script += name + ".OutputFormat = " + Quote(CodeText(chains[track][step])) + ";\n";
      script += from + " -> " + name + ";\n";
      from = name;
    }
    script += from + " -> writer;\n";
  }
}

bool NeedsSteps(const std::vector<std::vector<unsigned int>>& chains) {
  for (const std::vector<unsigned int>& chain : chains)
    if (chain.size() > 1) return true;
  return false;
}

std::string MakeScript(const ConvertOptions& options, const AudioPlan& audio) {
  std::string script = "// mox convert " + options.input + " " + options.output + "\n";
  script += "var reader = new ContainerReader(" + Quote(options.input) + ");\n";
  script += "var writer = new ContainerWriter(" + Quote(options.output) + ");\n";
  for (const auto& [name, value] : options.properties) script += "writer." + name + " = " + value + ";\n";
  AppendTracks(script, "video", "VideoConverter", "vfc ", options.videoFormat);
  if (audio.chosen)
    script += "// The writer does not take the audio as it is: it gets 16-bit PCM ('" + options.audioFormat + "').\n";
  if (NeedsSteps(audio.chains)) {
    script += "// The audio format converter has no single step from every track's format to '" +
              options.audioFormat + "'.\n";
    AppendAudioChains(script, audio.chains);
  } else {
    AppendTracks(script, "audio", "AudioConverter", "afc ", options.audioFormat);
  }
  return script;
}

}  // namespace

int RunConvert(ConvertOptions options) {
  if (int status = CheckRequestedFormat<CVideoConverter, CVideoFilter>("video", &VideoFormat::GetEquivalentFormat,
                                                                       FourCC("vfc "), options.videoFormat))
    return status;
  if (int status = CheckRequestedFormat<CAudioConverter, CAudioFilter>("audio", &AudioFormat::GetEquivalentFormat,
                                                                       FourCC("afc "), options.audioFormat))
    return status;
  if (int status = CheckFiles(options)) return status;
  ScriptInput input;
  RObject<CString> output(CString::WithString(options.output.c_str()));
  const AudioPlan audio = PlanAudio(options.input, CodeOf(options.audioFormat), GetContainerWriterType(output));
  if (audio.chosen) options.audioFormat = TrimmedCodeText(audio.format);
  input.script = MakeScript(options, audio);
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
