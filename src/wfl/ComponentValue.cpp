#include "wfl/ComponentValue.h"

#include <typeinfo>

#include "System/Console.h"
#include "System/FourString.h"
#include "System/Media/Container/Indexer.h"
#include "System/Text.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

CComponentGraph* componentGraph = nullptr;

// The member "tracks" kind a destination consumes from a reader.
const char* TrackKind(unsigned int destination) {
  switch (destination) {
    case FourCC("vanl"):
    case FourCC("vcom"):
    case FourCC("vcon"):
    case FourCC("vdec"):
    case FourCC("vian"):
    case FourCC("vicn"):
    case FourCC("vocm"):
    case FourCC("manl"):
    case FourCC("mcon"):
      return "video";
    case FourCC("aanl"):
    case FourCC("acom"):
    case FourCC("acon"):
    case FourCC("adec"):
    case FourCC("aian"):
    case FourCC("aicn"):
    case FourCC("aocn"):
      return "audio";
    case FourCC("scon"):
    case FourCC("sfic"):
      return "subtitle";
    default:
      return nullptr;
  }
}

// The dictionary of member name within dictionary; raises bad_operation when absent.
CSymbolDictionary* Member(CSymbolDictionary* dictionary, const char* name) {
  RObject<CSymbol> member(dictionary ? dictionary->GetSymbol(name) : nullptr);
  if (!member || !member->GetValue() || !member->GetValue()->IsType(CObjectValue::TypeCode)) throw bad_operation();
  return member->GetValue()->ToDictionary();
}

// The media kind of a track value's type.
unsigned int MediaKindOf(unsigned int trackType) {
  switch (trackType) {
    case CVideoTrackValue::TypeCode: return FourCC("vid ");
    case CAudioTrackValue::TypeCode: return FourCC("aud ");
    case CSubtitleTrackValue::TypeCode: return FourCC("sub ");
    default: return 0;
  }
}

bool IsTrack(const CSymbolValue* value) {
  return value->IsType(CVideoTrackValue::TypeCode) || value->IsType(CAudioTrackValue::TypeCode) ||
         value->IsType(CSubtitleTrackValue::TypeCode);
}

}  // namespace

// ---- CComponentValue ----

CComponentValue::CComponentValue(unsigned int componentType, CObject* component)
    : CObjectValue(componentType, nullptr), component_(component) {
  if (component_) component_->Acquire();
  GetComponentGraph()->AddNode(this).ThrowIfFailed();
}

CComponentValue::~CComponentValue() {
  if (component_) component_->Release();
}

bool CComponentValue::IsType(unsigned int type) const {
  return type == GetType() || type == TypeCode || type == FourCC("aflt") || type == FourCC("vflt") ||
         type == FourCC("sflt") || CObjectValue::IsType(type);
}

CComponentGraph* CComponentValue::GetComponentGraph() {
  if (!componentGraph) componentGraph = new CComponentGraph();
  return componentGraph;
}

void CComponentValue::ReleaseComponentGraph() {
  CComponentGraph* graph = componentGraph;
  componentGraph = nullptr;
  if (graph) graph->Release();
}

CComponentValue* CComponentValue::SelectTrack(CComponentValue* destination) const {
  const char* kind = TrackKind(destination->GetComponentType());
  if (!kind) throw bad_operation();
  RObject<CSymbolDictionary> members(ToDictionary());
  RObject<CSymbolDictionary> tracks(Member(members, "tracks"));
  RObject<CSymbolDictionary> ofKind(Member(tracks, kind));
  RObject<CSymbol> first(ofKind->GetSymbol("0"));
  if (!first || !first->GetValue() || !IsTrack(first->GetValue())) throw bad_operation();
  return static_cast<CComponentValue*>(first->GetValue());
}

