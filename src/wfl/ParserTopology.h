#pragma once
// CParserTopology: the topology built from a script's component graph. It
// makes one node per component value on first use and replays each
// connection; destroying it ends the script's life, releasing the
// interpreter state (symbols, functions and the component graph).

#include <unordered_map>

#include "wfl/ComponentValue.h"
#include "wfl/Topology.h"

namespace Corvane::Mox::WFL {

class CParserTopology : public CTopology {
 public:
  CParserTopology() = default;
  ~CParserTopology() override;

  // Replays one connection of the component graph: nodes for both ends, the
  // connection's source output, and its members as requested properties.
  void Connect(CGraphEdge<CComponentValue>* edge);
  using CTopology::Connect;

  // The node made for the component (borrowed), made and added on first use.
  CTopologyNode* GetNode(CComponentValue* component);
  // A new node for the component, by its kind; applies the value's members
  // to the component and the node as properties.
  CTopologyNode* CreateNode(CComponentValue* component);

 private:
  std::unordered_map<const CComponentValue*, RObject<CTopologyNode>> nodes_;
};

// Releases the process-wide interpreter state: the scopes (after emptying
// every script dictionary, which may refer to each other), the function
// table and the component graph.
void ReleaseInterpreterState();

}  // namespace Corvane::Mox::WFL
