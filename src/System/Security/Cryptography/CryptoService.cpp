#include "System/Security/Cryptography/CryptoService.h"

#include <openssl/crypto.h>
#include <openssl/err.h>

#include <mutex>

namespace Corvane::Mox {

namespace {

std::once_flag g_providerOnce;
bool g_providerReady = false;

// The provider framework is started once per process.
void StartProvider() {
  g_providerReady = OPENSSL_init_crypto(OPENSSL_INIT_LOAD_CRYPTO_STRINGS, nullptr) == 1;
}

}  // namespace

CCryptoService::CCryptoService() : CObject(FourCC("csvc")), provider_(0) {}

CCryptoService::~CCryptoService() = default;

Result CCryptoService::Initialize() {
  if (provider_ != 0) return ResultOK();
  std::call_once(g_providerOnce, StartProvider);
  if (!g_providerReady) return ResultExternalError(LastProviderError(), nullptr);
  provider_ = 1;
  return ResultOK();
}

Result CCryptoService::GetProvider(long* handle) {
  Result r = Initialize();
  if (handle) *handle = provider_;
  return r;
}

int CCryptoService::LastProviderError() {
  unsigned long code = ERR_get_error();
  ERR_clear_error();
  return static_cast<int>(code);
}

}  // namespace Corvane::Mox