CSymbolValue* CComponentValue::Connect(CSymbolValue* right) {
  if (!right) throw std::bad_cast();
  CComponentValue* destination = nullptr;
  CComponentValue* chainEnd = nullptr;
  if (right->IsType(CConnectionValue::TypeCode)) {
    auto* chain = static_cast<CConnectionValue*>(right);
    destination = chain->GetSource();  // a connection stands for its source
    chainEnd = chain->GetDestination();
  } else if (right->IsType(CComponentValue::TypeCode)) {
    destination = static_cast<CComponentValue*>(right);
  } else {
    throw std::bad_cast();
  }
  if (GetComponentType() == CContainerReaderValue::TypeCode) {
    CComponentValue* track = SelectTrack(destination);
    return track->Connect(right);
  }
  if (IsTrack(this)) {
    auto* track = static_cast<CTrackValue*>(this);
    CComponentValue* container = track->GetContainer();
    MOX_LOG(Console::Debug, "connecting: %s(%s):%d -> %s\n", FourString(container->GetComponentType()).GetChars(),
            FourString(GetComponentType()).GetChars(), track->GetTrackIndex(),
            FourString(destination->GetComponentType()).GetChars());
    return ConnectFrom(container, track->GetTrackIndex(), destination, chainEnd, MediaKindOf(GetComponentType()));
  }
  int output = GetComponentGraph()->GetOutputEdges(this)->GetCount();
  MOX_LOG(Console::Debug, "connecting: %s:%d -> %s\n", FourString(GetComponentType()).GetChars(), output,
          FourString(destination->GetComponentType()).GetChars());
  return ConnectFrom(this, output, destination, chainEnd);
}

CSymbolValue* CComponentValue::ConnectFrom(CComponentValue* source, int output, CComponentValue* destination,
                                           CComponentValue* chainEnd, unsigned int sourceKind) {
  RObject<CConnectionValue> connection(new CConnectionValue(source, output, destination));
  connection->SetSourceKind(sourceKind);
  GetComponentGraph()->Connect(source, destination, connection);
  if (chainEnd) connection->SetDestination(chainEnd);
  return connection.Detach();
}

// ---- CConnectionValue ----

CConnectionValue::CConnectionValue(CComponentValue* source, int sourceTrack, CComponentValue* destination)
    : CObjectValue(TypeCode, nullptr), source_(source), sourceTrack_(sourceTrack), destination_(destination) {
  if (source_) source_->Acquire();
  if (destination_) destination_->Acquire();
}

CConnectionValue::~CConnectionValue() {
  if (source_) source_->Release();
  if (destination_) destination_->Release();
}

bool CConnectionValue::IsType(unsigned int type) const { return type == TypeCode || CObjectValue::IsType(type); }

void CConnectionValue::SetSource(CComponentValue* source) {
  if (source) source->Acquire();
  if (source_) source_->Release();
  source_ = source;
}

void CConnectionValue::SetDestination(CComponentValue* destination) {
  if (destination) destination->Acquire();
  if (destination_) destination_->Release();
  destination_ = destination;
}

CSymbolValue* CConnectionValue::Connect(CSymbolValue* right) {
  if (!destination_) throw std::bad_cast();
  RObject<CSymbolValue> result(destination_->Connect(right));
  if (!result->IsType(CConnectionValue::TypeCode)) throw std::bad_cast();
  static_cast<CConnectionValue*>(result.Get())->SetSource(source_);
  return result.Detach();
}

// ---- tracks and containers ----

CTrackValue::CTrackValue(unsigned int type, CComponentValue* container, int index)
    : CComponentValue(type, container ? container->GetComponentObject() : nullptr),
      container_(container),
      index_(index) {
  if (container_) container_->Acquire();
}

CTrackValue::~CTrackValue() {
  if (container_) container_->Release();
}

CContainerReaderValue::CContainerReaderValue(CIndexer* indexer) : CContainerValue(TypeCode, indexer) {}

CPackageValue::CPackageValue(CObject* package, CString* filename)
    : CComponentValue(TypeCode, package), filename_(filename) {
  if (filename_) filename_->Acquire();
}

CPackageValue::~CPackageValue() {
  if (filename_) filename_->Release();
}

CPackageContainerValue::CPackageContainerValue(CObject* container, CPackageValue* package)
    : CComponentValue(TypeCode, container), package_(package) {
  if (package_) package_->Acquire();
}

CPackageContainerValue::~CPackageContainerValue() {
  if (package_) package_->Release();
}

}  // namespace Corvane::Mox::WFL
