#pragma once
// CAES: AES with 128-, 192- or 256-bit keys; AES-CBC with PKCS#7 padding by default.

#include "System/Security/Cryptography/SymmetricAlgorithm.h"

namespace Corvane::Mox {

class CAES : public CSymmetricAlgorithm {
 public:
  static constexpr unsigned int AlgorithmId = 0x80000001;

  explicit CAES(CCryptoService* service)
      : CSymmetricAlgorithm(service, AlgorithmId, CCryptoService::PaddingPKCS7, ModeCBCPadIV8, 128, 128) {}

  KeySizes LegalBlockSizes() override { return {128, 256, 64}; }
  KeySizes LegalKeySizes() override { return {128, 256, 64}; }
};

}  // namespace Corvane::Mox
