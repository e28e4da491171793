#pragma once
// CWeightedDirectedGraph<T> and CGraphEdge<T>: a directed graph over
// reference-counted nodes. The graph keeps its nodes (no duplicates by
// identity) and edges in insertion order, and for each node its input and
// output edges in insertion order. An edge carries a weight (1.0 unless
// given), its source and destination and an optional payload object.

#include <deque>
#include <limits>
#include <unordered_map>
#include <vector>

#include "System/Collections/List.h"

namespace Corvane::Mox {

template <class T>
class CGraphEdge : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("gedg");

  CGraphEdge(float weight, T* source, T* destination, CObject* payload)
      : CObject(TypeCode), weight_(weight), source_(source), destination_(destination), payload_(payload) {
    if (source_) source_->Acquire();
    if (destination_) destination_->Acquire();
    if (payload_) payload_->Acquire();
  }
  ~CGraphEdge() override {
    if (source_) source_->Release();
    if (destination_) destination_->Release();
    if (payload_) payload_->Release();
  }

  float GetWeight() const { return weight_; }
  // Borrowed references.
  T* GetSource() const { return source_; }
  T* GetDestination() const { return destination_; }
  CObject* GetPayload() const { return payload_; }

 private:
  float weight_;
  T* source_;
  T* destination_;
  CObject* payload_;
};

template <class T>
class CWeightedDirectedGraph : public CObject {
 public:
  using Edge = CGraphEdge<T>;
  static constexpr unsigned int TypeCode = FourCC("wdgr");

  CWeightedDirectedGraph() : CObject(TypeCode), nodes_(new CList<T>()), edges_(new CList<Edge>()), none_(new CList<Edge>()) {}
  ~CWeightedDirectedGraph() override {
    // Edges first: they hold the nodes.
    edges_->Clear();
    links_.clear();
    index_.clear();
  }

  // Adds the node unless it is already there (by identity); ResultFalse then.
  Result AddNode(T* node) {
    if (!node) return ResultArgumentNull();
    if (index_.count(node)) return ResultFalse();
    nodes_->Add(node);
    index_.emplace(node, links_.size());
    links_.push_back(Links{node, new CList<Edge>(), new CList<Edge>()});
    return Result();
  }

  // Adds an edge (and its nodes, when new).
  Result AddEdge(Edge* edge) {
    if (!edge || !edge->GetSource() || !edge->GetDestination()) return ResultArgumentNull();
    AddNode(edge->GetSource());
    AddNode(edge->GetDestination());
    edges_->Add(edge);
    Find(edge->GetSource())->outputs->Add(edge);
    Find(edge->GetDestination())->inputs->Add(edge);
    return Result();
  }

  // A new edge of weight 1.0 (borrowed: the graph keeps it).
  Edge* Connect(T* source, T* destination, CObject* payload) { return Connect(1.0f, source, destination, payload); }
  Edge* Connect(float weight, T* source, T* destination, CObject* payload) {
    RObject<Edge> edge(new Edge(weight, source, destination, payload));
    AddEdge(edge).ThrowIfFailed();
    return edge.Get();
  }

  // The cheapest path from one node to another as its edges in order (a new
  // list), or null when to cannot be reached. A label-correcting search: a
  // FIFO queue of nodes whose distance improved, relaxed edge by edge in
  // insertion order; a distance is replaced only when strictly smaller, so
  // among paths of equal cost the first found is kept.
  CList<Edge>* FindShortestPath(T* from, T* to) const {
    if (!Find(from) || !Find(to)) return nullptr;
    std::unordered_map<const T*, float> distance;
    std::unordered_map<const T*, Edge*> previous;
    auto distanceOf = [&](const T* node) {
      auto found = distance.find(node);
      return found == distance.end() ? std::numeric_limits<float>::infinity() : found->second;
    };
    std::deque<T*> queue{from};
    std::unordered_map<const T*, bool> queued{{from, true}};
    distance[from] = 0.0f;
    // A negative cycle would relax forever; no simple path needs more rounds.
    size_t budget = static_cast<size_t>(nodes_->GetCount()) * (static_cast<size_t>(edges_->GetCount()) + 1) + 1;
    while (!queue.empty() && budget-- > 0) {
      T* node = queue.front();
      queue.pop_front();
      queued[node] = false;
      for (Edge* edge : *GetOutputEdges(node)) {
        const float through = distanceOf(node) + edge->GetWeight();
        T* next = edge->GetDestination();
        if (!(through < distanceOf(next))) continue;
        distance[next] = through;
        previous[next] = edge;
        if (!queued[next]) {
          queued[next] = true;
          queue.push_back(next);
        }
      }
    }
    if (!previous.count(to)) return from == to ? new CList<Edge>() : nullptr;
    std::vector<Edge*> reversed;
    for (const T* at = to; at != from && reversed.size() <= previous.size(); at = previous[at]->GetSource())
      reversed.push_back(previous[at]);
    if (reversed.size() > previous.size()) return nullptr;
    auto* path = new CList<Edge>();
    for (auto it = reversed.rbegin(); it != reversed.rend(); ++it) path->Add(*it);
    return path;
  }

  // The lists are borrowed; an unknown node answers an empty list.
  CList<T>* GetNodes() const { return nodes_; }
  CList<Edge>* GetEdges() const { return edges_; }
  CList<Edge>* GetInputEdges(T* node) const {
    const Links* links = Find(node);
    return links ? links->inputs.Get() : none_.Get();
  }
  CList<Edge>* GetOutputEdges(T* node) const {
    const Links* links = Find(node);
    return links ? links->outputs.Get() : none_.Get();
  }

 private:
  struct Links {
    T* node;  // held by nodes_
    RObject<CList<Edge>> inputs;
    RObject<CList<Edge>> outputs;
  };

  const Links* Find(T* node) const {
    auto found = index_.find(node);
    return found == index_.end() ? nullptr : &links_[found->second];
  }
  Links* Find(T* node) {
    auto found = index_.find(node);
    return found == index_.end() ? nullptr : &links_[found->second];
  }

  RObject<CList<T>> nodes_;
  RObject<CList<Edge>> edges_;
  RObject<CList<Edge>> none_;
  std::vector<Links> links_;
  std::unordered_map<const T*, size_t> index_;
};

}  // namespace Corvane::Mox
