#pragma once
// VarianceType: the names of the variance kinds by type code.

namespace Corvane::Mox {

class VarianceType {
 public:
  // "Syntax" for "sntx", "Variance" for "vrnc", otherwise null.
  static const char* GetName(unsigned int type);
};

}  // namespace Corvane::Mox
