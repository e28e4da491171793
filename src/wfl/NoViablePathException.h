#pragma once
// CNoViablePathException: raised while building a topology when no chain of
// converters can carry one component's media to another.

#include "System/Result.h"

namespace Corvane::Mox::WFL {

class CNoViablePathException : public ResultNotSupported {
 public:
  // The message becomes the details.
  explicit CNoViablePathException(const char* message) : ResultNotSupported("%s", message ? message : "") {}
};

}  // namespace Corvane::Mox::WFL
