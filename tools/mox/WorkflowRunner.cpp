#include "WorkflowRunner.h"

#include <csignal>

#include <Mox.h>

#include "Commands.h"
#include "wfl/Workflow.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace MoxTool {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int) { interrupted = 1; }

// Installs the Ctrl-C handler for its lifetime.
class InterruptScope {
 public:
  InterruptScope() {
    interrupted = 0;
    struct sigaction action {};
    action.sa_handler = &OnInterrupt;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &previous_);
  }
  ~InterruptScope() { sigaction(SIGINT, &previous_, nullptr); }
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;

 private:
  struct sigaction previous_ {};
};

// How often the progress is redrawn and Ctrl-C looked at.
constexpr int PollMilliseconds = 100;

}  // namespace

int RunWorkflow(CTopology* topology, ProgressMode mode, double stallSeconds) {
  RObject<CWorkflow> workflow(new CWorkflow(topology));
  if (workflow->GetNodeCount() == 0) return ExitSuccess;
  InterruptScope scope;
  ProgressReporter reporter(mode, stderr, stallSeconds);
  Result begun = workflow->Begin();
  bool stopped = false;
  if (begun.Succeeded()) {
    while (!workflow->WaitForCompletion(PollMilliseconds) && !workflow->IsAborted()) {
      if (interrupted && !stopped) {
        workflow->Stop();
        stopped = true;
      }
      reporter.Update(*workflow);
    }
    reporter.Finish(*workflow);
  }
  Result ended = workflow->End();
  Result result = begun.Failed() ? begun : workflow->GetResult();
  if (result.Succeeded()) result = ended;
  if (result.Failed()) throw result;
  return stopped ? ExitInterrupted : ExitSuccess;
}

}  // namespace MoxTool
