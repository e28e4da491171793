#include "System/Media/Filter/AudioFilter.h"

#include "System/Media/Filter/MediaKindFilterImpl.h"
#include "System/Media/Filter/SilentAudio.h"
#include "System/Media/MemoryContext.h"
#include "System/Media/MemoryDataReference.h"

namespace Corvane::Mox {

template class CMediaKindFilterT<CAudioSample, CAudioProperties, AudioConfiguration, CAudioConfiguration>;

Result CAudioFilter::CreateSample(int length, CAudioSample*& sample) {
  sample = nullptr;
  if (length < 0) return ResultArgumentOutOfRange();
  CMemoryContext* context = GetMemoryContext();
  if (!context) return ResultNullPointer("memory context is null");
  RObject<CBufferDataReference> reference(context->New(length));
  if (!reference) return ResultOutOfMemory();
  RObject<CAudioSample> created(new CAudioSample(0LL));
  Result set = created->SetDataReference(reference);
  if (set.Failed()) return set;
  sample = created.Detach();
  return Result();
}

CAudioSample* CAudioFilter::CreateSample(int length) {
  CAudioSample* sample = nullptr;
  CreateSample(length, sample).ThrowIfFailed();
  return sample;
}

Result CAudioFilter::CreateSilentSample(long long duration, int channels, unsigned int format,
                                        CAudioSample*& sample) {
  sample = nullptr;
  if (duration < 0 || channels < 1) return ResultArgumentOutOfRange();
  unsigned char pattern[8];
  const int bytes = SilentAudio::GetPattern(format, pattern);
  if (bytes == 0) return SilentAudio::Fill(format, nullptr, 0);  // reports the unsupported format
  const long long values = duration * channels;
  if (values * bytes > 0x7FFFFFFF) return ResultArgumentOutOfRange();
  CAudioSample* created = nullptr;
  Result made = CreateSample(static_cast<int>(values * bytes), created);
  if (made.Failed()) return made;
  RObject<CAudioSample> held(created);
  RObject<CDataReference> reference(created->GetDataReference());
  reference->SetLength(static_cast<int>(values * bytes));
  Result filled = SilentAudio::Fill(format, reference->GetData(), values);
  if (filled.Failed()) return filled;
  created->SetDuration(duration);
  sample = held.Detach();
  return Result();
}

CAudioSample* CAudioFilter::CreateSilentSample(long long duration, int channels, unsigned int format) {
  CAudioSample* sample = nullptr;
  CreateSilentSample(duration, channels, format, sample).ThrowIfFailed();
  return sample;
}

Result CAudioFilter::CreateGapSample(const CAudioProperties* properties, const CAudioSample* gap,
                                     CAudioSample*& sample) {
  sample = nullptr;
  if (!properties || !gap) return ResultArgumentNull();
  CAudioSample* silent = nullptr;
  Result created = CreateSilentSample(gap->GetDuration(), properties->GetChannels(), properties->GetFormat(), silent);
  if (created.Failed()) return created;
  RObject<CAudioSample> held(silent);
  Result copied = CopySampleMetadata(silent, gap);
  if (copied.Failed()) return copied;
  sample = held.Detach();
  return Result();
}

}  // namespace Corvane::Mox
