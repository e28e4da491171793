#pragma once
// CMutex: an object used as a plain lock. Its monitor is the lock: Enter,
// TryEnter and Exit (and CObject::CAutoLock) are all it needs.

#include "System/Object.h"

namespace Corvane::Mox {

class CMutex : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("mutx");

  CMutex();
};

}  // namespace Corvane::Mox
