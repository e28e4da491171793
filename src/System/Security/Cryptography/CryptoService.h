#pragma once
// CCryptoService: a handle on the cryptographic provider. One service object
// is made per use site and handed to the algorithm constructors.

#include "System/Object.h"

namespace Corvane::Mox {

class CCryptoService : public CObject {
 public:
  // Padding codes of the provider interface, passed through unchanged.
  enum PaddingMode : int {
    PaddingNone = 0,
    PaddingCustom = 1,
    PaddingZero = 2,
    PaddingOne = 3,
    PaddingAlternate = 4,
    PaddingFF = 5,
    PaddingPKCS5 = 6,
    PaddingPKCS7 = 7,
  };

  CCryptoService();
  ~CCryptoService() override;

  // Attaches to the provider once; later calls succeed at once.
  Result Initialize();
  Result GetProvider(long* handle);

  // The provider's most recent error code, for ResultExternalError.
  static int LastProviderError();

 private:
  long provider_;
};

}  // namespace Corvane::Mox
