#pragma once
// Runs a script's topology as a workflow to its end, showing progress on
// standard error. Ctrl-C stops the workflow and ends it, so that writers
// finish their files.

#include "ProgressReporter.h"

namespace Corvane::Mox::WFL {
class CTopology;
}

namespace MoxTool {

// The exit status when Ctrl-C stopped the work (128 + SIGINT).
constexpr int ExitInterrupted = 130;

// ExitSuccess when every output reached its end (or there is nothing to
// run), ExitInterrupted after Ctrl-C; a failure of the work is raised as
// its Result.
// A node that delivers nothing for stallSeconds is named once (0: never).
int RunWorkflow(Corvane::Mox::WFL::CTopology* topology, ProgressMode mode, double stallSeconds = 10.0);

}  // namespace MoxTool
