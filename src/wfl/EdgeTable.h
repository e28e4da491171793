#pragma once
// CEdgeTable: answers, for an edge of the component graph, every edge that
// feeds the edge's source component directly or transitively. Used to replay
// a script's connections so that each comes after those feeding it.

#include <unordered_map>
#include <unordered_set>

#include "wfl/ComponentValue.h"

namespace Corvane::Mox::WFL {

class CEdgeTable : public CObject {
 public:
  using Edge = CGraphEdge<CComponentValue>;
  static constexpr unsigned int TypeCode = FourCC("edgt");

  // Keeps a reference to the graph.
  explicit CEdgeTable(CComponentGraph* graph);
  ~CEdgeTable() override;

  // The input edges of the edge's source, each followed by its own upstream
  // edges (borrowed; memoised). A cycle ends where it closes.
  CList<Edge>* GetUpstreamEdges(Edge* edge);
  bool IsUpstream(Edge* candidate, Edge* of);

 private:
  struct Upstream {
    RObject<CList<Edge>> list;
    std::unordered_set<const Edge*> members;
    bool complete = false;
  };
  Upstream& Resolve(Edge* edge);

  CComponentGraph* graph_;
  std::unordered_map<const Edge*, Upstream> memo_;
};

}  // namespace Corvane::Mox::WFL
