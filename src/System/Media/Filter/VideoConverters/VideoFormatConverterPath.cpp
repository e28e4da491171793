// CVideoFormatConverter::FindConversionPath: the planner. Nodes are picture
// descriptions, edges the conversions of the candidate stages; the cheapest
// path under the strategy's edge weights is the chain.

#include <unordered_map>
#include <vector>

#include "System/Collections/WeightedDirectedGraph.h"
#include "System/FourString.h"
#include "System/Media/Filter/VideoConverters/ConvertStage.h"
#include "System/Media/Filter/VideoConverters/CopyStage.h"
#include "System/Media/Filter/VideoConverters/HashableVideoProperties.h"
#include "System/Media/Filter/VideoConverters/PackStage.h"
#include "System/Media/Filter/VideoConverters/ResampleStage.h"
#include "System/Media/Filter/VideoConverters/ShuffleStage.h"
#include "System/Media/Filter/VideoConverters/TwistStage.h"
#include "System/Media/Filter/VideoConverters/UnpackStage.h"
#include "System/Media/Filter/VideoConverters/VideoFormatConverter.h"

namespace Corvane::Mox {

namespace {

using Graph = CWeightedDirectedGraph<CVideoProperties>;

// Descriptions a search may create before it gives up; the maps are finite,
// but targets times formats times matrices must stay bounded.
constexpr size_t kMaximumNodes = 8192;

// A description in canonical form: the format's named code, its layout's
// depth and subsampling, and the identity matrix only where it can stand
// (4:4:4; subsampled pictures are never RGB).
CHashableVideoProperties* Canonical(const CVideoProperties* properties) {
  auto* node = new CHashableVideoProperties(properties);
  const PixelFormatDescriptor descriptor = PixelFormatDescriptor::Resolve(properties);
  node->SetFormat(descriptor.format);
  node->SetBitDepth(PixelFormatDescriptor::GetBitDepth(descriptor.format));
  node->SetSubsampling(PixelFormatDescriptor::GetSubsampling(descriptor.format));
  unsigned char matrix = descriptor.matrix;
  if (matrix == 0 && node->GetSubsampling() != 0x11) matrix = 2;
  node->SetMatrixCoefficients(matrix);
  return node;
}

// The strategy's weight of an edge into a description.
float EdgeWeight(int strategy, const CVideoProperties* target) {
  const int subsampling = target->GetSubsampling() ? target->GetSubsampling() : 0x11;
  const int horizontal = std::max(1, subsampling >> 4), vertical = std::max(1, subsampling & 15);
  const float bytes = static_cast<float>((target->GetBitDepth() + 7) / 8 * 8 * (16 + (32 / horizontal) / vertical));
  float weight = 100.0f;
  if (strategy == CVideoFormatConverter::CS_SPEED) weight += bytes;
  if (strategy == CVideoFormatConverter::CS_QUALITY && bytes > 0) weight += 1.0f / bytes;
  if (!(weight > 0.0f)) throw ResultArgumentOutOfRange("edge weight must be greater than 0");
  return weight;
}

std::vector<RObject<CStage>> CandidateStages(const CVideoProperties* from, const CVideoProperties* to, int rounding) {
  std::vector<RObject<CStage>> stages;
  stages.emplace_back(new CUnpackStage());
  stages.emplace_back(new CPackStage());
  stages.emplace_back(new CShuffleStage());
  stages.emplace_back(new CCopyStage());
  auto add = [&](CStage* stage, const CStage::Target& target) {
    stage->SetTarget(target);
    stages.emplace_back(stage);
  };
  CStage::Target target;
  target.roundingMode = rounding;
  target.chromaSiting = to->GetChromaSiting();
  if (from->GetBitDepth() != to->GetBitDepth() || from->GetVideoRange() != to->GetVideoRange()) {
    CStage::Target convert = target;
    convert.bitDepth = to->GetBitDepth();
    convert.videoRange = to->GetVideoRange();
    add(new CConvertStage(), convert);
  }
  CStage::Target resample = target;
  resample.subsampling = to->GetSubsampling();
  if (from->GetMatrixCoefficients() == to->GetMatrixCoefficients()) {
    if (from->GetSubsampling() != to->GetSubsampling()) add(new CResampleStage(), resample);
    return stages;
  }
  CStage::Target twist = target;
  twist.matrix = to->GetMatrixCoefficients();
  twist.videoRange = to->GetVideoRange();
  add(new CTwistStage(), twist);
  CStage::Target full = target;
  full.subsampling = 0x11;
  add(new CResampleStage(), full);
  if (to->GetSubsampling() != 0x11) add(new CResampleStage(), resample);
  return stages;
}

class PathSearch {
 public:
  PathSearch(int strategy, const CVideoProperties* input, const CVideoProperties* output)
      : strategy_(strategy), graph_(new Graph()), start_(Canonical(input)), goal_(Canonical(output)) {
    // No stage changes these; the chain carries the output's values along
    // so that only the fields the stages change decide the path.
    start_->SetChromaSiting(goal_->GetChromaSiting());
    start_->SetColorPrimaries(goal_->GetColorPrimaries());
    start_->SetTransferCharacteristics(goal_->GetTransferCharacteristics());
  }

