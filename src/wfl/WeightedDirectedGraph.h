#pragma once
// CWeightedDirectedGraph<T> and CGraphEdge<T>: a directed graph over
// reference-counted nodes. The graph keeps its nodes (no duplicates by
// identity) and edges in insertion order, and for each node its input and
// output edges in insertion order. An edge carries a weight (1.0 unless
// given), its source and destination and an optional payload object.

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
  }

  // Adds the node unless it is already there (by identity); ResultFalse then.
  Result AddNode(T* node) {
    if (!node) return ResultArgumentNull();
    if (nodes_->Contains(node)) return ResultFalse();
    nodes_->Add(node);
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
    for (const Links& links : links_)
      if (links.node == node) return &links;
    return nullptr;
  }
  Links* Find(T* node) {
    for (Links& links : links_)
      if (links.node == node) return &links;
    return nullptr;
  }

  RObject<CList<T>> nodes_;
  RObject<CList<Edge>> edges_;
  RObject<CList<Edge>> none_;
  std::vector<Links> links_;
};

}  // namespace Corvane::Mox
