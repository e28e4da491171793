#include "wfl/Parser.h"

#include <algorithm>
#include <vector>

#include "System/Console.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Signal/SignalReader.h"
#include "System/Media/Signal/SignalWriter.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "wfl/AstNode.h"
#include "wfl/AstStatements.h"
#include "wfl/ComponentValue.h"
#include "wfl/EdgeTable.h"
#include "wfl/ObjectValue.h"
#include "wfl/ParserTopology.h"
#include "wfl/ReaderTracks.h"
#include "wfl/ScriptRunner.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

using Edge = CGraphEdge<CComponentValue>;

// The order of a and b in a list of edges: -1 when a comes first, +1 when
// later, 0 when equal or either is missing.
int OrderIn(CList<Edge>* edges, Edge* a, Edge* b) {
  const int ia = edges->IndexOf(a);
  const int ib = edges->IndexOf(b);
  if (ia < 0 || ib < 0 || ia == ib) return 0;
  return ia < ib ? -1 : 1;
}

// Feeding edges first; then each component's outputs, and inputs, in the
// order the script connected them.
int CompareEdges(CEdgeTable* table, CComponentGraph* graph, Edge* a, Edge* b) {
  if (table->IsUpstream(a, b)) return -1;
  if (table->IsUpstream(b, a)) return 1;
  if (a->GetSource() == b->GetSource()) return OrderIn(graph->GetOutputEdges(a->GetSource()), a, b);
  if (a->GetDestination() == b->GetDestination()) return OrderIn(graph->GetInputEdges(a->GetDestination()), a, b);
  return 0;
}

// Adjacent exchanges, each pass ending where the previous pass last
// exchanged. The comparison is only a partial order, so the exchange sort
// (not a general-purpose sort) defines the result.
void SortEdges(std::vector<Edge*>& edges, CEdgeTable* table, CComponentGraph* graph) {
  size_t end = edges.size();
  while (end > 1) {
    size_t lastExchange = 0;
    for (size_t i = 1; i < end; ++i) {
      if (CompareEdges(table, graph, edges[i - 1], edges[i]) > 0) {
        std::swap(edges[i - 1], edges[i]);
        lastExchange = i;
      }
    }
    end = lastExchange;
  }
}

// One member per property of the component, converted from its variant.
void AddPropertyMembers(CSymbolDictionary* members, const IProperties* properties) {
  if (!properties) return;
  for (int i = 0; i < properties->GetPropertyCount(); ++i) {
    RObject<CString> name(properties->GetPropertyName(i));
    RObject<CVariant> item(properties->GetProperty(name.Get()));
    RObject<CSymbol> member(new CSymbol(item.Get()));
    members->SetSymbol(name, member).ThrowIfFailed();
  }
}

// Readers (withTracks) also get "tracks"; a signal reader has no reader
// tracks to show, so its kinds stay empty.
CSymbol* ComponentSymbol(CComponentValue* value, const IProperties* properties, bool withTracks,
                         CContainerReader* reader = nullptr) {
  RObject<CSymbolDictionary> members(value->ToDictionary());
  AddPropertyMembers(members, properties);
  if (withTracks) AddReaderTracks(members, value, reader);
  return new CSymbol(value);
}

}  // namespace

CParser::CParser() : CObject(TypeCode), symbols_(new CSymbolDictionary()), diagnosticCount_(0) {}

CParser::~CParser() { symbols_->Release(); }

CTopology* CParser::ParseString(CString* text, Variables* variables) {
  if (!text) throw ResultArgumentNull();
  MOX_LOG(4, "Parsing string '%s'\n", text->GetChars());
  return Parse(text->GetChars(), nullptr, variables);
}

CTopology* CParser::ParseFile(CString* path, Variables* variables) {
  if (!path) throw ResultArgumentNull();
  MOX_LOG(4, "Parsing file '%s'\n", path->GetChars());
  return Parse(nullptr, path->GetChars(), variables);
}

CTopology* CParser::Parse(const char* text, const char* path, Variables* variables) {
  try {
    return ParseInScopes(text, path, variables);
  } catch (...) {
    // Components the script created before it failed live in the
    // process-wide graph and tables; a reader among them indexes on its own
    // threads. Nothing will build a topology from them, so they are released
    // here (joining those threads) instead of leaking into the next script.
    ReleaseInterpreterState();
    throw;
  }
}

