#include "System/Threading/Event.h"

namespace Corvane::Mox {

CEvent::CEvent(unsigned int type, unsigned int code) : CObject(type), code_(code) {}

}  // namespace Corvane::Mox
