#pragma once
// CScriptRunner: lexes, parses and evaluates one WFL script within the
// scopes that are current on the symbol table. This is the one entry point
// shared by the parser driver and the tests.
//
// Lexical and recoverable syntax errors are reported (and logged) and the
// repaired script still runs; an error that leaves no complete tree raises
// ResultInvalidAST, and evaluation errors propagate as they are raised.

#include <string>
#include <vector>

#include "wfl/wfl/wflDiagnostics.h"

namespace Corvane::Mox::WFL {

class CScriptRunner {
 public:
  // sourceName names the script in diagnostics (null: "-unknown source-").
  explicit CScriptRunner(const char* sourceName = nullptr);

  // Runs size bytes of script text.
  void Run(const char* text, int size);
  void Run(const char* text);
  // Runs the bytes of a file; raises ResultFileNotFound when it cannot be read.
  void RunFile(const char* path);

  // The reports of the last run, in order.
  const std::vector<wflDiagnostic>& GetDiagnostics() const { return diagnostics_.GetReports(); }
  int GetErrorCount() const { return diagnostics_.GetCount(); }

 private:
  std::string source_;
  wflDiagnostics diagnostics_;
};

}  // namespace Corvane::Mox::WFL
