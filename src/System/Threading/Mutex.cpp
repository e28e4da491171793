#include "System/Threading/Mutex.h"

namespace Corvane::Mox {

CMutex::CMutex() : CObject(TypeCode) {}

}  // namespace Corvane::Mox
