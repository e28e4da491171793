#pragma once
// The decompressor and compressor families. A decompressor meeting a gap
// first drains so that frames it still holds come out in order, then puts a
// black picture or silence of its output description straight on the output;
// a compressor compresses a black picture or silence of its input
// description in the gap's place.

#include "System/Media/Filter/FilterShapes.h"

namespace Corvane::Mox {

class CVideoDecompressor : public CVideoTransformFilter {
 public:
  explicit CVideoDecompressor(unsigned int componentCode) : CVideoTransformFilter(componentCode) {}

  Result Decompress(CVideoSample* sample);
  // The decoded picture (acquired) or null while the decoder holds it.
  virtual Result Decompress(CVideoSample* sample, CVideoSample*& decompressed);

 protected:
  using CVideoTransformFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override;
};

class CAudioDecompressor : public CAudioTransformFilter {
 public:
  explicit CAudioDecompressor(unsigned int componentCode) : CAudioTransformFilter(componentCode) {}

  Result Decompress(CAudioSample* sample);
  virtual Result Decompress(CAudioSample* sample, CAudioSample*& decompressed);

 protected:
  using CAudioTransformFilter::ProcessSample;
  Result ProcessSample(CAudioSample* sample) override;
};

class CVideoCompressor : public CVideoTransformFilter {
 public:
  explicit CVideoCompressor(unsigned int componentCode) : CVideoTransformFilter(componentCode) {}

  Result Compress(CVideoSample* sample);
  virtual Result Compress(CVideoSample* sample, CVideoSample*& compressed);

 protected:
  using CVideoTransformFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override;
};

class CAudioCompressor : public CAudioTransformFilter {
 public:
  explicit CAudioCompressor(unsigned int componentCode) : CAudioTransformFilter(componentCode) {}

  Result Compress(CAudioSample* sample);
  virtual Result Compress(CAudioSample* sample, CAudioSample*& compressed);

 protected:
  using CAudioTransformFilter::ProcessSample;
  Result ProcessSample(CAudioSample* sample) override;
};

class CVideoFanOutCompressor : public CVideoFanOutFilter {
 public:
  explicit CVideoFanOutCompressor(unsigned int componentCode) : CVideoFanOutFilter(componentCode) {}

  // Fan-out compressors put their results on the outputs themselves.
  virtual Result Compress(CVideoSample* sample);

 protected:
  using CVideoFanOutFilter::ProcessSample;
  Result ProcessSample(CVideoSample* sample) override { return Compress(sample); }
};

}  // namespace Corvane::Mox
