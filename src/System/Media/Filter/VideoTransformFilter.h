#pragma once
// CVideoTransformFilter: the one-in, one-out video filter. Adds the compute
// selection of the SelectableCompute properties (only the CPU is available in
// this build) and per-sample metadata queues that carry metadata across
// filters that reorder or combine frames: the metadata of each input frame is
// queued when it arrives and merged into the output frame that leaves in its
// place.

#include <deque>
#include <mutex>

#include "System/Media/Filter/TransformFilterT.h"
#include "System/Media/Filter/VideoFilter.h"

namespace Corvane::Mox {

class CMetadata;

class CVideoTransformFilter : public CTransformFilterT<CVideoFilter> {
 public:
  explicit CVideoTransformFilter(unsigned int componentCode);
  ~CVideoTransformFilter() override;

  // The mode used when "ComputeMode" is unset.
  virtual int GetDefaultComputeMode() const;
  // "ComputeMode", or the default.
  int GetComputeMode() const;
  int GetDeviceIndex() const;
  // The compute device of the selected mode: none (null) for the CPU;
  // ResultNotSupported "unsupported ComputeMode %d" for any other mode.
  virtual Result GetDeviceInterface(CObject*& device) const;

  // Queues a copy of the sample's metadata; "sample metadata is null" when it
  // has none.
  Result SplitAndEnqueueSampleMetadata(const CMediaSample* sample);
  // Gives the sample the oldest queued metadata (its own elements win);
  // ResultFalse when the queue is empty.
  Result DequeueAndMergeSampleMetadata(CMediaSample* sample);
  int GetQueuedMetadataCount() const;

 protected:
  Result Finalize() override;

 private:
  mutable std::mutex metadataLock_;
  std::deque<RObject<CMetadata>> metadata_;
};

}  // namespace Corvane::Mox
