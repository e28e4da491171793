#pragma once
// CCryptoTransform: a one-way transform of bytes (a digest or a cipher direction).

#include "System/Object.h"

namespace Corvane::Mox {

class CCryptoTransform : public CObject {
 public:
  explicit CCryptoTransform(unsigned int type) : CObject(type) {}

  virtual bool CanReuseTransform() { return false; }
  virtual bool CanTransformMultipleBlocks() { return true; }
  virtual int GetInputBlockSize() = 0;
  virtual int GetOutputBlockSize() = 0;
  virtual Result TransformBlock(unsigned char* input, int inputCount, unsigned char* output, int outputCapacity,
                                int* written) = 0;
  virtual Result TransformFinalBlock(unsigned char* output, int outputCapacity, int* written) = 0;
};

}  // namespace Corvane::Mox
