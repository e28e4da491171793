#pragma once
// CSHA1: the SHA1 message digest (160-bit hash).

#include "System/Security/Cryptography/HashAlgorithm.h"

namespace Corvane::Mox {

class CSHA1 : public CHashAlgorithm {
 public:
  static constexpr unsigned int AlgorithmId = 8;

  explicit CSHA1(CCryptoService* service) : CHashAlgorithm(service, AlgorithmId) {}
  int GetHashSize() override { return 160; }
};

}  // namespace Corvane::Mox
