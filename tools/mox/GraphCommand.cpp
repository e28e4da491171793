// mox graph: evaluates a script, builds its topology without running it
// (converters inserted), and writes the graph document: dot text, or through
// Graphviz's library an SVG or PNG picture.
#include <graphviz/gvc.h>

#include <strings.h>

#include <cstdio>
#include <string>

#include <Mox.h>

#include "Commands.h"
#include "ScriptInput.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

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

int RunGraph(const GraphOptions& options) {
  return WithScript(options, Console::Warning, [&](WFL::CTopology* topology) { return Write(options, topology); });
}

}  // namespace MoxTool

// Graphviz's library keeps an allocation of its own to the end of the
// process; builds with the leak sanitizer are told it is not ours.
extern "C" const char* __lsan_default_suppressions() { return "leak:libgvc.so\nleak:libcgraph.so\nleak:libfontconfig.so\nleak:libpango\nleak:libcairo.so\nleak:libgvplugin\n"; }
