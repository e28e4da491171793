#pragma once
// CAudioPropertiesConverter ("apc "): rewrites the description of an audio
// stream (format code, rate, channel labels, language, ...) and passes the
// samples through untouched. It relabels streams whose readers describe them
// wrongly, or tells a writer how to store channels it cannot infer.

#include "System/Media/Filter/Converters.h"

namespace Corvane::Mox {

class CAudioPropertiesConverter : public CAudioConverter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("apc ");

  CAudioPropertiesConverter();

  using CAudioConverter::Evaluate;
  // Any audio is acceptable.
  int Evaluate(const CAudioProperties* properties) const override;
  CFormatList* GetOutputFormats() const override;
  using CAudioConverter::CreateOutputProperties;
  Result CreateOutputProperties(unsigned int format, CAudioProperties*& properties) const override;

 protected:
  Result Initialize() override;
  using CAudioConverter::ProcessSample;
  Result ProcessSample(CAudioSample* sample) override;

 private:
  // Applies every property that is set to a description.
  void ApplyProperties(CAudioProperties* properties) const;
};

}  // namespace Corvane::Mox
