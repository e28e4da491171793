#include "System/Security/Cryptography/SymmetricDecryptor.h"

namespace Corvane::Mox {

CSymmetricDecryptor::CSymmetricDecryptor(CSymmetricAlgorithm* algorithm)
    : CSymmetricEncryptor(algorithm, FourCC("sdec"), false) {}

}  // namespace Corvane::Mox