  bool IsTrivial() const { return start_->SameNode(goal_); }

  // The edges of the cheapest path (a new list), or null.
  CList<Graph::Edge>* Run(const std::vector<RObject<CStage>>& stages) {
    Add(start_);
    Add(goal_);
    std::deque<CHashableVideoProperties*> queue{start_.Get()};
    while (!queue.empty() && nodes_.size() < kMaximumNodes) {
      CHashableVideoProperties* node = queue.front();
      queue.pop_front();
      if (node->SameNode(goal_)) continue;
      for (const RObject<CStage>& stage : stages) {
        RObject<CList<CVideoProperties>> outputs(stage->GetOutputProperties(node));
        for (CVideoProperties* produced : *outputs) {
          bool created = false;
          CHashableVideoProperties* next = Find(produced, created);
          graph_->Connect(EdgeWeight(strategy_, next), node, next, stage);
          if (created) queue.push_back(next);
        }
      }
    }
    return graph_->FindShortestPath(start_, goal_);
  }

 private:
  void Add(CHashableVideoProperties* node) {
    graph_->AddNode(node);
    nodes_.emplace(node->GetNodeHash(), node);
  }

  // The node equal to a description, made when there is none.
  CHashableVideoProperties* Find(const CVideoProperties* properties, bool& created) {
    RObject<CHashableVideoProperties> candidate(new CHashableVideoProperties(properties));
    const size_t hash = candidate->GetNodeHash();
    auto range = nodes_.equal_range(hash);
    for (auto it = range.first; it != range.second; ++it)
      if (it->second->SameNode(candidate)) return it->second;
    created = true;
    Add(candidate);
    return candidate;  // held by the graph
  }

  int strategy_;
  RObject<Graph> graph_;
  RObject<CHashableVideoProperties> start_;
  RObject<CHashableVideoProperties> goal_;
  std::unordered_multimap<size_t, CHashableVideoProperties*> nodes_;
};

}  // namespace

CList<CStage>* CVideoFormatConverter::FindConversionPath(int strategy, const CVideoProperties* input,
                                                         const CVideoProperties* output, int roundingMode) {
  if (!input || !output) return nullptr;
  RObject<CHashableVideoProperties> from(Canonical(input)), to(Canonical(output));
  PathSearch search(strategy, input, output);
  if (search.IsTrivial()) return new CList<CStage>();
  RObject<CList<Graph::Edge>> path(search.Run(CandidateStages(from, to, roundingMode)));
  if (!path) return nullptr;
  auto* stages = new CList<CStage>();
  RObject<CList<CStage>> held(stages);
  const int count = path->GetCount();
  int index = 0;
  for (Graph::Edge* edge : *path) {
    const auto* prototype = static_cast<const CStage*>(edge->GetPayload());
    RObject<CStage> stage(CStage::Create(prototype->GetStageType()));
    if (!stage)
      throw ResultUnexpected("Unexpected type: '%s'", FourString(prototype->GetStageType()).GetChars());
    stage->SetTarget(prototype->GetTarget());
    // The ends are the caller's own descriptions, so aliases and every other
    // field reach the first and last stages unchanged.
    const CVideoProperties* source = index == 0 ? input : edge->GetSource();
    const CVideoProperties* destination = index == count - 1 ? output : edge->GetDestination();
    stage->Begin(source, destination).ThrowIfFailed();
    stages->Add(stage);
    ++index;
  }
  return held.Detach();
}

}  // namespace Corvane::Mox
