#include "System/IO/Binary.h"

namespace Corvane::Mox {

Result CBinary::ToFieldType(int size, FieldType& type) {
  static constexpr FieldType BySize[] = {FieldAbsent, FieldOneByte, FieldTwoBytes, FieldThreeBytes, FieldFourBytes};
  if (size < 0 || size > 4) return ResultNotSupported();
  type = BySize[size];
  return ResultOK();
}

}  // namespace Corvane::Mox
