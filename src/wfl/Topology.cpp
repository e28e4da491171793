#include "wfl/Topology.h"

#include <string>

#include "System/Console.h"
#include "System/IO/StandardFileStream.h"
#include "System/Text.h"
#include "wfl/TopologyEdgeInfo.h"

namespace Corvane::Mox::WFL {

namespace {

const char* LabelOf(const CTopologyNode* node) {
  CString* label = node ? node->GetLabel() : nullptr;
  return label ? label->GetChars() : "(null)";
}

// A dot string literal.
std::string Quote(const char* text) {
  std::string out = "\"";
  for (const char* p = text; *p; ++p) {
    if (*p == '"' || *p == '\\') out += '\\';
    out += *p;
  }
  return out + "\"";
}

}  // namespace

CGraphEdge<CTopologyNode>* CTopology::Connect(CTopologyNode* source, int output, CTopologyNode* target,
                                               CProperties* properties) {
  if (!source || !target) throw ResultArgumentNull();
  MOX_LOG(4, "Connecting %s -> %s\n", LabelOf(source), LabelOf(target));
  const int input = GetInputEdges(target)->GetCount();
  RObject<CTopologyEdgeInfo> info(new CTopologyEdgeInfo(output, input));
  info->SetProperties(properties);
  return CWeightedDirectedGraph<CTopologyNode>::Connect(source, target, info);
}

Result CTopology::PrintGraphViz(CStream* stream) const {
  if (!stream) return ResultArgumentNull();
  std::string dot = "digraph topology {\n  node [shape=box, style=filled];\n";
  int index = 0;
  for (CTopologyNode* node : *GetNodes()) {
    CString* color = node->GetColor();
    dot += "  n" + std::to_string(index++) + " [label=" + Quote(LabelOf(node));
    if (color) dot += ", fillcolor=" + Quote(color->GetChars());
    dot += "];\n";
  }
  for (CGraphEdge<CTopologyNode>* edge : *GetEdges()) {
    const int from = GetNodes()->IndexOf(edge->GetSource());
    const int to = GetNodes()->IndexOf(edge->GetDestination());
    const auto* info = static_cast<const CTopologyEdgeInfo*>(edge->GetPayload());
    dot += "  n" + std::to_string(from) + " -> n" + std::to_string(to);
    if (info) dot += " [label=\"" + std::to_string(info->GetSourceTrack()) + ":" + std::to_string(info->GetTargetTrack()) + "\"]";
    dot += ";\n";
  }
  dot += "}\n";
  int written = 0;
  return stream->Write(reinterpret_cast<const unsigned char*>(dot.data()), static_cast<int>(dot.size()), &written);
}

Result CTopology::PrintGraphViz(const char* path) const {
  CStream* raw = nullptr;
  Result opened = CStandardFileStream::Open(path, FileMode::Write, raw);
  if (opened.Failed()) return opened;
  RObject<CStream> stream(raw);
  return PrintGraphViz(stream);
}

}  // namespace Corvane::Mox::WFL
