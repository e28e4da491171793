#pragma once
// CTopologyNode: one component of a topology (a reader, filter, writer or
// package container) with its own property bag, a label and a colour for
// graph dumps. The node type tells the kinds apart: "crtn" readers, "mftn"
// filters, "cwtn" writers, "pctn" package containers.

#include "System/Properties.h"

namespace Corvane::Mox::WFL {

class CTopologyNode : public CProperties {
 public:
  static constexpr unsigned int ReaderNode = FourCC("crtn");
  static constexpr unsigned int FilterNode = FourCC("mftn");
  static constexpr unsigned int WriterNode = FourCC("cwtn");
  static constexpr unsigned int PackageContainerNode = FourCC("pctn");

  // The component is acquired.
  CTopologyNode(unsigned int nodeType, CObject* component);
  ~CTopologyNode() override;

  unsigned int GetNodeType() const { return GetType(); }
  // The wrapped reader (indexer), filter, writer or package container; borrowed.
  CObject* GetComponent() const { return component_; }

  CString* GetLabel() const { return label_; }  // borrowed, may be null
  void SetLabel(const char* label);
  void SetLabel(CString* label);
  CString* GetColor() const { return color_; }  // borrowed, may be null
  void SetColor(const char* color);
  void SetColor(CString* color);

 private:
  CObject* component_;
  CString* label_;
  CString* color_;
};

}  // namespace Corvane::Mox::WFL
