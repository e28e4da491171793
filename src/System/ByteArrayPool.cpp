#include "System/ByteArrayPool.h"

#include <algorithm>

namespace Corvane::Mox {

CByteArrayPool::CByteArrayPool(int capacity, int alignment)
    : capacity_(std::max(capacity, 0)), alignment_(std::max(alignment, 1)) {}

CByteArray* CByteArrayPool::New() { return new CByteArray(capacity_, alignment_); }

}  // namespace Corvane::Mox
