#include "wfl/EdgeTable.h"

namespace Corvane::Mox::WFL {

CEdgeTable::CEdgeTable(CComponentGraph* graph) : CObject(TypeCode), graph_(graph) {
  if (graph_) graph_->Acquire();
}

CEdgeTable::~CEdgeTable() {
  memo_.clear();
  if (graph_) graph_->Release();
}

CList<CEdgeTable::Edge>* CEdgeTable::GetUpstreamEdges(Edge* edge) { return Resolve(edge).list; }

bool CEdgeTable::IsUpstream(Edge* candidate, Edge* of) { return Resolve(of).members.count(candidate) > 0; }

CEdgeTable::Upstream& CEdgeTable::Resolve(Edge* edge) {
  auto found = memo_.find(edge);
  if (found != memo_.end()) return found->second;  // done, or in progress on a cycle
  Upstream& entry = memo_[edge];
  entry.list = new CList<Edge>();
  if (!edge || !graph_) {
    entry.complete = true;
    return entry;
  }
  for (Edge* input : *graph_->GetInputEdges(edge->GetSource())) {
    if (entry.members.insert(input).second) entry.list->Add(input);
    // Resolving may grow memo_, but unordered_map keeps references stable.
    const Upstream& above = Resolve(input);
    for (Edge* further : *above.list) {
      if (entry.members.insert(further).second) entry.list->Add(further);
    }
  }
  entry.complete = true;
  return entry;
}

}  // namespace Corvane::Mox::WFL
