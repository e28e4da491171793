#pragma once
// CMonitor: static helpers that reach the monitor of any object, and an
// object of its own whose monitor several parties can share (a workflow's
// nodes signal completion through one).

#include "System/Object.h"

namespace Corvane::Mox {

class CMonitor : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("mntr");

  CMonitor();

  // Each forwards to the object's own monitor operation.
  static Result Enter(const CObject* object);
  static Result Exit(const CObject* object);
  static bool Wait(const CObject* object);
  static bool Wait(const CObject* object, int milliseconds);
  static Result Notify(const CObject* object);
  static Result NotifyAll(const CObject* object);

  // The monitor operations of this object itself.
  using CObject::Enter;
  using CObject::Exit;
  using CObject::Notify;
  using CObject::NotifyAll;
  using CObject::Wait;
};

}  // namespace Corvane::Mox
