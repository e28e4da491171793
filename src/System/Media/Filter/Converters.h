#pragma once
// The converter families: filters that change media from one description to
// another. Convert(sample) runs the two-argument form and queues what it
// yields; gaps (samples without data) become black pictures or silence of the
// input description before they are converted, so downstream timing stays
// continuous.

#include "System/Media/Filter/FilterShapes.h"

namespace Corvane::Mox {

class CMemoryContext;

class CVideoConverter : public CVideoTransformFilter {
 public:
  explicit CVideoConverter(unsigned int componentCode) : CVideoTransformFilter(componentCode) {}

  Result Convert(CVideoSample* sample);
  // The converted sample (acquired) or null; by default the sample itself.
  virtual Result Convert(CVideoSample* sample, CVideoSample*& converted);
  // A memory context for the compute mode: host memory for the CPU.
  virtual CMemoryContext* CreateDefaultMemoryContext() const;

 protected:
  using CVideoTransformFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override;
  Result Initialize() override;
};

class CAudioConverter : public CAudioTransformFilter {
 public:
  explicit CAudioConverter(unsigned int componentCode) : CAudioTransformFilter(componentCode) {}

  Result Convert(CAudioSample* sample);
  virtual Result Convert(CAudioSample* sample, CAudioSample*& converted);

 protected:
  using CAudioTransformFilter::ProcessSample;
  Result ProcessSample(CAudioSample* sample) override;
};

class CSubtitleConverter : public CSubtitleTransformFilter {
 public:
  explicit CSubtitleConverter(unsigned int componentCode) : CSubtitleTransformFilter(componentCode) {}

  Result Convert(CSubtitleSample* sample);
  virtual Result Convert(CSubtitleSample* sample, CSubtitleSample*& converted);

 protected:
  using CSubtitleTransformFilter::ProcessSample;
  Result ProcessSample(CSubtitleSample* sample) override;
};

class CVideoFanInConverter : public CVideoFanInFilter {
 public:
  explicit CVideoFanInConverter(unsigned int componentCode) : CVideoFanInFilter(componentCode) {}

  Result Convert(int track, CVideoSample* sample);
  virtual Result Convert(int track, CVideoSample* sample, CVideoSample*& converted);

 protected:
  using CVideoFanInFilter::ProcessSample;
  Result ProcessSample(int track, CVideoSample* sample) override { return Convert(track, sample); }
};

class CAudioFanInConverter : public CAudioFanInFilter {
 public:
  explicit CAudioFanInConverter(unsigned int componentCode) : CAudioFanInFilter(componentCode) {}

  Result Convert(int track, CAudioSample* sample);
  virtual Result Convert(int track, CAudioSample* sample, CAudioSample*& converted);

 protected:
  using CAudioFanInFilter::ProcessSample;
  Result ProcessSample(int track, CAudioSample* sample) override;
};

class CSubtitleFanInConverter : public CSubtitleFanInFilter {
 public:
  explicit CSubtitleFanInConverter(unsigned int componentCode) : CSubtitleFanInFilter(componentCode) {}

  Result Convert(int track, CSubtitleSample* sample);
  virtual Result Convert(int track, CSubtitleSample* sample, CSubtitleSample*& converted);

 protected:
  using CSubtitleFanInFilter::ProcessSample;
  Result ProcessSample(int track, CSubtitleSample* sample) override { return Convert(track, sample); }
};

class CAudioFanOutConverter : public CAudioFanOutFilter {
 public:
  explicit CAudioFanOutConverter(unsigned int componentCode) : CAudioFanOutFilter(componentCode) {}

  // Fan-out converters put their results on the outputs themselves.
  virtual Result Convert(CAudioSample* sample);

 protected:
  using CAudioFanOutFilter::ProcessSample;
  Result ProcessSample(CAudioSample* sample) override { return Convert(sample); }
};

class CMetadataConverter : public CMetadataTransformFilter {
 public:
  explicit CMetadataConverter(unsigned int componentCode) : CMetadataTransformFilter(componentCode) {}

  Result Convert(CVideoSample* sample);
  virtual Result Convert(CVideoSample* sample, CVideoSample*& converted);

 protected:
  using CMetadataTransformFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override { return Convert(sample); }
};

}  // namespace Corvane::Mox
