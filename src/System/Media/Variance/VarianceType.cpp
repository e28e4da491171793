#include "System/Media/Variance/VarianceType.h"

#include "System/Media/Variance/SyntaxVariance.h"

namespace Corvane::Mox {

const char* VarianceType::GetName(unsigned int type) {
  if (type == CSyntaxVariance::TypeCode) return "Syntax";
  if (type == CVariance::TypeCode) return "Variance";
  return nullptr;
}

}  // namespace Corvane::Mox
