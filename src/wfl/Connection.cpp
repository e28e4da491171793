#include "wfl/Connection.h"

#include "wfl/WorkflowNode.h"

namespace Corvane::Mox::WFL {

CConnection::CConnection(int input, CWorkflowNode* target) : CObject(TypeCode), input_(input), target_(target) {
  if (target_) target_->Acquire();
}

CConnection::~CConnection() {
  if (target_) target_->Release();
}

}  // namespace Corvane::Mox::WFL
