#pragma once
// CByteArrayPool: a pool of byte arrays of one capacity and alignment. A
// buffer keeps the length its last user gave it; users set the length they need.

#include "System/ByteArray.h"
#include "System/Pool.h"

namespace Corvane::Mox {

class CByteArrayPool : public CPool<CByteArray> {
 public:
  CByteArrayPool(int capacity, int alignment);

  CByteArray* New() override;

  int GetBufferCapacity() const { return capacity_; }
  int GetBufferAlignment() const { return alignment_; }

 private:
  int capacity_;
  int alignment_;
};

}  // namespace Corvane::Mox
