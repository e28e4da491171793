#include "System/Media/Filter/VideoFilter.h"

#include "System/Media/Filter/BlackPicture.h"
#include "System/Media/Filter/MediaKindFilterImpl.h"
#include "System/Media/MemoryContext.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/PixelDataReference.h"
#include "System/Media/Video/VideoConfiguration.h"

namespace Corvane::Mox {

template class CMediaKindFilterT<CVideoSample, CVideoProperties, VideoConfiguration, CVideoConfiguration>;

namespace {

Result Wrap(CDataReference* reference, long long duration, CVideoSample*& sample) {
  if (!reference) return ResultOutOfMemory();
  RObject<CDataReference> held(reference);
  RObject<CVideoSample> created(new CVideoSample(0, duration, 0));
  Result set = created->SetDataReference(reference);
  if (set.Failed()) return set;
  sample = created.Detach();
  return Result();
}

}  // namespace

Result CVideoFilter::CreateSample(int length, CVideoSample*& sample) {
  sample = nullptr;
  CMemoryContext* context = GetMemoryContext();
  if (!context) return ResultNullPointer("memory context is null");
  return Wrap(context->New(length), 0, sample);
}

Result CVideoFilter::CreateSample(const CVideoProperties* properties, CVideoSample*& sample) {
  sample = nullptr;
  if (!properties) return ResultArgumentNull();
  CMemoryContext* context = GetMemoryContext();
  if (!context) return ResultNullPointer("memory context is null");
  return Wrap(context->New(properties), properties->GetFrameDuration(), sample);
}

CVideoSample* CVideoFilter::CreateSample(int length) {
  CVideoSample* sample = nullptr;
  CreateSample(length, sample).ThrowIfFailed();
  return sample;
}

CVideoSample* CVideoFilter::CreateSample(const CVideoProperties* properties) {
  CVideoSample* sample = nullptr;
  CreateSample(properties, sample).ThrowIfFailed();
  return sample;
}

Result CVideoFilter::CreateBlackSample(const CVideoProperties* properties, CMemoryContext* context,
                                       CVideoSample*& sample) {
  return CreateBlackSample(properties, context ? context : GetMemoryContext(), false, sample);
}

Result CVideoFilter::CreateBlackSample(const CVideoProperties* properties, CMemoryContext* context, bool,
                                       CVideoSample*& sample) {
  sample = nullptr;
  if (!properties) return ResultArgumentNull();
  if (!BlackPicture::IsSupported(properties->GetFormat()))
    return BlackPicture::Fill(properties, nullptr, 0);  // reports the unsupported format
  if (!context) return ResultNullPointer("memory context is null");
  CVideoSample* created = nullptr;
  Result wrapped = Wrap(context->New(properties), properties->GetFrameDuration(), created);
  if (wrapped.Failed()) return wrapped;
  RObject<CVideoSample> held(created);
  RObject<CDataReference> reference(created->GetDataReference());
  Result filled = BlackPicture::Fill(properties, reference->GetData(), reference->GetLength());
  if (filled.Failed()) return filled;
  sample = held.Detach();
  return Result();
}

Result CVideoFilter::CopySampleMetadata(CVideoSample* to, const CVideoSample* from) {
  Result common = CopyCommonSampleMetadata(to, from);
  if (common.Failed()) return common;
  to->SetCompositionOffset(from->GetCompositionOffset());
  to->SetPictureType(from->GetPictureType());
  to->SetPictureStructure(from->GetPictureStructure());
  to->SetFrameNumber(from->GetFrameNumber());
  return Result();
}

Result CVideoFilter::CreateGapSample(const CVideoProperties* properties, const CVideoSample* gap,
                                     CVideoSample*& sample) {
  CVideoSample* black = nullptr;
  Result created = CreateBlackSample(properties, nullptr, black);
  if (created.Failed()) return created;
  RObject<CVideoSample> held(black);
  Result copied = CopySampleMetadata(black, gap);
  if (copied.Failed()) return copied;
  sample = held.Detach();
  return Result();
}

}  // namespace Corvane::Mox
