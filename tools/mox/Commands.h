#pragma once
// The sub-commands of the mox host. The command line (CommandLine.cpp) parses
// the arguments into each command's options; the functions here do the work
// and return the process exit status: 0 success, 1 a failure of the work
// itself, 2 bad usage of mox, 3 a script stopped itself with die.

#include <string>
#include <utility>
#include <vector>

#include "ScriptInput.h"
#include "WorkflowRunner.h"

namespace MoxTool {

enum ExitStatus { ExitSuccess = 0, ExitFailure = 1, ExitUsage = 2, ExitScriptDied = 3 };

// Prints "mox: message" on stderr as one line.
void PrintError(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Parses the whole command line and runs the command it names.
int RunCommandLine(int argc, char** argv);

struct InfoOptions {
  bool json = false;
};

struct FormatsOptions {
  bool json = false;
  std::string kind;  // video, audio, subtitle, or empty for all
};

struct CatalogOptions {
  bool json = false;
};

struct RunOptions : ScriptInput {
  int level = 2;  // Console::Warning
  ProgressMode progress = ProgressMode::None;
  double stallSeconds = 10.0;  // 0: no stall warning
};

struct ConvertOptions {
  std::string input, output, videoFormat, audioFormat;
  std::vector<std::pair<std::string, std::string>> properties;
  bool printScript = false;
  ProgressMode progress = ProgressMode::None;
  double stallSeconds = 10.0;  // 0: no stall warning
};

struct ProbeOptions {
  std::string path;
  bool json = false;
  bool samples = false;
  unsigned int type = 0;  // a reader's code, or 0 for the one that recognises the file
};

struct GraphOptions : ScriptInput {
  std::string output;
};

struct InspectOptions {
  std::string code;
  std::string family;  // empty for every family
  bool json = false;
};

int RunInfo(const InfoOptions& options);
int RunFormats(const FormatsOptions& options);
int RunCatalog(const CatalogOptions& options);
int RunRun(const RunOptions& options);
int RunProbe(const ProbeOptions& options);
int RunConvert(ConvertOptions options);
int RunGraph(const GraphOptions& options);
int RunInspect(const InspectOptions& options);

}  // namespace MoxTool
