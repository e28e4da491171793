// CTopology::FindShortestPath: the search for the chain of converters that
// carries an output of one node to a filter with the least fidelity loss.
//
// The search graph's nodes are media descriptions between two sentinels,
// start and goal. Breadth first from the source's available outputs, each
// description (identified by its fidelity hash) is either accepted by the
// target (an edge to goal) or expanded through every transform of the
// inventory that takes it (edges to what the transform can produce, weighted
// by the fidelity loss). The cheapest start-goal path then names the
// converters to insert. While exploring, the attributes that made the target
// refuse each description are collected for the failure message.

#include <deque>
#include <unordered_map>
#include <unordered_set>

#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/Media/Filter/FilterType.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/MediaProperties.h"
#include "System/Text.h"
#include "wfl/ConnectionReasons.h"
#include "wfl/Fidelity.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/MediaFilterTransformInventory.h"
#include "wfl/NoViablePathException.h"
#include "wfl/Topology.h"

namespace Corvane::Mox::WFL {

namespace {

using SearchGraph = CWeightedDirectedGraph<CMediaProperties>;

// Descriptions one search expands at the most.
constexpr int kMaximumExpansions = 4096;

// The start and goal of the search graph.
class CSentinelProperties : public CMediaProperties {
 public:
  explicit CSentinelProperties(unsigned int type) : CMediaProperties(type, nullptr) {}
};

// A second owner of an object already owned elsewhere.
template <class T>
RObject<T> Share(T* object) {
  if (object) object->Acquire();
  return RObject<T>(object);
}

const char* LabelOf(CTopologyNode* node) {
  CString* label = node ? node->GetLabel() : nullptr;
  return label ? label->GetChars() : "(null)";
}

class Search {
 public:
  Search(CTopologyNode* source, int output, CMediaFilterTopologyNode* target, SearchStatistics& statistics)
      : source_(source),
        output_(output),
        target_(target),
        statistics_(statistics),
        graph_(new SearchGraph()),
        start_(new CSentinelProperties(FourCC("strt"))),
        goal_(new CSentinelProperties(FourCC("goal"))) {}

  std::vector<TopologyHop> Run() {
    ++statistics_.searches;
    graph_->AddNode(start_);
    graph_->AddNode(goal_);
    RObject<CList<CMediaProperties>> offered(source_->GetAvailableOutputMedia(output_));
    for (CMediaProperties* description : *offered) Enqueue(start_, Canonical(description), 1.0f, nullptr);
    Explore();
    statistics_.edges += graph_->GetEdges()->GetCount();
    RObject<CList<SearchGraph::Edge>> path(graph_->FindShortestPath(start_, goal_));
    if (!path || path->GetCount() == 0) {
      const unsigned int flags = examined_ ? reasons_ : 0;
      throw CNoViablePathException(
          ConnectionReasons::Format(LabelOf(source_), LabelOf(target_), flags).c_str());
    }
    return ToHops(path);
  }

 private:
  // The node already standing for an equal description, or this one.
  CMediaProperties* Canonical(CMediaProperties* description) {
    const unsigned int hash = CFidelity::GetHashCode(description);
    auto found = byHash_.find(hash);
    if (found != byHash_.end()) return found->second;
    byHash_.emplace(hash, description);
    graph_->AddNode(description);
    return description;
  }

  void Enqueue(CMediaProperties* from, CMediaProperties* to, float weight, CObject* payload) {
    graph_->Connect(weight, from, to, payload);
    queue_.push_back(to);
  }

  void Explore() {
    CMediaFilter* filter = target_->GetMediaFilter();
    // Transforms that keep making new descriptions (a resizer offering every
    // size, say) must not keep the search going for ever.
    int budget = kMaximumExpansions;
    while (!queue_.empty() && budget > 0) {
      CMediaProperties* description = queue_.front();
      queue_.pop_front();
      if (description == goal_.Get()) break;
      if (!visited_.insert(CFidelity::GetHashCode(description)).second) continue;
      if (filter->Evaluate(description) != 0) {
        Enqueue(description, goal_, 1.0f, target_);
        continue;
      }
      if (filter->IsType(CProperties::TypeCode)) Refused(ConnectionReasons::Examine(filter, description));
      Expand(description);
      --budget;
    }
  }

  // Keeps the reasons every refused description shares.
  void Refused(unsigned int flags) {
    reasons_ = examined_ ? (reasons_ & flags) : flags;
    examined_ = true;
  }

  void Expand(CMediaProperties* description) {
    ++statistics_.descriptionsExpanded;
    RObject<CList<CMediaFilter>> candidates(CMediaFilterTransformInventory::GetValidComponents(description));
    for (CMediaFilter* candidate : *candidates) {
      ++statistics_.candidatesTried;
      RObject<CList<CMediaProperties>> outputs(Produce(candidate, description));
      if (!outputs) continue;
      RObject<CValue<unsigned int>> code(new CValue<unsigned int>(candidate->GetComponentCode()));
      for (CMediaProperties* produced : *outputs) {
        CMediaProperties* node = Canonical(produced);
        Enqueue(description, node, CFidelity::GetFidelityLoss(description, node), code);
      }
    }
  }

  // What a candidate makes of the description; null when it refuses it after
  // all (a transform whose Begin fails for a format, say).
  static CList<CMediaProperties>* Produce(CMediaFilter* candidate, CMediaProperties* description) {
    try {
      RObject<CMediaFilterTopologyNode> node(new CMediaFilterTopologyNode(candidate));
      node->AddInputMedia(description);
      return node->GetAvailableOutputMedia(0);
    } catch (const Result&) {
      return nullptr;
    }
  }

  // Edges start→d0, d0→d1 (converter), ..., dk→goal become the hops
  // (converter, d0), ..., (target, dk).
  std::vector<TopologyHop> ToHops(CList<SearchGraph::Edge>* path) {
    std::vector<TopologyHop> hops;
    bool first = true;
    for (SearchGraph::Edge* edge : *path) {
      if (first) {
        first = false;
        continue;
      }
      TopologyHop hop;
      hop.media = Share(edge->GetSource());
      if (edge->GetDestination() == goal_.Get()) {
        hop.node = Share<CTopologyNode>(target_);
      } else {
        hop.node = CreateConverter(static_cast<CValue<unsigned int>*>(edge->GetPayload())->GetValue());
      }
      hops.push_back(std::move(hop));
    }
    return hops;
  }

  static CTopologyNode* CreateConverter(unsigned int code) {
    RObject<CMediaFilter> filter(CMediaFilterTransformInventory::CreateInstance(code));
    if (!filter) throw ResultUnexpected("the transform '%08x' is no longer available", code);
    auto* node = new CMediaFilterTopologyNode(filter);
    const char* name = FilterType::GetName(code);
    node->SetLabel(name ? name : "(null)");
    return node;
  }

  CTopologyNode* source_;
  int output_;
  CMediaFilterTopologyNode* target_;
  SearchStatistics& statistics_;
  RObject<SearchGraph> graph_;
  RObject<CMediaProperties> start_;
  RObject<CMediaProperties> goal_;
  std::deque<CMediaProperties*> queue_;
  std::unordered_set<unsigned int> visited_;
  std::unordered_map<unsigned int, CMediaProperties*> byHash_;
  unsigned int reasons_ = 0;
  bool examined_ = false;
};

}  // namespace

std::vector<TopologyHop> CTopology::FindShortestPath(CTopologyNode* source, int output,
                                                     CMediaFilterTopologyNode* target) {
  return Search(source, output, target, statistics_).Run();
}

}  // namespace Corvane::Mox::WFL
