#pragma once
// CValueNesting: a guard around the recursive walks over script objects
// (printing, conversion to properties). Objects are shared by reference and
// may contain themselves, so a walk deeper than Limit levels stops with
// ResultOverflow instead of exhausting the stack.

namespace Corvane::Mox::WFL {

class CValueNesting {
 public:
  static constexpr int Limit = 64;

  CValueNesting();
  ~CValueNesting();
  CValueNesting(const CValueNesting&) = delete;
  CValueNesting& operator=(const CValueNesting&) = delete;
};

}  // namespace Corvane::Mox::WFL
