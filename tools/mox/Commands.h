#pragma once
// The sub-commands of the mox host. Each returns the process exit status:
// 0 success, 1 a failure of the work itself, 2 bad usage of mox, 3 a script
// stopped itself with die.

namespace MoxTool {

enum ExitStatus { ExitSuccess = 0, ExitFailure = 1, ExitUsage = 2, ExitScriptDied = 3 };

struct Command {
  const char* name;
  const char* synopsis;
  const char* summary;
  int (*run)(int argc, char** argv);  // argv[0] is the command name
};

// The command table, terminated by an entry with a null name.
const Command* GetCommands();

// Prints "mox: message" on stderr as one line.
void PrintError(const char* format, ...) __attribute__((format(printf, 1, 2)));

int RunInfo(int argc, char** argv);
int RunFormats(int argc, char** argv);
int RunCatalog(int argc, char** argv);
int RunRun(int argc, char** argv);
int RunProbe(int argc, char** argv);
int RunConvert(int argc, char** argv);
int RunGraph(int argc, char** argv);
int RunInspect(int argc, char** argv);

}  // namespace MoxTool
