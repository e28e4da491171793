#pragma once
// CSyntaxVariance ("sntx"): a variance found at a byte position of the input.

#include "System/Media/Variance/Variance.h"

namespace Corvane::Mox {

class CSyntaxVariance : public CVariance {
 public:
  static constexpr unsigned int TypeCode = FourCC("sntx");

  CSyntaxVariance(CString* message, Severity severity, long long position);

  long long GetPosition() const { return position_; }
  // The variance's properties, then "position".
  Result GetProperties(CProperties* bag) const override;

 private:
  long long position_;
};

}  // namespace Corvane::Mox
