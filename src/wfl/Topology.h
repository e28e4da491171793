#pragma once
// CTopology: the executable form of a script, a directed graph whose nodes
// wrap readers, filters and writers and whose edges carry a
// CTopologyEdgeInfo (source output, target input, requested properties).

#include "wfl/TopologyNode.h"
#include "wfl/WeightedDirectedGraph.h"

namespace Corvane::Mox {
class CStream;
}

namespace Corvane::Mox::WFL {

class CTopology : public CWeightedDirectedGraph<CTopologyNode> {
 public:
  CTopology() = default;

  // Joins an output of source to the next free input of target; properties
  // (may be null) are what the connection asks of the media. Answers the
  // new edge (borrowed).
  virtual CGraphEdge<CTopologyNode>* Connect(CTopologyNode* source, int output, CTopologyNode* target,
                                             CProperties* properties);

  // The graph in the dot language, nodes labelled and coloured.
  Result PrintGraphViz(CStream* stream) const;
  Result PrintGraphViz(const char* path) const;
};

}  // namespace Corvane::Mox::WFL
