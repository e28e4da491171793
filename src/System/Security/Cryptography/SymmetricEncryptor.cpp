#include "System/Security/Cryptography/SymmetricEncryptor.h"

#include "System/Security/Cryptography/SymmetricAlgorithm.h"

namespace Corvane::Mox {

CSymmetricEncryptor::CSymmetricEncryptor(CSymmetricAlgorithm* algorithm)
    : CSymmetricEncryptor(algorithm, FourCC("senc"), true) {}

CSymmetricEncryptor::CSymmetricEncryptor(CSymmetricAlgorithm* algorithm, unsigned int type, bool encrypt)
    : CCryptoTransform(type), algorithm_(algorithm), encrypt_(encrypt) {
  algorithm_->Acquire();
}

CSymmetricEncryptor::~CSymmetricEncryptor() { algorithm_->Release(); }

int CSymmetricEncryptor::GetInputBlockSize() { return algorithm_->GetBlockSize() / 8; }
int CSymmetricEncryptor::GetOutputBlockSize() { return algorithm_->GetBlockSize() / 8; }

Result CSymmetricEncryptor::Initialize() {
  // The first transform of an algorithm object starts its context; later ones share it.
  if (algorithm_->GetContext()) return ResultOK();
  Result r = algorithm_->Initialize();
  if (r.Failed()) return r;
  return algorithm_->Start(encrypt_);
}

Result CSymmetricEncryptor::TransformBlock(unsigned char* input, int inputCount, unsigned char* output,
                                           int outputCapacity, int* written) {
  Result r = Initialize();
  if (r.Failed()) return r;
  return algorithm_->Update(input, inputCount, output, outputCapacity, written);
}

Result CSymmetricEncryptor::TransformFinalBlock(unsigned char* output, int outputCapacity, int* written) {
  Result r = Initialize();
  if (r.Failed()) return r;
  return algorithm_->Final(output, outputCapacity, written);
}

}  // namespace Corvane::Mox
