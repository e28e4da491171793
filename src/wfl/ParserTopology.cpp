#include "wfl/ParserTopology.h"

#include <string>

#include "System/FourString.h"
#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Filter/FilterType.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Package/PackageContainer.h"
#include "System/Media/Package/PackageType.h"
#include "System/Media/Signal/SignalType.h"
#include "System/Text.h"
#include "wfl/AstNode.h"
#include "wfl/ContainerReaderTopologyNode.h"
#include "wfl/ContainerWriterTopologyNode.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/PackageContainerTopologyNode.h"
#include "wfl/SignalReaderTopologyNode.h"
#include "wfl/SignalWriterTopologyNode.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

enum class NodeKind { VideoFilter, AudioFilter, SubtitleFilter, OtherFilter, Reader, Writer, PackageContainer, None };

NodeKind KindOf(unsigned int componentType) {
  switch (componentType) {
    case FourCC("vanl"): case FourCC("vcom"): case FourCC("vcon"): case FourCC("vdec"):
    case FourCC("vian"): case FourCC("vicn"): case FourCC("vocm"):
      return NodeKind::VideoFilter;
    case FourCC("aanl"): case FourCC("acom"): case FourCC("acon"): case FourCC("adec"):
    case FourCC("aian"): case FourCC("aicn"): case FourCC("aocn"):
      return NodeKind::AudioFilter;
    case FourCC("scon"): case FourCC("sfic"):
      return NodeKind::SubtitleFilter;
    case FourCC("manl"): case FourCC("mcon"): case FourCC("mflt"):
      return NodeKind::OtherFilter;
    case FourCC("indx"): case FourCC("srcr"):
      return NodeKind::Reader;
    case FourCC("writ"): case FourCC("srcw"):
      return NodeKind::Writer;
    case FourCC("pcnt"):
      return NodeKind::PackageContainer;
    default:
      return NodeKind::None;
  }
}

const char* ColorOf(NodeKind kind) {
  switch (kind) {
    case NodeKind::Reader: return "/pastel19/1";
    case NodeKind::Writer: return "/pastel19/2";
    case NodeKind::PackageContainer: return "/pastel19/3";
    case NodeKind::VideoFilter: return "/pastel19/5";
    case NodeKind::AudioFilter: return "/pastel19/6";
    case NodeKind::SubtitleFilter: return "/pastel19/7";
    default: return "/pastel19/8";
  }
}

const char* OrNull(const char* text) { return text ? text : "(null)"; }

// The component's "file" property, or "(null)".
std::string FileOf(const CObject* component) {
  const auto* bag = dynamic_cast<const CProperties*>(component);
  CString* file = nullptr;
  if (!bag || bag->GetProperty("file", file).Failed() || !file) return "(null)";
  std::string text = file->GetChars();
  file->Release();
  return text;
}

// The display name of a reader's or writer's type.
const char* TypeNameOf(unsigned int valueType, const CObject* component) {
  const unsigned int code = component ? component->GetType() : 0;
  if (valueType == FourCC("srcr") || valueType == FourCC("srcw")) return SignalType::GetName(code);
  return ContainerFormat::GetName(code);
}

std::string Label(const char* format, const char* a, const std::string& b) {
  RObject<CString> text(CString::WithFormat(format, a, b.c_str()));
  return text ? text->GetChars() : "";
}

// The reader or writer behind a value, for properties and labels.
CObject* ConfiguredObjectOf(CComponentValue* component) {
  if (CIndexer* indexer = component->GetComponent<CIndexer>()) return indexer->GetContainerReader();
  return component->GetComponentObject();
}

// The node of a component by the kind of its value.
CTopologyNode* NewNode(unsigned int valueType, CComponentValue* component) {
  CObject* object = component->GetComponentObject();
  switch (valueType) {
    case FourCC("indx"): {
      auto* indexer = component->GetComponent<CIndexer>();
      return new CContainerReaderTopologyNode(indexer, indexer && indexer->IsStarted());
    }
    case FourCC("srcr"): return new CSignalReaderTopologyNode(object);
    case FourCC("writ"): {
      auto* writer = component->GetComponent<CContainerWriter>();
      if (!writer) throw ResultNotSupported("the writer value holds no container writer");
      return new CContainerWriterTopologyNode(writer);
    }
    case FourCC("srcw"): return new CSignalWriterTopologyNode(object);
    case FourCC("pcnt"): return new CPackageContainerTopologyNode(object);
    default: {
      auto* filter = component->GetComponent<CMediaFilter>();
      if (!filter) throw ResultNotSupported("'%s' values hold no filter", FourString(valueType).GetChars());
      return new CMediaFilterTopologyNode(filter);
    }
  }
}

