#pragma once
// CParser: the host's entry point to WFL. It parses and evaluates a script
// (text or file) with host variables, then turns the component graph the
// script built into a topology. Scripts share process-wide interpreter
// state, so a host parses one script at a time and releases the topology
// before parsing the next.

#include "System/Collections/Dictionary.h"
#include "System/Object.h"

namespace Corvane::Mox {
class CContainerReader;
class CContainerWriter;
class CIndexer;
class CSignalReader;
class CSignalWriter;
class CString;
class CVariant;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CSymbol;
class CSymbolDictionary;
class CTopology;

class CParser : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("wflp");
  using Variables = CDictionary<CString, CVariant>;
  using LogCallback = void (*)(CString*);

  CParser();
  ~CParser() override;

  // Parse, evaluate and build: a new topology (the caller releases it).
  // Errors are raised as WFL results or as the Result of a component call.
  // variables may be null.
  CTopology* ParseString(CString* text, Variables* variables);
  CTopology* ParseFile(CString* path, Variables* variables);

  // Declares each host variable whose value has text as "var NAME = TEXT;"
  // evaluated as WFL source: numbers stay numbers, and a string must be
  // passed as a WFL literal ("'clip'") to be a string.
  void PopulateSymbolTable(Variables* variables);
  // A new topology from the current component graph, connections replayed
  // so that every one comes after those feeding it.
  CTopology* BuildTopology() const;

  // The script's top-level variables (borrowed).
  CSymbolDictionary* GetSymbols() const { return symbols_; }
  // Lexical and syntax errors that recovery repaired during the last parse.
  int GetDiagnosticCount() const { return diagnosticCount_; }

  // The symbols that scripts see for readers and writers: their properties
  // as members, and for readers the member "tracks".
  static CSymbol* CreateSymbol(CIndexer* indexer);
  static CSymbol* CreateSymbol(CContainerReader* reader);
  static CSymbol* CreateSymbol(CContainerWriter* writer);
  static CSymbol* CreateSymbol(CSignalReader* reader);
  static CSymbol* CreateSymbol(CSignalWriter* writer);

  // The sink of print and println (default: standard output).
  static void SetLogCallback(LogCallback callback);
  static LogCallback GetLogCallback();

 private:
  // Runs text (or the file at path) and builds its topology; when either
  // fails, the interpreter state goes with the failure.
  CTopology* Parse(const char* text, const char* path, Variables* variables);
  // The run itself, with the host and script scopes pushed.
  CTopology* ParseInScopes(const char* text, const char* path, Variables* variables);

  CSymbolDictionary* symbols_;
  int diagnosticCount_;
};

}  // namespace Corvane::Mox::WFL
