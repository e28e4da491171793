#include "wfl/ValueNesting.h"

#include "System/Result.h"

namespace Corvane::Mox::WFL {

namespace {
thread_local int depth = 0;
}

CValueNesting::CValueNesting() {
  if (depth >= Limit) throw ResultOverflow("script objects nested more than %d levels deep (or containing themselves)", Limit);
  ++depth;
}

CValueNesting::~CValueNesting() { --depth; }

}  // namespace Corvane::Mox::WFL
