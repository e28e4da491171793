#pragma once
// CThreadFunctor<F>: a thread whose body is a callable, such as a lambda with
// its captures. The callable returns a Result (or nothing, which counts as
// success). The callable lives inside the thread object, and the running
// thread holds a reference to that object, so the captures stay valid until
// the body ends even when the creator lets go first. Class template argument
// deduction names the type: new CThreadFunctor([&] { ... }).

#include <type_traits>
#include <utility>

#include "System/Threading/Thread.h"

namespace Corvane::Mox {

template <class F>
class CThreadFunctor : public CThread {
 public:
  explicit CThreadFunctor(F function) : CThread(&Invoke), function_(std::move(function)) {}

  // The thread's argument is always the functor itself, so this replaces the
  // base class form that takes one.
  Result Start(int stackSize = 0) { return CThread::Start(this, stackSize); }

 private:
  static Result Invoke(void* self) {
    F& function = static_cast<CThreadFunctor*>(self)->function_;
    if constexpr (std::is_void_v<std::invoke_result_t<F&>>) {
      function();
      return ResultOK();
    } else {
      return function();
    }
  }

  F function_;
};

}  // namespace Corvane::Mox
