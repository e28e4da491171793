#pragma once
// The whole public API of libMox. A host includes this one header and uses
// the namespace Corvane::Mox.

#include "System/Types.h"
#include "System/Result.h"
#include "System/Object.h"
#include "System/Console.h"
#include "System/Text.h"
#include "System/Diagnostics/Leaks.h"
#include "System/Diagnostics/StackTrace.h"
#include "System/Threading/Lock.h"
#include "System/Threading/RWLock.h"
#include "System/MoxVersion.h"
