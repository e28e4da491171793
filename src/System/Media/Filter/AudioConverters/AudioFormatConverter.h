#pragma once
// CAudioFormatConverter ("afc "): converts PCM audio between sample formats
// (integer widths, signedness, byte order, floating point and G.711
// companding) without changing rate or channels. Integers widen into the high
// bits and narrow by truncation; integers become floats scaled to [-1, 1);
// floats become integers rounded to nearest (ties away from zero) and
// clamped. A sample whose format does not change passes through sharing its
// data.

#include "System/Media/Filter/Converters.h"

namespace Corvane::Mox {

struct SampleCoding;

class CAudioFormatConverter : public CAudioConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("afc ");

  CAudioFormatConverter();

  const Row* GetConfigurationTable() const override;
  using CAudioConverter::Convert;
  Result Convert(CAudioSample* sample, CAudioSample*& converted) override;
  CProperties* GetDocumentation() const override;

  // The workers, one per input family; each refuses an output it does not
  // make with ResultNotSupported.
  Result ConvertFromLaw(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromInt8(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromUInt8(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromInt16(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromInt20(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromInt24(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromUInt24(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromInt32(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromFloat32(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertFromFloat64(CAudioSample* in, unsigned int output, CAudioSample*& out);
  // Same-width byte-order changes, and little-endian from either order.
  Result SwapBytes(CAudioSample* in, unsigned int output, CAudioSample*& out);
  Result ConvertToLittleEndian(CAudioSample* in, unsigned int output, CAudioSample*& out);

 protected:
  Result Initialize() override { return Result(); }
  Result Finalize() override { return Result(); }

 private:
  // The format samples are converted to: the output description's, or the
  // requested "OutputFormat" before Begin.
  unsigned int GetTargetFormat() const;
  // Converts every value of in from the input's coding to output's.
  Result RunWorker(CAudioSample* in, unsigned int output, CAudioSample*& out);
};

}  // namespace Corvane::Mox
