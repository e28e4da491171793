#include "System/Media/Filter/Converters.h"

#include "System/Media/Filter/FamilyWork.h"
#include "System/Media/MemoryContext.h"

namespace Corvane::Mox {

// ---- video ----

Result CVideoConverter::Convert(CVideoSample* sample) {
  return RunAndQueue<CVideoSample>([&](CVideoSample*& out) { return Convert(sample, out); },
                              [&](CVideoSample* out) { EnqueueOutputSample(out); });
}

Result CVideoConverter::Convert(CVideoSample* sample, CVideoSample*& converted) { return PassThrough(sample, converted); }

CMemoryContext* CVideoConverter::CreateDefaultMemoryContext() const { return new CHostMemoryContext(); }

Result CVideoConverter::Initialize() {
  if (!GetMemoryContext()) {
    RObject<CMemoryContext> context(CreateDefaultMemoryContext());
    SetMemoryContext(context);
  }
  return CVideoTransformFilter::Initialize();
}

Result CVideoConverter::ProcessSample(CVideoSample* sample) {
  if (sample && !sample->HasDataReference()) {
    CVideoSample* black = nullptr;
    Result created = CreateGapSample(GetInputProperties(), sample, black);
    if (created.Failed()) return created;
    RObject<CVideoSample> held(black);
    return Convert(black);
  }
  return Convert(sample);
}

Result CVideoFanInConverter::Convert(int track, CVideoSample* sample) {
  return RunAndQueue<CVideoSample>([&](CVideoSample*& out) { return Convert(track, sample, out); },
                              [&](CVideoSample* out) { EnqueueOutputSample(out); });
}

Result CVideoFanInConverter::Convert(int, CVideoSample* sample, CVideoSample*& converted) {
  return PassThrough(sample, converted);
}

Result CMetadataConverter::Convert(CVideoSample* sample) {
  return RunAndQueue<CVideoSample>([&](CVideoSample*& out) { return Convert(sample, out); },
                              [&](CVideoSample* out) { EnqueueOutputSample(out); });
}

Result CMetadataConverter::Convert(CVideoSample* sample, CVideoSample*& converted) { return PassThrough(sample, converted); }

// ---- audio ----

Result CAudioConverter::Convert(CAudioSample* sample) {
  return RunAndQueue<CAudioSample>([&](CAudioSample*& out) { return Convert(sample, out); },
                              [&](CAudioSample* out) { EnqueueOutputSample(out); });
}

Result CAudioConverter::Convert(CAudioSample* sample, CAudioSample*& converted) { return PassThrough(sample, converted); }

Result CAudioConverter::ProcessSample(CAudioSample* sample) {
  if (sample && !sample->HasDataReference()) {
    CAudioSample* silent = nullptr;
    Result created = CreateGapSample(GetInputProperties(), sample, silent);
    if (created.Failed()) return created;
    RObject<CAudioSample> held(silent);
    return Convert(silent);
  }
  return Convert(sample);
}

Result CAudioFanInConverter::Convert(int track, CAudioSample* sample) {
  return RunAndQueue<CAudioSample>([&](CAudioSample*& out) { return Convert(track, sample, out); },
                              [&](CAudioSample* out) { EnqueueOutputSample(out); });
}

Result CAudioFanInConverter::Convert(int, CAudioSample* sample, CAudioSample*& converted) {
  return PassThrough(sample, converted);
}

Result CAudioFanInConverter::ProcessSample(int track, CAudioSample* sample) {
  if (sample && !sample->HasDataReference()) {
    RObject<CMediaProperties> input(GetInputMedia(track));
    CAudioSample* silent = nullptr;
    Result created = CreateGapSample(static_cast<CAudioProperties*>(input.Get()), sample, silent);
    if (created.Failed()) return created;
    RObject<CAudioSample> held(silent);
    return Convert(track, silent);
  }
  return Convert(track, sample);
}

Result CAudioFanOutConverter::Convert(CAudioSample*) { return Result(); }

// ---- subtitles ----

Result CSubtitleConverter::Convert(CSubtitleSample* sample) {
  return RunAndQueue<CSubtitleSample>([&](CSubtitleSample*& out) { return Convert(sample, out); },
                              [&](CSubtitleSample* out) { EnqueueOutputSample(out); });
}

Result CSubtitleConverter::Convert(CSubtitleSample* sample, CSubtitleSample*& converted) {
  return PassThrough(sample, converted);
}

Result CSubtitleConverter::ProcessSample(CSubtitleSample* sample) { return Convert(sample); }

Result CSubtitleFanInConverter::Convert(int track, CSubtitleSample* sample) {
  return RunAndQueue<CSubtitleSample>([&](CSubtitleSample*& out) { return Convert(track, sample, out); },
                              [&](CSubtitleSample* out) { EnqueueOutputSample(out); });
}

Result CSubtitleFanInConverter::Convert(int, CSubtitleSample* sample, CSubtitleSample*& converted) {
  return PassThrough(sample, converted);
}

}  // namespace Corvane::Mox
