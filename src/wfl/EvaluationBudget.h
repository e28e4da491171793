#pragma once
// CEvaluationBudget: an optional, process-wide limit on the work one script
// may do. Each statement evaluated costs one step and building long strings
// costs a step per 16 bytes; when a limit is set and the steps spent exceed
// it, ResultInvalidOperation is raised. Hosts that run untrusted scripts (and
// the fuzz harness) use it so that an endless loop ends with a result.
// The limit is off (0) by default.

namespace Corvane::Mox::WFL {

class CEvaluationBudget {
 public:
  static void SetLimit(long long steps);
  static long long GetLimit();
  static long long GetSpent();
  // Starts counting again from zero.
  static void Reset();
  static void Charge(long long steps);
};

}  // namespace Corvane::Mox::WFL
