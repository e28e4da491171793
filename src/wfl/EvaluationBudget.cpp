#include "wfl/EvaluationBudget.h"

#include "System/Result.h"

namespace Corvane::Mox::WFL {

namespace {
long long limit = 0;
long long spent = 0;
}  // namespace

void CEvaluationBudget::SetLimit(long long steps) { limit = steps > 0 ? steps : 0; }
long long CEvaluationBudget::GetLimit() { return limit; }
long long CEvaluationBudget::GetSpent() { return spent; }
void CEvaluationBudget::Reset() { spent = 0; }

void CEvaluationBudget::Charge(long long steps) {
  spent += steps;
  if (limit > 0 && spent > limit) throw ResultInvalidOperation("evaluation step limit of %lld exceeded", limit);
}

}  // namespace Corvane::Mox::WFL
