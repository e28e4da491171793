#include "System/Media/Filter/VideoTransformFilter.h"

#include "System/Media/Metadata/Metadata.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

CVideoTransformFilter::CVideoTransformFilter(unsigned int componentCode)
    : CTransformFilterT<CVideoFilter>(componentCode) {}

CVideoTransformFilter::~CVideoTransformFilter() = default;

int CVideoTransformFilter::GetDefaultComputeMode() const {
  return static_cast<int>(CodeBookProperty::SelectableCompute::ComputeModes::CPU);
}

int CVideoTransformFilter::GetComputeMode() const {
  int mode = 0;
  if (GetProperty(CodeBookProperty::SelectableCompute::ComputeMode, mode).Failed()) return GetDefaultComputeMode();
  return mode;
}

int CVideoTransformFilter::GetDeviceIndex() const {
  int index = 0;
  GetProperty(CodeBookProperty::SelectableCompute::DeviceIndex, index);
  return index;
}

Result CVideoTransformFilter::GetDeviceInterface(CObject*& device) const {
  device = nullptr;
  const int mode = GetComputeMode();
  if (mode == static_cast<int>(CodeBookProperty::SelectableCompute::ComputeModes::CPU)) return Result();
  return ResultNotSupported("unsupported ComputeMode %d", mode);
}

Result CVideoTransformFilter::SplitAndEnqueueSampleMetadata(const CMediaSample* sample) {
  if (!sample) return ResultArgumentNull();
  RObject<CMetadata> metadata(sample->GetMetadata());
  if (!metadata) return ResultNullPointer("sample metadata is null");
  RObject<CMetadata> copy(new CMetadata());
  Result copied = copy->Copy(metadata);
  if (copied.Failed()) return copied;
  std::lock_guard<std::mutex> guard(metadataLock_);
  metadata_.push_back(std::move(copy));
  return Result();
}

Result CVideoTransformFilter::DequeueAndMergeSampleMetadata(CMediaSample* sample) {
  if (!sample) return ResultArgumentNull();
  RObject<CMetadata> queued;
  {
    std::lock_guard<std::mutex> guard(metadataLock_);
    if (metadata_.empty()) return ResultFalse();
    queued = std::move(metadata_.front());
    metadata_.pop_front();
  }
  RObject<CMetadata> own(sample->GetMetadata());
  if (own && own->GetCount() > 0) return Result();
  return sample->SetMetadata(queued);
}

int CVideoTransformFilter::GetQueuedMetadataCount() const {
  std::lock_guard<std::mutex> guard(metadataLock_);
  return static_cast<int>(metadata_.size());
}

Result CVideoTransformFilter::Finalize() {
  std::lock_guard<std::mutex> guard(metadataLock_);
  metadata_.clear();
  return Result();
}

}  // namespace Corvane::Mox
