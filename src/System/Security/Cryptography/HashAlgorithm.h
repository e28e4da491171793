#pragma once
// CHashAlgorithm: a message digest as a crypto transform. One object computes
// one hash; make a new object for the next.

#include "System/Security/Cryptography/CryptoTransform.h"

namespace Corvane::Mox {

class CByteArray;
class CCryptoService;

class CHashAlgorithm : public CCryptoTransform {
 public:
  CHashAlgorithm(CCryptoService* service, unsigned int algorithm);
  ~CHashAlgorithm() override;

  int GetInputBlockSize() override { return 1; }
  int GetOutputBlockSize() override { return GetHashSize() / 8; }
  // Feeds the digest; nothing is written to output.
  Result TransformBlock(unsigned char* input, int inputCount, unsigned char* output, int outputCapacity,
                        int* written) override;
  // Finishes the digest, keeps it for GetHash and copies what fits to output.
  Result TransformFinalBlock(unsigned char* output, int outputCapacity, int* written) override;

  virtual int GetHashSize() = 0;  // bits
  virtual Result Initialize();
  virtual CByteArray* GetHash();  // acquired, or null before a hash is finished
  virtual Result ComputeHash(unsigned char* input, int count, unsigned char* output, int outputCapacity);

  unsigned int GetAlgorithm() const { return algorithm_; }
  void* GetContext() const { return context_; }

 private:
  Result Finish();

  CCryptoService* service_;
  unsigned int algorithm_;
  void* context_;
  CByteArray* hash_;
  bool finished_;
};

}  // namespace Corvane::Mox
