#pragma once
// CDeinterleaveConverter ("adc "): splits one interleaved multichannel PCM
// stream into several streams of fewer channels, for writers that store one
// track per channel or per pair. The outputs come from "Variants" (one
// property bag per output), from "Channels" as an array (one count per
// output), or from "Channels" as one count n (input channels / n outputs of
// n channels each).

#include <vector>

#include "System/Media/Filter/Converters.h"

namespace Corvane::Mox {

class CDeinterleaveConverter : public CAudioFanOutConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("adc ");

  CDeinterleaveConverter();

  CFormatList* GetInputFormats() const override;
  CFormatList* GetOutputFormats() const override;
  Result CreateOutputProperties(std::vector<RObject<CAudioProperties>>& outputs) const override;
  using CAudioFanOutConverter::Convert;
  Result Convert(CAudioSample* sample) override;

 protected:
  Result Initialize() override;

 private:
  // One output's description, or a failure for channels it cannot take.
  Result DescribeOutputs(std::vector<RObject<CAudioProperties>>& outputs) const;
  Result AddOutput(std::vector<RObject<CAudioProperties>>& outputs, int channels, int firstChannel,
                   const CProperties* variant) const;
};

}  // namespace Corvane::Mox
