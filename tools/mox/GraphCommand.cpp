// mox graph: evaluates a script, builds its topology without running it
// (converters inserted), and writes the graph document: dot text, or through
// Graphviz's library an SVG or PNG picture.
#include <graphviz/gvc.h>

#include <strings.h>

#include <cstdio>
#include <cstring>
#include <string>

#include <Mox.h>

#include "Commands.h"
#include "ScriptInput.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

const char kGraphUsage[] =
    "usage: mox graph SCRIPT [-D NAME=VALUE]... [-o FILE]\n"
    "\n"
    "Evaluates a WFL script (SCRIPT '-' reads standard input), builds its topology\n"
    "with the converters it needs, without running it, and writes the graph.\n"
    "\n"
    "options:\n"
    "  -D NAME=VALUE    declare a host variable (as for 'mox run')\n"
    "  -o FILE          write to FILE instead of standard output; a name ending in\n"
    "                   .svg or .png is rendered as a picture, any other gets dot text\n"
    "  -h, --help       show this help\n";

struct GraphOptions : ScriptInput {
  std::string output;
};

int ParseArguments(int argc, char** argv, GraphOptions& options, bool& help) {
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    const bool option = arg[0] == '-' && arg[1];
    if (option && (!std::strcmp(arg, "-h") || !std::strcmp(arg, "--help"))) {
      help = true;
      return ExitSuccess;
    }
    if (option && (!std::strcmp(arg, "-D") || !std::strcmp(arg, "-o"))) {
      if (i + 1 >= argc) {
        PrintError("graph: option %s needs a value (see 'mox graph --help')", arg);
        return ExitUsage;
      }
      const char* value = argv[++i];
      if (arg[1] == 'o') {
        options.output = value;
      } else if (!AddVariable("graph", value, options)) {
        return ExitUsage;
      }
    } else if (option) {
      PrintError("graph: unknown option '%s' (see 'mox graph --help')", arg);
      return ExitUsage;
    } else if (options.haveScript) {
      PrintError("graph: unexpected argument '%s': give one script", arg);
      return ExitUsage;
    } else {
      options.script = arg;
      options.haveScript = true;
    }
  }
  if (!options.haveScript) {
    PrintError("graph: no script given (see 'mox graph --help')");
    return ExitUsage;
  }
  return ExitSuccess;
}

// The picture format a file name asks for ("svg", "png"), or null for dot.
const char* PictureFormat(const std::string& path) {
  for (const char* format : {"svg", "png"}) {
    const std::string suffix = std::string(".") + format;
    if (path.size() > suffix.size() && !strcasecmp(path.c_str() + path.size() - suffix.size(), suffix.c_str()))
      return format;
  }
  return nullptr;
}

std::string DotOf(WFL::CTopology* topology) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  topology->PrintGraphViz(stream).ThrowIfFailed();
  return std::string(reinterpret_cast<const char*>(stream->GetData()), static_cast<size_t>(stream->GetLength()));
}

bool WriteFile(const std::string& path, const char* data, size_t length) {
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return false;
  const bool written = std::fwrite(data, 1, length, file) == length;
  return std::fclose(file) == 0 && written;
}

int Render(const std::string& dot, const char* format, const std::string& path) {
  GVC_t* context = gvContext();
  Agraph_t* graph = agmemread(dot.c_str());
  int status = ExitSuccess;
  if (!graph) {
    PrintError("graph: Graphviz could not read the graph");
    status = ExitFailure;
  } else if (gvLayout(context, graph, "dot") != 0) {
    PrintError("graph: Graphviz could not lay out the graph");
    status = ExitFailure;
  } else {
    char* picture = nullptr;
    unsigned int length = 0;
    if (gvRenderData(context, graph, format, &picture, &length) != 0 || !WriteFile(path, picture, length)) {
      PrintError("graph: cannot write '%s'", path.c_str());
      status = ExitFailure;
    }
    if (picture) gvFreeRenderData(picture);
    gvFreeLayout(context, graph);
  }
  if (graph) agclose(graph);
  gvFreeContext(context);
  return status;
}

int Write(const GraphOptions& options, WFL::CTopology* topology) {
  const std::string dot = DotOf(topology);
  if (options.output.empty()) {
    std::fwrite(dot.data(), 1, dot.size(), stdout);
    return ExitSuccess;
  }
  if (const char* format = PictureFormat(options.output)) return Render(dot, format, options.output);
  if (!WriteFile(options.output, dot.data(), dot.size())) {
    PrintError("graph: cannot write '%s'", options.output.c_str());
    return ExitFailure;
  }
  return ExitSuccess;
}

}  // namespace

int RunGraph(int argc, char** argv) {
  GraphOptions options;
  bool help = false;
  const int usage = ParseArguments(argc, argv, options, help);
  if (usage != ExitSuccess) return usage;
  if (help) {
    std::fputs(kGraphUsage, stdout);
    return ExitSuccess;
  }
  return WithScript(options, Console::Warning, [&](WFL::CTopology* topology) { return Write(options, topology); });
}

}  // namespace MoxTool

// Graphviz's library keeps an allocation of its own to the end of the
// process; builds with the leak sanitizer are told it is not ours.
extern "C" const char* __lsan_default_suppressions() { return "leak:libgvc.so\nleak:libcgraph.so\n"; }
