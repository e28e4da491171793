#include "wfl/Topology.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "System/Collections/List.h"
#include "System/Console.h"
#include "System/IO/StandardFileStream.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Package/PackageContainer.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"
#include "gen/CodeBookProperty.h"
#include "wfl/Fidelity.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/TopologyEdgeInfo.h"

namespace Corvane::Mox::WFL {

namespace {

const char* LabelOf(const CTopologyNode* node) {
  CString* label = node ? node->GetLabel() : nullptr;
  return label ? label->GetChars() : "(null)";
}

template <class T>
RObject<T> Share(T* object) {
  if (object) object->Acquire();
  return RObject<T>(object);
}

std::string Printf(const char* format, ...) MOX_PRINTF(1, 2);
std::string Printf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
  if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, args);
  va_end(args);
  return text;
}

Result WriteText(CStream* stream, const std::string& text) {
  int written = 0;
  return stream->Write(reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()), &written);
}

template <class Write>
Result ToFile(const char* path, Write write) {
  CStream* raw = nullptr;
  Result opened = CStandardFileStream::Open(path, FileMode::Write, raw);
  if (opened.Failed()) return opened;
  RObject<CStream> stream(raw);
  return write(stream.Get());
}

// "label\nname = value" for every property of the node.
std::string NodeLabel(const CTopologyNode* node) {
  std::string label = LabelOf(node);
  for (int i = 0; i < node->GetPropertyCount(); ++i) {
    RObject<CString> name(node->GetPropertyName(i));
    if (!name) continue;
    CVariant* raw = nullptr;
    node->GetProperty(name.Get(), raw);
    RObject<CVariant> value(raw);
    RObject<CString> text(value ? value->ToString() : nullptr);
    label += Printf("\n%s = %s", name->GetChars(), text ? text->GetChars() : "(null)");
  }
  return label;
}

}  // namespace

CTopology::~CTopology() { connections_.clear(); }

std::string CTopology::Escape(const char* text) {
  std::string out;
  for (const char* p = text ? text : ""; *p; ++p) {
    switch (*p) {
      case '\\': out += "\\\\"; break;
      case '\a': out += "\\a"; break;
      case '\b': out += "\\b"; break;
      case '\t': out += "\\t"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '"': out += "\\\""; break;
      default: out += *p; break;
    }
  }
  return out;
}

CTopology::Edge* CTopology::Connect(CTopologyNode* source, int output, CTopologyNode* target,
                                    CProperties* properties) {
  if (!source || !target) throw ResultArgumentNull();
  MOX_LOG(4, "Connecting %s -> %s\n", LabelOf(source), LabelOf(target));
  const int outputs = source->GetOutputMediaCount();
  if (outputs > 0) output %= outputs;
  std::vector<TopologyHop> hops;
  auto* filterTarget = dynamic_cast<CMediaFilterTopologyNode*>(target);
  if (filterTarget) {
    hops = FindShortestPath(source, output, filterTarget);
  } else {
    // Writers and packages take the media as it is.
    hops.push_back(TopologyHop{Share(target), RObject<CMediaProperties>(source->GetOutputMedia(output))});
  }
  if (hops.empty()) throw ResultUnexpected("connection path is empty");

  CTopologyNode* current = source;
  Edge* last = nullptr;
  for (const TopologyHop& hop : hops) {
    CTopologyNode* next = hop.node;
    const bool final = next == target;
    const int input = next->GetInputMediaCount();
    // A converter is told what to produce.
    if (auto* filter = dynamic_cast<CMediaFilterTopologyNode*>(current); filter && hop.media)
      filter->GetMediaFilter()
          ->SetFourProperty(CodeBookProperty::MediaFilter::OutputFormat, hop.media->GetFormat())
          .ThrowIfFailed();
    RObject<CMediaProperties> media(current->GetOutputMedia(output));
    if (!media) throw ResultUnexpected("no output media");
    unsigned int key = static_cast<unsigned int>(current->GetHashCode()) + static_cast<unsigned int>(output) +
                       CFidelity::GetHashCode(media) + CFidelity::GetHashCode(hop.media);
    if (final) key += static_cast<unsigned int>(target->GetHashCode());
    auto shared = connections_.find(key);
    if (shared != connections_.end() && !final) {
      // The same conversion of the same output already exists: share it.
      current = shared->second->GetDestination();
      output = 0;
      continue;
    }
    if (final && properties) {
      RObject<CMediaProperties> requested(CMediaProperties::Clone(media));
      requested->SetProperties(properties).ThrowIfFailed();
      media = requested;
    }
    next->AddInputMedia(media);
    RObject<CTopologyEdgeInfo> info(CTopologyEdgeInfo::Create(media, output, input));
    if (final) info->SetProperties(properties);
    last = CWeightedDirectedGraph<CTopologyNode>::Connect(current, next, info);
    connections_[key] = Share(last);
    current = next;
    output = 0;
  }
  return last;
}

