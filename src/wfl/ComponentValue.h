#pragma once
// The values that stand for media components in a script. A CComponentValue
// holds the component object (a filter, an indexer over a reader, a writer,
// a signal, a package or package container) and a member dictionary whose
// entries act as deferred property settings. Every component value is a
// node of the process-wide component graph; "a -> b" adds an edge whose
// payload is the CConnectionValue describing it.

#include "wfl/ObjectValue.h"
#include "System/Collections/WeightedDirectedGraph.h"

namespace Corvane::Mox {
class CIndexer;
class CString;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CComponentValue;
using CComponentGraph = CWeightedDirectedGraph<CComponentValue>;

class CComponentValue : public CObjectValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("cpvl");
  WFL_VALUE_OVERLOADS(CObjectValue)

  // componentType is the keyword's code ("vcon", "indx", ...); the
  // component is acquired. The value adds itself to the component graph.
  CComponentValue(unsigned int componentType, CObject* component);
  ~CComponentValue() override;

  unsigned int GetComponentType() const { return GetType(); }
  // The held object, borrowed.
  CObject* GetComponentObject() const { return component_; }
  // The held object as T (borrowed), or null when it is not one.
  template <class T>
  T* GetComponent() const {
    return dynamic_cast<T*>(component_);
  }

  // Answers its own code, "cpvl", "aflt", "vflt", "sflt" and the object codes.
  bool IsType(unsigned int type) const override;
  CSymbolValue* Connect(CSymbolValue* right) override;

  // The process-wide component graph, created on first use (borrowed).
  static CComponentGraph* GetComponentGraph();
  static void ReleaseComponentGraph();

 protected:
  // Connects from this component's given output; destination is a component
  // value; chainEnd, when set, becomes the returned connection's destination.
  CSymbolValue* ConnectFrom(CComponentValue* source, int output, CComponentValue* destination,
                            CComponentValue* chainEnd, unsigned int sourceKind = 0);

 private:
  // The first track of the kind the destination consumes; raises bad_operation.
  CComponentValue* SelectTrack(CComponentValue* destination) const;

  CObject* component_;
};

// "a -> b": the source component and its output index, and the destination.
class CConnectionValue : public CObjectValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("->vl");
  WFL_VALUE_OVERLOADS(CObjectValue)

  CConnectionValue(CComponentValue* source, int sourceTrack, CComponentValue* destination);
  ~CConnectionValue() override;

  bool IsType(unsigned int type) const override;
  // Borrowed.
  CComponentValue* GetSource() const { return source_; }
  CComponentValue* GetDestination() const { return destination_; }
  int GetSourceTrack() const { return sourceTrack_; }
  // For a connection made from a reader's track value: the track's media
  // kind ("vid ", "aud ", "sub "), and GetSourceTrack counts within that
  // kind. 0 when the source track is an output index of the source.
  unsigned int GetSourceKind() const { return sourceKind_; }
  void SetSourceKind(unsigned int kind) { sourceKind_ = kind; }
  void SetSource(CComponentValue* source);
  void SetDestination(CComponentValue* destination);

  // "(a -> b) -> c": connects b to c; the result runs from a.
  CSymbolValue* Connect(CSymbolValue* right) override;

 private:
  CComponentValue* source_;
  int sourceTrack_;
  unsigned int sourceKind_ = 0;
  CComponentValue* destination_;
};

// A track of a reader: remembers the reader's value and its index among the
// tracks of its kind.
class CTrackValue : public CComponentValue {
 public:
  WFL_VALUE_OVERLOADS(CComponentValue)

  ~CTrackValue() override;
  // Borrowed.
  CComponentValue* GetContainer() const { return container_; }
  int GetTrackIndex() const { return index_; }

 protected:
  CTrackValue(unsigned int type, CComponentValue* container, int index);

 private:
  CComponentValue* container_;
  int index_;
};

class CVideoTrackValue : public CTrackValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("vtrk");
  CVideoTrackValue(CComponentValue* container, int index) : CTrackValue(TypeCode, container, index) {}
};

class CAudioTrackValue : public CTrackValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("atrk");
  CAudioTrackValue(CComponentValue* container, int index) : CTrackValue(TypeCode, container, index) {}
};

class CSubtitleTrackValue : public CTrackValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("strk");
  CSubtitleTrackValue(CComponentValue* container, int index) : CTrackValue(TypeCode, container, index) {}
};

class CContainerValue : public CComponentValue {
 protected:
  CContainerValue(unsigned int type, CObject* container) : CComponentValue(type, container) {}
};

// A container reader, held through its indexer.
class CContainerReaderValue : public CContainerValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("indx");
  explicit CContainerReaderValue(CIndexer* indexer);
};

class CSignalReaderValue : public CContainerValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("srcr");
  explicit CSignalReaderValue(CObject* signalReader) : CContainerValue(TypeCode, signalReader) {}
};

class CContainerWriterValue : public CContainerValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("writ");
  explicit CContainerWriterValue(CObject* writer) : CContainerValue(TypeCode, writer) {}
};

class CSignalWriterValue : public CContainerValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("srcw");
  explicit CSignalWriterValue(CObject* signalWriter) : CContainerValue(TypeCode, signalWriter) {}
};

class CPackageValue : public CComponentValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("pckg");
  // The package and the file name it was created for (acquired).
  CPackageValue(CObject* package, CString* filename);
  ~CPackageValue() override;

  CString* GetFilename() const { return filename_; }

 private:
  CString* filename_;
};

class CPackageContainerValue : public CComponentValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("pcnt");
  CPackageContainerValue(CObject* container, CPackageValue* package);
  ~CPackageContainerValue() override;

  CPackageValue* GetPackage() const { return package_; }

 private:
  CPackageValue* package_;
};

}  // namespace Corvane::Mox::WFL
