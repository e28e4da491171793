#include "System/Media/Variance/SyntaxVariance.h"

#include "System/Properties.h"

namespace Corvane::Mox {

CSyntaxVariance::CSyntaxVariance(CString* message, Severity severity, long long position)
    : CVariance(TypeCode, message, severity), position_(position) {}

Result CSyntaxVariance::GetProperties(CProperties* bag) const {
  CVariance::GetProperties(bag).ThrowIfFailed();
  bag->SetProperty("position", position_).ThrowIfFailed();
  return Result();
}

}  // namespace Corvane::Mox