Result CTopology::PrintGraphViz(CStream* stream) const {
  if (!stream) return ResultArgumentNull();
  std::string dot = "digraph G {\n\toverlap = false\n\tconcentrate = false\n";
  for (CTopologyNode* node : *GetNodes()) {
    CString* color = node->GetColor();
    const bool root = GetInputEdges(node)->GetCount() == 0;
    dot += Printf("\t\"%p\" [label=\"%s\", color=\"%s\", style=filled, root=\"%s\"]\n", static_cast<void*>(node),
                  Escape(NodeLabel(node).c_str()).c_str(), color ? color->GetChars() : "grey",
                  root ? "true" : "false");
  }
  for (Edge* edge : *GetEdges()) {
    const auto* info = dynamic_cast<const CTopologyEdgeInfo*>(edge->GetPayload());
    CString* label = info ? info->GetLabel() : nullptr;
    dot += Printf("\t\"%p\"\t->\t\"%p\" [label=\"%s\",taillabel=\"%d\",headlabel=\"%d\"]\n",
                  static_cast<void*>(edge->GetSource()), static_cast<void*>(edge->GetDestination()),
                  Escape(label ? label->GetChars() : "").c_str(), info ? info->GetSourceTrack() : 0,
                  info ? info->GetTargetTrack() : 0);
  }
  dot += "}\n";
  return WriteText(stream, dot);
}

Result CTopology::PrintGraphViz(const char* path) const {
  return ToFile(path, [this](CStream* stream) { return PrintGraphViz(stream); });
}

namespace {

// An array property of property-bag variants.
CVariantArray* ToArray(const std::vector<RObject<CProperties>>& bags) {
  auto* array = new CVariantArray(static_cast<int>(bags.size()));
  for (size_t i = 0; i < bags.size(); ++i) {
    RObject<CVariant> item(new CVariant(bags[i].Get()));
    array->Set(static_cast<int>(i), item);
  }
  return array;
}

}  // namespace

Result CTopology::WriteManifest(CStream* stream) const {
  if (!stream) return ResultArgumentNull();
  std::vector<RObject<CProperties>> containers;
  std::vector<RObject<CProperties>> packages;
  std::vector<const CObject*> seen;
  for (CTopologyNode* node : *GetNodes()) {
    if (auto* writer = dynamic_cast<CContainerWriter*>(node->GetComponent())) {
      containers.emplace_back(new CProperties(writer));
    } else if (auto* container = dynamic_cast<CPackageContainer*>(node->GetComponent())) {
      auto* package = dynamic_cast<CProperties*>(container->GetPackage());
      if (!package || std::find(seen.begin(), seen.end(), package) != seen.end()) continue;
      seen.push_back(package);
      packages.push_back(Share(package));
    }
  }
  RObject<CVariantArray> containerArray(ToArray(containers));
  RObject<CVariantArray> packageArray(ToArray(packages));
  RObject<CProperties> manifest(new CProperties());
  manifest->SetProperty("container", containerArray.Get()).ThrowIfFailed();
  manifest->SetProperty("package", packageArray.Get()).ThrowIfFailed();
  return manifest->ToJson(stream);
}

Result CTopology::WriteManifest(const char* path) const {
  return ToFile(path, [this](CStream* stream) { return WriteManifest(stream); });
}

}  // namespace Corvane::Mox::WFL
