#include "System/Threading/Monitor.h"

namespace Corvane::Mox {

CMonitor::CMonitor() : CObject(TypeCode) {}

Result CMonitor::Enter(const CObject* object) { return object ? object->Enter() : ResultArgumentNull(); }
Result CMonitor::Exit(const CObject* object) { return object ? object->Exit() : ResultArgumentNull(); }
bool CMonitor::Wait(const CObject* object) { return object && object->Wait(); }
bool CMonitor::Wait(const CObject* object, int milliseconds) { return object && object->Wait(milliseconds); }
Result CMonitor::Notify(const CObject* object) { return object ? object->Notify() : ResultArgumentNull(); }
Result CMonitor::NotifyAll(const CObject* object) { return object ? object->NotifyAll() : ResultArgumentNull(); }

}  // namespace Corvane::Mox
