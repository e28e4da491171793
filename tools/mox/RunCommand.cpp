// mox run: parse and evaluate a WFL script from a file, standard input or the
// command line, with host variables. stdout carries only what the script
// prints; log lines and errors go to stderr.
#include <Mox.h>

#include "Commands.h"
#include "ScriptInput.h"
#include "WorkflowRunner.h"

using namespace Corvane::Mox;

namespace MoxTool {

int RunRun(const RunOptions& options) {
  const ProgressMode progress = options.progress;
  const double stallSeconds = options.stallSeconds;
  return WithScript(options, options.level,
                    [progress, stallSeconds](WFL::CTopology* topology) { return RunWorkflow(topology, progress, stallSeconds); });
}

}  // namespace MoxTool
