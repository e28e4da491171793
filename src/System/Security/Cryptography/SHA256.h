#pragma once
// CSHA256: the SHA256 message digest (256-bit hash).

#include "System/Security/Cryptography/HashAlgorithm.h"

namespace Corvane::Mox {

class CSHA256 : public CHashAlgorithm {
 public:
  static constexpr unsigned int AlgorithmId = 0x8000000E;

  explicit CSHA256(CCryptoService* service) : CHashAlgorithm(service, AlgorithmId) {}
  int GetHashSize() override { return 256; }
};

}  // namespace Corvane::Mox
