#pragma once
// CSymmetricDecryptor: the decrypting direction of a symmetric algorithm.
// It shares the encryptor's machinery and starts the context for decryption.

#include "System/Security/Cryptography/SymmetricEncryptor.h"

namespace Corvane::Mox {

class CSymmetricDecryptor : public CSymmetricEncryptor {
 public:
  explicit CSymmetricDecryptor(CSymmetricAlgorithm* algorithm);
};

}  // namespace Corvane::Mox
