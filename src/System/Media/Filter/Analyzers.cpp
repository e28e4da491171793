#include "System/Media/Filter/Analyzers.h"

namespace Corvane::Mox {

namespace {

// Analyze, then pass the sample on when it came from the forwarded input.
template <class Sample, class AnalyzeFn, class QueueFn>
Result AnalyzeAndForward(Sample* sample, bool forward, AnalyzeFn analyze, QueueFn queue) {
  Result analyzed = analyze(sample);
  if (analyzed.Failed()) return analyzed;
  if (forward && sample) queue(sample);
  return Result();
}

}  // namespace

Result CVideoAnalyzer::ProcessSample(CVideoSample* sample) {
  return AnalyzeAndForward(sample, true, [&](CVideoSample* s) { return Analyze(s); },
                           [&](CVideoSample* s) { EnqueueOutputSample(s); });
}

Result CAudioAnalyzer::ProcessSample(CAudioSample* sample) {
  return AnalyzeAndForward(sample, true, [&](CAudioSample* s) { return Analyze(s); },
                           [&](CAudioSample* s) { EnqueueOutputSample(s); });
}

Result CMetadataAnalyzer::ProcessSample(CVideoSample* sample) {
  return AnalyzeAndForward(sample, true, [&](CVideoSample* s) { return Analyze(s); },
                           [&](CVideoSample* s) { EnqueueOutputSample(s); });
}

Result CVideoFanInAnalyzer::ProcessSample(int track, CVideoSample* sample) {
  return AnalyzeAndForward(sample, track == 0, [&](CVideoSample* s) { return Analyze(track, s); },
                           [&](CVideoSample* s) { EnqueueOutputSample(s); });
}

Result CAudioFanInAnalyzer::ProcessSample(int track, CAudioSample* sample) {
  return AnalyzeAndForward(sample, track == 0, [&](CAudioSample* s) { return Analyze(track, s); },
                           [&](CAudioSample* s) { EnqueueOutputSample(s); });
}

}  // namespace Corvane::Mox
