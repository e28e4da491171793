#pragma once
// What the script commands (run, graph) share: the script source and host
// variables given on the command line, and parsing it into a topology.

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Corvane::Mox::WFL {
class CTopology;
}

namespace MoxTool {

struct ScriptInput {
  std::string script;  // a path, "-", or the inline text
  bool inlineText = false;
  bool haveScript = false;
  std::vector<std::pair<std::string, std::string>> variables;
};

// Takes "-D NAME=VALUE" into the input (value is the argument after -D);
// prints why and answers false for a malformed definition.
bool AddVariable(const char* command, const char* definition, ScriptInput& input);

// Parses and evaluates the script, builds its topology and hands it to use,
// logging at level to standard error. Failures of the script (die, parser
// errors, results) and syntax errors that recovery repaired are reported on
// standard error and give their exit status; otherwise use's status.
int WithScript(const ScriptInput& input, int level, const std::function<int(Corvane::Mox::WFL::CTopology*)>& use);

}  // namespace MoxTool
