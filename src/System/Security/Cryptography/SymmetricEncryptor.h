#pragma once
// CSymmetricEncryptor: the encrypting direction of a symmetric algorithm.
// All cipher state lives in the algorithm's shared context.

#include "System/Security/Cryptography/CryptoTransform.h"

namespace Corvane::Mox {

class CSymmetricAlgorithm;

class CSymmetricEncryptor : public CCryptoTransform {
 public:
  explicit CSymmetricEncryptor(CSymmetricAlgorithm* algorithm);
  ~CSymmetricEncryptor() override;

  int GetInputBlockSize() override;
  int GetOutputBlockSize() override;
  Result TransformBlock(unsigned char* input, int inputCount, unsigned char* output, int outputCapacity,
                        int* written) override;
  Result TransformFinalBlock(unsigned char* output, int outputCapacity, int* written) override;
  virtual Result Initialize();

 protected:
  CSymmetricEncryptor(CSymmetricAlgorithm* algorithm, unsigned int type, bool encrypt);

 private:
  CSymmetricAlgorithm* algorithm_;
  bool encrypt_;
};

}  // namespace Corvane::Mox
