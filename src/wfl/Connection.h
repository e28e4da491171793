#pragma once
// CConnection: one consumer of a workflow node's output: the target node
// and the input of its topology node that receives the samples.

#include "System/Object.h"

namespace Corvane::Mox::WFL {

class CWorkflowNode;

class CConnection : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("conn");

  // The target is acquired.
  CConnection(int input, CWorkflowNode* target);
  ~CConnection() override;

  int GetInput() const { return input_; }
  CWorkflowNode* GetTarget() const { return target_; }  // borrowed

 private:
  int input_;
  CWorkflowNode* target_;
};

}  // namespace Corvane::Mox::WFL
