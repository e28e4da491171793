#pragma once
// CMediaFilterTopologyNode ("mftn"): a filter in a topology. Every media
// operation forwards to the filter; failures are raised.

#include "wfl/TopologyNode.h"

namespace Corvane::Mox {
class CMediaFilter;
}

namespace Corvane::Mox::WFL {

class CMediaFilterTopologyNode : public CTopologyNode {
 public:
  explicit CMediaFilterTopologyNode(CMediaFilter* filter);

  CMediaFilter* GetMediaFilter() const;  // borrowed

  Result Begin() override;
  Result End() override;
  bool IsEndOfStream() override;
  int GetInputMediaCount() override;
  void AddInputMedia(const CMediaProperties* properties) override;
  CMediaProperties* GetInputMedia(int index) override;
  bool IsInputMediaReady(int index) override;
  bool WaitForInputMedia() override;
  bool WaitForInputMedia(int milliseconds) override;
  // What the filter produces now when it is ready or told its format;
  // otherwise what it would produce for each of its output formats in turn.
  CList<CMediaProperties>* GetAvailableOutputMedia(int output) override;
  int GetOutputMediaCount() override;
  CMediaProperties* GetOutputMedia(int index) override;
  bool IsOutputMediaReady(int index) override;
  bool WaitForOutputMedia() override;
  bool WaitForOutputMedia(int milliseconds) override;
  void WriteSample(int input, CMediaSample* sample) override;
  CMediaSample* ReadSample(int output) override;
};

}  // namespace Corvane::Mox::WFL
