#include "ScriptInput.h"

#include <cctype>
#include <cstdio>
#include <cstring>

#include <Mox.h>

#include "Commands.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

bool IsVariableName(const std::string& name) {
  if (name.empty() || !(std::isalpha(static_cast<unsigned char>(name[0])) || name[0] == '_' || name[0] == '$'))
    return false;
  for (char c : name) {
    if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$')) return false;
  }
  return true;
}

bool ReadStandardInput(std::string& text) {
  char buffer[65536];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) text.append(buffer, n);
  return !std::ferror(stdin);
}

CDictionary<CString, CVariant>* MakeVariables(const ScriptInput& input) {
  RObject<CDictionary<CString, CVariant>> variables(new CDictionary<CString, CVariant>());
  for (const auto& [name, text] : input.variables) {
    RObject<CString> key(CString::WithString(name.c_str()));
    RObject<CVariant> value(new CVariant(text.c_str()));
    // A later -D of the same name replaces the earlier one.
    variables->SetItem(key, value).ThrowIfFailed();
  }
  return variables.Detach();
}

void LogToStandardError(Console::LogLevel, CString* text) {
  if (!text) return;
  std::fputs(text->GetChars(), stderr);
  std::fflush(stderr);
}

// A one-line message for a failure that is not a script error.
void PrintResult(const Result& result) {
  const char* details = result.GetDetails();
  if (details && *details) {
    std::fprintf(stderr, "%s: %s\n", result.GetErrorMessage(), details);
  } else {
    std::fprintf(stderr, "%s\n", result.GetErrorMessage());
  }
}

WFL::CTopology* ParseScript(const ScriptInput& input, int& repaired);

}  // namespace

bool AddVariable(const char* command, const char* definition, ScriptInput& input) {
  const char* equals = std::strchr(definition, '=');
  std::string name = equals ? std::string(definition, equals) : std::string(definition);
  if (!equals || !IsVariableName(name)) {
    PrintError("%s: -D expects NAME=VALUE with a WFL name, not '%s'", command, definition);
    return false;
  }
  input.variables.emplace_back(name, equals + 1);
  return true;
}

namespace {

WFL::CTopology* ParseScript(const ScriptInput& input, int& repaired) {
  // Converters can only be inserted once the inventory is filled.
  static const bool populated = [] {
    PopulateInventories();
    return true;
  }();
  (void)populated;
  RObject<WFL::CParser> parser(new WFL::CParser());
  RObject<CDictionary<CString, CVariant>> variables(MakeVariables(input));
  RObject<WFL::CTopology> topology;
  if (input.inlineText || input.script == "-") {
    std::string text = input.script;
    if (!input.inlineText) {
      text.clear();
      if (!ReadStandardInput(text)) throw ResultIOError("cannot read the script from standard input");
    }
    RObject<CString> source(CString::WithString(text.c_str()));
    topology = parser->ParseString(source, variables);
  } else {
    RObject<CString> path(CString::WithString(input.script.c_str()));
    topology = parser->ParseFile(path, variables);
  }
  repaired = parser->GetDiagnosticCount();
  return topology.Detach();
}

int Use(const ScriptInput& input, const std::function<int(WFL::CTopology*)>& use) {
  int repaired = 0;
  RObject<WFL::CTopology> topology(ParseScript(input, repaired));
  // Recovery let the script run, but what was written is not what ran.
  if (repaired > 0) {
    std::fprintf(stderr, "%s: %d syntax error%s (repaired and run; see above)\n",
                 input.inlineText ? "script" : input.script.c_str(), repaired, repaired == 1 ? "" : "s");
    return ExitFailure;
  }
  return use(topology);
}

}  // namespace

int WithScript(const ScriptInput& input, int level, const std::function<int(WFL::CTopology*)>& use) {
  Console::SetLogCallback(&LogToStandardError);
  Console::SetLogLevel(static_cast<Console::LogLevel>(level));
  try {
    return Use(input, use);
  } catch (const WFL::ResultExit& exit) {
    const char* message = exit.GetDetails();
    std::fprintf(stderr, "%s\n", message && *message ? message : exit.GetErrorMessage());
    return ExitScriptDied;
  } catch (const WFL::ResultParserError& error) {
    RObject<CString> text(error.FormatErrorMessage());
    std::fprintf(stderr, "%s\n", text ? text->GetChars() : error.GetErrorMessage());
    return ExitFailure;
  } catch (const Result& result) {
    PrintResult(result);
    return ExitFailure;
  }
}

}  // namespace MoxTool