CTopology* CParser::ParseInScopes(const char* text, const char* path, Variables* variables) {
  RObject<CSymbolDictionary> hostScope(new CSymbolDictionary());
  CAstNode::CAutoScope host(hostScope);
  PopulateSymbolTable(variables);
  CAstNode::CAutoScope script(symbols_);
  CScriptRunner runner(path);
  if (path) {
    runner.RunFile(path);
  } else {
    runner.Run(text);
  }
  diagnosticCount_ = runner.GetErrorCount();
  return BuildTopology();
}

void CParser::PopulateSymbolTable(Variables* variables) {
  MOX_LOG(4, "Populating symbol table...\n");
  CAstNode::GetSymbolTable();
  CAstNode::GetFunctionTable();
  if (!variables) return;
  for (int i = 0; i < variables->GetCount(); ++i) {
    CString* rawName = nullptr;
    CVariant* rawValue = nullptr;
    if (variables->GetKeyAndValue(i, rawName, rawValue).Failed()) continue;
    RObject<CString> name(rawName);
    RObject<CVariant> value(rawValue);
    RObject<CString> valueText(value ? value->ToString() : nullptr);
    if (!name || !valueText) continue;
    // The value's text is WFL source, inserted as it is.
    RObject<CString> declaration(CString::WithFormat("var %s = %s;", name->GetChars(), valueText->GetChars()));
    CScriptRunner(name->GetChars()).Run(declaration->GetChars());
  }
}

CTopology* CParser::BuildTopology() const {
  CComponentGraph* graph = CComponentValue::GetComponentGraph();
  MOX_LOG(3, "Component graph contains %d nodes, %d edges\n", graph->GetNodes()->GetCount(),
          graph->GetEdges()->GetCount());
  MOX_LOG(4, "Building parser topology...\n");
  RObject<CParserTopology> topology(new CParserTopology());
  std::vector<Edge*> edges;
  for (Edge* edge : *graph->GetEdges()) edges.push_back(edge);
  RObject<CEdgeTable> table(new CEdgeTable(graph));
  SortEdges(edges, table, graph);
  for (Edge* edge : edges) topology->Connect(edge);
  return topology.Detach();
}

CSymbol* CParser::CreateSymbol(CIndexer* indexer) {
  if (!indexer) throw ResultArgumentNull();
  // The reader's tracks are known once its indexing has begun; the indexer
  // keeps draining on its own threads while the script goes on.
  if (!indexer->IsStarted()) indexer->Begin(true).ThrowIfFailed();
  RObject<CComponentValue> value(new CContainerReaderValue(indexer));
  CContainerReader* reader = indexer->GetContainerReader();
  return ComponentSymbol(value, reader, true, reader);
}

CSymbol* CParser::CreateSymbol(CContainerReader* reader) {
  if (!reader) throw ResultArgumentNull();
  RObject<CIndexer> indexer(new CIndexer(reader));
  return CreateSymbol(indexer.Get());
}

CSymbol* CParser::CreateSymbol(CContainerWriter* writer) {
  if (!writer) throw ResultArgumentNull();
  RObject<CComponentValue> value(new CContainerWriterValue(writer));
  return ComponentSymbol(value, writer, false);
}

CSymbol* CParser::CreateSymbol(CSignalReader* reader) {
  if (!reader) throw ResultArgumentNull();
  RObject<CComponentValue> value(new CSignalReaderValue(reader));
  return ComponentSymbol(value, reader, true);
}

CSymbol* CParser::CreateSymbol(CSignalWriter* writer) {
  if (!writer) throw ResultArgumentNull();
  RObject<CComponentValue> value(new CSignalWriterValue(writer));
  return ComponentSymbol(value, writer, false);
}

void CParser::SetLogCallback(LogCallback callback) { CPrintStatement::callback = callback; }

CParser::LogCallback CParser::GetLogCallback() { return CPrintStatement::callback; }

}  // namespace Corvane::Mox::WFL
