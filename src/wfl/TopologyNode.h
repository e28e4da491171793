#pragma once
// CTopologyNode: one component of a topology (a reader, filter, writer or
// package container) with its own property bag, a label and a colour for
// graph dumps. The node type tells the kinds apart: "crtn" readers, "mftn"
// filters, "cwtn" writers, "pctn" package containers. Each kind answers the
// media operations for its component; this base has no inputs and no
// outputs.

#include "System/Properties.h"

namespace Corvane::Mox {
class CMediaProperties;
class CMediaSample;
template <class T>
class CList;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CTopologyNode : public CProperties {
 public:
  static constexpr unsigned int ReaderNode = FourCC("crtn");
  static constexpr unsigned int FilterNode = FourCC("mftn");
  static constexpr unsigned int WriterNode = FourCC("cwtn");
  static constexpr unsigned int PackageContainerNode = FourCC("pctn");

  // The component is acquired (may be null).
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

  virtual Result Begin();
  virtual Result End();
  virtual bool IsEndOfStream();
  virtual int GetInputMediaCount();
  // Takes one more input of the description; failures are raised.
  virtual void AddInputMedia(const CMediaProperties* properties);
  virtual CMediaProperties* GetInputMedia(int index);  // acquired, or null
  virtual bool IsInputMediaReady(int index);
  virtual bool WaitForInputMedia();
  // As above, for at most the given milliseconds; true when an input is ready.
  virtual bool WaitForInputMedia(int milliseconds);
  // Every description the node could produce on the output (a new list).
  virtual CList<CMediaProperties>* GetAvailableOutputMedia(int output);
  virtual int GetOutputMediaCount();
  virtual CMediaProperties* GetOutputMedia(int index);  // acquired, or null
  virtual bool IsOutputMediaReady(int index);
  virtual bool WaitForOutputMedia();
  // As above, for at most the given milliseconds; true when an output is ready.
  virtual bool WaitForOutputMedia(int milliseconds);
  virtual void WriteSample(int input, CMediaSample* sample);
  virtual CMediaSample* ReadSample(int output);  // acquired, or null at the end

 private:
  CObject* component_;
  CString* label_;
  CString* color_;
};

}  // namespace Corvane::Mox::WFL
