#pragma once
// The analyzer families: filters that measure media and pass it on
// unchanged. Analyze looks at each sample; the sample itself goes to the
// output.

#include "System/Media/Filter/FilterShapes.h"

namespace Corvane::Mox {

class CVideoAnalyzer : public CVideoTransformFilter {
 public:
  explicit CVideoAnalyzer(unsigned int componentCode) : CVideoTransformFilter(componentCode) {}
  virtual Result Analyze(CVideoSample*) { return Result(); }

 protected:
  using CVideoTransformFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override;
};

class CAudioAnalyzer : public CAudioTransformFilter {
 public:
  explicit CAudioAnalyzer(unsigned int componentCode) : CAudioTransformFilter(componentCode) {}
  virtual Result Analyze(CAudioSample*) { return Result(); }

 protected:
  using CAudioTransformFilter::ProcessSample;
  Result ProcessSample(CAudioSample* sample) override;
};

class CMetadataAnalyzer : public CMetadataTransformFilter {
 public:
  explicit CMetadataAnalyzer(unsigned int componentCode) : CMetadataTransformFilter(componentCode) {}
  virtual Result Analyze(CVideoSample*) { return Result(); }

 protected:
  using CMetadataTransformFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override;
};

// Fan-in analyzers compare their inputs (a reference and a test stream, say)
// and pass the first input on.
class CVideoFanInAnalyzer : public CVideoFanInFilter {
 public:
  explicit CVideoFanInAnalyzer(unsigned int componentCode) : CVideoFanInFilter(componentCode) {}
  virtual Result Analyze(int, CVideoSample*) { return Result(); }

 protected:
  using CVideoFanInFilter::ProcessSample;
  Result ProcessSample(int track, CVideoSample* sample) override;
};

class CAudioFanInAnalyzer : public CAudioFanInFilter {
 public:
  explicit CAudioFanInAnalyzer(unsigned int componentCode) : CAudioFanInFilter(componentCode) {}
  virtual Result Analyze(int, CAudioSample*) { return Result(); }

 protected:
  using CAudioFanInFilter::ProcessSample;
  Result ProcessSample(int track, CAudioSample* sample) override;
};

}  // namespace Corvane::Mox
