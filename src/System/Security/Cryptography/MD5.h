#pragma once
// CMD5: the MD5 message digest (128-bit hash).

#include "System/Security/Cryptography/HashAlgorithm.h"

namespace Corvane::Mox {

class CMD5 : public CHashAlgorithm {
 public:
  static constexpr unsigned int AlgorithmId = 7;

  explicit CMD5(CCryptoService* service) : CHashAlgorithm(service, AlgorithmId) {}
  int GetHashSize() override { return 128; }

  // The MD5 of a whole file, read through a descriptor stream in 2 KiB pieces.
  static Result CreateHashFromFilename(const char* path, CByteArray*& hash);
};

}  // namespace Corvane::Mox
