#pragma once
// CTopology: the executable form of a script, a directed graph whose nodes
// wrap readers, filters and writers and whose edges carry a
// CTopologyEdgeInfo (the media on the edge, source output, target input,
// requested properties).
//
// Connect joins an output of one node to a filter through the chain of
// converters with the least total fidelity loss (ConverterSearch); identical
// conversions of the same output are shared through the connection keys.
// Writers and packages are joined as they are.

#include <unordered_map>
#include <vector>

#include "wfl/TopologyNode.h"
#include "System/Collections/WeightedDirectedGraph.h"

namespace Corvane::Mox {
class CStream;
}

namespace Corvane::Mox::WFL {

class CMediaFilterTopologyNode;

// One step of a connection: the node it reaches and the media its feeder
// delivers on the way.
struct TopologyHop {
  RObject<CTopologyNode> node;
  RObject<CMediaProperties> media;
};

// What the converter searches of a topology have done, for diagnostics and
// benchmarks.
struct SearchStatistics {
  long long searches = 0;
  long long descriptionsExpanded = 0;
  long long candidatesTried = 0;
  long long edges = 0;
};

class CTopology : public CWeightedDirectedGraph<CTopologyNode> {
 public:
  using Edge = CGraphEdge<CTopologyNode>;

  CTopology() = default;
  ~CTopology() override;

  // Joins an output of source to target, inserting converters in front of a
  // filter when needed; properties (may be null) are applied to the media
  // offered to target. Answers the edge into target (borrowed). Raises
  // CNoViablePathException when no chain exists.
  virtual Edge* Connect(CTopologyNode* source, int output, CTopologyNode* target, CProperties* properties);

  // The graph in the dot language, nodes labelled with their properties.
  Result PrintGraphViz(CStream* stream) const;
  Result PrintGraphViz(const char* path) const;
  // The properties of every container writer and package, as JSON.
  Result WriteManifest(CStream* stream) const;
  Result WriteManifest(const char* path) const;

  const SearchStatistics& GetSearchStatistics() const { return statistics_; }

  // Dot label text: backslash, BEL, backspace, TAB, LF, CR and the double
  // quote escaped.
  static std::string Escape(const char* text);

 protected:
  // The hops from an output of source to a filter target, converters first.
  std::vector<TopologyHop> FindShortestPath(CTopologyNode* source, int output, CMediaFilterTopologyNode* target);

 private:
  std::unordered_map<unsigned int, RObject<Edge>> connections_;
  SearchStatistics statistics_;
};

}  // namespace Corvane::Mox::WFL
