#include "wfl/ScriptRunner.h"

#include <cstring>
#include <fstream>
#include <iterator>

#include "System/Result.h"
#include "wfl/AstStatements.h"
#include "wfl/wfl/wflLexer.h"
#include "wfl/wfl/wflParser.h"

namespace Corvane::Mox::WFL {

CScriptRunner::CScriptRunner(const char* sourceName)
    : source_(sourceName ? sourceName : ""), diagnostics_(sourceName) {}

void CScriptRunner::Run(const char* text) { Run(text, text ? static_cast<int>(std::strlen(text)) : 0); }

void CScriptRunner::Run(const char* text, int size) {
  diagnostics_ = wflDiagnostics(source_.empty() ? nullptr : source_.c_str());
  wflLexer lexer(text, size, &diagnostics_);
  wflParser parser(&lexer, &diagnostics_);
  RObject<CProgram> program(parser.program());
  if (program) program->Evaluate();
}

void CScriptRunner::RunFile(const char* path) {
  std::ifstream file(path ? path : "", std::ios::binary);
  if (!file) throw ResultFileNotFound("%s", path ? path : "(null)");
  std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (source_.empty() && path) source_ = path;
  Run(bytes.data(), static_cast<int>(bytes.size()));
}

}  // namespace Corvane::Mox::WFL