void ApplyProperties(CObject* target, CProperties* properties) {
  auto* bag = dynamic_cast<IProperties*>(target);
  if (bag && properties) bag->SetProperties(properties).ThrowIfFailed();
}

}  // namespace

CParserTopology::~CParserTopology() {
  nodes_.clear();
  ReleaseInterpreterState();
}

void CParserTopology::Connect(CGraphEdge<CComponentValue>* edge) {
  if (!edge) throw ResultArgumentNull();
  CTopologyNode* source = GetNode(edge->GetSource());
  CTopologyNode* target = GetNode(edge->GetDestination());
  auto* connection = dynamic_cast<CConnectionValue*>(edge->GetPayload());
  int output = connection ? connection->GetSourceTrack() : 0;
  // A track value counts within its kind; the reader node numbers its
  // outputs video, then audio, then subtitle tracks.
  if (auto* reader = dynamic_cast<CReaderTopologyNode*>(source); reader && connection && connection->GetSourceKind()) {
    const int mapped = reader->GetOutputIndex(connection->GetSourceKind(), output);
    if (mapped < 0)
      throw ResultArgumentOutOfRange("'%s' has no %s track %d", reader->GetLabel() ? reader->GetLabel()->GetChars() : "(null)",
                                     FourString(connection->GetSourceKind()).GetChars(), output);
    output = mapped;
  }
  RObject<CProperties> properties;
  if (connection) {
    RObject<CSymbolDictionary> members(connection->ToDictionary());
    if (members) properties = members->ToProperties();
  }
  CTopology::Connect(source, output, target, properties);
}

CTopologyNode* CParserTopology::GetNode(CComponentValue* component) {
  if (!component) throw ResultArgumentNull();
  // A track stands for its reader.
  if (auto* track = dynamic_cast<CTrackValue*>(component); track && track->GetContainer())
    return GetNode(track->GetContainer());
  auto found = nodes_.find(component);
  if (found != nodes_.end()) return found->second;
  RObject<CTopologyNode> node(CreateNode(component));
  AddNode(node);
  CTopologyNode* borrowed = node;
  nodes_.emplace(component, std::move(node));
  return borrowed;
}

CTopologyNode* CParserTopology::CreateNode(CComponentValue* component) {
  if (!component) throw ResultArgumentNull();
  const unsigned int type = component->GetComponentType();
  const NodeKind kind = KindOf(type);
  if (kind == NodeKind::None)
    throw ResultNotSupported("'%s' values cannot be joined in a topology", FourString(type).GetChars());

  RObject<CSymbolDictionary> members(component->ToDictionary());
  RObject<CProperties> properties(members ? members->ToProperties() : new CProperties());
  CObject* configured = ConfiguredObjectOf(component);
  std::string label;
  switch (kind) {
    case NodeKind::Reader:
      properties->RemoveProperty("tracks");
      ApplyProperties(configured, properties);
      label = Label("%s (%s)", OrNull(TypeNameOf(type, configured)), FileOf(configured));
      break;
    case NodeKind::Writer:
      ApplyProperties(configured, properties);
      label = Label("%s (%s)", OrNull(TypeNameOf(type, configured)), FileOf(configured));
      break;
    case NodeKind::PackageContainer: {
      auto* container = component->GetComponent<CPackageContainer>();
      CPackage* package = container ? container->GetPackage() : nullptr;
      const std::string where = FileOf(package) + ":" + FourString(container ? container->GetContainerType() : 0).GetChars();
      label = Label("%s (%s)", OrNull(PackageType::GetName(package ? package->GetType() : 0)), where);
      ApplyProperties(configured, properties);
      break;
    }
    default:
      ApplyProperties(configured, properties);
      label = OrNull(FilterType::GetName(configured ? configured->GetType() : 0));
      break;
  }
  RObject<CTopologyNode> node(NewNode(type, component));
  node->SetProperties(properties).ThrowIfFailed();
  node->SetLabel(label.c_str());
  node->SetColor(ColorOf(kind));
  return node.Detach();
}

void ReleaseInterpreterState() {
  CSymbolDictionary::ClearAll();
  CAstNode::ReleaseSymbolTable();
  CAstNode::ReleaseFunctionTable();
  CComponentValue::ReleaseComponentGraph();
}

}  // namespace Corvane::Mox::WFL
