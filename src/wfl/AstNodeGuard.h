#pragma once
// CExpression::Guard, kept apart so that AstNode.h stays a plain declaration.

#include <typeinfo>

#include "wfl/SymbolValue.h"

namespace Corvane::Mox::WFL {

template <class Operation>
auto CExpression::Guard(const CToken* token, Operation operation) -> decltype(operation()) {
  try {
    return operation();
  } catch (const bad_operation&) {
    ThrowInvalidCast(token);
  } catch (const std::bad_cast&) {
    ThrowInvalidCast(token);
  }
}

}  // namespace Corvane::Mox::WFL
