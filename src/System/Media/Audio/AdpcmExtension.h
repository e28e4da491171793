#pragma once
// CAdpcmExtension: the extra bytes of a Microsoft ADPCM format (tag 2):
// frames per block and the predictor coefficient pairs. Its type code is the
// format's code, "ms" followed by the tag.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

class CAdpcmExtension : public CObject {
 public:
  static constexpr unsigned int TypeCode = 0x6D730002u;

  // Parses wSamplesPerBlock, wNumCoef and the coefficient pairs; pairs that
  // the bytes do not hold are not kept. Null when fewer than 4 bytes.
  static CAdpcmExtension* Create(const unsigned char* bytes, int count);

  int GetSamplesPerBlock() const { return samplesPerBlock_; }
  // The number of coefficient pairs present.
  int GetPredictorCount() const { return static_cast<int>(coefficients_.size() / 2); }
  // Pair i's coefficients; 0 for a pair that does not exist.
  short GetCoefficient1(int i) const;
  short GetCoefficient2(int i) const;

 private:
  CAdpcmExtension(int samplesPerBlock, std::vector<short> coefficients);

  int samplesPerBlock_;
  std::vector<short> coefficients_;
};

}  // namespace Corvane::Mox
